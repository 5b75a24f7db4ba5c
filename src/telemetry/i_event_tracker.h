#pragma once

#include "platform/crashes.h"
#include "platform/statistics.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Halden::ZEL::Telemetry
{

/// The value of an event that carries no number. It goes to the client as it stands; the client knows its meaning.
inline constexpr std::int64_t NoEventValue = -99999;

/// Title and path segments of the tracker's current view.
struct ViewState
{
    std::wstring title;
    std::vector<std::wstring> path;
};

/// The one telemetry object of the process. It has no lock and no thread: a view that one thread has set is what an
/// event of another one carries. That something is not sent stays silent and never fails a job. An error while the
/// user's choice is read, other than that there is none, is a `Win32Exception` of the operation.
class IEventTracker
{
public:
    virtual ~IEventTracker() = default;

    // Without effect while usage statistics are disabled or there is no client.

    /// The same as `TrackView` with the state's path and title. Intended: going back to a view reports it once more.
    virtual void TrackViewState(const ViewState& state) = 0;
    /// Makes this the current view and reports it. `path` holds the segments, outermost first.
    virtual void TrackView(const std::vector<std::wstring>& path, const std::wstring& title) = 0;
    /// An event inside the current view.
    virtual void TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value) = 0;
    /// An event with a category of its own.
    virtual void TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                            std::int64_t value) = 0;

    /// Reports a crash, whether or not usage statistics are disabled. Nothing when crash reports are.
    virtual void TrackCrash(const std::wstring& module, const Platform::ExceptionRecord& exception) = 0;
    /// Reports once a day that the module is alive, whether or not usage statistics are disabled.
    virtual void TrackHeartBeat(const std::wstring& module) = 0;
    /// Asks the client to deliver what it holds. There has to be a client.
    virtual Platform::StatisticsResult FlushEvents() = 0;

    /// A copy of the current view.
    virtual ViewState GetViewState() = 0;

    /// Stamps what is sent from now on. There has to be a client.
    virtual void SetUserId(const std::wstring& id) = 0;
    virtual void SetUserFlag(bool flag) = 0;

    // The user's choices. Each is read and written at once; nothing is kept.

    virtual bool IsCrashReportingDisabled() = 0;
    /// False while a crash or a heart-beat is reported.
    virtual bool IsUsageStatisticsDisabled() = 0;
    virtual void SetCrashReportingEnabled(bool enabled) = 0;
    virtual void SetUsageStatisticsEnabled(bool enabled) = 0;
};

using EventTrackerPtr = std::shared_ptr<IEventTracker>;

/// Replaces the process-wide tracker by a new one and gives a copy of the pointer. First thread only.
EventTrackerPtr CreateEventTracker();
/// A copy of the process-wide pointer, possibly empty.
EventTrackerPtr GetEventTracker();

} // namespace Halden::ZEL::Telemetry
