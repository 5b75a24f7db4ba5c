#pragma once

#include "fakes/fake_call_log.h"
#include "platform/threads.h"

#include <atomic>
#include <functional>
#include <map>
#include <stdexcept>

namespace Fakes
{

/// Thrown by a wait that nothing would ever end.
struct WaitsForEver : std::logic_error
{
    using logic_error::logic_error;
};

/// Real threads and events under a clock of its own, which only `sleep`, `advance`, `setTime` and waits of other fakes
/// move. Logs "startThread", "sleep N", "enterMultithreadedApartment", "priority THREAD" and
/// "setPriority THREAD NUMBER", where THREAD is "current", "function" or "other".
class FakeThreads : public Platform::Threads
{
public:
    explicit FakeThreads(CallLog& log) : log_(log) {}

    void setTime(std::int64_t seconds) { now_ = seconds * 1000; }
    /// Milliseconds pass, and what is due by then happens in its order.
    void advance(std::int64_t milliseconds);
    /// While true, `start` gives null.
    void setFailing(bool failing) { failing_ = failing; }
    /// Called by each `sleep`, on its thread, after the clock has moved. Set it while no other thread sleeps.
    std::function<void(std::uint32_t milliseconds)> onSleep;

    // A timeline, for tests in which one thread alone moves the clock.

    /// Milliseconds since the clock was made.
    std::int64_t elapsed() const { return now_ - Start; }
    /// Something happens once so many milliseconds have passed since the clock was made; at once when they have.
    void at(std::int64_t milliseconds, std::function<void()> action);
    /// The clock moves until the condition holds, at most `limit` milliseconds (`WaitForever` for no limit); whether it
    /// holds. Throws `WaitsForEver` when there is no limit and nothing more is to happen.
    bool waitUntil(const std::function<bool()>& condition, std::uint32_t limit);
    /// From then on a `sleep` or wait throws `WaitsForEver`, so that a loop without an end comes to one.
    std::int64_t patience = 3'600'000;
    /// What `tickCount` shows when the clock is made.
    std::uint32_t firstTick = 5000;
    /// The priority of the calling thread, for those who ask for the right thread.
    int currentPriority = Platform::PriorityNormal;
    /// Runs when a priority cannot be set.
    std::function<void()> onPriorityFailure;

    std::unique_ptr<Platform::Thread> start(std::function<void()> procedure) override;
    std::unique_ptr<Platform::Event> createEvent() override;
    std::uint32_t currentThreadId() override;
    /// Does not wait.
    void sleep(std::uint32_t milliseconds) override;
    std::uint32_t tickCount() override { return firstTick + static_cast<std::uint32_t>(elapsed()); }
    std::int64_t time() override { return now_ / 1000; }
    void enterMultithreadedApartment() override { log_.add(L"enterMultithreadedApartment"); }
    Platform::ThreadReference currentThread() override { return &currentPriority; }
    Platform::ThreadReference currentThreadFunction() override { return &firstTick; }
    int priority(Platform::ThreadReference thread) override;
    bool setPriority(Platform::ThreadReference thread, int priority) override;

private:
    static constexpr std::int64_t Start = 1'000'000'000;

    void moveTo(std::int64_t time);
    std::wstring nameOf(Platform::ThreadReference thread);

    CallLog& log_;
    std::atomic<std::int64_t> now_{Start};
    std::atomic<bool> failing_{false};
    std::multimap<std::int64_t, std::function<void()>> due_;
};

} // namespace Fakes
