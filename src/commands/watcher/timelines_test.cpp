#include "commands/watcher/open_document.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <algorithm>

// What an application does with its document, and when the watcher says that it is over: one row for each way. Times
// are milliseconds since the shell has accepted the document.

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

constexpr std::uint32_t Self = 100;
const wchar_t* const Document = L"C:\\Docs\\report.txt";
const wchar_t* const Application = L"C:\\Apps\\editor.exe";

// --- The words of the table ------------------------------------------------------------------------------------------

struct Happening
{
    std::int64_t time;
    std::function<void(FakePlatform&)> action;
};

Happening starts(std::int64_t time, std::uint32_t id, std::uint32_t parent)
{
    return {time, [=](FakePlatform& world) { world.processes.start({id, parent, L"new.exe"}); }};
}

Happening ends(std::int64_t time, std::uint32_t id)
{
    return {time, [=](FakePlatform& world) { world.processes.end(id); }};
}

Happening isIdle(std::int64_t time, std::uint32_t id)
{
    return {0, [=](FakePlatform& world) { world.processes.busyUntil[id] = world.threads.elapsed() + time; }};
}

Happening locks(std::int64_t time)
{
    return {time, [](FakePlatform& world) { world.files.files[Document].isLocked = true; }};
}

Happening frees(std::int64_t time)
{
    return {time, [](FakePlatform& world) { world.files.files[Document].isLocked = false; }};
}

Happening removes(std::int64_t time)
{
    return {time, [](FakePlatform& world) { world.files.remove(Document); }};
}

Happening writesAnew(std::int64_t time)
{
    return {time, [](FakePlatform& world) { world.files.change(Document) = {}; }};
}

Happening makes(std::int64_t time, const std::wstring& name)
{
    return {time, [=](FakePlatform& world) { world.files.change(L"C:\\Docs\\" + name) = {}; }};
}

/// A window of the application that runs already.
Happening opensWindow(std::int64_t time, std::uintptr_t window, std::uint32_t thread)
{
    return {time, [=](FakePlatform& world) { world.desktop.windows[FakeDesktop::windowNumber(window)] = {thread}; }};
}

Happening bringsToFront(std::int64_t time, std::uintptr_t window)
{
    return {time, [=](FakePlatform& world) { world.desktop.foreground = FakeDesktop::windowNumber(window); }};
}

Happening hidesWindow(std::int64_t time, std::uintptr_t window)
{
    return {time,
            [=](FakePlatform& world) { world.desktop.windows[FakeDesktop::windowNumber(window)].visible = false; }};
}

Happening closesWindow(std::int64_t time, std::uintptr_t window)
{
    return {time, [=](FakePlatform& world) { world.desktop.windows.erase(FakeDesktop::windowNumber(window)); }};
}

/// Of the application that runs already.
Happening beginsThread(std::int64_t time, std::uint32_t thread)
{
    return {time, [=](FakePlatform& world) { world.processes.running.back().threads.push_back(thread); }};
}

Happening endsThread(std::int64_t time, std::uint32_t thread)
{
    return {time, [=](FakePlatform& world) { std::erase(world.processes.running.back().threads, thread); }};
}

// --- The ways out ----------------------------------------------------------------------------------------------------

enum class Way
{
    LockCycle, ///< the document was held for long and let go of, and that was enough
    Processes, ///< the new processes have ended
    Tree,      ///< they and all that they started have ended
    ThreadsAndWindows,
    SecondChance, ///< nothing could be seen, and the document was given five more seconds
    None,         ///< it is not over
};

constexpr std::int64_t NoEnd = -1;

struct Timeline
{
    const char* name;
    std::vector<Happening> happenings;
    Way way;
    std::int64_t end;
    /// The application, as process 50 with the threads 51 and 52 and their windows 5 and 6, the first one in front.
    bool runsAlready = false;
};

// The foreground is watched for 500 ms, and then the lock for 500 ms, unless told otherwise.
const Timeline Timelines[] = {
    {"nothingAtAll", {}, Way::SecondChance, 6000},

    {"readerThatNeverLocks", {starts(100, 20, Self), ends(8000, 20)}, Way::Tree, 8000},
    {"readerThatIsGoneBeforeTheFirstLook", {starts(100, 20, Self), ends(400, 20)}, Way::SecondChance, 6000},
    {"readerThatTakesItsTimeToComeUp", {starts(100, 20, Self), isIdle(7500, 20), ends(9000, 20)}, Way::Tree, 9000},
    {"readerThatNeverComesUp", {starts(100, 20, Self), isIdle(90000, 20), ends(11000, 20)}, Way::Tree, 11000},
    {"readerBesideADocumentThatLiesAlone", {starts(100, 20, Self), ends(3000, 20)}, Way::Tree, 3000},

    {"launcherThatHandsOn",
     {starts(50, 20, Self), starts(700, 30, 20), ends(900, 20), ends(12000, 30)},
     Way::Tree,
     12000},
    {"launcherThatHasHandedOnBeforeTheFirstLook",
     {starts(50, 20, Self), starts(60, 30, 20), ends(900, 20), ends(12000, 30)},
     Way::Tree,
     12000},
    {"launcherOfALauncher",
     {starts(50, 20, Self), starts(700, 30, 20), ends(1500, 20), starts(1600, 40, 30), ends(2000, 30), ends(7000, 40)},
     Way::Tree,
     7000},
    {"launcherThatIsGoneBeforeTheFirstLook",
     {starts(50, 20, Self), starts(60, 30, 20), ends(70, 20), ends(12000, 30)},
     Way::SecondChance,
     6000},
    {"applicationThatCrashes", {starts(100, 20, Self), locks(200), ends(3000, 20), frees(3000)}, Way::Tree, 3500},

    {"editorThatLocks", {starts(100, 20, Self), locks(200), frees(10000), ends(30000, 20)}, Way::LockCycle, 10500},
    {"editorThatLocksLate", {starts(100, 20, Self), locks(900), frees(10000), ends(30000, 20)}, Way::LockCycle, 10500},
    {"editorThatTakesItsTimeToComeUp",
     {starts(100, 20, Self), isIdle(7500, 20), locks(7600), frees(12000), ends(30000, 20)},
     Way::LockCycle,
     12500},
    {"editorThatDoesNotComeUp",
     {starts(100, 20, Self), isIdle(90000, 20), locks(10900), frees(15000), ends(30000, 20)},
     Way::LockCycle,
     15500},
    {"editorThatLocksTooLate", {starts(100, 20, Self), locks(901), frees(10000), ends(30000, 20)}, Way::Tree, 30000},
    {"editorThatWritesAndLocksAgain",
     {starts(100, 20, Self), locks(200), frees(5000), locks(5450), frees(10000), ends(30000, 20)},
     Way::LockCycle,
     10500},
    {"editorThatSavesByRename",
     {starts(100, 20, Self), locks(200), makes(5000, L"~new.tmp"), frees(5100), removes(5100), writesAnew(5300),
      locks(5400), frees(10000), ends(30000, 20)},
     Way::LockCycle,
     10500},
    {"editorWithWorkFilesBesideTheDocument",
     {starts(100, 20, Self), locks(200), makes(300, L"~report.txt"), makes(300, L"report.bak"), makes(300, L"a.tmp"),
      frees(10000), ends(30000, 20)},
     Way::LockCycle,
     10500},
    {"editorWithAnotherFileBesideTheDocument",
     {makes(0, L"other.txt"), starts(100, 20, Self), locks(200), frees(10000), starts(11000, 30, 20), ends(30000, 20)},
     Way::Processes,
     30000},
    {"editorWithAnotherFileThatEndsBeforeItsChild",
     {makes(0, L"other.txt"), starts(100, 20, Self), starts(110, 30, 20), locks(200), frees(10000), ends(20000, 20),
      ends(25000, 30)},
     Way::Processes,
     25000},
    {"editorThatHoldsItForLessThanThreeAndAHalfSeconds",
     {starts(100, 20, Self), locks(200), frees(3400), ends(30000, 20)},
     Way::Tree,
     30000},
    {"editorThatHoldsItForThreeAndAHalfSeconds",
     {starts(100, 20, Self), locks(200), frees(3500), ends(30000, 20)},
     Way::LockCycle,
     4000},

    {"quickOpenAndClose", {locks(200), frees(900)}, Way::SecondChance, 6400},
    {"quickOpenAndCloseByANewProcess",
     {starts(100, 20, Self), locks(200), frees(900), ends(5000, 20)},
     Way::Tree,
     5000},
    {"quickOpenAndCloseTwice", {locks(200), frees(900), locks(4000), frees(9000)}, Way::SecondChance, 9500},
    {"holderThatCannotBeSeen", {locks(200), frees(10000)}, Way::LockCycle, 10500},
    {"holderThatCannotBeSeenBesideAnotherFile",
     {makes(0, L"other.txt"), locks(200), frees(10000)},
     Way::LockCycle,
     10500},
    {"holderThatCannotBeSeenAndComesLate",
     {makes(0, L"other.txt"), locks(1500), frees(10000)},
     Way::SecondChance,
     10500},

    {"singleInstanceWithItsWindowInFront",
     {opensWindow(90, 7, 51), bringsToFront(120, 7), closesWindow(8000, 7), endsThread(12000, 51)},
     Way::ThreadsAndWindows,
     12120,
     true},
    {"singleInstanceWithAnOldWindowInFront",
     {bringsToFront(480, 6), endsThread(7000, 52), closesWindow(9000, 6)},
     Way::ThreadsAndWindows,
     9480,
     true},
    {"singleInstanceThatComesToTheFrontTooLate",
     {bringsToFront(501, 6), closesWindow(9000, 6)},
     Way::SecondChance,
     6000,
     true},
    {"singleInstanceWithoutAChangeInFront",
     {opensWindow(300, 7, 51), beginsThread(310, 53), closesWindow(7000, 7), endsThread(9000, 53)},
     Way::ThreadsAndWindows,
     9000,
     true},
    {"singleInstanceWithAWindowAlone",
     {opensWindow(300, 7, 51), closesWindow(7000, 7)},
     Way::ThreadsAndWindows,
     7000,
     true},
    {"singleInstanceThatHidesItsWindow",
     {opensWindow(300, 7, 51), hidesWindow(6800, 7)},
     Way::ThreadsAndWindows,
     7000,
     true},
    {"singleInstanceWithAThreadAlone",
     {beginsThread(300, 53), endsThread(6800, 53)},
     Way::ThreadsAndWindows,
     7000,
     true},
    {"singleInstanceThatIsTooLate", {opensWindow(501, 7, 51), closesWindow(7000, 7)}, Way::SecondChance, 6000, true},
    {"singleInstanceThatLocks",
     {opensWindow(300, 7, 51), locks(310), frees(10000), closesWindow(20000, 7)},
     Way::LockCycle,
     10500,
     true},
    {"singleInstanceThatLocksBesideAnotherFile",
     {makes(0, L"other.txt"), opensWindow(300, 7, 51), locks(310), frees(10000), closesWindow(20000, 7)},
     Way::ThreadsAndWindows,
     20000,
     true},
    {"newProcessAndNewWindow",
     {opensWindow(300, 7, 51), starts(310, 20, Self), closesWindow(4000, 7), ends(9000, 20)},
     Way::Tree,
     9000,
     true},

    {"applicationThatNeverEnds", {starts(100, 20, Self)}, Way::None, NoEnd},
    {"applicationThatNeverLetsGo", {starts(100, 20, Self), locks(200)}, Way::None, NoEnd},
    {"applicationThatNeverClosesItsWindow", {opensWindow(300, 7, 51)}, Way::None, NoEnd, true},
    {"documentThatVanishes",
     {starts(100, 20, Self), locks(200), frees(5000), removes(5000), ends(6000, 20)},
     Way::None,
     NoEnd},
    {"documentThatVanishesAndComesBack",
     {starts(100, 20, Self), removes(200), writesAnew(10000), ends(60000, 20)},
     Way::LockCycle,
     10500},
};

std::string nameOf(const testing::TestParamInfo<Timeline>& info)
{
    return info.param.name;
}

class TheWatcher : public testing::TestWithParam<Timeline>
{
protected:
    TheWatcher()
    {
        world.files.files[Document] = {};
        world.processes.start({10, 0, L"shell.exe", {}, {11}});
        world.processes.start({Self, 10, L"JobRunner.exe", {}, {101}});
        world.shell.executable = Application;
        if (GetParam().runsAlready)
        {
            world.processes.start({50, 10, L"editor.exe", {Application}, {51, 52}});
            world.desktop.windows[FakeDesktop::windowNumber(5)] = {51};
            world.desktop.windows[FakeDesktop::windowNumber(6)] = {52};
            world.desktop.foreground = FakeDesktop::windowNumber(5);
        }
        world.shell.onExecute = [this](Platform::ShellExecution&)
        {
            for (const Happening& happening : GetParam().happenings)
                world.threads.at(happening.time, [this, &happening] { happening.action(world); });
            return true;
        };
    }

    /// A poll without a pause takes its time, too: a little with every probe that follows at once, and more when there
    /// is no end to it.
    void letProbesTakeTime()
    {
        world.files.onOpen = [this, last = std::int64_t{-1}, atOnce = 0, polls = 0]() mutable
        {
            const std::int64_t now = world.threads.elapsed();
            atOnce = now == last ? atOnce + 1 : 0;
            last = now;
            if (atOnce > 1)
                world.threads.advance(++polls < 20000 ? 1 : 1000);
        };
    }

    bool waitedForHandles(const std::wstring& how) const
    {
        const Calls waits = world.log.callsOf(L"waitOrMessage");
        return std::any_of(waits.begin(), waits.end(),
                           [&](const std::wstring& call) { return call.find(how) != std::wstring::npos; });
    }

    Way wayTaken() const
    {
        if (waitedForHandles(L" infinite "))
            return Way::Processes;
        if (waitedForHandles(L" 50 "))
            return Way::Tree;
        if (world.log.contains(L"sleep 500"))
            return Way::ThreadsAndWindows;
        return world.log.callsOf(L"findFirst C:").empty() ? Way::SecondChance : Way::LockCycle;
    }

    FakePlatform world;
};

TEST_P(TheWatcher, endsInTime)
{
    letProbesTakeTime();
    if (GetParam().way == Way::None)
    {
        EXPECT_THROW(OpenDocumentAndWait(Document), WaitsForEver);
        return;
    }
    EXPECT_TRUE(OpenDocumentAndWait(Document));
    EXPECT_EQ(wayTaken(), GetParam().way);
    EXPECT_EQ(world.threads.elapsed(), GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(InTime, TheWatcher, testing::ValuesIn(Timelines), nameOf);

} // namespace
