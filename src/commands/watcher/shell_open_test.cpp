#include "commands/watcher/shell_open.h"

#include "commands/watcher/pump_wait.h"
#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

class AStart : public testing::Test
{
protected:
    /// The shell starts a process that is idle at this time.
    void startsProcessIdleAt(std::int64_t time)
    {
        platform.shell.onExecute = [this, time](Platform::ShellExecution& execution)
        {
            asked = execution;
            platform.processes.start({20, 100});
            platform.processes.busyUntil[20] = time;
            execution.process = platform.processes.open(0, false, 20);
            platform.log.clear();
            return true;
        };
    }

    FakePlatform platform;
    std::optional<Platform::ShellExecution> asked;
};

TEST_F(AStart, asksTheShellForNothingButTheDocument)
{
    startsProcessIdleAt(0);
    EXPECT_TRUE(ShellOpen(L"C:\\Docs\\a.txt", L"C:\\Docs\\"));
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->size, 60U);
    EXPECT_EQ(asked->mask, 0x540U);
    EXPECT_EQ(asked->file, L"C:\\Docs\\a.txt");
    EXPECT_EQ(asked->directory, L"C:\\Docs\\");
    EXPECT_EQ(asked->show, 1);
    EXPECT_EQ(asked->process, nullptr);
}

TEST_F(AStart, givesTheProcessASecondToComeUp)
{
    startsProcessIdleAt(400);
    EXPECT_TRUE(ShellOpen(L"a", L""));
    EXPECT_EQ(platform.log.calls(), (Calls{L"idle process 20 1000", L"close process 20"}));
    EXPECT_EQ(platform.threads.elapsed(), 400);
    startsProcessIdleAt(5000);
    EXPECT_TRUE(ShellOpen(L"a", L""));
    EXPECT_EQ(platform.threads.elapsed(), 1400);
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(AStart, withoutAProcessIsAStart)
{
    platform.shell.onExecute = [](Platform::ShellExecution&) { return true; };
    EXPECT_TRUE(ShellOpen(L"a", L"b"));
    EXPECT_EQ(platform.log.calls(), (Calls{L"execute a in b"}));
}

TEST_F(AStart, mayBeRefused)
{
    EXPECT_FALSE(ShellOpen(L"a", L"b"));
    EXPECT_EQ(platform.log.calls(), (Calls{L"execute a in b"}));
}

TEST_F(AStart, mayBringAWindowToTheFront)
{
    platform.desktop.foreground = FakeDesktop::windowNumber(1);
    platform.threads.at(35, [this] { platform.desktop.foreground = FakeDesktop::windowNumber(7); });
    EXPECT_EQ(WaitForForegroundChange(FakeDesktop::windowNumber(1)), FakeDesktop::windowNumber(7));
    EXPECT_EQ(platform.threads.elapsed(), 40);
}

TEST_F(AStart, isGivenHalfASecondForThat)
{
    platform.desktop.foreground = FakeDesktop::windowNumber(1);
    EXPECT_EQ(WaitForForegroundChange(FakeDesktop::windowNumber(1)), nullptr);
    EXPECT_EQ(platform.log.callsOf(L"sleep"), Calls(50, L"sleep 10"));
    EXPECT_EQ(platform.log.callsOf(L"foregroundWindow").size(), 51U);
}

TEST_F(AStart, mayHaveBroughtAWindowToTheFrontWithTheLastLook)
{
    platform.desktop.foreground = FakeDesktop::windowNumber(1);
    platform.threads.at(500, [this] { platform.desktop.foreground = FakeDesktop::windowNumber(7); });
    EXPECT_EQ(WaitForForegroundChange(FakeDesktop::windowNumber(1)), FakeDesktop::windowNumber(7));
}

TEST_F(AStart, mayLeaveNoWindowInFront)
{
    // That is a change, and no window.
    EXPECT_EQ(WaitForForegroundChange(FakeDesktop::windowNumber(1)), nullptr);
    EXPECT_EQ(platform.threads.elapsed(), 0);
}

TEST(PumpWait, dispatchesWhatWaitsBeforeItWaits)
{
    FakePlatform platform;
    platform.messages.waiting = 2;
    const Platform::Handle handle = platform.handles.add(L"process", [] { return true; });
    EXPECT_EQ(PumpWait(handle, 50), Platform::WaitSignalled);
    EXPECT_EQ(platform.log.calls(), (Calls{L"dispatch", L"dispatch", L"waitOrMessage process 50 1279"}));
}

TEST(PumpWait, beginsAnewWithEachMessageAndTheSameLimit)
{
    FakePlatform platform;
    const Platform::Handle handle = platform.handles.add(L"process");
    for (const int time : {40, 80, 120})
        platform.threads.at(time, [&] { ++platform.messages.waiting; });
    EXPECT_EQ(PumpWait(handle, 50), Platform::WaitTimedOut);
    EXPECT_EQ(platform.threads.elapsed(), 170);
    EXPECT_EQ(platform.log.callsOf(L"waitOrMessage"), Calls(4, L"waitOrMessage process 50 1279"));
    EXPECT_EQ(platform.log.callsOf(L"dispatch").size(), 3U);
}

TEST(PumpWait, endsAtOnceForWhatIsNoHandle)
{
    FakePlatform platform;
    EXPECT_EQ(PumpWait(nullptr, Platform::WaitForever), Platform::WaitFailed);
    EXPECT_EQ(platform.threads.elapsed(), 0);
}

} // namespace
