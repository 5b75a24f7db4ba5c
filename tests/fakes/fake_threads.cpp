#include "fakes/fake_threads.h"

#include "platform/platform.h"

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

void FakeThreads::sleep(std::uint32_t milliseconds)
{
    log_.add(L"sleep " + std::to_wstring(milliseconds));
    advance(milliseconds);
    if (onSleep)
        onSleep(milliseconds);
    // A loop that waits for another thread by sleeping lets it run.
    std::this_thread::yield();
}

} // namespace Fakes
