#include "windows/encryption_password/win32/test_dialog.h"

#include "windows/encryption_password/encryption_password_texts.h"

namespace JobRunner
{

namespace
{

constexpr std::size_t OriginText = 1; // among the texts, behind its caption

std::wstring origin(const OpenDialog& dialog)
{
    return dialog.control(ControlClass::TextWithLinks, OriginText).text;
}

HWND list(const OpenDialog& dialog)
{
    return FindWindowExW(dialog.control(ControlClass::ComboBox).window, nullptr, L"COMBOBOX", nullptr);
}

/// Opens the list of the algorithms by the link and takes one of them.
void chooseAlgorithm(const OpenDialog& dialog, int algorithm)
{
    dialog.follow(L"algorithm_AES-256");
    SendMessageW(list(dialog), CB_SHOWDROPDOWN, FALSE, 0);
    SendMessageW(list(dialog), CB_SETCURSEL, static_cast<WPARAM>(algorithm), 0);
    EXPECT_TRUE(dialog.tell(ControlMessage::SelectionChanged, 0, 0));
}

/// Follows a link to a small editor and does this in it, which has to end it.
void edit(const OpenDialog& dialog, const wchar_t* href, const std::function<void(const OpenDialog&)>& visit)
{
    bool visited = false;
    const DialogVisitor visitor(
        [&](HWND editor)
        {
            visited = true;
            visit(OpenDialog(editor));
        });
    dialog.follow(href);
    EXPECT_TRUE(visited);
}

std::function<void(const OpenDialog&)> enterAndClick(const std::wstring& text, int button)
{
    return [text, button](const OpenDialog& editor)
    {
        SetDlgItemTextW(editor.window(), IDC_EDITOR_TEXT, text.c_str());
        editor.click(button);
    };
}

} // namespace

TEST_F(EncryptionDialog, showsEachDestinyWithItsLink)
{
    const wchar_t* const texts[] = {L"Keep original files (do not delete). Change",
                                    L"Delete original files after encryption. Change",
                                    L"Wipe original files after encryption. Change"};
    for (int destiny = DestinyKeep; destiny <= DestinyWipe; ++destiny)
    {
        view->setDestiny(destiny);
        open([&](const OpenDialog& dialog) { EXPECT_EQ(origin(dialog), texts[destiny]); });
        EXPECT_EQ(view->getDestiny(), destiny);
    }
}

TEST_F(EncryptionDialog, stepsThroughTheDestinies)
{
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.follow(L"changedestiny");
            EXPECT_EQ(view->getDestiny(), DestinyWipe);
            EXPECT_EQ(origin(dialog), L"Wipe original files after encryption. Change");
            dialog.follow(L"changedestiny");
            EXPECT_EQ(view->getDestiny(), DestinyKeep);
            EXPECT_EQ(origin(dialog), L"Keep original files (do not delete). Change");
        });
}

TEST_F(EncryptionDialog, endsOnKeepAfterFiveClicksFromDelete)
{
    open(
        [](const OpenDialog& dialog)
        {
            const ShownControl text = dialog.control(ControlClass::TextWithLinks, OriginText);
            SetFocus(text.window);
            for (int i = 0; i < 5; ++i)
                dialog.press(VK_SPACE);
        });
    EXPECT_EQ(view->getDestiny(), DestinyKeep);
}

TEST_F(EncryptionDialog, knowsNoOtherLink)
{
    open([](const OpenDialog& dialog) { dialog.follow(L"changedestiny2"); });
    EXPECT_EQ(view->getDestiny(), DestinyDelete);
}

TEST_F(EncryptionDialog, offersAllAlgorithmsInTheOrderOfTheirNumbers)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            EXPECT_TRUE(dialog.shows(L"AES-256"));
            EXPECT_FALSE(dialog.control(ControlClass::ComboBox).visible);
            dialog.follow(L"algorithm_AES-256");
            EXPECT_TRUE(dialog.control(ControlClass::ComboBox).visible);
            EXPECT_FALSE(dialog.shows(L"AES-256"));
            EXPECT_TRUE(SendMessageW(list(dialog), CB_GETDROPPEDSTATE, 0, 0));
            ASSERT_EQ(SendMessageW(list(dialog), CB_GETCOUNT, 0, 0), 17);
            EXPECT_EQ(SendMessageW(list(dialog), CB_GETCURSEL, 0, 0), 3);
            for (std::size_t i = 0; i < AlgorithmNames.size(); ++i)
            {
                wchar_t name[50] = {};
                SendMessageW(list(dialog), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
                EXPECT_STREQ(name, AlgorithmNames[i]);
            }
        });
}

TEST_F(EncryptionDialog, takesAnAlgorithmAndShowsItAsTheLink)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            chooseAlgorithm(dialog, 14);
            EXPECT_TRUE(dialog.shows(L"TWOFISH"));
            EXPECT_EQ(SendMessageW(list(dialog), CB_GETCOUNT, 0, 0), 17) << "filled anew, not once more";
            EXPECT_EQ(SendMessageW(list(dialog), CB_GETCURSEL, 0, 0), 14);
            EXPECT_FALSE(dialog.control(ControlClass::ComboBox).visible);
            EXPECT_EQ(GetFocus(), dialog.withText(L"TWOFISH").window);
            dialog.click(IDC_SECTION);
        });
    EXPECT_EQ(view->getAlgorithm(), 14) << "a closed section counts as well";
}

TEST_F(EncryptionDialog, takesAnAlgorithmFromTheKeyboard)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            SetFocus(dialog.withText(L"AES-256").window);
            dialog.press(VK_SPACE);
            dialog.press(VK_DOWN);
            dialog.press(VK_RETURN);
            EXPECT_TRUE(dialog.shows(L"RC2"));
        });
    EXPECT_EQ(view->getAlgorithm(), 4);
}

TEST_F(EncryptionDialog, keepsAnUnusedListInPlaceOfTheLink)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            dialog.follow(L"algorithm_AES-256");
            SendMessageW(list(dialog), CB_SHOWDROPDOWN, FALSE, 0);
            dialog.pump();
            dialog.follow(L"changedestiny");
            dialog.click(IDC_SECTION);
            EXPECT_FALSE(dialog.control(ControlClass::ComboBox).visible);
            dialog.click(IDC_SECTION);
            EXPECT_TRUE(dialog.control(ControlClass::ComboBox).visible);
            EXPECT_FALSE(dialog.shows(L"AES-256"));
        });
    EXPECT_EQ(view->getAlgorithm(), 3);
}

TEST_F(EncryptionDialog, setsChangesAndRemovesTheRiddle)
{
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            EXPECT_TRUE(dialog.shows(L"Set Riddle"));
            edit(dialog, L"riddle", enterAndClick(L"first pet", IDC_PROCEED));
            EXPECT_TRUE(dialog.shows(L"first pet"));
            EXPECT_EQ(view->getRiddle(), L"first pet");
            edit(dialog, L"riddle",
                 [&](const OpenDialog& editor)
                 {
                     EXPECT_EQ(GetWindow(editor.window(), GW_OWNER), dialog.window());
                     EXPECT_EQ(editor.item(IDC_EDITOR_TEXT).text, L"first pet");
                     enterAndClick(L"other", IDC_CANCEL)(editor);
                 });
            EXPECT_TRUE(dialog.shows(L"first pet"));
            edit(dialog, L"riddle", enterAndClick(L"", IDC_PROCEED));
            EXPECT_TRUE(dialog.shows(L"Set Riddle"));
        });
    EXPECT_EQ(view->getRiddle(), L"");
}

TEST_F(EncryptionDialog, putsARiddleOfMarkupIntoTheLinkAsItStands)
{
    const std::wstring riddle = L"is \"1 < 2\"?";
    open(
        [&](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            edit(dialog, L"riddle", enterAndClick(riddle, IDC_PROCEED));
            EXPECT_TRUE(dialog.shows(riddle));
        });
    EXPECT_EQ(view->getRiddle(), riddle);
}

TEST_F(EncryptionDialog, keepsItsButtonsOnTheScreenWithARiddleOfAnyLength)
{
    std::wstring riddle;
    while (riddle.size() < 5000)
        riddle += L"and then the next word ";
    open(
        [&](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            const LONG before = dialog.bottom();
            edit(dialog, L"riddle", enterAndClick(riddle, IDC_PROCEED));
            EXPECT_GT(dialog.bottom(), before);
            RECT place{};
            GetWindowRect(dialog.item(IDC_PROCEED).window, &place);
            EXPECT_LT(place.bottom, GetSystemMetrics(SM_CYSCREEN));
            EXPECT_LT(dialog.withText(riddle).place.bottom, dialog.item(IDC_PROCEED).place.top);
        });
    EXPECT_EQ(view->getRiddle(), riddle);
}

TEST_F(EncryptionDialog, hasACommentOnlyInItsSelfExtractingForm)
{
    open([](const OpenDialog& dialog) { EXPECT_FALSE(dialog.withText(L"Sfx Comment:").window); });
    beSelfExtracting();
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            EXPECT_TRUE(dialog.shows(L"Sfx Comment:"));
            EXPECT_TRUE(dialog.shows(L"Change Sfx Description"));
        });
}

TEST_F(EncryptionDialog, changesTheCommentAndItsBoxOnOk)
{
    beSelfExtracting();
    view->setSfxComment(L"holiday pictures");
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            const auto check = [](const OpenDialog& editor)
            { CheckDlgButton(editor.window(), IDC_SET_DEFAULT, BST_CHECKED); };
            edit(dialog, L"sfxcomment",
                 [&](const OpenDialog& editor)
                 {
                     EXPECT_EQ(GetWindow(editor.window(), GW_OWNER), dialog.window());
                     EXPECT_EQ(editor.item(IDC_EDITOR_TEXT).text, L"holiday pictures");
                     check(editor);
                     enterAndClick(L"other", IDC_CANCEL)(editor);
                 });
            EXPECT_EQ(view->getSfxComment(), L"holiday pictures");
            EXPECT_FALSE(view->isSfxCommentDefault());
            edit(dialog, L"sfxcomment",
                 [&](const OpenDialog& editor)
                 {
                     check(editor);
                     enterAndClick(L"tax papers", IDC_PROCEED)(editor);
                 });
            EXPECT_TRUE(dialog.shows(L"Change Sfx Description"));
        });
    EXPECT_EQ(view->getSfxComment(), L"tax papers");
    EXPECT_TRUE(view->isSfxCommentDefault());
}

} // namespace JobRunner
