#include "panekit/test_dialog.h"

namespace Panekit
{

namespace
{

class TextWithPopupMenuTest : public ControlTest<ITextWithPopupMenu>
{
protected:
    TextWithPopupMenuTest() : ControlTest(ControlClass::TextWithPopupMenu)
    {
        control_->addItem(L"Password", L"Password");
        control_->addItem(L"Key file", L"Key File");
    }

    /// Opens the menu with the first key; the others are waiting for the menu's own loop.
    void keys(WPARAM first, std::initializer_list<WPARAM> others)
    {
        for (const WPARAM key : others)
            PostMessageW(window(), WM_KEYDOWN, key, 0);
        SendMessageW(window(), WM_KEYDOWN, first, 0);
    }
    /// Opens the menu, reads its texts with the checked one in brackets, and leaves it.
    std::wstring menuText()
    {
        read.clear();
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, readMenu);
        keys(VK_SPACE, {});
        KillTimer(nullptr, timer);
        return read;
    }

    static void CALLBACK readMenu(HWND, UINT, UINT_PTR, DWORD)
    {
        constexpr UINT GetMenuHandle = 0x01E1;
        const HWND menuWindow = FindWindowW(L"#32768", nullptr);
        const auto menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, GetMenuHandle, 0, 0));
        if (!menu || !read.empty())
            return;
        for (int item = 0; item < GetMenuItemCount(menu); ++item)
        {
            wchar_t text[40] = {};
            GetMenuStringW(menu, static_cast<UINT>(item), text, 40, MF_BYPOSITION);
            const bool checked = (GetMenuState(menu, static_cast<UINT>(item), MF_BYPOSITION) & MF_CHECKED) != 0;
            read += checked ? L'[' + std::wstring(text) + L']' : text;
        }
        EndMenu();
    }

    static inline std::wstring read;
    const TestDialog::Message& changed() { return dialog_.received(ControlMessage::ItemChanged); }
};

} // namespace

TEST_F(TextWithPopupMenuTest, showsTheFirstItemAtFirst)
{
    EXPECT_EQ(windowText(), L"Password");
}

TEST_F(TextWithPopupMenuTest, selectsByIndexWithoutTellingTheParent)
{
    control_->setCurrentItem(1);
    EXPECT_EQ(windowText(), L"Key file");
    EXPECT_EQ(changed().count, 0);
}

TEST_F(TextWithPopupMenuTest, keepsItsItemForAnIndexThatIsNone)
{
    control_->setCurrentItem(1);
    control_->setCurrentItem(2);
    control_->setCurrentItem(-1);
    EXPECT_EQ(windowText(), L"Key file");
}

TEST_F(TextWithPopupMenuTest, tellsTheParentWhatWasPicked)
{
    keys(VK_SPACE, {VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(changed().lParam, 1);
    EXPECT_EQ(windowText(), L"Key file");
    keys(VK_RETURN, {VK_DOWN, VK_RETURN});
    EXPECT_EQ(changed().count, 2);
    EXPECT_EQ(changed().lParam, 0);
    EXPECT_EQ(windowText(), L"Password");
}

TEST_F(TextWithPopupMenuTest, changesNothingWhenTheMenuIsLeft)
{
    keys(VK_DOWN, {VK_DOWN, VK_DOWN, VK_ESCAPE});
    EXPECT_EQ(changed().count, 0);
    EXPECT_EQ(windowText(), L"Password");
}

TEST_F(TextWithPopupMenuTest, offersTheSecondTextsWithTheCurrentOneChecked)
{
    EXPECT_EQ(menuText(), L"[Password]Key File");
    control_->setCurrentItem(1);
    EXPECT_EQ(menuText(), L"Password[Key File]");
}

TEST_F(TextWithPopupMenuTest, opensByAltAndAnArrowToo)
{
    for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN})
        PostMessageW(window(), WM_KEYDOWN, key, 0);
    SendMessageW(window(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(changed().lParam, 1);
}

TEST_F(TextWithPopupMenuTest, keepsTheMenuOpenWhenTheCharacterOfTheKeyArrives)
{
    PostMessageW(window(), WM_CHAR, L' ', 1);
    keys(VK_SPACE, {VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(changed().lParam, 1);
}

TEST_F(TextWithPopupMenuTest, opensByAClick)
{
    for (const WPARAM key : {VK_DOWN, VK_RETURN})
        PostMessageW(window(), WM_KEYDOWN, key, 0);
    SendMessageW(window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(changed().wParam, static_cast<WPARAM>(control_->getControlId()));
}

TEST_F(TextWithPopupMenuTest, isReachedByTab)
{
    EXPECT_TRUE(GetWindowLongPtrW(window(), GWL_STYLE) & WS_TABSTOP);
}

TEST_F(TextWithPopupMenuTest, alignsCaptionsWithItsText)
{
    control_->move(30, 40);
    EXPECT_GE(control_->getCaptionLeft(), 30);
    control_->fitToContent();
    // Nothing is drawn to the left of that column.
    const int column = control_->getCaptionLeft() - 30;
    Drawing::MemoryBuffer buffer;
    paintInto(buffer);
    for (int x = 0; x < column; ++x)
        for (int y = 0; y < buffer.height(); ++y)
            EXPECT_EQ(GetPixel(buffer.dc(), x, y), RGB(255, 255, 255));
    // The text begins there.
    constexpr int Bearing = 3;
    EXPECT_GT(paintedUnlike(RGB(255, 255, 255), column), paintedUnlike(RGB(255, 255, 255), column + Bearing));
}

TEST_F(TextWithPopupMenuTest, isAsHighAsACaptionSoThatTheTextsOfARowStandOnOneLine)
{
    auto* const caption =
        static_cast<ITextWithLinks*>(makeControl(ControlClass::TextWithLinks, dialog_.window(), 0, 0, 100, 50));
    caption->setText(L"Repeat:");
    caption->fitToContent();
    ControlRect captionRect{};
    caption->getRect(&captionRect);
    caption->destroy();
    control_->fitToContent();
    EXPECT_EQ(height(), captionRect.bottom - captionRect.top);
}

TEST_F(TextWithPopupMenuTest, keepsItsSizeFromChoiceToChoice)
{
    control_->addItem(L"A much longer choice", L"Long");
    control_->fitToContent();
    const int before = width();
    control_->setCurrentItem(2);
    control_->fitToContent();
    EXPECT_EQ(width(), before);
}

} // namespace Panekit
