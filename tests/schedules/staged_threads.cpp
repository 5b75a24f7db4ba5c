#include "schedules/staged_threads.h"

#include "platform/platform.h"
#include "schedules/scheduler.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace Schedules
{

namespace
{

constexpr std::int64_t StartOfTime = 1'000'000'000; // milliseconds

class ScheduledThread final : public Platform::Thread
{
public:
    ScheduledThread(Scheduler& scheduler, Scheduler::Id id) : scheduler_(scheduler), id_(id) {}
    void wait() override { scheduler_.join(id_); }

private:
    Scheduler& scheduler_;
    const Scheduler::Id id_;
};

Platform::Threads& realThreads()
{
    return Platform::nativeSystem().threads;
}

} // namespace

void nameThisThread(const char* name)
{
    if (Scheduler* const scheduler = Scheduler::ofThisThread())
        scheduler->nameThisThread(name);
}

std::unique_ptr<Platform::Thread> StagedThreads::start(std::function<void()> procedure)
{
    Scheduler* const scheduler = Scheduler::ofThisThread();
    if (!scheduler)
        return realThreads().start(std::move(procedure));
    const Scheduler::Id id = scheduler->start(std::move(procedure));
    return std::make_unique<ScheduledThread>(*scheduler, id);
}

std::unique_ptr<Platform::Event> StagedThreads::createEvent()
{
    return realThreads().createEvent();
}

std::uint32_t StagedThreads::currentThreadId()
{
    return realThreads().currentThreadId();
}

void StagedThreads::sleep(std::uint32_t milliseconds)
{
    if (Scheduler* const scheduler = Scheduler::ofThisThread())
        scheduler->sleep(milliseconds);
    else
        std::this_thread::sleep_for(std::chrono::microseconds(std::min<std::uint32_t>(milliseconds, 1000)));
}

std::uint32_t StagedThreads::tickCount()
{
    Scheduler* const scheduler = Scheduler::ofThisThread();
    return scheduler ? static_cast<std::uint32_t>(scheduler->now()) : realThreads().tickCount();
}

std::int64_t StagedThreads::time()
{
    Scheduler* const scheduler = Scheduler::ofThisThread();
    return scheduler ? (StartOfTime + scheduler->now()) / 1000 : realThreads().time();
}

} // namespace Schedules
