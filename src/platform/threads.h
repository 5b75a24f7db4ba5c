#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace Platform
{

/// A thread that was started. Destroying it closes the handle and does not wait (`CloseHandle`).
class Thread
{
public:
    virtual ~Thread() = default;
    /// `WaitForSingleObject` with `INFINITE`.
    virtual void wait() = 0;
};

/// A manual-reset event, not signalled at first (`CreateEventW`). Safe on any thread.
class Event
{
public:
    virtual ~Event() = default;
    virtual void set() = 0;
    virtual void reset() = 0;
    /// Waits without limit.
    virtual void wait() = 0;
};

/// A thread in the calls about priorities.
using ThreadReference = void*;

inline constexpr int PriorityNormal = 0;
inline constexpr int PriorityHighest = 2;
inline constexpr int PriorityErrorReturn = 0x7FFFFFFF; ///< `THREAD_PRIORITY_ERROR_RETURN`

/// Threads, events and time. Safe on any thread.
class Threads
{
public:
    virtual ~Threads() = default;
    /// `CreateThread`. Null when the system has no thread left.
    virtual std::unique_ptr<Thread> start(std::function<void()> procedure) = 0;
    virtual std::unique_ptr<Event> createEvent() = 0;
    /// `GetCurrentThreadId`. Never 0.
    virtual std::uint32_t currentThreadId() = 0;
    /// `Sleep`.
    virtual void sleep(std::uint32_t milliseconds) = 0;
    /// `GetTickCount`: milliseconds of a clock that begins again at 0 after 49.7 days.
    virtual std::uint32_t tickCount() = 0;
    /// `_time64`: seconds of wall-clock time.
    virtual std::int64_t time() = 0;
    /// `CoInitializeEx`(NULL, 0) for the calling thread. Nothing where the system has no COM.
    virtual void enterMultithreadedApartment() = 0;

    /// `GetCurrentThread`: stands for the calling thread, and is not closed.
    virtual ThreadReference currentThread() = 0;
    /// The address of the function `GetCurrentThread`, which is no thread. Null where there is no such function.
    virtual ThreadReference currentThreadFunction() = 0;
    /// `GetThreadPriority`: `PriorityErrorReturn` for what is no thread.
    virtual int priority(ThreadReference thread) = 0;
    /// `SetThreadPriority`. False for what is no thread or no priority, and where priorities cannot be set.
    virtual bool setPriority(ThreadReference thread, int priority) = 0;
};

} // namespace Platform
