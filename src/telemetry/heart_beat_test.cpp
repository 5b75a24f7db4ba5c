#include "telemetry/testing_tracker.h"

#include "systemutilities/win32_exception.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

constexpr std::int64_t DayLength = 86'400;
constexpr std::int64_t FifthOfMay2001 = 989'020'800 + DayLength / 2;

class HeartBeat : public TrackerTest
{
protected:
    HeartBeat()
    {
        platform.threads.setTime(FifthOfMay2001);
        makeSettings();
    }

    const Calls beat{
        L"SetDimension(1, 6.13)", L"SendView(module/heart-beat, HeartBeat once a Day)",
        L"SetDimension(1, 6.13)", L"SendEvent(module/heart-beat, winzel module usage statistics, module, , -99999)",
        L"SetDimension(1, 6.13)", L"SendEvent(module/heart-beat, winzel module usage statistics, heartbeat, , -99999)"};
};

TEST_F(HeartBeat, isSentWhereNoneEverWasAndItsDayIsKept)
{
    connected().TrackHeartBeat(L"module");
    EXPECT_EQ(told(), beat);
    EXPECT_EQ(setting(L"HeartBeatDay"), 5U);
}

TEST_F(HeartBeat, isSentOnceADay)
{
    connected().TrackHeartBeat(L"module");
    platform.log.clear();
    tracker.TrackHeartBeat(L"module");
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(platform.log.callsOf(L"setValue").empty());
    platform.threads.setTime(FifthOfMay2001 + DayLength);
    tracker.TrackHeartBeat(L"module");
    EXPECT_EQ(told(), beat);
    EXPECT_EQ(setting(L"HeartBeatDay"), 6U);
}

TEST_F(HeartBeat, takesTheSameDayOfAnotherMonthAsToday)
{
    connected().TrackHeartBeat(L"module");
    platform.log.clear();
    platform.threads.setTime(FifthOfMay2001 + 31 * DayLength);
    tracker.TrackHeartBeat(L"module");
    EXPECT_TRUE(told().empty());
}

TEST_F(HeartBeat, goesOutWithUsageStatisticsDisabledWithoutSayingThatTheyAre)
{
    set(L"SendUsageStat", 0);
    connected().TrackHeartBeat(L"module");
    EXPECT_EQ(told(), beat);
    EXPECT_EQ(setting(L"HeartBeatDay"), 5U);
}

TEST_F(HeartBeat, letsTheOptOutHoldAgainBehindIt)
{
    set(L"SendUsageStat", 0);
    connected().TrackHeartBeat(L"module");
    platform.log.clear();
    EXPECT_TRUE(tracker.IsUsageStatisticsDisabled());
    tracker.TrackViewEvent(L"action", L"label", 1);
    EXPECT_TRUE(told().empty());
}

TEST_F(HeartBeat, liftsTheOptOutWhileItIsSent)
{
    set(L"SendUsageStat", 0);
    std::vector<bool> disabled;
    connected();
    platform.statistics.onCall = [&](const std::wstring&) { disabled.push_back(tracker.IsUsageStatisticsDisabled()); };
    tracker.TrackHeartBeat(L"module");
    platform.statistics.onCall = nullptr;
    EXPECT_EQ(disabled, std::vector<bool>(6, false));
}

TEST_F(HeartBeat, writesItsDayWithoutAClientToo)
{
    tracker.TrackHeartBeat(L"module");
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(setting(L"HeartBeatDay"), 5U);
}

TEST_F(HeartBeat, isSentAndThenFailsWhereItsKeyIsMissing)
{
    connected();
    settings()->DeleteKey();
    EXPECT_THROW(tracker.TrackHeartBeat(L"module"), SystemUtilities::Win32Exception);
    EXPECT_EQ(told(), beat);
    EXPECT_FALSE(settings()->Exists(false));
}

TEST_F(HeartBeat, letsTheOptOutHoldAgainWhenItCouldNotBeSent)
{
    connected();
    set(L"SendUsageStat", 0);
    platform.statistics.onCall = [](const std::wstring&) { throw std::runtime_error("the client has gone"); };
    EXPECT_THROW(tracker.TrackHeartBeat(L"module"), std::runtime_error);
    platform.statistics.onCall = nullptr;
    EXPECT_TRUE(tracker.IsUsageStatisticsDisabled());
    EXPECT_EQ(setting(L"HeartBeatDay"), NotSet);
}

} // namespace

} // namespace Halden::ZEL::Telemetry
