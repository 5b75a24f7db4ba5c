#pragma once

#include "telemetry/i_event_tracker.h"
#include "telemetry/usage_events.h"

namespace Schedules
{

/// Keeps what a job reports of its end. Without a lock, as the tracker that ships.
class StagedTracker final : public Halden::ZEL::Telemetry::IEventTracker
{
public:
    bool cancelled() const { return cancelled_; }
    /// Processed and failed ones.
    const std::vector<std::int64_t>& fileCounts() const { return fileCounts_; }

    void TrackEvent(const std::wstring&, const std::wstring& action, const std::wstring&, std::int64_t value) override
    {
        namespace UsageEvent = Halden::ZEL::Telemetry::UsageEvent;
        if (action == UsageEvent::ProcessedFileCount || action == UsageEvent::FailedFileCount)
            fileCounts_.push_back(value);
        if (action == UsageEvent::Cancelled)
            cancelled_ = true;
    }

    void TrackViewState(const Halden::ZEL::Telemetry::ViewState&) override {}
    void TrackView(const std::vector<std::wstring>&, const std::wstring&) override {}
    void TrackViewEvent(const std::wstring&, const std::wstring&, std::int64_t) override {}
    void TrackCrash(const std::wstring&, const Platform::ExceptionRecord&) override {}
    void TrackHeartBeat(const std::wstring&) override {}
    Platform::StatisticsResult FlushEvents() override { return 0; }
    Halden::ZEL::Telemetry::ViewState GetViewState() override { return {}; }
    void SetUserId(const std::wstring&) override {}
    void SetUserFlag(bool) override {}
    bool IsCrashReportingDisabled() override { return false; }
    bool IsUsageStatisticsDisabled() override { return false; }
    void SetCrashReportingEnabled(bool) override {}
    void SetUsageStatisticsEnabled(bool) override {}

private:
    bool cancelled_ = false;
    std::vector<std::int64_t> fileCounts_;
};

} // namespace Schedules
