#include "windows/progress/progress_window.h"

#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

struct ProgressWindowTest : testing::Test
{
    /// Opens the window and forgets what that wrote.
    void open()
    {
        window.openWindow(OperationEncrypt);
        log().clear();
    }

    Fakes::ProgressViewLog& log() { return *views.factory.progressViews.back(); }
    void clickPause() { views.factory.lastProgressView->onPause(); }
    void clickCancel() { views.factory.lastProgressView->onCancel(); }
    void pass(std::int64_t seconds) { platform.threads.advance(seconds * 1000); }

    Fakes::FakePlatform platform;
    Fakes::FakeViews views;
    ProgressWindow window;
};

} // namespace

TEST_F(ProgressWindowTest, opensHiddenAndRefreshes)
{
    window.openWindow(OperationDecrypt);
    EXPECT_EQ(log().operation(), OperationDecrypt);
    EXPECT_TRUE(log().open());
    EXPECT_TRUE(log().hidden());
    EXPECT_EQ(log().calls(), (Calls{L"create", L"setTotalProgress -1", L"setElapsedBytes 0", L"setBytesLeft unknown",
                                    L"setTotalBytes unknown", L"setElapsedTime 0", L"setSpeed 0", L"setTimeLeft -1"}));
}

TEST_F(ProgressWindowTest, refreshesInOneOrderWithAKnownTotal)
{
    open();
    window.setTotalSize(1000);
    EXPECT_EQ(log().calls(), (Calls{L"setTotalProgress 0", L"setElapsedBytes 0", L"setTotalBytes 1000",
                                    L"setBytesLeft 1000", L"setElapsedTime 0", L"setSpeed 0", L"setTimeLeft 1000"}));
}

TEST_F(ProgressWindowTest, isFirstSeenAtTheFirstReportOfAFile)
{
    open();
    window.setCurrentFile(L"a.txt");
    window.setTotalSize(1000);
    EXPECT_TRUE(log().hidden());
    log().clear();
    window.reportFileProgress(100, 500);
    EXPECT_EQ(log().calls().front(), L"setFileProgress a.txt 20");
    EXPECT_EQ(log().calls().back(), L"show");
    window.reportFileProgress(200, 500);
    EXPECT_EQ(log().count(L"show"), 1u);
}

TEST_F(ProgressWindowTest, storesTheNameOfTheFileAlone)
{
    open();
    window.setCurrentFile(L"a.txt");
    EXPECT_TRUE(log().calls().empty());
}

TEST_F(ProgressWindowTest, isBroughtBackByAReport)
{
    open();
    window.reportFileProgress(1, 2);
    window.hideWindow();
    EXPECT_TRUE(log().hidden());
    window.reportFileProgress(2, 2);
    EXPECT_FALSE(log().hidden());
}

TEST_F(ProgressWindowTest, reportsZeroPercentForAFileOfSizeZero)
{
    open();
    window.setCurrentFile(L"a");
    window.reportFileProgress(0, 0);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a 0");
}

TEST_F(ProgressWindowTest, passesOnAPercentThatIsNoNumber)
{
    open();
    window.setTotalSize(10'000'000'000);
    window.setCurrentFile(L"a");
    window.reportFileProgress(1, 10'000'000'000);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a -2147483648");
    EXPECT_EQ(log().last(L"setTotalProgress"), L"-2147483648");
}

TEST_F(ProgressWindowTest, addsAFinishedFileToWhatIsDone)
{
    open();
    window.setTotalSize(1000);
    window.reportFileProgress(100, 400);
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"100");
    window.finishFile();
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"400");
    EXPECT_EQ(log().last(L"setBytesLeft"), L"600");
    window.reportFileProgress(50, 600);
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"450");
    EXPECT_EQ(log().last(L"setTotalProgress"), L"45");
}

TEST_F(ProgressWindowTest, addsAFinishedFileOnce)
{
    open();
    window.setTotalSize(1000);
    window.reportFileProgress(400, 400);
    window.finishFile();
    window.finishFile();
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"400");
}

TEST_F(ProgressWindowTest, givesSpeedAndTimeLeftByTheStopwatch)
{
    open();
    window.setTotalSize(1000);
    pass(10);
    window.reportFileProgress(200, 400);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"10");
    EXPECT_EQ(log().last(L"setSpeed"), L"20");
    EXPECT_EQ(log().last(L"setTimeLeft"), L"40");
}

TEST_F(ProgressWindowTest, countsFinishedFilesInSpeedAndTimeLeft)
{
    open();
    window.setTotalSize(1000);
    pass(10);
    window.reportFileProgress(400, 400);
    window.finishFile();
    window.reportFileProgress(100, 600);
    EXPECT_EQ(log().last(L"setSpeed"), L"50");
    EXPECT_EQ(log().last(L"setTimeLeft"), L"10");
}

TEST_F(ProgressWindowTest, hasNoSpeedInTheFirstSecond)
{
    open();
    window.setTotalSize(1000);
    window.reportFileProgress(200, 400);
    EXPECT_EQ(log().last(L"setSpeed"), L"0");
    EXPECT_EQ(log().last(L"setTimeLeft"), L"4");
}

TEST_F(ProgressWindowTest, hasNoTimeLeftWhileTheTotalIsUnknown)
{
    open();
    pass(10);
    window.reportFileProgress(200, 400);
    EXPECT_EQ(log().last(L"setTotalProgress"), L"-1");
    EXPECT_EQ(log().last(L"setSpeed"), L"20");
    EXPECT_EQ(log().last(L"setTimeLeft"), L"-1");
    EXPECT_EQ(log().last(L"setBytesLeft"), L"unknown");
    EXPECT_EQ(log().last(L"setTotalBytes"), L"unknown");
}

TEST_F(ProgressWindowTest, fillsOneHalfOfTheBarInEachPhaseOfHalfFileMode)
{
    window.setHalfFileMode(true);
    open();
    window.setTotalSize(100);
    window.setCurrentFile(L"a");
    window.reportFileProgress(100, 100);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a 50");
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"50");
    window.reportWipeProgress(50);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a 75 wiping");
    window.reportWipeProgress(100);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a 100 wiping");
    window.finishFile();
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"100");
}

TEST_F(ProgressWindowTest, halvesSizeAndDoneBeforeItAddsThem)
{
    window.setHalfFileMode(true);
    open();
    window.reportFileProgress(3, 3);
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"1");
    window.reportWipeProgress(3);
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"2");
}

TEST_F(ProgressWindowTest, ignoresWipeReportsOutsideHalfFileMode)
{
    open();
    window.reportFileProgress(10, 100);
    log().clear();
    window.reportWipeProgress(50);
    EXPECT_TRUE(log().calls().empty());
}

TEST_F(ProgressWindowTest, showsItselfAtAWipeReportToo)
{
    window.setHalfFileMode(true);
    open();
    window.reportWipeProgress(0);
    EXPECT_FALSE(log().hidden());
}

TEST_F(ProgressWindowTest, isCancelledByAClickAndStaysSo)
{
    open();
    EXPECT_FALSE(window.isCancelled());
    clickCancel();
    EXPECT_TRUE(window.isCancelled());
    window.closeWindow();
    open();
    EXPECT_TRUE(window.isCancelled());
}

TEST_F(ProgressWindowTest, isPausedAndResumedByClicks)
{
    open();
    clickPause();
    EXPECT_TRUE(window.isPaused());
    EXPECT_EQ(log().calls(), (Calls{L"onPaused"}));
    clickPause();
    EXPECT_FALSE(window.isPaused());
    EXPECT_EQ(log().calls(), (Calls{L"onPaused", L"onResumed"}));
}

TEST_F(ProgressWindowTest, isResumedFirstAndThenCancelled)
{
    open();
    clickPause();
    clickPause();
    clickCancel();
    EXPECT_FALSE(window.isPaused());
    EXPECT_TRUE(window.isCancelled());
}

TEST_F(ProgressWindowTest, leavesItToTheViewToTakeNoCancelDuringAPause)
{
    window.togglePause();
    window.requestCancel();
    EXPECT_TRUE(window.isCancelled());
}

TEST_F(ProgressWindowTest, keepsItsStopwatchRunningThroughTheFirstPauseAndStopsItAtTheResume)
{
    open();
    pass(1);
    clickPause();
    pass(10);
    clickPause();
    pass(100);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"11");
}

TEST_F(ProgressWindowTest, startsItsStopwatchAgainAtTheSecondPause)
{
    open();
    clickPause();
    clickPause(); // stands still from here
    pass(100);
    clickPause(); // runs from here
    pass(5);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"5");
}

TEST_F(ProgressWindowTest, stopsItsStopwatchForAPromptUntilItIsShownAgain)
{
    open();
    pass(3);
    window.hideWindow();
    pass(100);
    window.reportFileProgress(1, 2); // shows the window and leaves the watch alone
    pass(100);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"3");
    window.showWindow();
    pass(4);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"7");
}

TEST_F(ProgressWindowTest, startsItsStopwatchAgainWhenItOpens)
{
    open();
    pass(50);
    window.closeWindow();
    window.openWindow(OperationEncrypt);
    EXPECT_EQ(log().last(L"setElapsedTime"), L"0");
}

TEST_F(ProgressWindowTest, makesANewViewEachTimeItOpens)
{
    open();
    window.closeWindow();
    EXPECT_EQ(log().calls(), (Calls{L"close"}));
    window.openWindow(OperationDelete);
    ASSERT_EQ(views.factory.progressViews.size(), 2u);
    EXPECT_EQ(log().operation(), OperationDelete);
}

TEST_F(ProgressWindowTest, endsTheFirstViewWhenItOpensASecondOne)
{
    open();
    open();
    EXPECT_FALSE(views.factory.progressViews[0]->open());
    EXPECT_TRUE(views.factory.progressViews[1]->open());
}

TEST_F(ProgressWindowTest, closesNothingWhenNothingIsOpen)
{
    window.closeWindow();
    open();
    window.closeWindow();
    window.closeWindow();
    EXPECT_EQ(log().count(L"close"), 1u);
}

TEST_F(ProgressWindowTest, changesItsCountersAloneWhileNoWindowIsOpen)
{
    window.setTotalSize(1000);
    window.setCurrentFile(L"a");
    window.reportFileProgress(100, 300);
    window.finishFile();
    window.hideWindow();
    window.showWindow();
    window.togglePause();
    EXPECT_TRUE(window.isPaused());
    window.openWindow(OperationEncrypt);
    EXPECT_EQ(log().last(L"setTotalProgress"), L"30");
    EXPECT_EQ(log().last(L"setElapsedBytes"), L"300");
}

TEST_F(ProgressWindowTest, keepsItsPauseAndTheNameOfItsFileWhenItOpens)
{
    window.setCurrentFile(L"a");
    window.togglePause();
    open();
    EXPECT_TRUE(window.isPaused());
    window.reportFileProgress(1, 2);
    EXPECT_EQ(log().last(L"setFileProgress"), L"a 50");
}

TEST_F(ProgressWindowTest, endsItsViewWithItself)
{
    {
        ProgressWindow other;
        other.openWindow(OperationEncrypt);
    }
    EXPECT_FALSE(log().open());
}
