#include "panekit/edit_with_icon_buttons.h"

#include "panekit/field_colours.h"
#include "panekit/test_dialog.h"

namespace Panekit
{

namespace
{

constexpr COLORREF Red = RGB(255, 0, 0);

class EditWithIconButtonsTest : public ControlTest<IEditWithIconButtons>
{
protected:
    EditWithIconButtonsTest() : ControlTest(ControlClass::EditWithIconButtons)
    {
        control_->addIconButton(GetModuleHandleW(nullptr), L"SHOWPASS.PNG");
        control_->setWidth(200, true);
    }

    HWND field() { return FindWindowExW(window(), nullptr, L"EDIT", nullptr); }
    HWND button(HWND after = nullptr) { return FindWindowExW(window(), after, IconButton::ClassName, nullptr); }
    LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(field(), message, wParam, lParam);
    }
    void type(const std::wstring& text)
    {
        for (const wchar_t character : text)
            ask(WM_CHAR, character);
    }
    RECT place(HWND inside)
    {
        RECT area{};
        GetWindowRect(inside, &area);
        MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    const TestDialog::Message& changed() { return dialog_.received(ControlMessage::TextChanged); }

    /// Number of pixels of a colour, as the field draws its text.
    int drawn(COLORREF colour)
    {
        const Drawing::WindowDc screen(nullptr);
        RECT client{};
        GetClientRect(field(), &client);
        Drawing::MemoryBuffer buffer;
        buffer.create(screen.get(), static_cast<int>(client.right), static_cast<int>(client.bottom));
        ask(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
        int count = 0;
        for (int y = 0; y < buffer.height(); ++y)
            for (int x = 0; x < buffer.width(); ++x)
                count += GetPixel(buffer.dc(), x, y) == colour ? 1 : 0;
        return count;
    }
};

} // namespace

TEST_F(EditWithIconButtonsTest, givesTheTextThatItWasGiven)
{
    EXPECT_STREQ(control_->getText(), L"");
    control_->setText(L"C:\\keys\\one.zelkey");
    EXPECT_STREQ(control_->getText(), L"C:\\keys\\one.zelkey");
    control_->setText(nullptr);
    EXPECT_STREQ(control_->getText(), L"");
}

TEST_F(EditWithIconButtonsTest, givesTheTextThatWasTyped)
{
    type(L"s\x00E9\x0416 cret");
    EXPECT_STREQ(control_->getText(), L"s\x00E9\x0416 cret");
}

TEST_F(EditWithIconButtonsTest, tellsTheParentOfEachChange)
{
    type(L"ab");
    EXPECT_EQ(changed().count, 2);
    EXPECT_EQ(changed().wParam, static_cast<WPARAM>(control_->getControlId()));
    control_->setText(L"other");
    EXPECT_EQ(changed().count, 3);
    control_->setText(L"other");
    EXPECT_EQ(changed().count, 3);
}

TEST_F(EditWithIconButtonsTest, givesTheNewTextWhileItTellsOfIt)
{
    std::wstring seen;
    dialog_.onMessage([&](UINT) { seen = control_->getText(); });
    type(L"x");
    EXPECT_EQ(seen, L"x");
}

TEST_F(EditWithIconButtonsTest, keepsTextSelectionAndCaretWhenItIsMaskedAndUnmasked)
{
    control_->setText(L"correct horse");
    ask(EM_SETSEL, 3, 7);
    const int before = changed().count;
    for (int round = 0; round < 2; ++round)
    {
        control_->maskText();
        EXPECT_NE(ask(EM_GETPASSWORDCHAR), 0);
        EXPECT_STREQ(control_->getText(), L"correct horse");
        EXPECT_EQ(ask(EM_GETSEL), MAKELONG(3, 7));
        control_->unmaskText();
        EXPECT_EQ(ask(EM_GETPASSWORDCHAR), 0);
        EXPECT_STREQ(control_->getText(), L"correct horse");
        EXPECT_EQ(ask(EM_GETSEL), MAKELONG(3, 7));
    }
    EXPECT_EQ(changed().count, before);
}

TEST_F(EditWithIconButtonsTest, drawsAMaskedTextTheSameWhateverItIs)
{
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    control_->setText(L"iiiiii");
    control_->maskText();
    const int narrow = drawn(text);
    control_->setText(L"WWWWWW");
    EXPECT_GT(narrow, 0);
    EXPECT_EQ(drawn(text), narrow);
    control_->unmaskText();
    EXPECT_NE(drawn(text), narrow);
}

TEST_F(EditWithIconButtonsTest, givesNoMaskedTextToTheClipboard)
{
    control_->setText(L"secret");
    control_->maskText();
    ask(EM_SETSEL, 0, -1);
    EXPECT_TRUE(GetWindowLongPtrW(field(), GWL_STYLE) & ES_PASSWORD);
    ASSERT_TRUE(OpenClipboard(dialog_.window()));
    EmptyClipboard();
    CloseClipboard();
    ask(WM_COPY);
    ask(WM_CUT);
    type(L"\x03\x18");
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_STREQ(control_->getText(), L"secret");
    control_->unmaskText();
    ask(WM_COPY);
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
}

TEST_F(EditWithIconButtonsTest, tellsItsTextToNobodyAsTheTextOfItsWindow)
{
    control_->setText(L"secret");
    control_->maskText();
    EXPECT_EQ(windowText(), L"");
}

TEST_F(EditWithIconButtonsTest, takesATextOfThirtyTwoThousandCharacters)
{
    const std::wstring whole(32 * 1024, L'k');
    control_->maskText();
    control_->setText(whole.c_str());
    type(L"!");
    control_->unmaskText();
    EXPECT_EQ(control_->getText(), whole + L"!");
}

TEST_F(EditWithIconButtonsTest, scrollsATextThatIsLongerThanItself)
{
    control_->setText(std::wstring(500, L'w').c_str());
    // The caret stands behind the text and can be seen.
    const auto end = static_cast<LRESULT>(ask(EM_POSFROMCHAR, 499));
    EXPECT_EQ(ask(EM_GETSEL), MAKELONG(500, 500));
    EXPECT_GT(static_cast<short>(LOWORD(end)), 0);
    EXPECT_LT(static_cast<short>(LOWORD(end)), place(field()).right);
    EXPECT_LT(static_cast<short>(LOWORD(ask(EM_POSFROMCHAR, 0))), 0);
}

TEST_F(EditWithIconButtonsTest, showsAllOfItsTextOnceThereIsRoomForIt)
{
    control_->setWidth(60, true);
    control_->setText(L"C:\\keys\\home.zelkey");
    EXPECT_LT(static_cast<short>(LOWORD(ask(EM_POSFROMCHAR, 0))), 0);
    control_->setWidth(300, true);
    EXPECT_EQ(static_cast<short>(LOWORD(ask(EM_POSFROMCHAR, 0))), 0);
    EXPECT_EQ(ask(EM_GETSEL), MAKELONG(19, 19));
}

TEST_F(EditWithIconButtonsTest, selectsAllByControlAAndTypesNoUnseenCharacter)
{
    type(L"abc");
    type(L"\x01");
    EXPECT_EQ(ask(EM_GETSEL), MAKELONG(0, 3));
    ask(EM_SETSEL, 3, 3);
    type(L"\x7F");
    EXPECT_STREQ(control_->getText(), L"abc");
}

TEST_F(EditWithIconButtonsTest, drawsTheTextInTheGivenColour)
{
    control_->setText(L"repeat");
    EXPECT_EQ(drawn(Red), 0);
    control_->setTextColor(Red);
    EXPECT_GT(drawn(Red), 0);
    control_->setTextColor(RGB(0, 0, 0));
    EXPECT_EQ(drawn(Red), 0);
    EXPECT_GT(drawn(GetSysColor(COLOR_WINDOWTEXT)), 0);
}

TEST_F(EditWithIconButtonsTest, repaintsTheTextWhenItsColourChanges)
{
    dialog_.show();
    UpdateWindow(field());
    ValidateRect(field(), nullptr);
    control_->setTextColor(Red);
    EXPECT_TRUE(GetUpdateRect(field(), nullptr, FALSE));
}

TEST_F(EditWithIconButtonsTest, hasTheHeightOfOneLineAtAnyWidth)
{
    const int height = this->height();
    EXPECT_EQ(control_->heightForWidth(0), height);
    EXPECT_EQ(control_->heightForWidth(50), height);
    control_->setText(std::wstring(500, L'w').c_str());
    EXPECT_EQ(control_->heightForWidth(50), height);
    control_->setWidth(350, true);
    EXPECT_EQ(this->height(), height);
    EXPECT_EQ(width(), 350);
}

TEST_F(EditWithIconButtonsTest, fitsToItsText)
{
    control_->fitToContent();
    const int least = width();
    control_->setText(std::wstring(100, L'w').c_str());
    control_->fitToContent();
    EXPECT_GT(width(), least);
    EXPECT_GE(place(field()).right - place(field()).left, 100);
}

TEST_F(EditWithIconButtonsTest, keepsTheFieldAndTheButtonsInsideAndApart)
{
    control_->addIconButton(GetModuleHandleW(nullptr), L"DOTS.PNG");
    control_->setHeight(40);
    for (const int wide : {150, 300, 222})
    {
        control_->setWidth(wide, true);
        const RECT text = place(field());
        const RECT first = place(button());
        const RECT second = place(button(button()));
        EXPECT_GT(text.left, 0);
        EXPECT_GT(text.right, text.left);
        EXPECT_LE(text.right, first.left);
        EXPECT_LE(first.right, second.left);
        EXPECT_LT(second.right, wide);
        EXPECT_GE(first.top, 1);
        EXPECT_LE(first.bottom, 39);
        EXPECT_NEAR(text.top + text.bottom, 40, 1);
    }
}

TEST_F(EditWithIconButtonsTest, survivesAWidthThatHasNoRoomForTheField)
{
    control_->setWidth(5, true);
    control_->setText(L"text");
    EXPECT_EQ(painted(0, 0), fieldColours().frame);
    EXPECT_STREQ(control_->getText(), L"text");
}

TEST_F(EditWithIconButtonsTest, takesAFontAndItsHeight)
{
    const int before = height();
    const Drawing::GdiObject<HFONT> large(
        CreateFontW(-40, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma"));
    control_->setText(L"text");
    control_->maskText();
    SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(large.get()), TRUE);
    EXPECT_EQ(SendMessageW(window(), WM_GETFONT, 0, 0), reinterpret_cast<LRESULT>(large.get()));
    EXPECT_EQ(ask(WM_GETFONT), reinterpret_cast<LRESULT>(large.get()));
    EXPECT_GT(height(), before);
    EXPECT_EQ(height(), control_->heightForWidth(0));
    EXPECT_GE(place(field()).bottom - place(field()).top, 40);
    EXPECT_NE(ask(EM_GETPASSWORDCHAR), 0);
    EXPECT_STREQ(control_->getText(), L"text");
}

TEST_F(EditWithIconButtonsTest, handsTheFocusOnToTheField)
{
    dialog_.show();
    SetFocus(window());
    EXPECT_EQ(GetFocus(), field());
    SetFocus(dialog_.window());
    SendMessageW(window(), WM_LBUTTONDOWN, 0, MAKELPARAM(2, 2));
    EXPECT_EQ(GetFocus(), field());
}

TEST_F(EditWithIconButtonsTest, showsInItsFrameThatItHasTheFocus)
{
    dialog_.show();
    SetFocus(dialog_.window());
    EXPECT_EQ(painted(0, 0), fieldColours().frame);
    SetFocus(window());
    EXPECT_EQ(painted(0, 0), fieldColours().focusedFrame);
    EXPECT_NE(fieldColours().frame, fieldColours().focusedFrame);
}

TEST_F(EditWithIconButtonsTest, worksWithoutAWindow)
{
    TestDialog* const shortLived = new TestDialog;
    auto* const control = static_cast<IEditWithIconButtons*>(
        makeControl(ControlClass::EditWithIconButtons, shortLived->window(), 0, 0, 100, 50));
    control->addIconButton(GetModuleHandleW(nullptr), L"DOTS.PNG");
    control->setText(L"text");
    delete shortLived;
    control->maskText();
    control->unmaskText();
    control->setText(L"more");
    control->addIconButton(GetModuleHandleW(nullptr), L"DOTS.PNG");
    control->showBalloon(L"title", L"text");
    control->setTextColor(Red);
    EXPECT_STREQ(control->getText(), L"");
    control->destroy();
}

TEST(FieldColours, areTheSystemsOwnWithHighContrast)
{
    const FieldColours colours = fieldColours(true);
    EXPECT_EQ(colours.frame, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(colours.focusedFrame, GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_NE(fieldColours(false).focusedFrame, colours.frame);
}

} // namespace Panekit
