#include "telemetry/event_tracker.h"

#include <gtest/gtest.h>

using namespace Halden::ZEL::Telemetry;

namespace
{
/// Asked before any test runs, when nothing has made a tracker yet.
const EventTrackerPtr atStart = GetEventTracker();
} // namespace

TEST(ATracker, isNotThereBeforeItIsCreated)
{
    EXPECT_EQ(atStart, nullptr);
}

TEST(ATracker, isTheOneThatWasCreatedLast)
{
    const EventTrackerPtr tracker = CreateEventTracker();
    ASSERT_NE(tracker, nullptr);
    EXPECT_EQ(GetEventTracker(), tracker);
    EXPECT_EQ(GetEventTracker(), tracker);
}

TEST(ATracker, isNeverReusedAndLivesOnOnlyInTheCopiesOfOthers)
{
    const EventTrackerPtr first = CreateEventTracker();
    const EventTrackerPtr second = CreateEventTracker();
    EXPECT_NE(first, second);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(GetEventTracker(), second);
}

TEST(ATracker, thatNobodyHoldsDiesWhenItsSuccessorIsMade)
{
    const std::weak_ptr<IEventTracker> first = CreateEventTracker();
    CreateEventTracker();
    EXPECT_TRUE(first.expired());
}

TEST(ATrackerWithoutAClient, keepsNoViewBecauseNobodyWasToldOfIt)
{
    EventTracker tracker;
    tracker.TrackView({L"jobrunner", L"wipe"}, L"Wipe Thread (JobRunner)");
    EXPECT_TRUE(tracker.GetViewState().path.empty());
    EXPECT_TRUE(tracker.GetViewState().title.empty());
    tracker.TrackViewState({L"Title", {L"jobrunner"}});
    EXPECT_TRUE(tracker.GetViewState().path.empty());
    EXPECT_TRUE(tracker.GetViewState().title.empty());
}

TEST(ATrackerWithoutAClient, takesEventsWithoutEffect)
{
    EventTracker tracker;
    EXPECT_NO_THROW(tracker.TrackViewEvent(L"start_module", L"", NoEventValue));
    EXPECT_NO_THROW(tracker.TrackEvent(L"category", L"action", L"label", 0));
    EXPECT_TRUE(tracker.GetViewState().path.empty());
}

TEST(NoEventValue, isNotAValueThatACountCanHave)
{
    EXPECT_EQ(NoEventValue, -99999);
}
