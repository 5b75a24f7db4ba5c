#include "fakes/fake_shell.h"

#include "platform/path_text.h"

#include <algorithm>

namespace Fakes
{

namespace
{

constexpr std::uint32_t CompactLength = 1024;

std::wstring number(Platform::WindowHandle window)
{
    return std::to_wstring(reinterpret_cast<std::uintptr_t>(window));
}

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

Platform::WindowHandle FakeShell::foregroundWindow()
{
    log_.add(L"foregroundWindow");
    return foreground;
}

std::uint32_t FakeShell::windowThread(Platform::WindowHandle window)
{
    log_.add(L"windowThread " + number(window));
    const auto found = windowThreads.find(window);
    return found == windowThreads.end() ? 0 : found->second;
}

void FakeShell::attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach)
{
    log_.add(L"attachThreadInput " + std::to_wstring(from) + L' ' + std::to_wstring(to) +
             (attach ? L" attach" : L" detach"));
}

void FakeShell::setWindowPosition(Platform::WindowHandle window, Platform::WindowHandle insertAfter,
                                  std::uint32_t flags)
{
    log_.add(L"setWindowPosition " + number(window) + L' ' + number(insertAfter) + L' ' + std::to_wstring(flags));
}

void FakeShell::setForegroundWindow(Platform::WindowHandle window)
{
    log_.add(L"setForegroundWindow " + number(window));
}

} // namespace Fakes
