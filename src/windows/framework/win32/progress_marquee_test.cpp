#include "windows/framework/win32/progress_marquee.h"

#include <gtest/gtest.h>

#include <vector>

#include <commctrl.h>

namespace JobRunner
{

namespace
{

struct Sent
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    bool marqueeStyle; // as it was when the message came
    bool operator==(const Sent&) const = default;
};

/// A window in the place of a progress bar that remembers what a bar would be told.
class ProgressMarquee : public testing::Test
{
protected:
    ProgressMarquee()
    {
        sent.clear();
        bar_ =
            CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_BORDER, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(bar_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
    }
    ~ProgressMarquee() override { DestroyWindow(bar_); }

    static bool hasStyle(HWND bar) { return (GetWindowLongW(bar, GWL_STYLE) & PBS_MARQUEE) != 0; }

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message >= WM_USER)
            sent.push_back({message, wParam, lParam, hasStyle(window)});
        return DefWindowProcW(window, message, wParam, lParam);
    }

    static inline std::vector<Sent> sent;
    HWND bar_ = nullptr;
};

} // namespace

TEST_F(ProgressMarquee, startsWithTheStyleAndThenMovesEveryTenMilliseconds)
{
    SetProgressMarquee(bar_);
    EXPECT_TRUE(hasStyle(bar_));
    EXPECT_EQ(sent, (std::vector<Sent>{{1034, 1, 10, true}}));
}

TEST_F(ProgressMarquee, endsWithItsMoveFirstThenTheStyleThenTheRange)
{
    SetProgressMarquee(bar_);
    sent.clear();
    ClearProgressMarquee(bar_);
    EXPECT_FALSE(hasStyle(bar_));
    EXPECT_EQ(sent, (std::vector<Sent>{{1034, 0, 0, true}, {1025, 1, 6553600, false}}));
}

TEST_F(ProgressMarquee, leavesTheOtherStylesAsTheyAre)
{
    const LONG before = GetWindowLongW(bar_, GWL_STYLE);
    SetProgressMarquee(bar_);
    ClearProgressMarquee(bar_);
    EXPECT_EQ(GetWindowLongW(bar_, GWL_STYLE), before);
}

} // namespace JobRunner
