#include "commands/watcher/testing_watcher.h"

using namespace Fakes;

namespace JobRunner
{

TEST_F(AWatcher, seesTheDescendantsOfThisProcess)
{
    snapshot();
    starts(20, Self);
    starts(30, 20);
    starts(40, 30);
    findNew();
    EXPECT_EQ(newProcesses(), idle({20, 30, 40}));
}

TEST_F(AWatcher, doesNotSeeWhatOthersStart)
{
    snapshot();
    starts(20, 10);
    starts(30, 50);
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, doesNotSeeAChildThatRanBefore)
{
    starts(20, Self);
    snapshot();
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, doesNotSeeTheChildOfAChildThatRanBefore)
{
    starts(20, Self);
    snapshot();
    starts(30, 20);
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, doesNotSeeThisProcessAsNew)
{
    platform.processes.end(Self);
    snapshot();
    // Not among those that ran before, and a child of its own; still it is not new.
    starts(Self, Self);
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, takesUpAGrandchildOnlyBehindItsParentInTheList)
{
    snapshot();
    starts(30, 20);
    starts(20, Self);
    findNew();
    EXPECT_EQ(newProcesses(), idle({20}));
}

TEST_F(AWatcher, seesNoProcessWithoutASnapshotOfTheFirstScan)
{
    platform.processes.failingSnapshots = Platform::SnapshotProcesses;
    snapshot();
    platform.processes.failingSnapshots = 0;
    starts(20, Self);
    findNew();
    // Nothing is known from before, and still only descendants count.
    EXPECT_EQ(newProcesses(), idle({20}));
}

TEST_F(AWatcher, withoutSnapshotsSeesChildrenFromTheProcessList)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    snapshot();
    starts(20, Self);
    starts(30, 20);
    starts(40, 10);
    findNew();
    EXPECT_EQ(newProcesses(), idle({20, 30}));
}

TEST_F(AWatcher, withoutSnapshotsKnowsFromBeforeOnlyWhatHasNoParentAndItsDescendants)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    // No ancestor of it is without a parent, so the first list does not hold it.
    starts(20, Self);
    platform.processes.end(10);
    snapshot();
    findNew();
    EXPECT_EQ(newProcesses(), idle({20}));
}

TEST_F(AWatcher, withoutSnapshotsDoesNotSeeAChildThatRanBefore)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    starts(20, Self);
    snapshot();
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses());
}

TEST_F(AWatcher, withoutSnapshotsDoesNotLeaveOutThisProcess)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    platform.processes.end(10);
    snapshot();
    platform.processes.end(Self);
    starts(Self, Self);
    findNew();
    EXPECT_EQ(newProcesses(), idle({static_cast<int>(Self)}));
}

TEST_F(AWatcher, beginsAnewWithEachSnapshot)
{
    starts(20, Self);
    platform.processes.running[2].threads.push_back(53);
    window(7) = {51};
    snapshot();
    starts(30, Self);
    platform.processes.running[2].threads.push_back(54);
    window(8) = {51};
    findNew();
    EXPECT_TRUE(watcher().hasNewProcesses() && watcher().hasNewThreadsOrWindows());
    platform.processes.end(20);
    platform.processes.running[2].threads = {51, 52, 54};
    platform.desktop.windows.erase(FakeDesktop::windowNumber(7));

    snapshot(L""); // the application stays the one that was given last
    EXPECT_FALSE(watcher().hasNewProcesses() || watcher().hasNewThreadsOrWindows());
    findNew();
    EXPECT_FALSE(watcher().hasNewProcesses() || watcher().hasNewThreadsOrWindows());
    // What was there before the first snapshot, and not before the second, is new.
    starts(20, Self);
    findNew();
    EXPECT_EQ(newProcesses(), idle({20}));
    platform.processes.running[2].threads.push_back(53);
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
    platform.processes.running[2].threads = {51, 52, 54};
    findNew();
    EXPECT_FALSE(watcher().hasNewThreadsOrWindows());
    window(7) = {51};
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, takesItsSnapshotInOrder)
{
    watcher().TakeSnapshot(Self, Application);
    const Calls calls = platform.log.callsOf(L"snapshot");
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(calls[0], L"snapshot 2 0");
    EXPECT_EQ(calls[1], L"snapshot 2 0");
    EXPECT_EQ(calls.back(), L"snapshot 4 0");
    EXPECT_EQ(platform.log.calls().back(), L"isVisible 5");
    EXPECT_TRUE(platform.handles.open().empty());
}

} // namespace JobRunner
