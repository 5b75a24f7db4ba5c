#include "platform/win32/concerns.h"

#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <memory>

namespace Platform
{

namespace
{

constexpr std::uint32_t BufferLength = 1024;

struct LocalFreeDeleter
{
    void operator()(void* memory) const { LocalFree(memory); }
};

HWND windowOf(WindowHandle handle)
{
    return static_cast<HWND>(handle);
}

class Win32Shell : public Shell
{
public:
    std::vector<std::wstring> commandLineArguments() override
    {
        int count = 0;
        const std::unique_ptr<wchar_t*[], LocalFreeDeleter> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
        if (!arguments)
            return {};
        return {arguments.get(), arguments.get() + count};
    }

    SystemVersion version() override
    {
        OSVERSIONINFOW information{};
        information.dwOSVersionInfoSize = sizeof information;
        if (!GetVersionExW(&information))
            return {};
        return {information.dwPlatformId, information.dwMajorVersion};
    }

    std::wstring currentDirectory() override
    {
        std::array<wchar_t, BufferLength> buffer{};
        const DWORD length = GetCurrentDirectoryW(BufferLength, buffer.data());
        return length < BufferLength ? std::wstring(buffer.data(), length) : std::wstring();
    }

    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override
    {
        std::array<wchar_t, BufferLength> buffer{};
        return PathCombineW(buffer.data(), folder.c_str(), file.c_str()) ? buffer.data() : std::wstring();
    }

    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override
    {
        std::array<wchar_t, BufferLength> buffer{};
        const bool done = PathCompactPathExW(buffer.data(), path.c_str(), std::min(size, BufferLength), 0);
        return done ? buffer.data() : std::wstring();
    }

    bool deleteFile(const std::wstring& path) override { return DeleteFileW(path.c_str()); }

    WindowHandle foregroundWindow() override { return GetForegroundWindow(); }

    std::uint32_t windowThread(WindowHandle window) override
    {
        return GetWindowThreadProcessId(windowOf(window), nullptr);
    }

    void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override
    {
        AttachThreadInput(from, to, attach);
    }

    void setWindowPosition(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) override
    {
        SetWindowPos(windowOf(window), windowOf(insertAfter), 0, 0, 0, 0, flags);
    }

    void setForegroundWindow(WindowHandle window) override { SetForegroundWindow(windowOf(window)); }
};

} // namespace

Shell& win32Shell()
{
    static Win32Shell shell;
    return shell;
}

} // namespace Platform
