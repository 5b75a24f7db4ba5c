#include "systemutilities/shell_utilities.h"

#include "platform/desktop.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "platform/threads.h"

namespace Halden::SystemUtilities
{

namespace
{

constexpr std::uint32_t NtPlatform = 2;       // VER_PLATFORM_WIN32_NT
constexpr std::uint32_t KeepSizeAndPlace = 3; // SWP_NOSIZE, SWP_NOMOVE
constexpr std::uint32_t ShowInPlace = 67;     // SWP_NOSIZE, SWP_NOMOVE, SWP_SHOWWINDOW

Platform::Shell& shell()
{
    return Platform::platform().shell;
}

wchar_t separator()
{
    return Platform::platform().separator;
}

bool isAbsolute(const std::wstring& path)
{
    if (separator() == L'/')
        return path.starts_with(L'/');
    return path.size() > 2 && (path.starts_with(L"\\\\") || path[1] == L':');
}

} // namespace

std::vector<std::wstring> GetCommandLineArguments()
{
    return shell().commandLineArguments();
}

bool isVistaOrLater()
{
    const Platform::SystemVersion version = shell().version();
    return version.platformId == NtPlatform && version.major >= 6;
}

void ForceForegroundWindow(Platform::WindowHandle window)
{
    Platform::Desktop& desktop = Platform::platform().desktop;
    const Platform::WindowHandle foreground = desktop.foregroundWindow();
    const std::uint32_t owner = desktop.windowThread(foreground);
    const std::uint32_t self = Platform::platform().threads.currentThreadId();
    desktop.attachThreadInput(owner, self, true);
    desktop.setWindowPosition(window, nullptr, ShowInPlace);
    desktop.setWindowPosition(foreground, window, KeepSizeAndPlace);
    desktop.setForegroundWindow(window);
    desktop.attachThreadInput(owner, self, false);
}

std::wstring compactPath(const std::wstring& path, unsigned maximum)
{
    return shell().compactPath(path, maximum + 1);
}

std::wstring GetFolderOfPath(const std::wstring& path, bool keepBackslash)
{
    std::wstring folder = path;
    if (folder.ends_with(separator()))
        folder.pop_back();
    const std::size_t last = folder.rfind(separator());
    if (last == std::wstring::npos)
        return {};
    folder.resize(keepBackslash ? last + 1 : last);
    return folder;
}

std::wstring GetModuleFolder(void* module)
{
    return GetFolderOfPath(Platform::platform().modules.fileName(module), true);
}

std::wstring ResolveRelativePath(const std::wstring& relative, const std::wstring& base)
{
    if (isAbsolute(relative))
        return relative;
    const std::size_t fileStart = relative.rfind(separator()) + 1; // 0 when the path has no folder
    const std::wstring root = base.empty() ? shell().currentDirectory() : base;
    std::wstring resolved = shell().combinePath(root, relative.substr(0, fileStart));
    if (resolved.empty())
        return {};
    if (!resolved.ends_with(separator()))
        resolved += separator();
    return resolved + relative.substr(fileStart);
}

std::wstring JoinPath(const std::wstring& left, const std::wstring& right)
{
    return JoinPath(left, right, separator());
}

std::wstring JoinPath(const std::wstring& left, const std::wstring& right, wchar_t between)
{
    if (left.empty())
        return right;
    if (right.empty())
        return left;
    const bool leftEnds = left.ends_with(between);
    const bool rightStarts = right.starts_with(between);
    if (!leftEnds && !rightStarts)
        return left + between + right;
    if (leftEnds && rightStarts)
        return left + right.substr(1);
    return left + right;
}

} // namespace Halden::SystemUtilities
