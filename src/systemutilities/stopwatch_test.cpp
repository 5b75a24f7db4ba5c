#include "systemutilities/stopwatch.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using Halden::SystemUtilities::Stopwatch;

namespace
{

struct StopwatchTest : testing::Test
{
    void pass(std::int64_t seconds) { platform.threads.advance(seconds * 1000); }

    Fakes::FakePlatform platform;
    Stopwatch watch;
};

} // namespace

TEST_F(StopwatchTest, standsStillAtFirst)
{
    pass(10);
    EXPECT_EQ(watch.elapsed(), 0u);
}

TEST_F(StopwatchTest, countsSeconds)
{
    watch.restart();
    pass(3);
    EXPECT_EQ(watch.elapsed(), 3u);
    pass(4);
    EXPECT_EQ(watch.elapsed(), 7u);
}

TEST_F(StopwatchTest, startsAgainFromZero)
{
    watch.restart();
    pass(3);
    watch.restart();
    pass(1);
    EXPECT_EQ(watch.elapsed(), 1u);
    watch.restart();
    pass(2);
    EXPECT_EQ(watch.elapsed(), 2u);
    watch.stop();
    watch.restart();
    EXPECT_EQ(watch.elapsed(), 0u);
}

TEST_F(StopwatchTest, doesNotCountWhileStopped)
{
    watch.restart();
    pass(3);
    watch.stop();
    pass(100);
    EXPECT_EQ(watch.elapsed(), 3u);
    watch.resume();
    pass(2);
    EXPECT_EQ(watch.elapsed(), 5u);
}

TEST_F(StopwatchTest, losesNoTimeWhenARunningWatchIsResumed)
{
    watch.restart();
    pass(3);
    watch.resume();
    pass(2);
    EXPECT_EQ(watch.elapsed(), 5u);
}

TEST_F(StopwatchTest, changesNothingWhenAStoppedWatchIsStopped)
{
    watch.restart();
    pass(3);
    watch.stop();
    pass(10);
    watch.stop();
    EXPECT_EQ(watch.elapsed(), 3u);
}

TEST_F(StopwatchTest, cutsToThirtyTwoBits)
{
    watch.restart();
    pass((std::int64_t{1} << 32) + 5);
    EXPECT_EQ(watch.elapsed(), 5u);
}
