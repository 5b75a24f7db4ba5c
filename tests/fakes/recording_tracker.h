#pragma once

#include "fakes/fake_call_log.h"
#include "telemetry/i_event_tracker.h"

#include <mutex>

namespace Fakes
{

/// A tracker that writes down what it is told, as "TrackView(jobrunner/wipe, Title)",
/// "TrackViewEvent(action, label, none)", "TrackEvent(category, action, label, 5)", "TrackCrash(module, code)" and
/// "TrackHeartBeat(module)", and keeps the current view. It has no settings: everything is on.
/// Safe on any thread.
class RecordingTracker : public Halden::ZEL::Telemetry::IEventTracker
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
    void TrackCrash(const std::wstring& module, const Platform::ExceptionRecord& exception) override;
    void TrackHeartBeat(const std::wstring& module) override;
    Platform::StatisticsResult FlushEvents() override { return 0; }
    Halden::ZEL::Telemetry::ViewState GetViewState() override;
    void SetUserId(const std::wstring&) override {}
    void SetUserFlag(bool) override {}
    bool IsCrashReportingDisabled() override { return false; }
    bool IsUsageStatisticsDisabled() override { return false; }
    void SetCrashReportingEnabled(bool) override {}
    void SetUsageStatisticsEnabled(bool) override {}

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
