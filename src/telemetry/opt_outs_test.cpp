#include "telemetry/testing_tracker.h"

#include "systemutilities/win32_exception.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

using SystemUtilities::Win32Exception;

class OptOuts : public TrackerTest
{
protected:
    void trackAll()
    {
        tracker.TrackView({L"jobrunner"}, L"title");
        tracker.TrackViewState({L"title", {L"jobrunner"}});
        tracker.TrackViewEvent(L"action", L"label", 1);
        tracker.TrackEvent(L"category", L"action", L"label", 1);
    }
};

TEST_F(OptOuts, leaveBothKindsOfReportsOnWhereNothingIsStored)
{
    EXPECT_FALSE(tracker.IsCrashReportingDisabled());
    EXPECT_FALSE(tracker.IsUsageStatisticsDisabled());
    makeSettings();
    EXPECT_FALSE(tracker.IsCrashReportingDisabled());
    EXPECT_FALSE(tracker.IsUsageStatisticsDisabled());
}

TEST_F(OptOuts, switchOffWithZeroAlone)
{
    for (const std::uint32_t value : {0U, 1U, 2U, 0xFFFFFFFFU})
    {
        set(L"SendCrashReports", value);
        set(L"SendUsageStat", value);
        EXPECT_EQ(tracker.IsCrashReportingDisabled(), value == 0) << value;
        EXPECT_EQ(tracker.IsUsageStatisticsDisabled(), value == 0) << value;
    }
}

TEST_F(OptOuts, areEachForThemselves)
{
    set(L"SendUsageStat", 0);
    EXPECT_FALSE(tracker.IsCrashReportingDisabled());
    set(L"SendUsageStat", 1);
    set(L"SendCrashReports", 0);
    EXPECT_FALSE(tracker.IsUsageStatisticsDisabled());
}

TEST_F(OptOuts, holdBackAllUsageAndLeaveTheView)
{
    connected().TrackView({L"jobrunner", L"wipe"}, L"before");
    set(L"SendUsageStat", 0);
    platform.log.clear();
    trackAll();
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(tracker.GetViewState().title, L"before");
    EXPECT_EQ(tracker.GetViewState().path, (std::vector<std::wstring>{L"jobrunner", L"wipe"}));
}

TEST_F(OptOuts, takeEffectWithTheNextOperation)
{
    connected();
    set(L"SendUsageStat", 0);
    trackAll();
    set(L"SendUsageStat", 1);
    tracker.TrackViewEvent(L"action", L"label", 1);
    EXPECT_EQ(told(), (Calls{L"SetDimension(1, 6.13)", L"SendViewEvent(, action, label, 1)"}));
}

TEST_F(OptOuts, areReadOnceForEachOperation)
{
    makeSettings();
    connected();
    tracker.TrackView({L"jobrunner"}, L"title");
    EXPECT_EQ(platform.log.callsOf(L"queryValue").size(), 1U);
    tracker.TrackEvent(L"category", L"action", L"label", 1);
    EXPECT_EQ(platform.log.callsOf(L"queryValue").size(), 2U);
}

TEST_F(OptOuts, areWrittenAsOneOrZero)
{
    makeSettings();
    tracker.SetCrashReportingEnabled(false);
    tracker.SetUsageStatisticsEnabled(true);
    EXPECT_EQ(setting(L"SendCrashReports"), 0U);
    EXPECT_EQ(setting(L"SendUsageStat"), 1U);
    EXPECT_TRUE(tracker.IsCrashReportingDisabled());
    tracker.SetCrashReportingEnabled(true);
    tracker.SetUsageStatisticsEnabled(false);
    EXPECT_EQ(setting(L"SendCrashReports"), 1U);
    EXPECT_EQ(setting(L"SendUsageStat"), 0U);
    EXPECT_TRUE(tracker.IsUsageStatisticsDisabled());
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
    ASSERT_TRUE(settings()->GetRawValue(L"SendCrashReports", type, data));
    EXPECT_EQ(type, Platform::ValueDword);
    EXPECT_EQ(data, (std::vector<std::uint8_t>{1, 0, 0, 0}));
}

TEST_F(OptOuts, cannotBeWrittenWithoutTheirKey)
{
    try
    {
        tracker.SetUsageStatisticsEnabled(false);
        ADD_FAILURE() << "it was written";
    }
    catch (const Win32Exception& failure)
    {
        EXPECT_TRUE(std::string(failure.what()).starts_with("RegOpenKey failed.")) << failure.what();
        EXPECT_EQ(failure.code().value(), 2);
    }
    EXPECT_THROW(tracker.SetCrashReportingEnabled(true), Win32Exception);
    EXPECT_FALSE(settings()->Exists(false));
}

TEST_F(OptOuts, leaveNoKeyOpen)
{
    set(L"SendUsageStat", 1);
    connected();
    trackAll();
    tracker.SetUsageStatisticsEnabled(true);
    EXPECT_EQ(platform.registry.openHandles(), 0U);
}

TEST_F(OptOuts, thatCannotBeReadRaiseWhateverIsTracked)
{
    connected();
    platform.registry.fail(L"openKey", Platform::ErrorAccessDenied);
    EXPECT_THROW(tracker.TrackView({L"jobrunner"}, L"title"), Win32Exception);
    EXPECT_THROW(tracker.TrackViewEvent(L"action", L"", 0), Win32Exception);
    EXPECT_THROW(tracker.TrackEvent(L"category", L"action", L"", 0), Win32Exception);
    EXPECT_THROW(tracker.TrackCrash(L"jobrunner", {}), Win32Exception);
    EXPECT_THROW(tracker.TrackHeartBeat(L"jobrunner"), Win32Exception);
    EXPECT_THROW(EventTracker().TrackView({}, L""), Win32Exception) << "without a client they are asked first, too";
    EXPECT_TRUE(told().empty());
}

TEST_F(OptOuts, ofAnotherTypeCountByTheirFirstBytes)
{
    makeSettings();
    settings()->SetRawValue(L"SendUsageStat", Platform::ValueBinary, {0, 0, 0, 0});
    EXPECT_TRUE(tracker.IsUsageStatisticsDisabled());
    settings()->SetRawValue(L"SendUsageStat", Platform::ValueBinary, {1});
    EXPECT_FALSE(tracker.IsUsageStatisticsDisabled());
    settings()->SetString(L"SendUsageStat", L"0 and more");
    EXPECT_THROW(tracker.IsUsageStatisticsDisabled(), Win32Exception);
}

} // namespace

} // namespace Halden::ZEL::Telemetry
