#include "windows/progress/win32/progress_dialog_testing.h"

namespace JobRunner
{

TEST_F(ProgressDialogTest, comesUpHiddenWithTheTextsOfItsTemplate)
{
    open();
    EXPECT_TRUE(view_->isHidden());
    EXPECT_FALSE(IsWindowVisible(dialog_));
    EXPECT_EQ(textOf(dialog_), L"Progress Window");
    EXPECT_EQ(text(IDC_FILE_TEXT), L"First progress bar:");
    EXPECT_EQ(text(IDC_TOTAL_TEXT), L"Second progress bar:");
    for (const int id : {1227, 1228, 1229, 1230, 1231, 1233})
        EXPECT_EQ(text(id), L"n/a") << id;
    EXPECT_EQ(text(IDC_CANCEL_JOB), L"Cancel");
    EXPECT_EQ(text(IDC_PAUSE_JOB), L"Pause");
}

TEST_F(ProgressDialogTest, hasACaptionButNoSystemMenu)
{
    open();
    const LONG style = GetWindowLongW(dialog_, GWL_STYLE);
    EXPECT_EQ(style & WS_CAPTION, WS_CAPTION);
    EXPECT_EQ(style & WS_SYSMENU, 0);
    const LONG extended = GetWindowLongW(dialog_, GWL_EXSTYLE);
    EXPECT_TRUE(extended & WS_EX_APPWINDOW);
    EXPECT_TRUE(extended & WS_EX_CONTROLPARENT);
}

TEST_F(ProgressDialogTest, runsOnAThreadOfItsOwn)
{
    open();
    EXPECT_NE(GetWindowThreadProcessId(dialog_, nullptr), GetCurrentThreadId());
}

TEST_F(ProgressDialogTest, barsGoFrom0To100)
{
    open();
    for (const int id : {IDC_FILE_BAR, IDC_TOTAL_BAR})
    {
        EXPECT_EQ(SendMessageW(item(id), PBM_GETRANGE, TRUE, 0), 0);
        EXPECT_EQ(SendMessageW(item(id), PBM_GETRANGE, FALSE, 0), 100);
    }
}

TEST_F(ProgressDialogTest, showsTheFileWithItsBar)
{
    open();
    view_->setFileProgress(L"A & B.txt", 37.0, false);
    EXPECT_TRUE(reads(IDC_FILE_TEXT, L"A & B.txt (37.00%)"));
    EXPECT_TRUE(eventually([&] { return position(IDC_FILE_BAR) == 37; }));
    view_->setFileProgress(L"A & B.txt", 60.0, true);
    EXPECT_TRUE(reads(IDC_FILE_TEXT, L"A & B.txt (60.00%) - Wiping"));
}

TEST_F(ProgressDialogTest, showsTheFigures)
{
    open();
    view_->setElapsedTime(3661);
    view_->setTimeLeft(59);
    view_->setSpeed(2048);
    view_->setElapsedBytes(std::uint64_t{5} << 20);
    view_->setBytesLeft(std::uint64_t{6} << 20);
    view_->setTotalBytes(std::uint64_t{11} << 20);
    EXPECT_TRUE(reads(IDC_ELAPSED_TIME, L"01:01:01"));
    EXPECT_TRUE(reads(IDC_TIME_LEFT, L"00:00:59"));
    EXPECT_TRUE(reads(IDC_SPEED, L"2 Kb/sec"));
    EXPECT_TRUE(reads(IDC_ELAPSED_BYTES, L"5 MB"));
    EXPECT_TRUE(reads(IDC_BYTES_LEFT, L"6 MB"));
    EXPECT_TRUE(reads(IDC_TOTAL_BYTES, L"11 MB"));
}

TEST_F(ProgressDialogTest, showsAnUnknownTotalAsAMarquee)
{
    open();
    view_->setTotalProgress(UnknownPercent, false);
    EXPECT_TRUE(reads(IDC_TOTAL_TEXT, L"Total: n/a"));
    EXPECT_TRUE(titleReads(L"Encryption"));
    EXPECT_TRUE(isMarquee());
    view_->setTotalProgress(42.0, false);
    EXPECT_TRUE(reads(IDC_TOTAL_TEXT, L"Total: 42.0%"));
    EXPECT_FALSE(isMarquee());
    EXPECT_EQ(position(IDC_TOTAL_BAR), 42);
    EXPECT_EQ(SendMessageW(item(IDC_TOTAL_BAR), PBM_GETRANGE, FALSE, 0), 100);
}

TEST_F(ProgressDialogTest, aFirstTotalOf0ChangesNothing)
{
    open();
    view_->setTotalProgress(0.0, false);
    view_->setSpeed(1024);
    ASSERT_TRUE(reads(IDC_SPEED, L"1 Kb/sec"));
    EXPECT_EQ(text(IDC_TOTAL_TEXT), L"Second progress bar:");
    EXPECT_EQ(textOf(dialog_), L"Progress Window");
}

TEST_F(ProgressDialogTest, theTitleGainsThePercentFromTheSecondWriteOn)
{
    open(OperationWipe);
    view_->setTotalProgress(10.0, false);
    view_->setTotalBytes(1000);
    EXPECT_TRUE(titleReads(L"Quick Wipe"));
    view_->setTotalProgress(11.0, false);
    EXPECT_TRUE(titleReads(L"Quick Wipe (11%)"));
}

TEST_F(ProgressDialogTest, hiddenIsKnownAtOnceAndTheWindowFollows)
{
    open();
    view_->show();
    EXPECT_FALSE(view_->isHidden());
    EXPECT_TRUE(eventually([&] { return IsWindowVisible(dialog_) != FALSE; }));
    view_->hide();
    EXPECT_TRUE(view_->isHidden());
    EXPECT_TRUE(eventually([&] { return !IsWindowVisible(dialog_); }));
}

TEST_F(ProgressDialogTest, whatWasSetBeforeTheDialogWasMadeIsShownWhenItIs)
{
    view_ = std::make_unique<ProgressWindowView>(OperationDecrypt);
    view_->show();
    view_->setSpeed(4096);
    view_->create();
    dialog_ = findDialog();
    EXPECT_TRUE(reads(IDC_SPEED, L"4 Kb/sec"));
    EXPECT_TRUE(eventually([&] { return IsWindowVisible(dialog_) != FALSE; }));
}

} // namespace JobRunner
