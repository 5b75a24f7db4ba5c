#include "telemetry/event_tracker.h"

#include "platform/locale.h"
#include "platform/platform.h"
#include "platform/threads.h"
#include "telemetry/exception_names.h"
#include "telemetry/settings.h"
#include "telemetry/usage_events.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

constexpr const wchar_t* Endpoint = L"https://statistics.halden.example/visitors/visitors.php";
constexpr const wchar_t* Site = L"https://statistics.halden.example/";
constexpr std::int32_t ClientKind = 1;
constexpr std::uint32_t AnyContext = 23; // CLSCTX_ALL: in-process server and handler, local and remote server

constexpr const wchar_t* SendCrashReports = L"SendCrashReports";
constexpr const wchar_t* SendUsageStat = L"SendUsageStat";
constexpr const wchar_t* HeartBeatDay = L"HeartBeatDay";
constexpr std::uint32_t Never = 0;

constexpr std::int32_t VersionDimension = 1;
constexpr std::int32_t UserFlagDimension = 5;
constexpr std::int32_t UserIdDimension = 6;

EventTrackerPtr processTracker;

/// Holds a flag up, also when what is done in between raises.
class Raised
{
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
};

std::wstring joined(const std::vector<std::wstring>& path)
{
    std::wstring text;
    for (std::size_t i = 0; i < path.size(); ++i)
        text += i == 0 ? path[i] : L'/' + path[i];
    return text;
}

std::uint32_t today()
{
    const std::int64_t now = Platform::platform().threads.time();
    return static_cast<std::uint32_t>(Platform::platform().locale.localTime(now).day);
}

/// Intended: widened with its sign, so that an address in the upper half of the memory is negative.
std::int64_t addressValue(std::uintptr_t address)
{
    return static_cast<std::intptr_t>(address);
}

} // namespace

EventTracker::EventTracker() : EventTracker(std::make_shared<ProductInformation>()) {}

EventTracker::EventTracker(std::shared_ptr<IProductInformation> product) : product_(std::move(product)) {}

EventTracker::~EventTracker()
{
    client_.reset();
    factory_.reset();
}

bool EventTracker::ConnectStatisticsClient()
{
    if (client_)
        return true;
    if (Platform::platform().statistics.createFactory(AnyContext, factory_) < 0)
        return false;
    if (factory_->createClient(ClientKind, Endpoint, Site, ApplicationTag, client_) < 0)
    {
        factory_.reset();
        return false;
    }
    if (const std::wstring user = ReadClientIdentifier(L"uid"); !user.empty())
        client_->setUserId(user);
    if (const std::wstring id = ReadClientIdentifier(L"cid"); !id.empty())
        client_->setClientId(id);
    return true;
}

/// What is held back changes nothing: a view that nobody was told of does not become the current one.
bool EventTracker::isSilent()
{
    return IsUsageStatisticsDisabled() || !client_;
}

void EventTracker::ApplyVersionDimension()
{
    client_->setDimension(VersionDimension, product_->GetVersion());
}

void EventTracker::TrackViewState(const ViewState& state)
{
    TrackView(state.path, state.title);
}

void EventTracker::TrackView(const std::vector<std::wstring>& path, const std::wstring& title)
{
    if (isSilent())
        return;
    path_ = path;
    title_ = title;
    ApplyVersionDimension();
    client_->sendView(joined(path), title);
}

void EventTracker::TrackViewEvent(const std::wstring& action, const std::wstring& label, std::int64_t value)
{
    if (isSilent())
        return;
    ApplyVersionDimension();
    client_->sendViewEvent(joined(path_), action, label, value);
}

void EventTracker::TrackEvent(const std::wstring& category, const std::wstring& action, const std::wstring& label,
                              std::int64_t value)
{
    if (isSilent())
        return;
    ApplyVersionDimension();
    client_->sendEvent(joined(path_), category, action, label, value);
}

void EventTracker::TrackCrash(const std::wstring& module, const Platform::ExceptionRecord& exception)
{
    if (IsCrashReportingDisabled())
        return;
    const Raised forced(force_);
    TrackView({module}, UsageView::CrashTitle);
    TrackViewEvent(UsageEvent::CrashModule, UsageEvent::CrashModuleLabel, NoEventValue);
    TrackViewEvent(ExceptionCodeName(exception.code), UsageEvent::CrashCodeLabel, NoEventValue);
    TrackViewEvent(UsageEvent::CrashAddress, UsageEvent::CrashAddressLabel, addressValue(exception.address));
    TrackEvent(UsageCategory::Crash, module, L"", NoEventValue);
}

void EventTracker::TrackHeartBeat(const std::wstring& module)
{
    // Intended: the day of the month alone, so that the same day of another month counts as today.
    const std::uint32_t day = today();
    if (readSetting(HeartBeatDay, Never) == day)
        return;
    {
        const Raised forced(force_);
        TrackView({module, UsageView::HeartBeat}, UsageView::HeartBeatTitle);
        TrackEvent(UsageCategory::Module, module, L"", NoEventValue);
        TrackEvent(UsageCategory::Module, UsageEvent::HeartBeat, L"", NoEventValue);
        // Intended: never sent, since nothing is disabled while the flag is up.
        if (IsUsageStatisticsDisabled())
            TrackEvent(UsageCategory::Module, UsageEvent::TelemetryDisabled, L"", NoEventValue);
    }
    writeSetting(HeartBeatDay, day);
}

Platform::StatisticsResult EventTracker::FlushEvents()
{
    return client_->flush();
}

ViewState EventTracker::GetViewState()
{
    return {title_, path_};
}

void EventTracker::SetUserId(const std::wstring& id)
{
    client_->setDimension(UserIdDimension, id);
    client_->setUserId(id);
}

void EventTracker::SetUserFlag(bool flag)
{
    client_->setDimension(UserFlagDimension, flag ? L"yes" : L"no");
}

bool EventTracker::IsCrashReportingDisabled()
{
    return readSetting(SendCrashReports, 1) == 0;
}

bool EventTracker::IsUsageStatisticsDisabled()
{
    return readSetting(SendUsageStat, 1) == 0 && !force_;
}

void EventTracker::SetCrashReportingEnabled(bool enabled)
{
    writeSetting(SendCrashReports, enabled ? 1 : 0);
}

void EventTracker::SetUsageStatisticsEnabled(bool enabled)
{
    writeSetting(SendUsageStat, enabled ? 1 : 0);
}

EventTrackerPtr CreateEventTracker()
{
    // The old tracker goes first, so that two never report at once.
    processTracker.reset();
    const auto tracker = std::make_shared<EventTracker>();
    tracker->ConnectStatisticsClient();
    processTracker = tracker;
    return processTracker;
}

EventTrackerPtr GetEventTracker()
{
    return processTracker;
}

} // namespace Halden::ZEL::Telemetry
