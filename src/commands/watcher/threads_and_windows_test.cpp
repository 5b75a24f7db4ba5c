#include "commands/watcher/testing_watcher.h"

using namespace Fakes;

namespace JobRunner
{

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

TEST_F(AWatcher, seesTheNewThreadsOfEachProcessOfTheApplication)
{
    // One that is known by its module, one by its name, and one behind both.
    platform.processes.start({60, 10, Application, {}, {61}});
    platform.processes.start({70, 10, L"editor.exe", {Application}, {71}});
    for (const std::size_t process : {2U, 3U, 4U})
    {
        snapshot();
        platform.processes.running[process].threads.push_back(90);
        findNew();
        EXPECT_TRUE(watcher().hasNewThreadsOrWindows()) << process;
        platform.processes.running[process].threads.pop_back();
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

TEST_F(AWatcher, forgetsTheThreadsFromBeforeOnceThereIsAWindowInFront)
{
    snapshot();
    findNew(5);
    findNew();
    // The next look takes all threads of the application for new ones.
    EXPECT_TRUE(watcher().hasNewThreadsOrWindows());
}

} // namespace JobRunner
