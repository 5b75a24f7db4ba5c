#include "windows/progress/progress_display.h"

#include "fakes/fake_platform.h"
#include "platform/shell.h"
#include "windows/progress/i_progress_window_view.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace JobRunner;

namespace
{

struct ProgressDisplayTest : testing::Test
{
    /// Sets a value and takes what changed.
    template <class Setter, class... Arguments> ProgressChanges changesOf(Setter setter, Arguments... arguments)
    {
        std::ignore = (display.*setter)(arguments...);
        return display.take();
    }

    ProgressChanges file(const wchar_t* name, double percent, bool wiping = false)
    {
        return changesOf(&ProgressDisplay::setFileProgress, name, percent, wiping);
    }

    ProgressChanges total(double percent, bool force = false)
    {
        return changesOf(&ProgressDisplay::setTotalProgress, percent, force);
    }

    Fakes::FakePlatform platform;
    ProgressDisplay display{OperationEncrypt};
};

} // namespace

TEST_F(ProgressDisplayTest, hasNothingToShowAtFirst)
{
    const ProgressChanges changes = display.take();
    EXPECT_FALSE(changes.fileText || changes.filePosition || changes.marquee || changes.totalText ||
                 changes.totalPosition || changes.title || changes.taskbar || changes.elapsedTime || changes.timeLeft ||
                 changes.speed || changes.elapsedBytes || changes.bytesLeft || changes.totalBytes || changes.visible ||
                 changes.paused);
}

TEST_F(ProgressDisplayTest, showsTheFileWithItsPercent)
{
    const ProgressChanges changes = file(L"a.txt", 50);
    EXPECT_EQ(changes.fileText, L"a.txt (50.00%)");
    EXPECT_EQ(changes.filePosition, 50);
}

TEST_F(ProgressDisplayTest, keepsTheTextsOfTheTemplateForAFirstFileWithoutNameAndPercent)
{
    EXPECT_FALSE(file(L"", 0).fileText);
    EXPECT_FALSE(file(L"", 0).filePosition);
}

TEST_F(ProgressDisplayTest, movesTheFileBarOnlyWhenThePercentDiffers)
{
    EXPECT_FALSE(file(L"a", 0).filePosition);
    file(L"a", 10);
    const ProgressChanges next = file(L"b", 10);
    EXPECT_EQ(next.fileText, L"b (10.00%)");
    EXPECT_FALSE(next.filePosition);
}

TEST_F(ProgressDisplayTest, doesNotShowAChangeOfWipingAlone)
{
    file(L"a", 50, false);
    EXPECT_FALSE(file(L"a", 50, true).fileText);
    EXPECT_EQ(file(L"a", 51, true).fileText, L"a (51.00%) - Wiping");
}

TEST_F(ProgressDisplayTest, shortensALongName)
{
    const std::wstring name = L"C:\\documents\\of\\the\\last\\year\\and\\the\\one\\before\\report.txt";
    const std::wstring shown = Platform::platform().shell.compactPath(name, 51);
    ASSERT_EQ(shown.size(), 50u);
    EXPECT_EQ(file(name.c_str(), 1).fileText, shown + L" (1.00%)");
}

TEST_F(ProgressDisplayTest, doesNotWriteAFirstTotalOfZeroPercent)
{
    const ProgressChanges changes = total(0);
    EXPECT_FALSE(changes.totalText || changes.title || changes.totalPosition || changes.taskbar);
}

TEST_F(ProgressDisplayTest, writesAnUnchangedTotalOnlyWhenForced)
{
    EXPECT_EQ(total(0, true).totalText, L"Total: 0.0%");
    EXPECT_EQ(total(5).totalText, L"Total: 5.0%");
    EXPECT_FALSE(total(5).totalText);
    EXPECT_EQ(total(5, true).totalText, L"Total: 5.0%");
}

TEST_F(ProgressDisplayTest, runsTheTotalBarAsAMarqueeWhileTheTotalIsUnknown)
{
    const ProgressChanges changes = total(UnknownPercent);
    EXPECT_EQ(changes.totalText, L"Total: n/a");
    EXPECT_EQ(changes.title, L"Encryption");
    EXPECT_EQ(changes.marquee, true);
    EXPECT_FALSE(changes.totalPosition);
    EXPECT_EQ(changes.taskbar, TaskbarState::Indeterminate);
}

TEST_F(ProgressDisplayTest, endsTheMarqueeWhenTheTotalIsKnown)
{
    total(UnknownPercent);
    const ProgressChanges changes = total(10);
    EXPECT_EQ(changes.marquee, false);
    EXPECT_EQ(changes.totalPosition, 10);
    EXPECT_EQ(changes.taskbar, TaskbarState::Value);
    EXPECT_EQ(changes.taskbarValue, 10);
    EXPECT_FALSE(total(11).marquee);
}

TEST_F(ProgressDisplayTest, showsARoundedMinusOneAsIndeterminateOnTheTaskbarAlone)
{
    const ProgressChanges changes = total(-1.25);
    EXPECT_FALSE(changes.marquee);
    EXPECT_EQ(changes.totalPosition, -1);
    EXPECT_EQ(changes.taskbar, TaskbarState::Indeterminate);
}

TEST_F(ProgressDisplayTest, givesTheTitleItsPercentFromTheSecondWriteOn)
{
    EXPECT_EQ(total(10).title, L"Encryption");
    EXPECT_EQ(changesOf(&ProgressDisplay::setTotalBytes, std::uint64_t{100}).totalBytes, L"0 MB");
    EXPECT_EQ(total(11).title, L"Encryption (11%)");
}

TEST_F(ProgressDisplayTest, decidesTheTitleWhenTheTotalIsSetAndNotWhenItIsShown)
{
    std::ignore = display.setTotalProgress(10, false);
    std::ignore = display.setTotalBytes(100);
    EXPECT_EQ(display.take().title, L"Encryption");
}

TEST_F(ProgressDisplayTest, givesTheTitleMinusOnePercentWhenAKnownTotalBecomesUnknown)
{
    total(10);
    changesOf(&ProgressDisplay::setTotalBytes, std::uint64_t{100});
    EXPECT_EQ(total(UnknownPercent).title, L"Encryption (-1%)");
}

TEST_F(ProgressDisplayTest, countsUnknownTotalBytesAsBytesForTheTitle)
{
    EXPECT_EQ(total(UnknownPercent).title, L"Encryption");
    changesOf(&ProgressDisplay::setTotalBytes, UnknownBytes);
    EXPECT_EQ(total(0).title, L"Encryption (0%)");
}

TEST_F(ProgressDisplayTest, showsAPercentThatIsNoNumberAsItComes)
{
    changesOf(&ProgressDisplay::setTotalBytes, std::uint64_t{100});
    const ProgressChanges changes = total(-2147483648.0);
    EXPECT_EQ(changes.totalText, L"Total: -2147483648.0%");
    EXPECT_EQ(changes.title, L"Encryption (-2147483648%)");
    EXPECT_EQ(changes.totalPosition, -2147483647 - 1);
    EXPECT_EQ(changes.taskbarValue, -2147483647 - 1);
}

TEST_F(ProgressDisplayTest, leavesFiguresThatStartWithZeroAsTheyAre)
{
    EXPECT_FALSE(changesOf(&ProgressDisplay::setElapsedTime, 0).elapsedTime);
    EXPECT_FALSE(changesOf(&ProgressDisplay::setSpeed, std::uint64_t{0}).speed);
    EXPECT_FALSE(changesOf(&ProgressDisplay::setElapsedBytes, std::uint64_t{0}).elapsedBytes);
    EXPECT_FALSE(changesOf(&ProgressDisplay::setBytesLeft, std::uint64_t{0}).bytesLeft);
    EXPECT_FALSE(changesOf(&ProgressDisplay::setTotalBytes, std::uint64_t{0}).totalBytes);
}

TEST_F(ProgressDisplayTest, alwaysShowsTheFirstTimeLeft)
{
    EXPECT_EQ(changesOf(&ProgressDisplay::setTimeLeft, 0).timeLeft, L"00:00:00");
    EXPECT_FALSE(changesOf(&ProgressDisplay::setTimeLeft, 0).timeLeft);
    EXPECT_EQ(changesOf(&ProgressDisplay::setTimeLeft, UnknownTime).timeLeft, L"n/a");
}

TEST_F(ProgressDisplayTest, showsFiguresThatChangeAndNotThoseThatStay)
{
    EXPECT_EQ(changesOf(&ProgressDisplay::setElapsedTime, 61).elapsedTime, L"00:01:01");
    EXPECT_FALSE(changesOf(&ProgressDisplay::setElapsedTime, 61).elapsedTime);
    EXPECT_EQ(changesOf(&ProgressDisplay::setSpeed, std::uint64_t{2048}).speed, L"2 Kb/sec");
    EXPECT_EQ(changesOf(&ProgressDisplay::setElapsedBytes, std::uint64_t{3} << 20).elapsedBytes, L"3 MB");
    EXPECT_EQ(changesOf(&ProgressDisplay::setBytesLeft, UnknownBytes).bytesLeft, L"n/a");
    EXPECT_EQ(changesOf(&ProgressDisplay::setTotalBytes, UnknownBytes).totalBytes, L"n/a");
    EXPECT_EQ(changesOf(&ProgressDisplay::setBytesLeft, std::uint64_t{0}).bytesLeft, L"0 MB");
}

TEST_F(ProgressDisplayTest, isHiddenUntilItIsShown)
{
    EXPECT_TRUE(display.isHidden());
    EXPECT_EQ(changesOf(&ProgressDisplay::setVisible, true).visible, true);
    EXPECT_FALSE(display.isHidden());
    EXPECT_EQ(changesOf(&ProgressDisplay::setVisible, true).visible, true); // comes to the front again
    EXPECT_EQ(changesOf(&ProgressDisplay::setVisible, false).visible, false);
    EXPECT_TRUE(display.isHidden());
}

TEST_F(ProgressDisplayTest, tellsThePause)
{
    EXPECT_EQ(changesOf(&ProgressDisplay::setPaused, true).paused, true);
    EXPECT_EQ(changesOf(&ProgressDisplay::setPaused, false).paused, false);
}

TEST_F(ProgressDisplayTest, wakesItsThreadOnceBetweenTwoTakes)
{
    EXPECT_FALSE(display.setElapsedTime(0));
    EXPECT_TRUE(display.setElapsedTime(1));
    EXPECT_FALSE(display.setElapsedTime(2));
    EXPECT_FALSE(display.setPaused(true));
    EXPECT_EQ(display.take().elapsedTime, L"00:00:02");
    EXPECT_TRUE(display.setElapsedTime(3));
}

TEST_F(ProgressDisplayTest, takesEachChangeOnce)
{
    EXPECT_TRUE(file(L"a", 10).fileText);
    EXPECT_FALSE(display.take().fileText);
}
