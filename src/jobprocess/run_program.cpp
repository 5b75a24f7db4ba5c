#include "jobprocess/program.h"
#include "platform/platform.h"
#include "platform/threads.h"
#include "telemetry/crash_filter.h"
#include "telemetry/usage_events.h"

int runProgram(void*)
{
    namespace Telemetry = Halden::ZEL::Telemetry;
    Platform::platform().threads.enterMultithreadedApartment();
    const Telemetry::EventTrackerPtr tracker = Telemetry::CreateEventTracker();
    Telemetry::InstallCrashFilter(Telemetry::ProcessTag);
    return JobRunner::runJobProcess(tracker);
}
