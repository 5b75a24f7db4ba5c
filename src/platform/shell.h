#pragma once

#include "platform/handles.h"

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

inline constexpr std::uint32_t ExecuteKeepProcess = 0x40;  ///< `SEE_MASK_NOCLOSEPROCESS`
inline constexpr std::uint32_t ExecuteWaitForDde = 0x100;  ///< `SEE_MASK_FLAG_DDEWAIT`
inline constexpr std::uint32_t ExecuteWithoutBox = 0x400;  ///< `SEE_MASK_FLAG_NO_UI`
inline constexpr int ShowNormal = 1;                       ///< `SW_SHOWNORMAL`
inline constexpr std::intptr_t FindExecutableFailure = 32; ///< results up to this one tell of a failure
inline constexpr std::uint32_t MaxPath = 260;              ///< `MAX_PATH`

/// `SHELLEXECUTEINFOW`, of `size` bytes. What has no field here is null: verb, parameters, owner.
struct ShellExecution
{
    std::uint32_t size = 0;
    std::uint32_t mask = 0;
    std::wstring file;
    std::wstring directory;
    int show = 0;
    Handle process = nullptr; ///< out: the started process, if one is known; the caller closes it
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

    /// `FindExecutableW` without a directory, into a buffer of `MaxPath` characters, whose text comes back in
    /// `executable` whatever the result is.
    virtual std::intptr_t findExecutable(const std::wstring& file, std::wstring& executable) = 0;
    /// `ShellExecuteExW`. False on failure.
    virtual bool execute(ShellExecution& execution) = 0;
};

} // namespace Platform
