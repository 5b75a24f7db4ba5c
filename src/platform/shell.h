#pragma once

#include "platform/messages.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{

struct SystemVersion
{
    std::uint32_t platformId = 0;
    std::uint32_t major = 0;
};

/// Shell and process calls. None of them raises; a failure gives an empty or zero result.
class Shell
{
public:
    virtual ~Shell() = default;
    /// `CommandLineToArgvW` over `GetCommandLineW`; the first entry is the program.
    virtual std::vector<std::wstring> commandLineArguments() = 0;
    /// `GetVersionExW`. All zero on a system that has none.
    virtual SystemVersion version() = 0;
    /// `GetCurrentDirectoryW` with a buffer of 1024 characters.
    virtual std::wstring currentDirectory() = 0;
    /// `PathCombineW`: `file` resolved against `folder`, with "." and ".." taken out.
    virtual std::wstring combinePath(const std::wstring& folder, const std::wstring& file) = 0;
    /// `PathCompactPathExW` with a buffer of 1024 characters, `size` counting the terminating null.
    virtual std::wstring compactPath(const std::wstring& path, std::uint32_t size) = 0;
    /// `DeleteFileW`. False on failure.
    virtual bool deleteFile(const std::wstring& path) = 0;

    // What bringing a window to the front needs. Nothing happens on a system without windows.
    virtual WindowHandle foregroundWindow() = 0;
    virtual std::uint32_t windowThread(WindowHandle window) = 0;
    virtual void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) = 0;
    virtual void setWindowPosition(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) = 0;
    virtual void setForegroundWindow(WindowHandle window) = 0;
};

} // namespace Platform
