#pragma once

#include "fakes/fake_call_log.h"
#include "platform/shell.h"

#include <map>
#include <set>

namespace Fakes
{

/// Answers from its public members, which a test sets. Logs "deleteFile PATH" and the calls that move windows, with
/// windows and threads as numbers: "foregroundWindow", "windowThread 7", "attachThreadInput 1 2 attach" (or "detach"),
/// "setWindowPosition 7 0 67", "setForegroundWindow 7".
class FakeShell : public Platform::Shell
{
public:
    FakeShell(CallLog& log, wchar_t separator) : log_(log), separator_(separator) {}

    /// The handle that the log shows as this number.
    static Platform::WindowHandle windowNumber(std::uintptr_t number)
    {
        return reinterpret_cast<Platform::WindowHandle>(number);
    }

    std::vector<std::wstring> arguments{L"C:\\Suite\\bin\\JobRunner.exe"};
    Platform::SystemVersion systemVersion{2, 6};
    std::wstring directory = L"C:\\Work";
    /// Paths of the files that `deleteFile` can delete.
    std::set<std::wstring> files;
    Platform::WindowHandle foreground = nullptr;
    std::map<Platform::WindowHandle, std::uint32_t> windowThreads;

    std::vector<std::wstring> commandLineArguments() override { return arguments; }
    Platform::SystemVersion version() override { return systemVersion; }
    std::wstring currentDirectory() override { return directory; }
    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override;
    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override;
    bool deleteFile(const std::wstring& path) override;
    Platform::WindowHandle foregroundWindow() override;
    std::uint32_t windowThread(Platform::WindowHandle window) override;
    void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override;
    void setWindowPosition(Platform::WindowHandle window, Platform::WindowHandle insertAfter,
                           std::uint32_t flags) override;
    void setForegroundWindow(Platform::WindowHandle window) override;

private:
    CallLog& log_;
    const wchar_t separator_;
};

} // namespace Fakes
