#pragma once

#include "watcher/scenarios.h"

namespace Benchmarks
{

/// Those that every system can play.
inline const std::vector<Scenario> CommonScenarios = {
    {"Held for 4 s, then only runs on", L"hold 4000 --stay 1500", "released"},
    {"Held for 4 s beside another file, until the process ends", L"hold 4000 --stay 1500", "ends", false},
    {"Held for 0.3 s, then the process ends", L"hold 300", "ends"},
    {"Held for 1 s, until the process ends", L"hold 1000 --stay 1500", "ends"},
    {"Only read, until the process ends", L"read 2000", "released"},
    {"Handed on by a launcher, until the last process ends", L"launch 1000 read 2000", "released"},
    {"Saved by renaming", L"save 2000", "released"},
    {"Crash of the application that holds it", L"crash 4000", "released"},
    {"Nothing to be seen", L"silent", "released"},
};

} // namespace Benchmarks
