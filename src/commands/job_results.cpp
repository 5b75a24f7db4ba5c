#include "commands/job_results.h"

#include "bridges/progress_events_handler.h"
#include "telemetry/usage_events.h"

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

void trackJobResults(IEventTracker& tracker, const wchar_t* category, const wchar_t* cancelledCategory,
                     const ProgressEventsHandler& results)
{
    // Whole mebibytes, rounded down.
    const auto megabytes = static_cast<std::int64_t>(results.processedBytes() >> 20);
    tracker.TrackEvent(category, UsageEvent::ProcessedFileCount, L"", results.processedFiles());
    tracker.TrackEvent(category, UsageEvent::FailedFileCount, L"", results.failedFiles());
    tracker.TrackEvent(category, UsageEvent::ProcessedTotalSizeMb, L"", megabytes);
    if (results.isCancelled())
        tracker.TrackEvent(cancelledCategory, UsageEvent::Cancelled, L"", NoEventValue);
}

} // namespace JobRunner
