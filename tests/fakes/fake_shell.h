#pragma once

#include "fakes/fake_call_log.h"
#include "platform/shell.h"

#include <functional>
#include <set>

namespace Fakes
{

/// Answers from its public members, which a test sets. Logs "deleteFile PATH", "findExecutable PATH" and
/// "execute FILE in FOLDER".
class FakeShell : public Platform::Shell
{
public:
    FakeShell(CallLog& log, wchar_t separator) : log_(log), separator_(separator) {}

    std::vector<std::wstring> arguments{L"C:\\Suite\\bin\\JobRunner.exe"};
    Platform::SystemVersion systemVersion{2, 6};
    std::wstring directory = L"C:\\Work";
    /// Paths of the files that `deleteFile` can delete.
    std::set<std::wstring> files;
    /// The application of every document; empty for none.
    std::wstring executable;
    std::intptr_t findResult = 42;
    /// What happens when something is opened; without it every start is refused.
    std::function<bool(Platform::ShellExecution&)> onExecute;

    std::vector<std::wstring> commandLineArguments() override { return arguments; }
    Platform::SystemVersion version() override { return systemVersion; }
    std::wstring currentDirectory() override { return directory; }
    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override;
    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override;
    bool deleteFile(const std::wstring& path) override;
    std::intptr_t findExecutable(const std::wstring& file, std::wstring& found) override;
    bool execute(Platform::ShellExecution& execution) override;

private:
    CallLog& log_;
    const wchar_t separator_;
};

} // namespace Fakes
