#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Halden::ZEL::Telemetry
{

/// The value of an event that carries no number.
inline constexpr std::int64_t NoEventValue = -99999;

/// Title and path segments of the tracker's current view.
struct ViewState
{
    std::wstring title;
    std::vector<std::wstring> path;
};

/// The one telemetry object of the process. It has no lock and no thread; a failure of its operations stays
/// silent and never fails a job.
class IEventTracker
{
public:
    virtual ~IEventTracker() = default;
    /// The same as `TrackView` with the state's path and title.
    virtual void TrackViewState(const ViewState& state) = 0;
    /// Makes this the current view and reports it. `path` holds the segments, outermost first.
    virtual void TrackView(const std::vector<std::wstring>& path, const std::wstring& title) = 0;
    /// An event inside the current view.
    virtual void TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value) = 0;
    /// An event with a category of its own.
    virtual void TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                            std::int64_t value) = 0;
    virtual ViewState GetViewState() = 0;
};

using EventTrackerPtr = std::shared_ptr<IEventTracker>;

/// Replaces the process-wide tracker by a new one and gives a copy of the pointer. First thread only.
EventTrackerPtr CreateEventTracker();
/// A copy of the process-wide pointer, possibly empty.
EventTrackerPtr GetEventTracker();

} // namespace Halden::ZEL::Telemetry
