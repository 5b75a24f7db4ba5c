#pragma once

#include "resources/resource.h"
#include "windows/progress/win32/progress_window_view.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace JobRunner
{

/// Waits for what the dialog's thread does in its own time; a condition that never comes true is a failure.
inline bool eventually(const std::function<bool()>& condition)
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

inline BOOL CALLBACK keepProgressDialog(HWND window, LPARAM result)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && GetDlgItem(window, IDC_PAUSE_JOB))
        *reinterpret_cast<HWND*>(result) = window;
    return TRUE;
}

inline HWND findDialog()
{
    HWND found = nullptr;
    EnumWindows(keepProgressDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

inline std::wstring textOf(HWND window)
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

} // namespace JobRunner
