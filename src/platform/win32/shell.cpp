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

static_assert(sizeof(SHELLEXECUTEINFOW) == 60);
static_assert(ExecuteKeepProcess == SEE_MASK_NOCLOSEPROCESS && ExecuteWaitForDde == SEE_MASK_FLAG_DDEWAIT &&
              ExecuteWithoutBox == SEE_MASK_FLAG_NO_UI);
static_assert(ShowNormal == SW_SHOWNORMAL && MaxPath == MAX_PATH);

struct LocalFreeDeleter
{
    void operator()(void* memory) const { LocalFree(memory); }
};

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

    std::intptr_t findExecutable(const std::wstring& file, std::wstring& executable) override
    {
        std::array<wchar_t, MaxPath> buffer{};
        const HINSTANCE result = FindExecutableW(file.c_str(), nullptr, buffer.data());
        executable.assign(buffer.data(), wcsnlen(buffer.data(), MaxPath));
        return reinterpret_cast<std::intptr_t>(result);
    }

    bool execute(ShellExecution& execution) override
    {
        SHELLEXECUTEINFOW information{};
        information.cbSize = execution.size;
        information.fMask = execution.mask;
        information.lpFile = execution.file.c_str();
        information.lpDirectory = execution.directory.c_str();
        information.nShow = execution.show;
        const bool done = ShellExecuteExW(&information);
        execution.process = information.hProcess;
        return done;
    }
};

} // namespace

Shell& win32Shell()
{
    static Win32Shell shell;
    return shell;
}

} // namespace Platform
