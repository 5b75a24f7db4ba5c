#include "jobprocess/program.h"

#include "interfaces/process/exception.h"
#include "jobprocess/main_thread.h"
#include "jobprocess/platform_session.h"
#include "platform/message_box.h"
#include "platform/platform.h"
#include "platform/threads.h"
#include "telemetry/usage_events.h"

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

int runJobProcess(const EventTrackerPtr& tracker)
{
    // Intended: outside of the guard. Nothing is shown of a failure up to here; the crash filter has it.
    tracker->TrackView({ProcessTag}, ProcessTitle);
    tracker->TrackViewEvent(UsageEvent::StartModule, L"", NoEventValue);
    try
    {
        PlatformSession session;
        if (!session.start())
            throw Exception{L"Cannot initialize ZelPlatform/VaultCore"};
        {
            MainThread mainThread(tracker);
            mainThread.run();
        }
        session.end();
        return 0;
    }
    catch (const Exception& failure)
    {
        tracker->TrackViewEvent(UsageEvent::Error, failure.text, NoEventValue);
        // Intended: fatal messages carry the information icon.
        Platform::platform().messageBoxes.show(failure.text, L"Job Runner",
                                               Platform::BoxOk | Platform::BoxIconInformation);
        return 1;
    }
}

} // namespace JobRunner
