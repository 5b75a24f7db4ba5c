#include "fakes/fake_threads.h"

#include "platform/handles.h"
#include "platform/platform.h"

#include <algorithm>
#include <thread>

namespace Fakes
{

std::unique_ptr<Platform::Thread> FakeThreads::start(std::function<void()> procedure)
{
    log_.add(L"startThread");
    return failing_ ? nullptr : Platform::nativeSystem().threads.start(std::move(procedure));
}

std::unique_ptr<Platform::Event> FakeThreads::createEvent()
{
    return Platform::nativeSystem().threads.createEvent();
}

std::uint32_t FakeThreads::currentThreadId()
{
    return Platform::nativeSystem().threads.currentThreadId();
}

void FakeThreads::at(std::int64_t milliseconds, std::function<void()> action)
{
    if (milliseconds <= elapsed())
        return action();
    due_.emplace(Start + milliseconds, std::move(action));
}

void FakeThreads::advance(std::int64_t milliseconds)
{
    if (due_.empty())
        now_ += milliseconds; // several threads may do so
    else
        moveTo(now_ + milliseconds);
}

void FakeThreads::moveTo(std::int64_t time)
{
    while (!due_.empty() && due_.begin()->first <= time)
    {
        const auto [when, action] = *due_.begin();
        due_.erase(due_.begin());
        now_ = std::max<std::int64_t>(now_, when);
        action();
    }
    now_ = time;
}

bool FakeThreads::waitUntil(const std::function<bool()>& condition, std::uint32_t limit)
{
    const std::int64_t end = now_ + limit;
    if (elapsed() > patience)
        throw WaitsForEver("a wait that is repeated and repeated");
    while (!condition())
    {
        const bool endless = limit == Platform::WaitForever;
        if (endless && due_.empty())
            throw WaitsForEver("a wait without a limit");
        const bool somethingComes = !due_.empty() && (endless || due_.begin()->first <= end);
        if (!somethingComes)
        {
            now_ = end;
            return false;
        }
        moveTo(std::max<std::int64_t>(now_, due_.begin()->first));
    }
    return true;
}

std::wstring FakeThreads::nameOf(Platform::ThreadReference thread)
{
    if (thread == currentThread())
        return L"current";
    return thread == currentThreadFunction() ? L"function" : L"other";
}

int FakeThreads::priority(Platform::ThreadReference thread)
{
    log_.add(L"priority " + nameOf(thread));
    return thread == currentThread() ? currentPriority : Platform::PriorityErrorReturn;
}

bool FakeThreads::setPriority(Platform::ThreadReference thread, int priority)
{
    log_.add(L"setPriority " + nameOf(thread) + L' ' + std::to_wstring(priority));
    if (thread != currentThread() || priority == Platform::PriorityErrorReturn)
    {
        if (onPriorityFailure)
            onPriorityFailure();
        return false;
    }
    currentPriority = priority;
    return true;
}

void FakeThreads::sleep(std::uint32_t milliseconds)
{
    log_.add(L"sleep " + std::to_wstring(milliseconds));
    if (elapsed() > patience)
        throw WaitsForEver("a sleep that is repeated and repeated");
    advance(milliseconds);
    if (onSleep)
        onSleep(milliseconds);
    // A loop that waits for another thread by sleeping lets it run.
    std::this_thread::yield();
}

} // namespace Fakes
