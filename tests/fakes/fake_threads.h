#pragma once

#include "fakes/fake_call_log.h"
#include "platform/threads.h"

#include <atomic>
#include <functional>

namespace Fakes
{

/// Real threads and events under a clock of its own, which only `sleep`, `advance` and `setTime` move. Logs
/// "startThread", "sleep N" and "enterMultithreadedApartment".
class FakeThreads : public Platform::Threads
{
public:
    explicit FakeThreads(CallLog& log) : log_(log) {}

    void setTime(std::int64_t seconds) { now_ = seconds * 1000; }
    void advance(std::int64_t milliseconds) { now_ += milliseconds; }
    /// While true, `start` gives null.
    void setFailing(bool failing) { failing_ = failing; }
    /// Called by each `sleep`, on its thread, after the clock has moved. Set it while no other thread sleeps.
    std::function<void(std::uint32_t milliseconds)> onSleep;

    std::unique_ptr<Platform::Thread> start(std::function<void()> procedure) override;
    std::unique_ptr<Platform::Event> createEvent() override;
    std::uint32_t currentThreadId() override;
    /// Does not wait.
    void sleep(std::uint32_t milliseconds) override;
    std::int64_t time() override { return now_ / 1000; }
    void enterMultithreadedApartment() override { log_.add(L"enterMultithreadedApartment"); }

private:
    CallLog& log_;
    std::atomic<std::int64_t> now_{1'000'000'000};
    std::atomic<bool> failing_{false};
};

} // namespace Fakes
