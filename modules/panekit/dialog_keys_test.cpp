// The keyboard in a dialog with its own loop, where the system looks at each key first.

#include "panekit/icon_button.h"
#include "panekit/real_dialog.h"

#include <string>

#include <gtest/gtest.h>

namespace Panekit
{

namespace
{

class DialogKeys : public testing::Test
{
protected:
    ~DialogKeys() override
    {
        for (ICustomControl* const control : made_)
            control->destroy();
    }

    template <class Interface> Interface* make(const wchar_t* classId)
    {
        auto* const control = dialog_.make<Interface>(classId, 10 + 30 * static_cast<int>(made_.size()));
        made_.push_back(control);
        return control;
    }
    IEditWithIconButtons* makeEdit()
    {
        auto* const edit = make<IEditWithIconButtons>(ControlClass::EditWithIconButtons);
        edit->addIconButton(GetModuleHandleW(nullptr), L"SHOWPASS.PNG");
        return edit;
    }
    static HWND windowOf(ICustomControl* control) { return static_cast<HWND>(control->getWindowHandle()); }
    static HWND fieldOf(ICustomControl* edit) { return FindWindowExW(windowOf(edit), nullptr, L"EDIT", nullptr); }
    static HWND buttonOf(ICustomControl* edit)
    {
        return FindWindowExW(windowOf(edit), nullptr, IconButton::ClassName, nullptr);
    }
    void focus(HWND window)
    {
        SetFocus(window);
        dialog_.pump();
    }

    RealDialog dialog_;
    std::vector<ICustomControl*> made_;
};

} // namespace

TEST_F(DialogKeys, tabGoesThroughEachFieldAndItsButtonAndOn)
{
    auto* const first = makeEdit();
    auto* const choice = make<ITextWithPopupMenu>(ControlClass::TextWithPopupMenu);
    auto* const plain = make<ITextWithLinks>(ControlClass::TextWithLinks);
    plain->setText(L"Origin:");
    auto* const links = make<ITextWithLinks>(ControlClass::TextWithLinks);
    links->setText(L"<a href=\"x\">Change</a>");
    auto* const list = make<IComboBox>(ControlClass::ComboBox);
    auto* const hidden = makeEdit();
    ShowWindow(windowOf(hidden), SW_HIDE);
    dialog_.open();
    focus(windowOf(first));

    const HWND expected[] = {
        buttonOf(first),      windowOf(choice),         windowOf(links), GetWindow(windowOf(list), GW_CHILD),
        dialog_.button(IDOK), dialog_.button(IDCANCEL), fieldOf(first)};
    for (const HWND next : expected)
    {
        dialog_.press(VK_TAB);
        EXPECT_EQ(GetFocus(), next);
    }
    EXPECT_EQ(dialog_.commands(IDOK), 0);
}

TEST_F(DialogKeys, enterInTheFieldIsTheDefaultButtonAndEscapeIsCancel)
{
    auto* const edit = makeEdit();
    dialog_.open();
    focus(windowOf(edit));
    dialog_.press(VK_RETURN);
    EXPECT_EQ(dialog_.commands(IDOK), 1);
    dialog_.press(VK_ESCAPE);
    EXPECT_EQ(dialog_.commands(IDCANCEL), 1);
    EXPECT_STREQ(edit->getText(), L"");
}

TEST_F(DialogKeys, aKeyTypesIntoTheField)
{
    auto* const edit = makeEdit();
    dialog_.open();
    focus(windowOf(edit));
    dialog_.press({'A', 'B', VK_SPACE, 'C'});
    EXPECT_STREQ(edit->getText(), L"ab c");
    EXPECT_EQ(dialog_.received(ControlMessage::TextChanged).count, 4);
}

TEST_F(DialogKeys, spaceAndEnterHoldTheButtonOfTheField)
{
    auto* const edit = makeEdit();
    dialog_.open();
    for (const WPARAM key : {VK_SPACE, VK_RETURN})
    {
        focus(buttonOf(edit));
        const int before = dialog_.received(ControlMessage::ButtonPressed).count;
        dialog_.hold(key);
        EXPECT_EQ(dialog_.received(ControlMessage::ButtonPressed).count, before + 1);
        EXPECT_EQ(dialog_.received(ControlMessage::ButtonClicked).count, before);
        PostMessageW(GetFocus(), WM_KEYUP, key, 1);
        dialog_.pump();
        EXPECT_EQ(dialog_.received(ControlMessage::ButtonClicked).count, before + 1);
    }
    EXPECT_EQ(dialog_.commands(IDOK), 0);
}

TEST_F(DialogKeys, escapeOnTheButtonOfTheFieldIsCancel)
{
    auto* const edit = makeEdit();
    dialog_.open();
    focus(buttonOf(edit));
    dialog_.press(VK_ESCAPE);
    EXPECT_EQ(dialog_.commands(IDCANCEL), 1);
}

TEST_F(DialogKeys, tabAwayFromAHeldButtonEndsTheHold)
{
    auto* const edit = makeEdit();
    dialog_.open();
    focus(buttonOf(edit));
    dialog_.hold(VK_SPACE);
    dialog_.press(VK_TAB);
    EXPECT_EQ(dialog_.received(ControlMessage::ButtonClicked).count, 1);
    EXPECT_EQ(GetFocus(), dialog_.button(IDOK));
}

TEST_F(DialogKeys, eachOpeningKeyOffersTheChoices)
{
    auto* const choice = make<ITextWithPopupMenu>(ControlClass::TextWithPopupMenu);
    choice->addItem(L"Password", L"Password");
    choice->addItem(L"Key file", L"Key File");
    dialog_.open();
    int told = 0;
    for (const WPARAM key : {VK_SPACE, VK_RETURN, VK_DOWN, VK_UP, VK_F4})
    {
        choice->setCurrentItem(0);
        focus(windowOf(choice));
        dialog_.press({key, VK_DOWN, VK_DOWN, VK_RETURN});
        EXPECT_EQ(dialog_.received(ControlMessage::ItemChanged).count, ++told) << key;
        EXPECT_EQ(dialog_.received(ControlMessage::ItemChanged).lParam, 1);
    }
    EXPECT_EQ(dialog_.commands(IDOK), 0);
}

TEST_F(DialogKeys, escapeLeavesTheChoicesAndNotTheDialog)
{
    auto* const choice = make<ITextWithPopupMenu>(ControlClass::TextWithPopupMenu);
    choice->addItem(L"Password", L"Password");
    choice->addItem(L"Key file", L"Key File");
    dialog_.open();
    focus(windowOf(choice));
    dialog_.press({VK_SPACE, VK_DOWN, VK_ESCAPE});
    EXPECT_EQ(dialog_.received(ControlMessage::ItemChanged).count, 0);
    EXPECT_EQ(dialog_.commands(IDCANCEL), 0);
    dialog_.press(VK_ESCAPE);
    EXPECT_EQ(dialog_.commands(IDCANCEL), 1);
}

TEST_F(DialogKeys, enterAndSpaceFollowALinkAndArrowsGoToTheNext)
{
    auto* const links = make<ITextWithLinks>(ControlClass::TextWithLinks);
    links->setText(L"<a href=\"one\">a</a> or <a href=\"two\">b</a>");
    std::wstring followed;
    dialog_.onMessage(ControlMessage::HyperlinkClicked,
                      [&](LPARAM href) { followed += reinterpret_cast<const wchar_t*>(href); });
    dialog_.open();
    focus(windowOf(links));
    dialog_.press({VK_RETURN, VK_RIGHT, VK_SPACE, VK_LEFT, VK_RETURN});
    EXPECT_EQ(followed, L"onetwoone");
    EXPECT_EQ(dialog_.commands(IDOK), 0);
    EXPECT_EQ(GetFocus(), windowOf(links));
}

TEST_F(DialogKeys, aNewTextStartsAtItsFirstLink)
{
    auto* const links = make<ITextWithLinks>(ControlClass::TextWithLinks);
    links->setText(L"<a href=\"one\">a</a> or <a href=\"two\">b</a>");
    std::wstring followed;
    dialog_.onMessage(ControlMessage::HyperlinkClicked,
                      [&](LPARAM href) { followed += reinterpret_cast<const wchar_t*>(href); });
    dialog_.open();
    focus(windowOf(links));
    dialog_.press(VK_RIGHT);
    links->setText(L"<a href=\"three\">c</a> or <a href=\"four\">d</a>");
    dialog_.press(VK_SPACE);
    EXPECT_EQ(followed, L"three");
}

TEST_F(DialogKeys, theListIsChosenFromWithoutAMouse)
{
    auto* const list = make<IComboBox>(ControlClass::ComboBox);
    for (const wchar_t* const item : {L"one", L"two", L"three"})
        list->addItem(item);
    list->setCurrentItem(0);
    dialog_.open();
    focus(windowOf(list));
    dialog_.press({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(list->getCurrentItem(), 2);
    EXPECT_EQ(dialog_.received(ControlMessage::SelectionChanged).count, 1);
    dialog_.press({VK_DOWN, VK_UP, VK_ESCAPE});
    EXPECT_EQ(list->getCurrentItem(), 2);
    EXPECT_EQ(dialog_.received(ControlMessage::SelectionChanged).count, 1);
    EXPECT_EQ(dialog_.commands(IDOK) + dialog_.commands(IDCANCEL), 0);
    dialog_.press(VK_ESCAPE);
    EXPECT_EQ(dialog_.commands(IDCANCEL), 1);
}

} // namespace Panekit
