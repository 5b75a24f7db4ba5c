#include "schedules/scheduler_parts.h"

#include <sstream>

namespace Schedules
{

namespace
{

constexpr std::size_t StepsInStory = 80;

const char* nameOf(Doing doing)
{
    switch (doing)
    {
    case Doing::Running:
        return "could run";
    case Doing::TakingLock:
        return "waits for lock";
    case Doing::Waiting:
        return "waits for condition";
    case Doing::Sleeping:
        return "sleeps";
    case Doing::Joining:
        return "waits for a thread's end";
    default:
        return "has ended";
    }
}

} // namespace

std::string Scheduler::tellStory() const
{
    std::ostringstream story;
    const auto nameAt = [this](Id id) { return std::to_string(id) + " (" + threads_[id]->name + ")"; };
    for (Id id = 0; id < threads_.size(); ++id)
    {
        const Thread& thread = *threads_[id];
        story << nameAt(id) << ' ' << nameOf(thread.doing);
        if (thread.doing == Doing::TakingLock || thread.doing == Doing::Waiting)
            story << ' ' << (thread.doing == Doing::Waiting ? thread.condition : thread.mutex);
        for (const void* const mutex : thread.held)
            story << ", holds " << mutex;
        story << '\n';
    }
    const std::size_t first = steps_.size() > StepsInStory ? steps_.size() - StepsInStory : 0;
    story << "step " << first << ":\n";
    for (std::size_t step = first; step < steps_.size(); ++step)
        story << nameAt(steps_[step].thread) << ' ' << steps_[step].what << ' ' << steps_[step].object << '\n';
    return story.str();
}

} // namespace Schedules
