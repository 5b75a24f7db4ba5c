#include "jobprocess/program.h"
#include "platform/platform.h"
#include "platform/threads.h"

int runProgram(void*)
{
    Platform::platform().threads.enterMultithreadedApartment();
    return JobRunner::runJobProcess(Halden::ZEL::Telemetry::CreateEventTracker());
}
