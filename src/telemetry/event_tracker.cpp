#include "telemetry/event_tracker.h"

namespace Halden::ZEL::Telemetry
{

namespace
{
EventTrackerPtr processTracker;
}

void EventTracker::TrackViewState(const ViewState& state)
{
    TrackView(state.path, state.title);
}

// A view that nobody was told of does not become the current one.
void EventTracker::TrackView(const std::vector<std::wstring>&, const std::wstring&) {}

void EventTracker::TrackViewEvent(const std::wstring&, const std::wstring&, std::int64_t) {}

void EventTracker::TrackEvent(const std::wstring&, const std::wstring&, const std::wstring&, std::int64_t) {}

ViewState EventTracker::GetViewState()
{
    return {};
}

EventTrackerPtr CreateEventTracker()
{
    // The old tracker goes first, so that two never report at once.
    processTracker.reset();
    processTracker = std::make_shared<EventTracker>();
    return processTracker;
}

EventTrackerPtr GetEventTracker()
{
    return processTracker;
}

} // namespace Halden::ZEL::Telemetry
