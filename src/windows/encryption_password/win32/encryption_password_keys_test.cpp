#include "windows/encryption_password/win32/test_dialog.h"

#include <algorithm>

// Nothing in the dialog needs a mouse.

namespace JobRunner
{

namespace
{

using Windows = std::vector<HWND>;

HWND choice(const OpenDialog& dialog)
{
    return dialog.control(ControlClass::TextWithPopupMenu).window;
}

HWND list(const OpenDialog& dialog)
{
    return FindWindowExW(dialog.control(ControlClass::ComboBox).window, nullptr, L"COMBOBOX", nullptr);
}

void start(const OpenDialog& dialog, std::size_t edit)
{
    SendMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.field(edit)), TRUE);
}

/// A round from an edit: these, then the buttons, the origin's link and the input choice.
void expectRound(const OpenDialog& dialog, std::size_t edit, Windows between)
{
    start(dialog, edit);
    Windows expected{dialog.iconButton(edit)};
    expected.insert(expected.end(), between.begin(), between.end());
    for (const int id : {IDC_PROCEED, IDC_CANCEL, IDC_SECTION})
        expected.push_back(dialog.item(id).window);
    expected.push_back(dialog.control(ControlClass::TextWithLinks, 1).window);
    expected.push_back(choice(dialog));
    expected.push_back(dialog.field(edit));
    EXPECT_EQ(dialog.tabRound(), expected);
}

Windows repeatOf(const OpenDialog& dialog)
{
    return {dialog.field(RepeatEdit), dialog.iconButton(RepeatEdit)};
}

Windows repeatAnd(const OpenDialog& dialog, const Windows& more)
{
    Windows all = repeatOf(dialog);
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

} // namespace

TEST_F(EncryptionDialog, reachesThePasswordsByTheTabKeyWithTheButtonsLast)
{
    open([](const OpenDialog& dialog) { expectRound(dialog, PasswordEdit, repeatOf(dialog)); });
}

TEST_F(EncryptionDialog, reachesTheKeyFileByTheTabKey)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            expectRound(dialog, KeyFileEdit, {});
        });
}

TEST_F(EncryptionDialog, reachesTheSectionByTheTabKey)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            const Windows links{dialog.withText(L"AES-256").window, dialog.withText(L"Set Riddle").window};
            expectRound(dialog, PasswordEdit, repeatAnd(dialog, links));
            dialog.chooseInput(1);
            expectRound(dialog, KeyFileEdit, links);
        });
}

TEST_F(EncryptionDialog, reachesTheListThatStandsInPlaceOfTheLinkByTheTabKey)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            dialog.follow(L"algorithm_AES-256");
            dialog.press(VK_ESCAPE);
            ASSERT_TRUE(IsWindow(dialog.window())) << "the key closes the list alone";
            EXPECT_FALSE(SendMessageW(list(dialog), CB_GETDROPPEDSTATE, 0, 0));
            start(dialog, PasswordEdit);
            const Windows reached = dialog.tabRound();
            EXPECT_NE(std::find(reached.begin(), reached.end(), list(dialog)), reached.end());
            EXPECT_EQ(std::find(reached.begin(), reached.end(), dialog.withText(L"AES-256").window), reached.end());
        });
    EXPECT_EQ(view->getAlgorithm(), 3);
}

TEST_F(EncryptionDialog, reachesTheDescriptionByTheTabKey)
{
    beSelfExtracting();
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            expectRound(dialog, PasswordEdit,
                        repeatAnd(dialog, {dialog.withText(L"AES-256").window, dialog.withText(L"Set Riddle").window,
                                           dialog.withText(L"Change Sfx Description").window}));
        });
}

TEST_F(EncryptionDialog, opensItsSectionAndChangesTheInputByTheKeyboard)
{
    open(
        [this](const OpenDialog& dialog)
        {
            SendMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.item(IDC_SECTION).window),
                         TRUE);
            dialog.press(VK_SPACE);
            EXPECT_TRUE(dialog.shows(L"<< Less"));
            dialog.press(VK_RETURN);
            EXPECT_TRUE(dialog.shows(L"More >>"));
            dialog.chooseInput(1); // by keys
            EXPECT_FALSE(view->isPasswordMode());
        });
}

TEST_F(EncryptionDialog, showsAPasswordWhileTheKeyHoldsItsButton)
{
    open(
        [](const OpenDialog& dialog)
        {
            SetFocus(dialog.iconButton(RepeatEdit));
            SendMessageW(GetFocus(), WM_KEYDOWN, VK_SPACE, 1);
            EXPECT_FALSE(dialog.isMasked(RepeatEdit));
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            SendMessageW(GetFocus(), WM_KEYUP, VK_SPACE, 1);
            EXPECT_TRUE(dialog.isMasked(RepeatEdit));
        });
}

TEST_F(EncryptionDialog, isCancelledByTheEscapeKeyFromAnywhere)
{
    const std::function<HWND(const OpenDialog&)> places[] = {
        [](const OpenDialog& dialog) { return dialog.iconButton(PasswordEdit); },
        [](const OpenDialog& dialog) { return choice(dialog); },
        [](const OpenDialog& dialog) { return dialog.control(ControlClass::TextWithLinks, 1).window; },
        [](const OpenDialog& dialog) { return dialog.item(IDC_SECTION).window; }};
    for (const auto& place : places)
    {
        bool ended = false;
        EXPECT_FALSE(open(
            [&](const OpenDialog& dialog)
            {
                SetFocus(place(dialog));
                dialog.press(VK_ESCAPE);
                ended = !IsWindowVisible(dialog.window());
            }));
        EXPECT_TRUE(ended);
    }
}

} // namespace JobRunner
