#include "panekit/test_dialog.h"

#include "panekit/text_colours.h"

namespace Panekit
{

namespace
{

class TextWithLinksTest : public ControlTest<ITextWithLinks>
{
protected:
    TextWithLinksTest() : ControlTest(ControlClass::TextWithLinks) {}

    void mouse(UINT message, int x, int y) { SendMessageW(window(), message, 0, MAKELPARAM(x, y)); }
    void click(int x, int y)
    {
        mouse(WM_LBUTTONDOWN, x, y);
        mouse(WM_LBUTTONUP, x, y);
    }
    void press(WPARAM key) { SendMessageW(window(), WM_KEYDOWN, key, 0); }
    int paintedIn(COLORREF colour) { return width() * height() - paintedUnlike(colour); }
    const TestDialog::Message& clicked() { return dialog_.received(ControlMessage::HyperlinkClicked); }
};

} // namespace

TEST_F(TextWithLinksTest, sendsTheTargetOfTheClickedLink)
{
    control_->setText(L"<a href=\"riddle\">Set Riddle</a>");
    control_->fitToContent();
    click(width() / 2, height() / 2);
    EXPECT_EQ(clicked().count, 1);
    EXPECT_EQ(clicked().text, L"riddle");
    EXPECT_EQ(clicked().wParam, static_cast<WPARAM>(control_->getControlId()));
}

TEST_F(TextWithLinksTest, sendsNothingForAClickBesideALink)
{
    control_->setText(L"plain <a href=\"x\">link</a>");
    control_->fitToContent();
    click(2, height() / 2);
    EXPECT_EQ(clicked().count, 0);
    click(width() - 3, height() / 2);
    EXPECT_EQ(clicked().count, 1);
}

TEST_F(TextWithLinksTest, sendsNothingWhenTheMouseIsReleasedElsewhere)
{
    control_->setText(L"plain <a href=\"x\">link</a>");
    control_->fitToContent();
    mouse(WM_LBUTTONDOWN, width() - 3, height() / 2);
    mouse(WM_LBUTTONUP, 2, height() / 2);
    EXPECT_EQ(clicked().count, 0);
}

TEST_F(TextWithLinksTest, sendsNothingWhenTheMouseWasPressedElsewhere)
{
    control_->setText(L"plain <a href=\"x\">link</a>");
    control_->fitToContent();
    mouse(WM_LBUTTONDOWN, 2, height() / 2);
    mouse(WM_LBUTTONUP, width() - 3, height() / 2);
    EXPECT_EQ(clicked().count, 0);
    control_->setText(L"<a href=\"x\">one</a> <a href=\"y\">two</a>");
    control_->fitToContent();
    mouse(WM_LBUTTONDOWN, 2, height() / 2);
    mouse(WM_LBUTTONUP, width() - 3, height() / 2);
    EXPECT_EQ(clicked().count, 0);
}

TEST_F(TextWithLinksTest, tellsTheParentOfTheMouse)
{
    control_->setText(L"<a href=\"x\">link</a>");
    mouse(WM_MOUSEMOVE, 3, 3);
    mouse(WM_LBUTTONDOWN, 3, 3);
    mouse(WM_LBUTTONUP, 3, 3);
    mouse(WM_MOUSELEAVE, 0, 0);
    for (const wchar_t* const name : {ControlMessage::LinkMouseMove, ControlMessage::LinkButtonDown,
                                      ControlMessage::LinkButtonUp, ControlMessage::LinkMouseLeave})
        EXPECT_GE(dialog_.received(name).count, 1);
}

TEST_F(TextWithLinksTest, isReachedByTabOnlyWithALink)
{
    control_->setText(L"plain");
    EXPECT_FALSE(GetWindowLongPtrW(window(), GWL_STYLE) & WS_TABSTOP);
    control_->setText(L"<a href=\"x\">link</a>");
    EXPECT_TRUE(GetWindowLongPtrW(window(), GWL_STYLE) & WS_TABSTOP);
}

TEST_F(TextWithLinksTest, followsALinkByTheKeyboard)
{
    control_->setText(L"<a href=\"one\">a</a> and <a href=\"two\">b</a>");
    press(VK_RETURN);
    EXPECT_EQ(clicked().text, L"one");
    press(VK_RIGHT);
    press(VK_SPACE);
    EXPECT_EQ(clicked().text, L"two");
    press(VK_DOWN);
    press(VK_RETURN);
    EXPECT_EQ(clicked().text, L"two");
    press(VK_LEFT);
    press(VK_UP);
    press(VK_RETURN);
    EXPECT_EQ(clicked().text, L"one");
    EXPECT_EQ(clicked().count, 4);
}

TEST_F(TextWithLinksTest, followsAKeyThatIsKeptDownOnce)
{
    control_->setText(L"<a href=\"one\">a</a>");
    constexpr LPARAM Repeated = 1 << 30;
    press(VK_RETURN);
    SendMessageW(window(), WM_KEYDOWN, VK_RETURN, Repeated);
    SendMessageW(window(), WM_KEYDOWN, VK_SPACE, Repeated);
    EXPECT_EQ(clicked().count, 1);
}

TEST_F(TextWithLinksTest, forgetsAPressWhenTheCaptureIsLost)
{
    control_->setText(L"<a href=\"x\">link</a>");
    control_->fitToContent();
    mouse(WM_LBUTTONDOWN, 3, 3);
    SetCapture(dialog_.window());
    mouse(WM_LBUTTONUP, 3, 3);
    EXPECT_EQ(clicked().count, 0);
    ReleaseCapture();
}

TEST_F(TextWithLinksTest, survivesItsEndBetweenTheReleaseAndTheClick)
{
    control_->setText(L"<a href=\"x\">link</a>");
    control_->fitToContent();
    dialog_.onMessage(
        [this](UINT message)
        {
            if (message != RegisterWindowMessageW(ControlMessage::LinkButtonUp))
                return;
            control_->destroy();
            control_ = nullptr;
        });
    const HWND own = window();
    SendMessageW(own, WM_LBUTTONDOWN, 0, MAKELPARAM(3, 3));
    SendMessageW(own, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_FALSE(control_);
    EXPECT_EQ(clicked().count, 0);
}

TEST_F(TextWithLinksTest, takesAnotherTextWhileItTells)
{
    control_->setText(L"<a href=\"changedestiny\">Change</a>");
    dialog_.onMessage(
        [this](UINT message)
        {
            if (message == RegisterWindowMessageW(ControlMessage::HyperlinkClicked))
                control_->setText(L"gone");
        });
    press(VK_RETURN);
    EXPECT_EQ(clicked().text, L"changedestiny");
    press(VK_RETURN);
    EXPECT_EQ(clicked().count, 1);
}

TEST_F(TextWithLinksTest, takesTheEnterKeyFromTheDefaultButton)
{
    control_->setText(L"<a href=\"one\">a</a>");
    MSG enter{};
    enter.message = WM_KEYDOWN;
    enter.wParam = VK_RETURN;
    const LRESULT code = SendMessageW(window(), WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter));
    EXPECT_TRUE(code & DLGC_WANTMESSAGE);
    EXPECT_FALSE(SendMessageW(window(), WM_GETDLGCODE, 0, 0) & DLGC_WANTMESSAGE);
}

TEST_F(TextWithLinksTest, withoutALinkIgnoresTheKeyboard)
{
    control_->setText(L"plain");
    press(VK_RETURN);
    press(VK_RIGHT);
    EXPECT_EQ(clicked().count, 0);
}

TEST_F(TextWithLinksTest, tellsItsTextWithoutTheAnchors)
{
    control_->setText(L"See <a href=\"x\">this</a>.");
    EXPECT_EQ(windowText(), L"See this.");
}

TEST_F(TextWithLinksTest, growsWithItsWidth)
{
    control_->setText(L"A long text with <a href=\"x\">a link of several words</a> and an end.");
    const int line = heightOfOneLine();
    control_->setWidth(80, true);
    EXPECT_GE(height(), 3 * line);
    EXPECT_EQ(height(), control_->heightForWidth(80));
}

TEST_F(TextWithLinksTest, drawsALinkInAColourOfItsOwn)
{
    control_->setText(L"link");
    control_->fitToContent();
    EXPECT_EQ(paintedIn(LinkColour), 0);
    EXPECT_GT(paintedUnlike(RGB(255, 255, 255)), 0);
    control_->setText(L"<a href=\"x\">link</a>");
    EXPECT_GT(paintedIn(LinkColour), 0);
}

TEST_F(TextWithLinksTest, drawsACaptionInAColourOfItsOwn)
{
    control_->setText(L"Origin:");
    control_->fitToContent();
    EXPECT_GT(paintedIn(TextColour), 0);
    control_->setCaptionStyle(true);
    EXPECT_EQ(paintedIn(TextColour), 0);
    EXPECT_GT(paintedIn(CaptionColour), 0);
    control_->setCaptionStyle(false);
    EXPECT_GT(paintedIn(TextColour), 0);
}

} // namespace Panekit
