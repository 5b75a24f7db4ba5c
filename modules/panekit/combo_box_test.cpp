#include "panekit/test_dialog.h"

namespace Panekit
{

namespace
{

constexpr int Items = 17;

class ComboBoxTest : public ControlTest<IComboBox>
{
protected:
    ComboBoxTest() : ControlTest(ControlClass::ComboBox)
    {
        for (int i = 0; i < Items; ++i)
            control_->addItem((L"CIPHER-" + std::to_wstring(100 + i)).c_str());
        control_->setCurrentItem(3);
        dialog_.show();
    }

    HWND list() { return FindWindowExW(window(), nullptr, L"COMBOBOX", nullptr); }
    LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(list(), message, wParam, lParam);
    }
    bool isOpen() { return ask(CB_GETDROPPEDSTATE) != 0; }
    /// The focus is on the list; what it has told itself is worked off.
    void press(WPARAM key)
    {
        ask(WM_KEYDOWN, key, 1);
        ask(WM_KEYUP, key, 1);
        pump();
    }
    void pump()
    {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    COMBOBOXINFO info()
    {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(list(), &info);
        return info;
    }
    int openHeight()
    {
        RECT area{};
        GetWindowRect(info().hwndList, &area);
        return static_cast<int>(area.bottom - area.top);
    }
    const TestDialog::Message& changed() { return dialog_.received(ControlMessage::SelectionChanged); }
};

} // namespace

TEST_F(ComboBoxTest, holdsTheItemsInTheirOrder)
{
    EXPECT_EQ(ask(CB_GETCOUNT), Items);
    wchar_t text[50] = {};
    ask(CB_GETLBTEXT, 16, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, L"CIPHER-116");
    EXPECT_EQ(control_->getCurrentItem(), 3);
}

TEST_F(ComboBoxTest, isADropDownListThatNobodyTypesInto)
{
    EXPECT_EQ(GetWindowLongPtrW(list(), GWL_STYLE) & 3, CBS_DROPDOWNLIST);
}

TEST_F(ComboBoxTest, hasNoCurrentItemWhenItIsCleared)
{
    control_->clearItems();
    EXPECT_EQ(ask(CB_GETCOUNT), 0);
    EXPECT_EQ(control_->getCurrentItem(), -1);
}

TEST_F(ComboBoxTest, keepsItsItemForAnIndexThatIsNone)
{
    control_->setCurrentItem(Items);
    control_->setCurrentItem(-1);
    EXPECT_EQ(control_->getCurrentItem(), 3);
}

TEST_F(ComboBoxTest, tellsNothingOfWhatTheProgramDoes)
{
    control_->showDropDown();
    control_->setCurrentItem(5);
    control_->clearItems();
    control_->addItem(L"one");
    control_->setCurrentItem(0);
    pump();
    EXPECT_EQ(changed().count, 0);
}

TEST_F(ComboBoxTest, opensItsListAndTakesTheFocus)
{
    EXPECT_FALSE(isOpen());
    control_->showDropDown();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(GetFocus(), list());
}

TEST_F(ComboBoxTest, showsEveryItemInTheOpenListOrScrolls)
{
    control_->showDropDown();
    const auto row = static_cast<int>(ask(CB_GETITEMHEIGHT));
    const bool scrolls = (GetWindowLongPtrW(info().hwndList, GWL_STYLE) & WS_VSCROLL) != 0;
    EXPECT_TRUE(scrolls || openHeight() >= Items * row);
    EXPECT_GE(openHeight(), 8 * row);
    EXPECT_LE(openHeight(), (Items + 1) * row);
}

TEST_F(ComboBoxTest, tellsOfTheItemThatEnterChooses)
{
    control_->showDropDown();
    press(VK_DOWN);
    press(VK_DOWN);
    EXPECT_EQ(changed().count, 0); // so far it is only looked at
    press(VK_RETURN);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(changed().wParam, static_cast<WPARAM>(control_->getControlId()));
    EXPECT_EQ(control_->getCurrentItem(), 5);
}

TEST_F(ComboBoxTest, tellsOfTheSameItemOnceMore)
{
    control_->showDropDown();
    press(VK_RETURN);
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(control_->getCurrentItem(), 3);
}

TEST_F(ComboBoxTest, goesBackToItsItemWhenTheListIsLeft)
{
    control_->showDropDown();
    press(VK_DOWN);
    press(VK_END);
    press(VK_ESCAPE);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(changed().count, 0);
    EXPECT_EQ(control_->getCurrentItem(), 3);
    control_->showDropDown();
    press(VK_DOWN);
    SetFocus(dialog_.window());
    pump();
    EXPECT_EQ(changed().count, 0);
    EXPECT_EQ(control_->getCurrentItem(), 3);
}

TEST_F(ComboBoxTest, tellsOfTheItemThatIsClicked)
{
    control_->showDropDown();
    const HWND items = info().hwndList;
    const auto row = static_cast<int>(ask(CB_GETITEMHEIGHT));
    const LPARAM second = MAKELPARAM(5, row + row / 2);
    SendMessageW(items, LB_SETTOPINDEX, 0, 0);
    SendMessageW(items, WM_MOUSEMOVE, 0, second);
    SendMessageW(items, WM_LBUTTONDOWN, MK_LBUTTON, second);
    SendMessageW(items, WM_LBUTTONUP, 0, second);
    pump();
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(control_->getCurrentItem(), 1);
}

TEST_F(ComboBoxTest, opensByTheArrowKeysInsteadOfStepping)
{
    SetFocus(window());
    EXPECT_EQ(GetFocus(), list());
    press(VK_DOWN);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(control_->getCurrentItem(), 3);
    press(VK_ESCAPE);
    press(VK_UP);
    EXPECT_TRUE(isOpen());
    press(VK_END);
    press(VK_RETURN);
    EXPECT_EQ(control_->getCurrentItem(), Items - 1);
    EXPECT_EQ(changed().count, 1);
}

TEST_F(ComboBoxTest, takesAChoiceInTheClosedListAtOnce)
{
    SetFocus(window());
    press(VK_HOME);
    EXPECT_EQ(control_->getCurrentItem(), 0);
    EXPECT_EQ(changed().count, 1);
}

TEST_F(ComboBoxTest, takesAChoiceInTheClosedListAfterOneInTheOpenList)
{
    control_->showDropDown();
    press(VK_RETURN);
    press(VK_HOME);
    EXPECT_EQ(control_->getCurrentItem(), 0);
    EXPECT_EQ(changed().count, 2);
}

TEST_F(ComboBoxTest, choosesNothingByScrollingPast)
{
    SetFocus(window());
    ask(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    pump();
    EXPECT_EQ(control_->getCurrentItem(), 3);
    EXPECT_EQ(changed().count, 0);
}

TEST_F(ComboBoxTest, letsTheParentHideAndFillItWhileItTells)
{
    dialog_.onMessage(
        [this](UINT)
        {
            ShowWindow(window(), SW_HIDE);
            control_->clearItems();
            control_->addItem(L"one");
            control_->addItem(L"two");
            control_->setCurrentItem(1);
        });
    control_->showDropDown();
    press(VK_DOWN);
    press(VK_RETURN);
    EXPECT_EQ(changed().count, 1);
    EXPECT_EQ(control_->getCurrentItem(), 1);
    EXPECT_FALSE(IsWindowVisible(window()));
}

TEST_F(ComboBoxTest, survivesItsEndWhileItTells)
{
    dialog_.onMessage(
        [this](UINT)
        {
            control_->destroy();
            control_ = nullptr;
        });
    control_->showDropDown();
    press(VK_RETURN);
    EXPECT_FALSE(control_);
    EXPECT_EQ(changed().count, 1);
}

TEST_F(ComboBoxTest, fitsToItsWidestItem)
{
    control_->fitToContent();
    const int before = width();
    control_->addItem(L"AN ITEM THAT IS MUCH WIDER THAN ALL THE OTHERS");
    control_->fitToContent();
    EXPECT_GT(width(), before);
    const int wide = width();
    control_->setWidth(before, true);
    control_->showDropDown();
    EXPECT_GE(ask(CB_GETDROPPEDWIDTH), wide);
}

TEST_F(ComboBoxTest, fillsTheSizeThatItIsGiven)
{
    control_->setWidth(222, true);
    control_->setHeight(40);
    RECT area{};
    GetWindowRect(list(), &area);
    EXPECT_EQ(area.right - area.left, 222);
    EXPECT_EQ(area.bottom - area.top, 40);
    control_->fitToContent();
    EXPECT_EQ(height(), control_->heightForWidth(0));
    EXPECT_LT(height(), 40);
}

TEST_F(ComboBoxTest, takesAFontAndItsHeight)
{
    const int before = height();
    const Drawing::GdiObject<HFONT> large(
        CreateFontW(-40, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma"));
    SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(large.get()), TRUE);
    EXPECT_EQ(ask(WM_GETFONT), reinterpret_cast<LRESULT>(large.get()));
    EXPECT_GT(height(), before);
    EXPECT_GE(height(), 40);
}

TEST_F(ComboBoxTest, worksWithoutAWindow)
{
    auto* const shortLived = new TestDialog;
    auto* const control =
        static_cast<IComboBox*>(makeControl(ControlClass::ComboBox, shortLived->window(), 0, 0, 100, 50));
    control->addItem(L"one");
    delete shortLived;
    control->addItem(L"two");
    control->showDropDown();
    control->setCurrentItem(0);
    EXPECT_EQ(control->getCurrentItem(), -1);
    control->clearItems();
    control->destroy();
}

} // namespace Panekit
