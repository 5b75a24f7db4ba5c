#pragma once

#include "telemetry/i_event_tracker.h"

namespace JobRunner
{

/// Loads the modules, runs the one job and unloads the modules. First thread. Gives the exit code: 0 after any run
/// that reached its end, 1 after a failure of the start-up, whose text the user has then read.
int runJobProcess(const Halden::ZEL::Telemetry::EventTrackerPtr& tracker);

} // namespace JobRunner
