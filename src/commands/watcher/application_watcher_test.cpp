#include "commands/watcher/application_watcher.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

constexpr std::uint32_t Self = 100;
const wchar_t* const Application = L"C:\\Apps\\Editor.exe";

/// A desktop with this process, its parent and an application that runs already; everything else comes later.
class AWatcher : public testing::Test
{
protected:
    AWatcher()
    {
        platform.processes.start({10, 0, L"shell.exe", {}, {11}});
        platform.processes.start({Self, 10, L"JobRunner.exe", {}, {101}});
        platform.processes.start({50, 10, L"editor.exe", {Application}, {51, 52}});
        platform.desktop.windows[FakeDesktop::windowNumber(5)] = {51};
    }

    ApplicationWatcher& watcher()
    {
        if (!watcher_)
            watcher_.emplace();
        return *watcher_;
    }
    void snapshot(const std::wstring& executable = Application)
    {
        watcher().TakeSnapshot(Self, executable);
        platform.log.clear();
    }
    void findNew(std::uintptr_t foreground = 0)
    {
        watcher().FindNewObjects(foreground ? FakeDesktop::windowNumber(foreground) : nullptr);
        platform.log.clear();
    }
    void starts(std::uint32_t id, std::uint32_t parent) { platform.processes.start({id, parent}); }
    void at(std::int64_t time, std::function<void()> action) { platform.threads.at(time, std::move(action)); }
    void endsAt(std::int64_t time, std::uint32_t id)
    {
        at(time, [this, id] { platform.processes.end(id); });
    }
    FakeWindow& window(std::uintptr_t number) { return platform.desktop.windows[FakeDesktop::windowNumber(number)]; }
    void closesAt(std::int64_t time, std::uintptr_t number)
    {
        at(time, [this, number] { platform.desktop.windows.erase(FakeDesktop::windowNumber(number)); });
    }

    std::int64_t waitForThreadsAndWindows()
    {
        watcher().WaitForThreadsAndWindows();
        return platform.threads.elapsed();
    }
    std::int64_t waitForProcessTree()
    {
        watcher().WaitForProcessTree();
        return platform.threads.elapsed();
    }
    /// The processes that are new, as the walk of the tree opens them.
    Calls newProcesses()
    {
        platform.log.clear();
        watcher().WaitForProcessesIdle();
        return platform.log.callsOf(L"idle");
    }
    static Calls idle(const std::vector<int>& ids)
    {
        Calls calls;
        for (const int id : ids)
            calls.push_back(L"idle process " + std::to_wstring(id) + L" 10000");
        return calls;
    }

    FakePlatform platform;

private:
    std::optional<ApplicationWatcher> watcher_;
};

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

TEST_F(AWatcher, doesNotSeeThisProcessAsNewWhenNothingIsKnownFromBefore)
{
    platform.processes.failingSnapshots = Platform::SnapshotProcesses;
    snapshot();
    platform.processes.failingSnapshots = 0;
    // A process that came behind the scan and is listed as child and parent of this one.
    platform.processes.running.at(0).parent = Self;
    findNew();
    EXPECT_EQ(newProcesses(), idle({10, 50}));
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

TEST_F(AWatcher, withoutSnapshotsFollowsOnlyDescendantsOfTheTreeToo)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    snapshot();
    starts(20, Self);
    findNew();
    at(500, [this] { starts(30, Self); });
    at(600, [this] { starts(40, 20); });
    endsAt(700, 20);
    endsAt(1000, 40);
    EXPECT_EQ(waitForProcessTree(), 1000);
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

TEST_F(AWatcher, seesNewThreadsOfTheApplication)
{
    snapshot();
    platform.processes.running.back().threads.push_back(53);
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
    at(1700, [this] { platform.processes.running.back().threads.pop_back(); });
    EXPECT_EQ(waitForThreadsAndWindows(), 2000);
}

TEST_F(AWatcher, doesNotSeeNewThreadsOfOthers)
{
    snapshot();
    platform.processes.running.front().threads.push_back(12);
    findNew();
    EXPECT_FALSE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, knowsTheApplicationByItsFileNameOrByAModuleWhateverTheCase)
{
    for (const bool byName : {true, false})
    {
        FakePlatform other;
        other.processes.start(
            {50, 10, byName ? L"c:\\apps\\EDITOR.EXE" : L"x", {L"C:\\a.dll", byName ? L"" : L"c:\\APPS\\editor.exe"}});
        ApplicationWatcher watcher;
        watcher.TakeSnapshot(Self, Application);
        other.processes.running.back().threads.push_back(53);
        other.log.clear();
        watcher.FindNewObjects(nullptr);
        EXPECT_TRUE(watcher.hasNewThreadsOrWindows()) << byName;
        // The modules are looked at only where the name does not tell.
        EXPECT_EQ(other.log.callsOf(L"snapshot 8").size(), byName ? 0U : 1U);
    }
}

TEST_F(AWatcher, looksForTheWholePathOfTheApplication)
{
    snapshot(L"C:\\Apps\\Editor.ex");
    platform.processes.running.back().threads.push_back(53);
    findNew();
    EXPECT_FALSE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, withoutAnApplicationSeesNoThreads)
{
    platform.processes.running.back().file.clear();
    platform.processes.running.back().modules = {L""};
    snapshot(L"");
    platform.processes.running.back().threads.push_back(53);
    findNew();
    EXPECT_FALSE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, withoutAnApplicationSeesTheThreadOfTheWindowInFront)
{
    snapshot(L"");
    window(5).thread = 51;
    watcher().FindNewObjects(FakeDesktop::windowNumber(5));
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
    at(1100, [this] { platform.processes.running.back().threads = {53}; });
    closesAt(100, 5);
    EXPECT_EQ(waitForThreadsAndWindows(), 1500);
}

TEST_F(AWatcher, withoutSnapshotsSeesNoThreads)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    snapshot();
    platform.processes.running.back().threads.push_back(53);
    findNew();
    EXPECT_FALSE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, takesTheThreadOfTheWindowInFrontForTheOnlyNewOne)
{
    snapshot();
    platform.processes.running.back().threads.push_back(53);
    window(5).thread = 51;
    watcher().FindNewObjects(FakeDesktop::windowNumber(5));
    EXPECT_EQ(platform.log.callsOf(L"window"), (Calls{L"windowThread 5", L"windowText 5 1024"}));
    EXPECT_TRUE(platform.log.callsOf(L"snapshot 4").empty());
    // The thread of the window was there before, and is waited for; thread 53 is not.
    at(1100, [this] { platform.processes.running.back().threads = {53}; });
    closesAt(100, 5);
    EXPECT_EQ(waitForThreadsAndWindows(), 1500);
}

TEST_F(AWatcher, waitsUntilTheWindowInFrontIsGoneAndNotOnlyHidden)
{
    snapshot();
    findNew(5);
    at(100, [this] { platform.processes.running.back().threads.clear(); });
    at(200, [this] { window(5).visible = false; });
    closesAt(3100, 5);
    EXPECT_EQ(waitForThreadsAndWindows(), 3500);
}

TEST_F(AWatcher, looksAgainAtAWindowThatWasGone)
{
    // Forgotten is forgotten: a window with the same handle that comes later is another one.
    snapshot();
    findNew(5);
    closesAt(400, 5);
    at(900, [this] { window(5) = {51}; });
    at(1900, [this] { platform.processes.running.back().threads.clear(); });
    EXPECT_EQ(waitForThreadsAndWindows(), 2000);
}

TEST_F(AWatcher, seesNewVisibleWindows)
{
    window(6).visible = false;
    snapshot();
    window(7) = {51, true};
    window(8) = {51, false};
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
    closesAt(2600, 7);
    EXPECT_EQ(waitForThreadsAndWindows(), 3000);
}

TEST_F(AWatcher, takesAWindowThatWasHiddenBeforeForNew)
{
    window(6).visible = false;
    snapshot();
    window(6).visible = true;
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, takesTheWindowsOfEveryProcessForNew)
{
    snapshot();
    window(7) = {11, true};
    findNew();
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
}

TEST_F(AWatcher, dropsAHiddenWindowForGood)
{
    snapshot();
    window(7) = {51};
    findNew();
    at(900, [this] { window(7).visible = false; });
    at(1100, [this] { window(7).visible = true; });
    EXPECT_EQ(waitForThreadsAndWindows(), 1000);
}

TEST_F(AWatcher, looksAtWindowsUpToTheFirstVisibleOne)
{
    snapshot();
    window(7) = {51};
    window(8) = {51};
    findNew();
    // While the first one is there, nobody looks at the second, which may hide and come back.
    at(100, [this] { window(8).visible = false; });
    at(1600, [this] { window(8).visible = true; });
    closesAt(2100, 7);
    closesAt(4100, 8);
    EXPECT_EQ(waitForThreadsAndWindows(), 4500);
}

TEST_F(AWatcher, dropsAllHiddenWindowsUpToThatOneInOneLook)
{
    snapshot();
    window(7) = {51};
    window(8) = {51};
    findNew();
    closesAt(100, 7);
    closesAt(100, 8);
    EXPECT_EQ(waitForThreadsAndWindows(), 500);
}

TEST_F(AWatcher, waitsForAllNewThreadsTogether)
{
    snapshot();
    platform.processes.running.back().threads.insert(platform.processes.running.back().threads.end(), {53, 54});
    findNew();
    at(100, [this] { platform.processes.running.back().threads = {51, 54}; });
    // A number that is used again counts, because the set stays whole as long as one lives.
    at(600, [this] { platform.processes.running.back().threads = {51, 54, 53}; });
    at(1100, [this] { platform.processes.running.back().threads = {51, 53}; });
    at(2100, [this] { platform.processes.running.back().threads = {51}; });
    EXPECT_EQ(waitForThreadsAndWindows(), 2500);
}

TEST_F(AWatcher, looksEveryHalfSecondAndFirstAtOnce)
{
    snapshot();
    window(7) = {51};
    findNew();
    platform.desktop.windows.erase(FakeDesktop::windowNumber(7));
    EXPECT_EQ(waitForThreadsAndWindows(), 0);
    EXPECT_EQ(platform.log.calls(), (Calls{L"isVisible 7"}));
}

TEST_F(AWatcher, withoutSnapshotsWaitsForTheThreadOfTheWindowInFrontForEver)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    snapshot();
    findNew(5);
    closesAt(400, 5);
    at(500, [this] { platform.processes.running.back().threads.clear(); });
    EXPECT_THROW(waitForThreadsAndWindows(), WaitsForEver);
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

TEST_F(AWatcher, forgetsTheThreadsFromBeforeOnceThereIsAWindowInFront)
{
    snapshot();
    findNew(5);
    findNew();
    // The next look takes all threads of the application for new ones.
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

} // namespace
