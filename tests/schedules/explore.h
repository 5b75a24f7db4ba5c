#pragma once

#include "schedules/choices.h"

#include <functional>
#include <optional>
#include <string>

namespace Schedules
{

/// Runs one schedule and tells what was wrong; empty when nothing was.
using Scenario = std::function<std::string(Choices&)>;

struct Exploration
{
    std::size_t schedules = 0;
    /// Every schedule within this bound was run.
    std::optional<unsigned> completeWithin;
    /// What was wrong, with what repeats it; the exploration ends there.
    std::string failure;
};

/// "5 schedules, all of those within a bound of 1", as a line.
std::string toldOf(const Exploration& exploration);

/// Every schedule of a scenario within the bound, or as many of them as the time allows.
Exploration exploreAll(const Scenario& scenario, unsigned bound, Counted counted, double seconds);

/// Random schedules, one for each seed, which makes the scenario as well.
Exploration exploreSeeds(const std::function<std::string(unsigned seed)>& run, double seconds);

/// The seconds that `variable` gives an exploration, or else `usual`.
double secondsFor(const char* variable, double usual);

} // namespace Schedules
