#include "schedules/explore.h"

#include <chrono>
#include <cstdlib>

namespace Schedules
{

namespace
{

class Deadline
{
public:
    explicit Deadline(double seconds) : end_(Clock::now() + std::chrono::duration<double>(seconds)) {}
    bool passed() const { return Clock::now() >= end_; }

private:
    using Clock = std::chrono::steady_clock;
    std::chrono::time_point<Clock, std::chrono::duration<double>> end_;
};

const char* valueOf(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && *value ? value : nullptr;
}

} // namespace

double secondsFor(const char* variable, double usual)
{
    const char* const value = valueOf(variable);
    return value ? std::atof(value) : usual;
}

Exploration exploreAll(const Scenario& scenario, unsigned bound, Counted counted, double seconds)
{
    Exploration exploration;
    if (const char* const told = valueOf("JOBRUNNER_SCHEDULE"))
    {
        ToldChoices choices(told);
        exploration.schedules = 1;
        exploration.failure = scenario(choices);
        return exploration;
    }
    const Deadline deadline(seconds);
    // The lower bounds first, so that a short time still goes over all of a run and not over its end alone.
    for (unsigned within = 0; within <= bound && exploration.failure.empty() && !deadline.passed(); ++within)
    {
        AllChoices choices(within, counted);
        bool left = true;
        while (left && exploration.failure.empty() && !deadline.passed())
        {
            ++exploration.schedules;
            const std::string wrong = scenario(choices);
            if (!wrong.empty())
                exploration.failure = "JOBRUNNER_SCHEDULE=\"" + choices.text() + "\"\n" + wrong;
            left = choices.next();
        }
        if (!left)
            exploration.completeWithin = within;
    }
    return exploration;
}

std::string toldOf(const Exploration& exploration)
{
    std::string told = std::to_string(exploration.schedules) + " schedules";
    if (exploration.completeWithin)
        told += ", all of those within a bound of " + std::to_string(*exploration.completeWithin);
    return told + '\n';
}

Exploration exploreSeeds(const std::function<std::string(unsigned seed)>& run, double seconds)
{
    Exploration exploration;
    const char* const told = valueOf("JOBRUNNER_SCHEDULE_SEED");
    const unsigned first = told ? static_cast<unsigned>(std::strtoul(told, nullptr, 10)) : 1;
    const Deadline deadline(told ? 0 : seconds);
    unsigned seed = first;
    do
    {
        ++exploration.schedules;
        const std::string wrong = run(seed);
        if (!wrong.empty())
            exploration.failure = "JOBRUNNER_SCHEDULE_SEED=" + std::to_string(seed) + '\n' + wrong;
        ++seed;
    } while (exploration.failure.empty() && !deadline.passed());
    return exploration;
}

} // namespace Schedules
