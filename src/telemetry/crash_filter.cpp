#include "telemetry/crash_filter.h"

#include "platform/message_box.h"
#include "platform/platform.h"
#include "telemetry/i_event_tracker.h"

namespace Halden::ZEL::Telemetry
{

namespace
{
std::wstring crashTag;
}

void InstallCrashFilter(const std::wstring& tag)
{
    // The filter can be needed from the moment of its installation on, so its tag is there before.
    crashTag = tag;
    Platform::platform().crashes.setUnhandledExceptionFilter(CrashFilter);
}

std::int32_t CrashFilter(const Platform::ExceptionRecord& exception)
{
    const EventTrackerPtr tracker = GetEventTracker();
    if (tracker)
        tracker->TrackCrash(crashTag, exception);
    Platform::platform().messageBoxes.show(L"Application has crashed!", crashTag, Platform::BoxIconExclamation);
    return Platform::ExecuteHandler;
}

} // namespace Halden::ZEL::Telemetry
