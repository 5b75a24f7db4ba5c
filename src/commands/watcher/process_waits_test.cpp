#include "commands/watcher/testing_watcher.h"

using namespace Fakes;

namespace JobRunner
{

TEST_F(AWatcher, givesEachNewProcessTenSecondsToComeUp)
{
    snapshot();
    starts(20, Self);
    starts(30, Self);
    platform.processes.busyUntil[20] = 4000;
    platform.processes.busyUntil[30] = 60000;
    findNew();
    watcher().WaitForProcessesIdle();
    EXPECT_EQ(platform.threads.elapsed(), 14000);
    // A process that came up is opened a second time, one that did not is not.
    EXPECT_EQ(platform.log.calls(), (Calls{L"open process 20 1049600", L"idle process 20 10000", L"close process 20",
                                           L"open process 20 1049600", L"close process 20", L"open process 30 1049600",
                                           L"idle process 30 10000", L"close process 30"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(AWatcher, goesOnWhenAProcessCannotBeOpened)
{
    snapshot();
    starts(20, Self);
    starts(30, Self);
    findNew();
    platform.processes.unopened = {{20, Platform::InvalidHandle}, {30, nullptr}};
    watcher().WaitForProcessesIdle();
    // Null is not what is looked for, so the wait is tried on it.
    EXPECT_EQ(platform.log.calls(), (Calls{L"open process 20 1049600", L"open process 30 1049600", L"idle null 10000",
                                           L"close null", L"open process 30 1049600", L"close null"}));
}

TEST_F(AWatcher, waitsForOneProcessAfterTheOther)
{
    snapshot();
    starts(20, Self);
    starts(30, Self);
    endsAt(5000, 20);
    endsAt(3000, 30);
    findNew();
    watcher().WaitForProcesses();
    EXPECT_EQ(platform.threads.elapsed(), 5000);
    EXPECT_EQ(platform.log.calls(),
              (Calls{L"open process 20 1049600", L"waitOrMessage process 20 infinite 1279", L"close process 20",
                     L"open process 30 1049600", L"waitOrMessage null infinite 1279", L"close null"}));
    EXPECT_TRUE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, doesNotFollowDescendantsWhenItWaitsForProcesses)
{
    snapshot();
    starts(20, Self);
    at(1000, [this] { starts(30, 20); });
    endsAt(5000, 20);
    findNew();
    watcher().WaitForProcesses();
    EXPECT_EQ(platform.threads.elapsed(), 5000);
}

TEST_F(AWatcher, leavesOutAProcessWithTheInvalidHandleWhenItWaitsForProcesses)
{
    snapshot();
    starts(20, Self);
    findNew();
    platform.processes.unopened[20] = Platform::InvalidHandle;
    watcher().WaitForProcesses();
    EXPECT_EQ(platform.log.calls(), (Calls{L"open process 20 1049600"}));
}

TEST_F(AWatcher, asksTheTreeInRoundsOfFiftyMillisecondsAProcess)
{
    snapshot();
    starts(20, Self);
    starts(30, Self);
    endsAt(120, 20);
    endsAt(130, 30);
    findNew();
    EXPECT_EQ(waitForProcessTree(), 130);
    EXPECT_EQ(platform.log.callsOf(L"waitOrMessage"),
              (Calls{L"waitOrMessage process 20 50 1279", L"waitOrMessage process 30 50 1279",
                     L"waitOrMessage process 20 50 1279", L"waitOrMessage process 30 50 1279"}));
}

TEST_F(AWatcher, followsALauncherToWhatItHasStarted)
{
    snapshot();
    starts(20, Self);
    findNew();
    at(500, [this] { starts(30, 20); });
    endsAt(700, 20);
    at(800, [this] { starts(40, 30); });
    endsAt(900, 30);
    endsAt(9000, 40);
    EXPECT_EQ(waitForProcessTree(), 9000);
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, followsOnlyDescendantsOfTheTree)
{
    snapshot();
    starts(20, Self);
    findNew();
    // A second child of this process is no descendant of the first one.
    at(500, [this] { starts(30, Self); });
    endsAt(700, 20);
    EXPECT_EQ(waitForProcessTree(), 700);
    EXPECT_TRUE(platform.processes.runs(30));
}

TEST_F(AWatcher, doesNotFollowToAProcessThatRanBefore)
{
    platform.processes.start({60, 20});
    snapshot();
    starts(20, Self);
    findNew();
    endsAt(700, 20);
    EXPECT_EQ(waitForProcessTree(), 700);
}

TEST_F(AWatcher, leavesTheHandleOfAnEndedMemberOfTheTreeOpen)
{
    snapshot();
    starts(20, Self);
    endsAt(120, 20);
    findNew();
    waitForProcessTree();
    EXPECT_EQ(platform.handles.open(), (Calls{L"process 20"}));
    EXPECT_EQ(platform.log.callsOf(L"close process"), (Calls{L"close process 20", L"close process 20"}));
}

TEST_F(AWatcher, takesAProcessOfTheTreeThatCannotBeOpenedForEnded)
{
    snapshot();
    starts(20, Self);
    starts(30, 20);
    findNew();
    platform.processes.end(20);
    at(400, [this] { starts(40, 20); });
    endsAt(300, 30);
    // 20 is gone before the first look; its child of that moment is in the set already.
    EXPECT_EQ(waitForProcessTree(), 300);
    EXPECT_EQ(platform.log.callsOf(L"waitOrMessage").front(), L"waitOrMessage null 50 1279");
}

TEST_F(AWatcher, dropsAProcessOfTheTreeWithTheInvalidHandleWithoutALookAtItsChildren)
{
    snapshot();
    starts(20, Self);
    findNew();
    starts(30, 20);
    platform.processes.unopened[20] = Platform::InvalidHandle;
    EXPECT_EQ(waitForProcessTree(), 0);
    EXPECT_TRUE(platform.log.callsOf(L"snapshot").empty());
}

TEST_F(AWatcher, beginsTheWalkOfTheTreeAnewWhenAMemberHasGone)
{
    snapshot();
    starts(20, Self);
    starts(30, Self);
    starts(40, Self);
    endsAt(60, 30);
    endsAt(500, 20);
    endsAt(500, 40);
    findNew();
    waitForProcessTree();
    const Calls waits = platform.log.callsOf(L"waitOrMessage");
    EXPECT_EQ(Calls(waits.begin(), waits.begin() + 4),
              (Calls{L"waitOrMessage process 20 50 1279", L"waitOrMessage process 30 50 1279",
                     L"waitOrMessage process 20 50 1279", L"waitOrMessage process 40 50 1279"}));
}

TEST_F(AWatcher, withoutSnapshotsFollowsOnlyDescendantsOfTheTree)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    snapshot();
    starts(20, Self);
    findNew();
    at(500, [this] { starts(30, Self); });
    at(600, [this] { starts(40, 20); });
    endsAt(700, 20);
    endsAt(5000, 40);
    EXPECT_EQ(waitForProcessTree(), 5000);
    EXPECT_TRUE(platform.processes.runs(30));
}

} // namespace JobRunner
