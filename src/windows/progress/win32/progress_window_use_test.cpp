#include "windows/progress/win32/progress_dialog_testing.h"

#include <thread>
#include <vector>

namespace JobRunner
{

TEST_F(ProgressDialogTest, theButtonsCallBack)
{
    open();
    view_->show();
    click(IDC_CANCEL_JOB);
    click(IDC_PAUSE_JOB);
    EXPECT_TRUE(eventually([&] { return cancels_ == 1 && pauses_ == 1; }));
}

TEST_F(ProgressDialogTest, buttonsWithoutCallbacksAreSkipped)
{
    open();
    view_->onCancel = {};
    click(IDC_CANCEL_JOB);
    view_->setSpeed(1024);
    EXPECT_TRUE(reads(IDC_SPEED, L"1 Kb/sec"));
}

TEST_F(ProgressDialogTest, aPauseDisablesCancel)
{
    open();
    view_->onPaused();
    EXPECT_TRUE(reads(IDC_PAUSE_JOB, L"Resume"));
    EXPECT_FALSE(IsWindowEnabled(item(IDC_CANCEL_JOB)));
    view_->onResumed();
    EXPECT_TRUE(reads(IDC_PAUSE_JOB, L"Pause"));
    EXPECT_TRUE(IsWindowEnabled(item(IDC_CANCEL_JOB)));
}

TEST_F(ProgressDialogTest, aClickOnPauseDisablesCancelBeforeAnyFurtherClick)
{
    open();
    view_->onPause = {[](void* view) { static_cast<ProgressWindowView*>(view)->onPaused(); }, view_.get()};
    click(IDC_PAUSE_JOB); // comes back when the dialog's thread has handled it
    EXPECT_FALSE(IsWindowEnabled(item(IDC_CANCEL_JOB)));
    EXPECT_EQ(text(IDC_PAUSE_JOB), L"Resume");
}

TEST_F(ProgressDialogTest, escapeAndCloseDoNotEndIt)
{
    open();
    SendMessageW(dialog_, WM_COMMAND, IDCANCEL, 0);
    SendMessageW(dialog_, WM_CLOSE, 0, 0);
    view_->setSpeed(1024);
    EXPECT_TRUE(reads(IDC_SPEED, L"1 Kb/sec"));
    EXPECT_EQ(cancels_, 0);
}

TEST_F(ProgressDialogTest, theKeyboardReachesItsButtons)
{
    open();
    view_->show();
    ASSERT_TRUE(eventually([&] { return IsWindowVisible(dialog_) != FALSE; }));
    ASSERT_TRUE(eventually([&] { return focus() == item(IDC_CANCEL_JOB); }));
    PostMessageW(focus(), WM_KEYDOWN, VK_TAB, 1);
    EXPECT_TRUE(eventually([&] { return focus() == item(IDC_PAUSE_JOB); }));
}

TEST_F(ProgressDialogTest, reportsAreShownWhileTheUserMovesTheWindow)
{
    open();
    view_->show();
    ASSERT_TRUE(eventually([&] { return IsWindowVisible(dialog_) != FALSE; }));
    PostMessageW(dialog_, WM_SYSCOMMAND, SC_MOVE, 0);
    ASSERT_TRUE(eventually([&] { return isMoving(); }));
    view_->setSpeed(1024);
    EXPECT_TRUE(reads(IDC_SPEED, L"1 Kb/sec"));
    EXPECT_TRUE(isMoving());
    PostMessageW(dialog_, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_TRUE(eventually([&] { return !isMoving(); }));
}

TEST_F(ProgressDialogTest, isEndedByItsOwnMessage)
{
    open();
    SendMessageW(dialog_, 1124, 0, 0);
    EXPECT_FALSE(IsWindow(dialog_));
}

TEST_F(ProgressDialogTest, canBeWaitedForAgainOnceItExists)
{
    open();
    std::atomic<bool> back{false};
    std::thread waiting(
        [&]
        {
            view_->waitUntilCreated();
            view_->waitUntilCreated();
            back = true;
        });
    EXPECT_TRUE(eventually([&] { return back.load(); }));
    SendMessageW(dialog_, 1124, 0, 0); // frees one that still waits
    waiting.join();
}

TEST_F(ProgressDialogTest, closeEndsTheWindow)
{
    open();
    view_->close();
    EXPECT_FALSE(IsWindow(dialog_));
    view_->close();
    view_->setSpeed(1024);
    view_->hide();
}

TEST_F(ProgressDialogTest, closeOfAViewThatNeverStartedDoesNothing)
{
    ProgressWindowView view(OperationDecrypt);
    view.close();
    EXPECT_TRUE(view.isHidden());
}

TEST_F(ProgressDialogTest, anEndedViewTakesItsWindowWithIt)
{
    open();
    view_.reset();
    EXPECT_FALSE(IsWindow(dialog_));
}

TEST_F(ProgressDialogTest, severalThreadsMayReportWhileTheUserClicks)
{
    open();
    view_->show();
    std::vector<std::thread> engines;
    for (int engine = 0; engine < 4; ++engine)
        engines.emplace_back(
            [this]
            {
                for (int report = 1; report <= 20000; ++report)
                {
                    view_->setFileProgress(L"file", report % 100, false);
                    view_->setElapsedBytes(static_cast<std::uint64_t>(report) << 20);
                }
            });
    click(IDC_PAUSE_JOB);
    for (std::thread& engine : engines)
        engine.join();
    EXPECT_EQ(pauses_, 1);
    view_->setFileProgress(L"last", 100.0, false);
    view_->setElapsedBytes(std::uint64_t{7} << 20);
    EXPECT_TRUE(reads(IDC_FILE_TEXT, L"last (100.00%)"));
    EXPECT_TRUE(reads(IDC_ELAPSED_BYTES, L"7 MB"));
}

TEST_F(ProgressDialogTest, reportsDoNotWaitForABusyDialog)
{
    open();
    // The click keeps the dialog's thread inside the callback until the reports are through.
    const HANDLE reported = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    view_->onPause = {[](void* event) { WaitForSingleObject(event, 60000); }, reported};
    PostMessageW(dialog_, WM_COMMAND, IDC_PAUSE_JOB, 0);
    const DWORD start = GetTickCount();
    for (int report = 1; report <= 1000; ++report)
        view_->setFileProgress(L"file", report, false);
    view_->hide();
    view_->show();
    EXPECT_LT(GetTickCount() - start, 30000u);
    SetEvent(reported);
    EXPECT_TRUE(reads(IDC_FILE_TEXT, L"file (1000.00%)"));
    CloseHandle(reported);
}

} // namespace JobRunner
