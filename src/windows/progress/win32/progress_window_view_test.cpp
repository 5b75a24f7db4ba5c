#include "windows/progress/win32/progress_window_view.h"

#include "resources/resource.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace JobRunner
{

namespace
{

/// Waits for what the dialog's thread does in its own time; a condition that never comes true is a failure.
bool eventually(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end)
    {
        if (condition())
            return true;
        Sleep(5);
    }
    return condition();
}

BOOL CALLBACK keepProgressDialog(HWND window, LPARAM result)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && GetDlgItem(window, IDC_PAUSE_JOB))
        *reinterpret_cast<HWND*>(result) = window;
    return TRUE;
}

HWND findDialog()
{
    HWND found = nullptr;
    EnumWindows(keepProgressDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring textOf(HWND window)
{
    std::array<wchar_t, 256> text{};
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return text.data();
}

class ProgressDialogTest : public testing::Test
{
protected:
    void open(int operation = OperationEncrypt)
    {
        view_ = std::make_unique<ProgressWindowView>(operation);
        view_->onCancel = {count, &cancels_};
        view_->onPause = {count, &pauses_};
        view_->create();
        dialog_ = findDialog();
        ASSERT_NE(dialog_, nullptr);
    }

    static void count(void* context) { ++*static_cast<std::atomic<int>*>(context); }

    HWND item(int id) const { return GetDlgItem(dialog_, id); }
    std::wstring text(int id) const
    {
        std::array<wchar_t, 256> buffer{};
        GetDlgItemTextW(dialog_, id, buffer.data(), static_cast<int>(buffer.size()));
        return buffer.data();
    }
    testing::AssertionResult reads(int id, const std::wstring& expected) const
    {
        if (eventually([&] { return text(id) == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "item " << id << " reads " << testing::PrintToString(text(id));
    }
    testing::AssertionResult titleReads(const std::wstring& expected) const
    {
        if (eventually([&] { return textOf(dialog_) == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "title reads " << testing::PrintToString(textOf(dialog_));
    }
    LRESULT position(int id) const { return SendMessageW(item(id), PBM_GETPOS, 0, 0); }
    bool isMarquee() const { return (GetWindowLongW(item(IDC_TOTAL_BAR), GWL_STYLE) & PBS_MARQUEE) != 0; }
    GUITHREADINFO thread() const
    {
        GUITHREADINFO information{};
        information.cbSize = sizeof information;
        GetGUIThreadInfo(GetWindowThreadProcessId(dialog_, nullptr), &information);
        return information;
    }
    bool isMoving() const { return (thread().flags & GUI_INMOVESIZE) != 0; }
    HWND focus() const { return thread().hwndFocus; }
    void click(int id) const { SendMessageW(item(id), BM_CLICK, 0, 0); }

    std::atomic<int> cancels_{0};
    std::atomic<int> pauses_{0};
    std::unique_ptr<ProgressWindowView> view_;
    HWND dialog_ = nullptr;
};

} // namespace

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
