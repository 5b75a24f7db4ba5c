#pragma once

#include "telemetry/i_event_tracker.h"

namespace JobRunner
{

class ProgressEventsHandler;

/// Reports the three counts of a finished job under `category`, and a cancelled one under `cancelledCategory`.
void trackJobResults(Halden::ZEL::Telemetry::IEventTracker& tracker, const wchar_t* category,
                     const wchar_t* cancelledCategory, const ProgressEventsHandler& results);

} // namespace JobRunner
