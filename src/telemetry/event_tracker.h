#pragma once

#include "telemetry/i_event_tracker.h"
#include "telemetry/product_information.h"

namespace Halden::ZEL::Telemetry
{

/// Keeps the current view and hands everything to the statistics client. Without a client it changes nothing.
class EventTracker final : public IEventTracker
{
public:
    EventTracker();
    explicit EventTracker(std::shared_ptr<IProductInformation> product);
    ~EventTracker() override;
    EventTracker(const EventTracker&) = delete;
    EventTracker& operator=(const EventTracker&) = delete;

    /// Makes the client, unless there is one. False when there is none afterwards.
    bool ConnectStatisticsClient();

    void TrackViewState(const ViewState& state) override;
    void TrackView(const std::vector<std::wstring>& path, const std::wstring& title) override;
    void TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value) override;
    void TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                    std::int64_t value) override;
    void TrackCrash(const std::wstring& module, const Platform::ExceptionRecord& exception) override;
    void TrackHeartBeat(const std::wstring& module) override;
    Platform::StatisticsResult FlushEvents() override;
    ViewState GetViewState() override;
    void SetUserId(const std::wstring& id) override;
    void SetUserFlag(bool flag) override;
    bool IsCrashReportingDisabled() override;
    bool IsUsageStatisticsDisabled() override;
    void SetCrashReportingEnabled(bool enabled) override;
    void SetUsageStatisticsEnabled(bool enabled) override;

private:
    bool isSilent();
    void ApplyVersionDimension();

    std::shared_ptr<IProductInformation> product_;
    std::unique_ptr<Platform::StatisticsFactory> factory_;
    std::unique_ptr<Platform::StatisticsClient> client_;
    std::vector<std::wstring> path_;
    std::wstring title_;
    bool force_ = false; ///< while true, disabled usage statistics are sent all the same
};

} // namespace Halden::ZEL::Telemetry
