#include "schedules/scheduler.h"

#include "schedules/scheduler_parts.h"

#include <algorithm>

namespace Schedules
{

namespace
{

constexpr std::size_t MostSteps = 50'000;

thread_local Scheduler* schedulerOfThisThread = nullptr;

} // namespace

Scheduler::Scheduler(Choices& choices) : choices_(choices), over_(std::make_unique<Signal>()) {}

Scheduler::~Scheduler() = default;

Scheduler* Scheduler::ofThisThread()
{
    return schedulerOfThisThread;
}

Outcome Scheduler::run(Choices& choices, std::function<void(Scheduler&)> first)
{
    auto* const scheduler = new Scheduler(choices);
    scheduler->threads_.push_back(std::make_unique<Thread>());
    scheduler->threads_[0]->procedure = [scheduler, first = std::move(first)] { first(*scheduler); };
    Outcome outcome = scheduler->runToTheEnd();
    // The threads of a run without an end still stand on it.
    if (outcome.end == End::Complete)
        delete scheduler;
    return outcome;
}

Outcome Scheduler::runToTheEnd()
{
    Thread& first = *threads_[0];
    first.system = std::thread([this, &first] { runThread(first); });
    first.turn.give();
    over_->await();
    for (const auto& thread : threads_)
        outcome_.end == End::Complete ? thread->system.join() : thread->system.detach();
    outcome_.steps = steps_.size();
    return outcome_;
}

void Scheduler::runThread(Thread& thread)
{
    thread.turn.await();
    schedulerOfThisThread = this;
    thread.procedure();
    thread.procedure = nullptr;
    thread.doing = Doing::Nothing;
    schedulerOfThisThread = nullptr;
    giveTurn("ends", nullptr);
}

Scheduler::Id Scheduler::start(std::function<void()> procedure)
{
    const Id id = threads_.size();
    threads_.push_back(std::make_unique<Thread>());
    Thread& thread = *threads_.back();
    thread.procedure = std::move(procedure);
    thread.system = std::thread([this, &thread] { runThread(thread); });
    giveTurn("starts a thread", nullptr);
    return id;
}

void Scheduler::join(Id thread)
{
    threads_[running_]->doing = Doing::Joining;
    threads_[running_]->joined = thread;
    giveTurn("joins", nullptr);
}

void Scheduler::sleep(std::uint32_t milliseconds)
{
    threads_[running_]->doing = Doing::Sleeping;
    threads_[running_]->wakesAt = now_ + milliseconds;
    giveTurn("sleeps", nullptr);
}

void Scheduler::nameThisThread(const char* name)
{
    threads_[running_]->name = name;
}

void Scheduler::lock(const void* mutex)
{
    threads_[running_]->doing = Doing::TakingLock;
    threads_[running_]->mutex = mutex;
    giveTurn("locks", mutex);
}

void Scheduler::unlock(const void* mutex)
{
    std::erase(threads_[running_]->held, mutex);
}

void Scheduler::wait(const void* condition, const void* mutex)
{
    Thread& thread = *threads_[running_];
    unlock(mutex);
    thread.doing = Doing::Waiting;
    thread.condition = condition;
    thread.mutex = mutex;
    giveTurn("waits", condition);
}

void Scheduler::notify(const void* condition, bool all)
{
    for (const auto& thread : threads_)
    {
        if (thread->doing != Doing::Waiting || thread->condition != condition)
            continue;
        thread->doing = Doing::TakingLock;
        if (!all)
            return;
    }
}

void Scheduler::giveTurn(const char* what, const void* object)
{
    const Id me = running_;
    steps_.push_back({me, what, object});
    Id next = me;
    if (steps_.size() > MostSteps)
        return abandon(End::Endless);
    if (!pick(next))
    {
        const bool allEnded = std::all_of(threads_.begin(), threads_.end(),
                                          [](const auto& thread) { return thread->doing == Doing::Nothing; });
        return allEnded ? over_->give() : abandon(End::Deadlock);
    }
    letGo(next);
    if (next != me)
        passTo(next);
}

void Scheduler::passTo(Id next)
{
    Thread& me = *threads_[running_];
    const bool ended = me.doing == Doing::Nothing;
    running_ = next;
    threads_[next]->turn.give();
    if (!ended)
        me.turn.await();
}

bool Scheduler::canGoOn(const Thread& thread) const
{
    switch (thread.doing)
    {
    case Doing::Running:
        return true;
    case Doing::TakingLock:
        return std::none_of(
            threads_.begin(), threads_.end(),
            [&](const auto& other)
            { return std::find(other->held.begin(), other->held.end(), thread.mutex) != other->held.end(); });
    case Doing::Joining:
        return threads_[thread.joined]->doing == Doing::Nothing;
    default:
        return false;
    }
}

std::vector<Scheduler::Id> Scheduler::earliestSleepers() const
{
    std::vector<Id> earliest;
    for (Id id = 0; id < threads_.size(); ++id)
    {
        if (threads_[id]->doing != Doing::Sleeping)
            continue;
        if (!earliest.empty() && threads_[id]->wakesAt < threads_[earliest[0]]->wakesAt)
            earliest.clear();
        if (earliest.empty() || threads_[id]->wakesAt == threads_[earliest[0]]->wakesAt)
            earliest.push_back(id);
    }
    return earliest;
}

bool Scheduler::pick(Id& next)
{
    std::vector<Id> options;
    for (Id distance = 0; distance < threads_.size(); ++distance)
    {
        const Id id = (running_ + distance) % threads_.size();
        if (canGoOn(*threads_[id]))
            options.push_back(id);
    }
    const bool quiet = options.empty();
    const bool interrupts = !quiet && options[0] == running_;
    std::vector<bool> preempts(options.size(), interrupts);
    if (quiet && whenQuiet)
        whenQuiet();
    for (const Id id : earliestSleepers())
    {
        options.push_back(id);
        preempts.push_back(!quiet);
    }
    if (options.empty())
        return false;
    preempts[0] = false;
    next = options[options.size() > 1 ? choices_.choose(preempts) : 0];
    return true;
}

void Scheduler::letGo(Id id)
{
    Thread& thread = *threads_[id];
    if (thread.doing == Doing::Sleeping)
    {
        now_ = std::max(now_, thread.wakesAt);
        for (const auto& other : threads_)
            if (other->doing == Doing::Sleeping && other->wakesAt <= now_)
                other->doing = Doing::Running;
    }
    if (thread.doing == Doing::TakingLock)
        thread.held.push_back(thread.mutex);
    thread.doing = Doing::Running;
}

void Scheduler::abandon(End end)
{
    outcome_.end = end;
    outcome_.story = tellStory();
    over_->give();
    Signal never;
    never.await();
}

} // namespace Schedules
