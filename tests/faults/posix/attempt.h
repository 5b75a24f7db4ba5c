#pragma once

#include "posix/scenarios.h"

#include <gtest/gtest.h>
#include <string>

namespace Faults
{

/// Runs of a scenario in a place of its own, each from the same state on.
class Attempts
{
public:
    explicit Attempts(const Scenario& scenario) : scenario_(scenario) {}

    const Scenario& scenario() const { return scenario_; }
    /// The calls of a run that nothing disturbs; it has to do all of its work.
    std::vector<std::string> callsOfCleanRun() { return cleanRun().calls; }
    Ended cleanRun();
    /// One disturbed run, and behind it an undisturbed one of the same job; what both leave is judged. The first one
    /// has to end with `code`.
    Ended disturb(const Trapping& trapping, int code, char answer = 's',
                  std::optional<std::chrono::microseconds> killedAfter = std::nullopt);
    /// Of the last disturbed run.
    const Files& between() const { return between_; }

private:
    void judge(const Ended& ended, const std::string& what);
    void runAgain(const std::string& what);

    const Scenario& scenario_;
    const Workplace place_;
    Files between_;
};

inline constexpr int Killed = 128 + 9;

} // namespace Faults
