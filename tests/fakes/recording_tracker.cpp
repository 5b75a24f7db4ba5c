#include "fakes/recording_tracker.h"

namespace Fakes
{

using namespace Halden::ZEL::Telemetry;

namespace
{

std::wstring valueText(std::int64_t value)
{
    return value == NoEventValue ? L"none" : std::to_wstring(value);
}

std::wstring joined(const std::vector<std::wstring>& path)
{
    std::wstring text;
    for (const std::wstring& segment : path)
        text += text.empty() ? segment : L"/" + segment;
    return text;
}

} // namespace

void RecordingTracker::TrackViewState(const ViewState& state)
{
    TrackView(state.path, state.title);
}

void RecordingTracker::TrackView(const std::vector<std::wstring>& path, const std::wstring& title)
{
    {
        const std::lock_guard guard(lock_);
        view_ = {title, path};
    }
    log_->add(L"TrackView(" + joined(path) + L", " + title + L")");
}

void RecordingTracker::TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value)
{
    log_->add(L"TrackViewEvent(" + action + L", " + label + L", " + valueText(value) + L")");
}

void RecordingTracker::TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                                  std::int64_t value)
{
    log_->add(L"TrackEvent(" + category + L", " + action + L", " + label + L", " + valueText(value) + L")");
}

void RecordingTracker::TrackCrash(const std::wstring& module, const Platform::ExceptionRecord& exception)
{
    log_->add(L"TrackCrash(" + module + L", " + std::to_wstring(exception.code) + L")");
}

void RecordingTracker::TrackHeartBeat(const std::wstring& module)
{
    log_->add(L"TrackHeartBeat(" + module + L")");
}

ViewState RecordingTracker::GetViewState()
{
    const std::lock_guard guard(lock_);
    return view_;
}

} // namespace Fakes
