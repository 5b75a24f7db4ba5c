#pragma once

#include "schedules/choices.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace Schedules
{

enum class End
{
    Complete, ///< every thread has ended
    Deadlock, ///< nobody can go on, and not all have ended
    Endless,  ///< more steps than any run should take
};

struct Outcome
{
    End end = End::Complete;
    std::size_t steps = 0;
    /// For a run that did not end: what each thread waits for, and the last steps.
    std::string story;
};

/// Runs real threads one at a time. A thread keeps the turn until it takes a lock, waits, sleeps, starts a thread or
/// waits for the end of one; there the choices say who goes on. So the same choices repeat a run exactly. What a thread
/// does between two such points is seen by the others as one step: enough for what is guarded by locks, and that all of
/// it is guarded is the thread sanitizer's to say, with threads that run freely.
///
/// The locks and condition variables of the program under test come here by themselves: see hooked_locks.cpp. Time is
/// the scheduler's own. It passes when nobody has anything to do but sleep, or when a choice lets a sleeper wake early.
class Scheduler
{
public:
    using Id = std::size_t;

    /// Runs `first` as the first thread and waits for all that come of it. The threads of a run that cannot end stay
    /// behind as they are, with everything that they use.
    static Outcome run(Choices& choices, std::function<void(Scheduler&)> first);

    /// The scheduler of the calling thread; null for a thread that runs freely.
    static Scheduler* ofThisThread();

    // Scheduled threads only.

    Id start(std::function<void()> procedure);
    void join(Id thread);
    void sleep(std::uint32_t milliseconds);
    /// Milliseconds of the scheduler's time.
    std::int64_t now() const { return now_; }
    Id thisThread() const { return running_; }
    /// For the story; a literal.
    void nameThisThread(const char* name);

    void lock(const void* mutex);
    void unlock(const void* mutex);
    void wait(const void* condition, const void* mutex);
    void notify(const void* condition, bool all);

    /// Runs whenever nobody has anything to do until time has passed. It may take no lock.
    std::function<void()> whenQuiet;

private:
    struct Thread;
    struct Step
    {
        Id thread;
        const char* what;
        const void* object;
    };

    explicit Scheduler(Choices& choices);
    ~Scheduler();

    Outcome runToTheEnd();
    void runThread(Thread& thread);
    /// Notes what the running thread does, and lets the choices say who goes on.
    void giveTurn(const char* what, const void* object);
    /// The next thread; none when nobody can go on.
    bool pick(Id& next);
    bool canGoOn(const Thread& thread) const;
    std::vector<Id> earliestSleepers() const;
    void letGo(Id thread);
    void passTo(Id next);
    void abandon(End end);
    std::string tellStory() const;

    Choices& choices_;
    std::vector<std::unique_ptr<Thread>> threads_;
    Id running_ = 0;
    std::int64_t now_ = 0;
    std::vector<Step> steps_;
    struct Signal;
    std::unique_ptr<Signal> over_;
    Outcome outcome_;
};

} // namespace Schedules
