#pragma once

#include "fakes/fake_call_log.h"
#include "telemetry/i_event_tracker.h"

#include <mutex>

namespace Fakes
{

/// A tracker that writes down what it is told, as "TrackView(jobrunner/wipe, Title)",
/// "TrackViewEvent(action, label, none)" and "TrackEvent(category, action, label, 5)", and keeps the current view.
/// Safe on any thread.
class RecordingTracker final : public Halden::ZEL::Telemetry::IEventTracker
{
public:
    RecordingTracker() = default;
    /// Writes into a log of the test, which is not owned.
    explicit RecordingTracker(CallLog& log) : log_(&log) {}
    RecordingTracker(const RecordingTracker&) = delete;
    RecordingTracker& operator=(const RecordingTracker&) = delete;

    void TrackViewState(const Halden::ZEL::Telemetry::ViewState& state) override;
    void TrackView(const std::vector<std::wstring>& path, const std::wstring& title) override;
    void TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value) override;
    void TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                    std::int64_t value) override;
    Halden::ZEL::Telemetry::ViewState GetViewState() override;

    /// What was tracked, in order.
    std::vector<std::wstring> calls() const { return log_->callsOf(L"Track"); }
    void clear() { log_->clear(); }

private:
    CallLog ownLog_;
    CallLog* log_ = &ownLog_;
    std::mutex lock_;
    Halden::ZEL::Telemetry::ViewState view_;
};

} // namespace Fakes
