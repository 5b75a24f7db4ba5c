#include "fakes/fake_shell.h"

#include "platform/path_text.h"

#include <algorithm>

namespace Fakes
{

namespace
{

constexpr std::uint32_t CompactLength = 1024;

} // namespace

std::wstring FakeShell::combinePath(const std::wstring& folder, const std::wstring& file)
{
    return Platform::combinePathText(folder, file, separator_);
}

std::wstring FakeShell::compactPath(const std::wstring& path, std::uint32_t size)
{
    return Platform::compactPathText(path, std::min(size, CompactLength), separator_);
}

bool FakeShell::deleteFile(const std::wstring& path)
{
    log_.add(L"deleteFile " + path);
    return files.erase(path) > 0;
}

std::intptr_t FakeShell::findExecutable(const std::wstring& file, std::wstring& found)
{
    log_.add(L"findExecutable " + file);
    found = executable;
    return findResult;
}

bool FakeShell::execute(Platform::ShellExecution& execution)
{
    log_.add(L"execute " + execution.file + L" in " + execution.directory);
    return onExecute && onExecute(execution);
}

} // namespace Fakes
