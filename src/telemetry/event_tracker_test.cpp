#include "telemetry/testing_tracker.h"

#include "telemetry/usage_events.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

/// A product of another version each time that it is asked.
class NewerProduct final : public IProductInformation
{
public:
    std::wstring GetVersion() override { return L"7." + std::to_wstring(asked_++); }

private:
    int asked_ = 0;
};

TEST_F(TrackerTest, sendsAViewUnderItsJoinedPathWithTheVersionAhead)
{
    connected().TrackView({L"jobrunner", L"dblclk", L"decrypt"}, L"Decrypt (DblClk in JobRunner)");
    EXPECT_EQ(told(),
              (Calls{L"SetDimension(1, 6.13)", L"SendView(jobrunner/dblclk/decrypt, Decrypt (DblClk in JobRunner))"}));
}

TEST_F(TrackerTest, joinsOneSegmentWithoutASlash)
{
    connected().TrackView({L"jobrunner"}, L"JobRunner.exe");
    EXPECT_EQ(told().back(), L"SendView(jobrunner, JobRunner.exe)");
}

TEST_F(TrackerTest, joinsSegmentsAsTheyAreEmptyOnesToo)
{
    connected().TrackView({L"", L"a/b", L""}, L"");
    EXPECT_EQ(told().back(), L"SendView(/a/b/, )");
}

TEST_F(TrackerTest, sendsEventsUnderTheCurrentViewWithTheVersionAheadOfEach)
{
    connected().TrackView({L"jobrunner", L"wipe"}, L"Wipe Thread (JobRunner)");
    platform.log.clear();
    tracker.TrackViewEvent(L"user_cancelled", L"label", 5);
    tracker.TrackEvent(L"category", L"action", L"label", -6);
    EXPECT_EQ(told(), (Calls{L"SetDimension(1, 6.13)", L"SendViewEvent(jobrunner/wipe, user_cancelled, label, 5)",
                             L"SetDimension(1, 6.13)", L"SendEvent(jobrunner/wipe, category, action, label, -6)"}));
}

TEST_F(TrackerTest, sendsEventsUnderAnEmptyPathBeforeTheFirstView)
{
    connected().TrackViewEvent(L"a", L"b", 1);
    tracker.TrackEvent(L"c", L"a", L"b", 1);
    EXPECT_EQ(told().at(1), L"SendViewEvent(, a, b, 1)");
    EXPECT_EQ(told().at(3), L"SendEvent(, c, a, b, 1)");
}

TEST_F(TrackerTest, handsTheValueOfNoneToTheClientAsItStands)
{
    connected().TrackEvent(L"c", L"a", L"", NoEventValue);
    tracker.TrackViewEvent(L"a", L"", NoEventValue);
    EXPECT_EQ(told().at(1), L"SendEvent(, c, a, , -99999)");
    EXPECT_EQ(told().at(3), L"SendViewEvent(, a, , -99999)");
}

TEST_F(TrackerTest, handsOnNumbersOf64BitsAndAZeroAsAValue)
{
    connected().TrackEvent(L"c", L"a", L"", 0x7FFFFFFFFFFFFFFF);
    tracker.TrackEvent(L"c", L"a", L"", 0);
    EXPECT_EQ(told().at(1), L"SendEvent(, c, a, , 9223372036854775807)");
    EXPECT_EQ(told().at(3), L"SendEvent(, c, a, , 0)");
}

TEST_F(TrackerTest, goesBackToAViewBySendingItAgain)
{
    connected().TrackView({L"jobrunner", L"encryption"}, L"Encryption Thread (JobRunner)");
    const ViewState before = tracker.GetViewState();
    tracker.TrackView({L"jobrunner", L"encryption", L"passwordwnd"}, L"Enter Password Window");
    platform.log.clear();
    tracker.TrackViewState(before);
    EXPECT_EQ(told(),
              (Calls{L"SetDimension(1, 6.13)", L"SendView(jobrunner/encryption, Encryption Thread (JobRunner))"}));
    EXPECT_EQ(tracker.GetViewState().path, before.path);
    EXPECT_EQ(tracker.GetViewState().title, L"Encryption Thread (JobRunner)");
}

TEST_F(TrackerTest, keepsTheViewWithItsSegmentsApart)
{
    connected().TrackView({L"a/b", L"c"}, L"title");
    EXPECT_EQ(tracker.GetViewState().path, (std::vector<std::wstring>{L"a/b", L"c"}));
    EXPECT_EQ(tracker.GetViewState().title, L"title");
}

TEST_F(TrackerTest, asksTheProductForItsVersionEachTime)
{
    EventTracker newer(std::make_shared<NewerProduct>());
    ASSERT_TRUE(newer.ConnectStatisticsClient());
    platform.log.clear();
    newer.TrackView({}, L"");
    newer.TrackViewEvent(L"", L"", 0);
    newer.TrackEvent(L"", L"", L"", 0);
    EXPECT_EQ(platform.log.callsOf(L"statistics.SetDimension"),
              (Calls{L"statistics.SetDimension(1, 7.0)", L"statistics.SetDimension(1, 7.1)",
                     L"statistics.SetDimension(1, 7.2)"}));
}

TEST_F(TrackerTest, goesOnAfterAnyFailureOfTheClient)
{
    platform.statistics.clientResult = Fakes::FakeStatistics::Failure;
    connected().TrackView({L"jobrunner"}, L"title");
    tracker.TrackViewEvent(L"action", L"label", 1);
    tracker.TrackEvent(L"category", L"action", L"label", 1);
    EXPECT_EQ(told().size(), 6U);
    EXPECT_EQ(tracker.GetViewState().title, L"title");
}

TEST_F(TrackerTest, marksTheUserInDimensionsOfTheirOwn)
{
    connected().SetUserId(L"someone");
    tracker.SetUserFlag(true);
    tracker.SetUserFlag(false);
    EXPECT_EQ(told(), (Calls{L"SetDimension(6, someone)", L"SetUserId(someone)", L"SetDimension(5, yes)",
                             L"SetDimension(5, no)"}));
}

TEST_F(TrackerTest, asksForTheDeliveryAndGivesTheClientsAnswer)
{
    platform.statistics.results[L"Flush"] = -17;
    EXPECT_EQ(connected().FlushEvents(), -17);
    EXPECT_EQ(told(), Calls{L"Flush()"});
}

TEST_F(TrackerTest, takesEventsWithoutEffectWhenThereIsNoClient)
{
    tracker.TrackView({L"jobrunner"}, L"title");
    tracker.TrackViewState({L"title", {L"jobrunner"}});
    tracker.TrackViewEvent(L"start_module", L"", NoEventValue);
    tracker.TrackEvent(L"category", L"action", L"label", 0);
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(tracker.GetViewState().path.empty());
    EXPECT_TRUE(tracker.GetViewState().title.empty());
}

TEST(NoEventValue, isNotAValueThatACountCanHave)
{
    EXPECT_EQ(NoEventValue, -99999);
}

} // namespace

} // namespace Halden::ZEL::Telemetry
