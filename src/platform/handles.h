#pragma once

#include <cstdint>

namespace Platform
{

/// A kernel object of the system. Each operation that gives one says what it gives on failure.
using Handle = void*;

/// `INVALID_HANDLE_VALUE`, which some operations give on failure and others do not.
inline const Handle InvalidHandle = reinterpret_cast<Handle>(std::intptr_t{-1});

inline constexpr std::uint32_t WaitSignalled = 0;        ///< `WAIT_OBJECT_0`
inline constexpr std::uint32_t WaitMessage = 1;          ///< `WAIT_OBJECT_0` + 1: a message has come
inline constexpr std::uint32_t WaitTimedOut = 258;       ///< `WAIT_TIMEOUT`
inline constexpr std::uint32_t WaitFailed = 0xFFFFFFFF;  ///< `WAIT_FAILED`
inline constexpr std::uint32_t WaitForever = 0xFFFFFFFF; ///< `INFINITE`, as a limit
inline constexpr std::uint32_t AllInput = 0x04FF;        ///< `QS_ALLINPUT`

inline constexpr std::uint32_t ErrorFileNotFound = 2;
inline constexpr std::uint32_t ErrorAccessDenied = 5;
inline constexpr std::uint32_t ErrorSharingViolation = 32;

/// What is done with a handle of any kind. Limits are in milliseconds. Any thread.
class Handles
{
public:
    virtual ~Handles() = default;
    /// `CloseHandle`. False when it was no handle.
    virtual bool close(Handle handle) = 0;
    /// `WaitForSingleObjectEx`. `WaitFailed` at once for what is no handle.
    virtual std::uint32_t wait(Handle handle, std::uint32_t limit, bool alertable) = 0;
    /// `MsgWaitForMultipleObjects` on one handle: ends as well, with `WaitMessage`, when a message of the kinds of
    /// `wakeMask` comes for the calling thread. `WaitFailed` at once for what is no handle.
    virtual std::uint32_t waitOrMessage(Handle handle, std::uint32_t limit, std::uint32_t wakeMask) = 0;
    /// `GetLastError` of the calling thread.
    virtual std::uint32_t lastError() = 0;
    /// `SetLastError`.
    virtual void setLastError(std::uint32_t error) = 0;
};

} // namespace Platform
