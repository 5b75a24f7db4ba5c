#include "panekit/balloon_tip.h"

#include "panekit/test_dialog.h"

#include <commctrl.h>

namespace Panekit
{

namespace
{

class BalloonTest : public ControlTest<IEditWithIconButtons>
{
protected:
    BalloonTest() : ControlTest(ControlClass::EditWithIconButtons)
    {
        control_->addIconButton(GetModuleHandleW(nullptr), L"SHOWPASS.PNG");
        control_->move(30, 40);
        dialog_.show();
    }

    static BOOL CALLBACK findBalloon(HWND window, LPARAM found)
    {
        wchar_t name[40] = {};
        GetClassNameW(window, name, 40);
        if (std::wstring(name) != TOOLTIPS_CLASSW || !IsWindowVisible(window))
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    /// The balloon that can be seen.
    static HWND balloon()
    {
        HWND found = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), findBalloon, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    HWND field() { return FindWindowExW(window(), nullptr, L"EDIT", nullptr); }
    void show() { control_->showBalloon(L"Correct your password", L"Please type password here."); }
    std::wstring shownText()
    {
        wchar_t text[200] = {};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.hwnd = window();
        tool.lpszText = text;
        SendMessageW(balloon(), TTM_GETTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
        return text;
    }
};

} // namespace

TEST_F(BalloonTest, isShownOverTheFieldThatTakesTheFocus)
{
    EXPECT_FALSE(balloon());
    show();
    ASSERT_TRUE(balloon());
    EXPECT_EQ(shownText(), L"Please type password here.");
    EXPECT_EQ(GetFocus(), field());
    EXPECT_TRUE(GetWindowLongPtrW(balloon(), GWL_STYLE) & TTS_BALLOON);
}

TEST_F(BalloonTest, showsTheNewestText)
{
    show();
    control_->showBalloon(L"Correct your password", L"Your second password must match the first password.");
    EXPECT_EQ(shownText(), L"Your second password must match the first password.");
}

TEST_F(BalloonTest, takesALongTextAndALongTitle)
{
    control_->showBalloon(std::wstring(300, L't').c_str(), (std::wstring(150, L'x') + L" end").c_str());
    ASSERT_TRUE(balloon());
    EXPECT_EQ(shownText(), std::wstring(150, L'x') + L" end");
}

TEST_F(BalloonTest, takesNoTextAsAnEmptyOne)
{
    control_->showBalloon(nullptr, L"text");
    EXPECT_TRUE(balloon());
    control_->showBalloon(L"title", nullptr);
    control_->showBalloon(nullptr, nullptr);
}

TEST_F(BalloonTest, goesWhenTheUserTypes)
{
    show();
    SendMessageW(field(), WM_CHAR, L'a', 1);
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, goesWithAKeyThatTypesNothing)
{
    show();
    SendMessageW(field(), WM_KEYDOWN, VK_LEFT, 1);
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, goesWhenTheFocusGoes)
{
    show();
    SetFocus(dialog_.window());
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, goesWithAClickIntoTheFieldOrOnTheBalloonOrAButton)
{
    show();
    SendMessageW(field(), WM_LBUTTONDOWN, 0, 0);
    EXPECT_FALSE(balloon());
    SendMessageW(field(), WM_LBUTTONUP, 0, 0);
    show();
    SendMessageW(balloon(), WM_LBUTTONDOWN, 0, 0);
    EXPECT_FALSE(balloon());
    show();
    const HWND button = GetWindow(field(), GW_HWNDNEXT);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_FALSE(balloon());
    SendMessageW(button, WM_LBUTTONUP, 0, 0);
}

TEST_F(BalloonTest, goesWhenTheTextIsSet)
{
    show();
    control_->setText(L"other");
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, isWatchedWhileItIsShownOnly)
{
    constexpr UINT_PTR Timers[] = {1, 2}; // its end, and a look at where the field is
    show();
    for (const UINT_PTR timer : Timers)
        EXPECT_TRUE(KillTimer(window(), timer)) << timer;
    show();
    control_->setText(L"x");
    for (const UINT_PTR timer : Timers)
        EXPECT_FALSE(KillTimer(window(), timer)) << timer;
}

TEST_F(BalloonTest, goesAfterSomeSeconds)
{
    show();
    constexpr WPARAM ItsTime = 1;
    constexpr WPARAM ItsWatch = 2;
    SendMessageW(window(), WM_TIMER, ItsWatch, 0);
    EXPECT_TRUE(balloon());
    SendMessageW(window(), WM_TIMER, ItsTime, 0);
    EXPECT_FALSE(balloon());
    EXPECT_FALSE(KillTimer(window(), ItsTime));
    EXPECT_FALSE(KillTimer(window(), ItsWatch));
}

TEST_F(BalloonTest, doesNotStayBehindWhenTheDialogMoves)
{
    show();
    SetWindowPos(dialog_.window(), nullptr, 60, 70, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(window(), WM_TIMER, 2, 0);
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, goesWithTheControl)
{
    show();
    ShowWindow(window(), SW_HIDE);
    EXPECT_FALSE(balloon());
    ShowWindow(window(), SW_SHOW);
    show();
    EXPECT_TRUE(balloon());
    control_->destroy();
    control_ = nullptr;
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, isNotShownByAHiddenControl)
{
    ShowWindow(window(), SW_HIDE);
    show();
    EXPECT_FALSE(balloon());
}

TEST_F(BalloonTest, isTakenBackToTheScreenEachTime)
{
    for (int round = 0; round < 3; ++round)
    {
        show();
        ASSERT_TRUE(balloon());
        RECT area{};
        GetWindowRect(balloon(), &area);
        EXPECT_GE(area.left, 0);
        EXPECT_GE(area.top, 0);
        EXPECT_GT(area.right - area.left, 50);
        SendMessageW(balloon(), WM_LBUTTONDOWN, 0, 0);
    }
}

} // namespace Panekit
