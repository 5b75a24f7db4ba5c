#pragma once

#include "telemetry/i_event_tracker.h"

namespace Halden::ZEL::Telemetry
{

/// A tracker that has no statistics client to report to: every operation returns at once and changes nothing, and
/// the current view stays empty. Safe on any thread.
class EventTracker final : public IEventTracker
{
public:
    void TrackViewState(const ViewState& state) override;
    void TrackView(const std::vector<std::wstring>& path, const std::wstring& title) override;
    void TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value) override;
    void TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                    std::int64_t value) override;
    ViewState GetViewState() override;
};

} // namespace Halden::ZEL::Telemetry
