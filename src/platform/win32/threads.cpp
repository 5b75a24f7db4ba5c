#include "platform/win32/concerns.h"
#include "platform/win32/scoped_handle.h"

#include <windows.h>

#include <objbase.h>

namespace Platform
{

namespace
{

using Procedure = std::function<void()>;

class Win32Thread : public Thread
{
public:
    explicit Win32Thread(ScopedHandle handle) : handle_(std::move(handle)) {}
    void wait() override { WaitForSingleObject(handle_.get(), INFINITE); }

private:
    ScopedHandle handle_;
};

class Win32Event : public Event
{
public:
    void set() override { SetEvent(handle_.get()); }
    void reset() override { ResetEvent(handle_.get()); }
    void wait() override { WaitForSingleObject(handle_.get(), INFINITE); }

private:
    ScopedHandle handle_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

DWORD WINAPI threadProcedure(void* argument)
{
    const std::unique_ptr<Procedure> procedure(static_cast<Procedure*>(argument));
    (*procedure)();
    return 0;
}

/// The system's own clock: the C library's costs many times as much, and every report of progress asks for the time.
std::int64_t secondsSince1970()
{
    constexpr std::int64_t TicksPerSecond = 10'000'000;
    constexpr std::int64_t SecondsFrom1601To1970 = 11'644'473'600;
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    const ULARGE_INTEGER ticks{{time.dwLowDateTime, time.dwHighDateTime}};
    return static_cast<std::int64_t>(ticks.QuadPart) / TicksPerSecond - SecondsFrom1601To1970;
}

class Win32Threads : public Threads
{
public:
    std::unique_ptr<Thread> start(Procedure procedure) override
    {
        auto argument = std::make_unique<Procedure>(std::move(procedure));
        ScopedHandle handle(CreateThread(nullptr, 0, threadProcedure, argument.get(), 0, nullptr));
        if (!handle)
            return nullptr;
        static_cast<void>(argument.release()); // the thread owns it now
        return std::make_unique<Win32Thread>(std::move(handle));
    }

    std::unique_ptr<Event> createEvent() override { return std::make_unique<Win32Event>(); }
    std::uint32_t currentThreadId() override { return GetCurrentThreadId(); }
    void sleep(std::uint32_t milliseconds) override { Sleep(milliseconds); }
    std::uint32_t tickCount() override { return GetTickCount(); }
    std::int64_t time() override { return secondsSince1970(); }
    // Intended: the result is not looked at, and whoever enters here never leaves.
    void enterMultithreadedApartment() override { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }

    ThreadReference currentThread() override { return GetCurrentThread(); }
    ThreadReference currentThreadFunction() override { return reinterpret_cast<ThreadReference>(&GetCurrentThread); }
    int priority(ThreadReference thread) override { return GetThreadPriority(thread); }
    bool setPriority(ThreadReference thread, int priority) override { return SetThreadPriority(thread, priority); }
};

static_assert(COINIT_MULTITHREADED == 0);
static_assert(PriorityHighest == THREAD_PRIORITY_HIGHEST && PriorityErrorReturn == THREAD_PRIORITY_ERROR_RETURN);

} // namespace

Threads& win32Threads()
{
    static Win32Threads threads;
    return threads;
}

} // namespace Platform
