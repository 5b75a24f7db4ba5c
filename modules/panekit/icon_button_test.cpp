#include "panekit/icon_button.h"

#include "panekit/field_colours.h"
#include "panekit/test_dialog.h"

namespace Panekit
{

namespace
{

constexpr LPARAM Repeated = 1 << 30;

class IconButtonTest : public ControlTest<IEditWithIconButtons>
{
protected:
    IconButtonTest() : ControlTest(ControlClass::EditWithIconButtons)
    {
        control_->addIconButton(GetModuleHandleW(nullptr), L"SHOWPASS.PNG");
        control_->addIconButton(GetModuleHandleW(nullptr), L"DOTS.PNG");
        control_->setWidth(200, true);
        dialog_.show();
    }

    HWND field() { return FindWindowExW(window(), nullptr, L"EDIT", nullptr); }
    HWND button(int index = 0)
    {
        const HWND first = FindWindowExW(window(), nullptr, IconButton::ClassName, nullptr);
        return index == 0 ? first : FindWindowExW(window(), first, IconButton::ClassName, nullptr);
    }
    void send(UINT message, WPARAM wParam = 0, LPARAM lParam = MAKELPARAM(5, 5))
    {
        SendMessageW(button(), message, wParam, lParam);
    }
    const TestDialog::Message& pressed() { return dialog_.received(ControlMessage::ButtonPressed); }
    const TestDialog::Message& clicked() { return dialog_.received(ControlMessage::ButtonClicked); }
    /// Whether exactly one hold has begun, and ended or not.
    bool isHeld() { return pressed().count == 1 && clicked().count == 0; }
    bool isOver() { return pressed().count == 1 && clicked().count == 1; }

    COLORREF colourOf(HWND drawn)
    {
        const Drawing::WindowDc screen(nullptr);
        RECT client{};
        GetClientRect(drawn, &client);
        Drawing::MemoryBuffer buffer;
        buffer.create(screen.get(), static_cast<int>(client.right), static_cast<int>(client.bottom));
        SendMessageW(drawn, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
        return GetPixel(buffer.dc(), 0, 0);
    }
};

} // namespace

TEST_F(IconButtonTest, tellsOfThePressAtOnceAndOfItsEndAtTheRelease)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(pressed().wParam, static_cast<WPARAM>(control_->getControlId()));
    EXPECT_EQ(pressed().lParam, 0);
    send(WM_LBUTTONUP);
    EXPECT_TRUE(isOver());
    EXPECT_EQ(clicked().wParam, static_cast<WPARAM>(control_->getControlId()));
    EXPECT_EQ(clicked().lParam, 0);
    EXPECT_NE(GetCapture(), button());
}

TEST_F(IconButtonTest, namesTheButtonByItsIndex)
{
    SendMessageW(button(1), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_EQ(pressed().lParam, 1);
    SendMessageW(button(1), WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(clicked().lParam, 1);
}

TEST_F(IconButtonTest, isHeldWhileTheMouseLeavesIt)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(GetCapture(), button());
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(500, 500));
    EXPECT_TRUE(isHeld());
    send(WM_LBUTTONUP, 0, MAKELPARAM(500, 500));
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, endsThePressWhenTheCaptureIsLost)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    SetCapture(dialog_.window());
    EXPECT_TRUE(isOver());
    send(WM_LBUTTONUP);
    EXPECT_TRUE(isOver());
    ReleaseCapture();
}

TEST_F(IconButtonTest, endsThePressWhenTheReleaseWasMissed)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    send(WM_MOUSEMOVE, 0);
    EXPECT_TRUE(isOver());
    EXPECT_NE(GetCapture(), button());
}

TEST_F(IconButtonTest, endsThePressWhenTheControlIsHidden)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    ShowWindow(window(), SW_HIDE);
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, endsThePressWhenTheSystemCancels)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    send(WM_CANCELMODE, 0, 0);
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, endsThePressThatLostItsCaptureWhileItWasTold)
{
    dialog_.onMessage(
        [](UINT message)
        {
            if (message == RegisterWindowMessageW(ControlMessage::ButtonPressed))
                ReleaseCapture();
        });
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, survivesItsEndWhileItTells)
{
    dialog_.onMessage(
        [this](UINT)
        {
            dialog_.onMessage(nullptr);
            control_->destroy();
            control_ = nullptr;
        });
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_FALSE(control_);
    EXPECT_TRUE(isHeld()); // nobody is left to tell the end
}

TEST_F(IconButtonTest, isHeldDownBySpaceAndByEnter)
{
    for (const WPARAM key : {VK_SPACE, VK_RETURN})
    {
        SetFocus(button());
        const int before = pressed().count;
        send(WM_KEYDOWN, key, 1);
        EXPECT_EQ(pressed().count, before + 1);
        EXPECT_EQ(clicked().count, before);
        send(WM_KEYDOWN, key, 1 | Repeated);
        EXPECT_EQ(pressed().count, before + 1);
        send(WM_KEYUP, VK_TAB, 1);
        EXPECT_EQ(clicked().count, before);
        send(WM_KEYUP, key, 1);
        EXPECT_EQ(clicked().count, before + 1);
    }
}

TEST_F(IconButtonTest, doesNotTakeUpAKeyThatWasHeldBefore)
{
    send(WM_KEYDOWN, VK_RETURN, 1 | Repeated);
    send(WM_KEYUP, VK_RETURN, 1);
    EXPECT_EQ(pressed().count, 0);
    EXPECT_EQ(clicked().count, 0);
}

TEST_F(IconButtonTest, endsThePressOfAKeyWhenTheFocusGoes)
{
    SetFocus(button());
    send(WM_KEYDOWN, VK_SPACE, 1);
    SetFocus(dialog_.window());
    EXPECT_TRUE(isOver());
    send(WM_KEYUP, VK_SPACE, 1);
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, isHeldByTheMouseOrByAKeyButNotByBoth)
{
    SetFocus(button());
    send(WM_KEYDOWN, VK_SPACE, 1);
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    send(WM_LBUTTONUP);
    EXPECT_TRUE(isHeld());
    send(WM_KEYUP, VK_SPACE, 1);
    EXPECT_TRUE(isOver());
}

TEST_F(IconButtonTest, leavesTheFocusToTheFieldWhenItIsClicked)
{
    SetFocus(dialog_.window());
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(GetFocus(), field());
    send(WM_LBUTTONUP);
    EXPECT_EQ(GetFocus(), field());
}

TEST_F(IconButtonTest, looksHotHeldAndFocused)
{
    const FieldColours colours = fieldColours();
    EXPECT_EQ(colourOf(button()), GetSysColor(COLOR_WINDOW));
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(colourOf(button()), colours.pressedButton);
    send(WM_LBUTTONUP);
    send(WM_MOUSEMOVE, 0);
    EXPECT_EQ(colourOf(button()), colours.hotButton);
    send(WM_MOUSELEAVE, 0);
    EXPECT_EQ(colourOf(button()), GetSysColor(COLOR_WINDOW));
    SetFocus(button());
    EXPECT_EQ(colourOf(button()), colours.focusedFrame);
}

TEST_F(IconButtonTest, keepsTheSelectionOfTheFieldWhileItIsHeld)
{
    control_->setText(L"secret");
    control_->maskText();
    SetFocus(window());
    SendMessageW(field(), EM_SETSEL, 2, 4);
    dialog_.onMessage(
        [this](UINT message)
        {
            if (message == RegisterWindowMessageW(ControlMessage::ButtonPressed))
                control_->unmaskText();
            if (message == RegisterWindowMessageW(ControlMessage::ButtonClicked))
                control_->maskText();
        });
    send(WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(SendMessageW(field(), EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_EQ(SendMessageW(field(), EM_GETSEL, 0, 0), MAKELONG(2, 4));
    send(WM_LBUTTONUP);
    EXPECT_NE(SendMessageW(field(), EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_EQ(SendMessageW(field(), EM_GETSEL, 0, 0), MAKELONG(2, 4));
    EXPECT_STREQ(control_->getText(), L"secret");
}

TEST_F(IconButtonTest, drawsItsPictureOrStaysEmpty)
{
    control_->addIconButton(GetModuleHandleW(nullptr), L"NOSUCH.PNG");
    const HWND empty = FindWindowExW(window(), button(1), IconButton::ClassName, nullptr);
    ASSERT_TRUE(empty);
    const auto inked = [](HWND drawn)
    {
        const Drawing::WindowDc screen(nullptr);
        RECT client{};
        GetClientRect(drawn, &client);
        Drawing::MemoryBuffer buffer;
        buffer.create(screen.get(), static_cast<int>(client.right), static_cast<int>(client.bottom));
        SendMessageW(drawn, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
        int count = 0;
        for (int y = 0; y < buffer.height(); ++y)
            for (int x = 0; x < buffer.width(); ++x)
                count += GetPixel(buffer.dc(), x, y) != GetSysColor(COLOR_WINDOW) ? 1 : 0;
        return count;
    };
    EXPECT_GT(inked(button()), 20);
    EXPECT_GT(inked(button(1)), 5);
    EXPECT_EQ(inked(empty), 0);
}

} // namespace Panekit
