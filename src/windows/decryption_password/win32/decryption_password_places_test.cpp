#include "windows/decryption_password/win32/test_dialog.h"

#include "fakes/fake_platform.h"
#include "windows/framework/win32/controls.h"
#include "windows/framework/win32/readable_dialog.h"
#include "windows/framework/win32/scale.h"

namespace JobRunner
{

namespace
{

// The edits, in the order of their making.
constexpr std::size_t PasswordEdit = 0;
constexpr std::size_t KeyFileEdit = 1;

} // namespace

TEST_F(DecryptionDialog, putsProceedInTheExactPlaceOfTheHiddenIgnoreForADocument)
{
    RECT ignore{};
    open([&](const OpenDialog& dialog) { ignore = dialog.item(IDC_IGNORE).place; });
    view->setDecryptionMode(2);
    open(
        [&](const OpenDialog& dialog)
        {
            EXPECT_FALSE(dialog.shows(L"Ignore"));
            const RECT proceed = dialog.item(IDC_PROCEED).place;
            EXPECT_TRUE(EqualRect(&proceed, &ignore));
            expectTidy(dialog);
            expectNothingCutOff(dialog);
        });
}

TEST_F(DecryptionDialog, placesItsControls)
{
    for (const int item : {0, 1})
        open(
            [item](const OpenDialog& dialog)
            {
                dialog.chooseInput(item);
                const auto scaled = [&](int distance) { return LONG{scaleByDpi(dialog.window(), distance)}; };
                const RECT band = dialog.control(ControlClass::CopyDialogGradient).place;
                const RECT caption = dialog.withText(L"Origin:").place;
                const RECT text = dialog.control(ControlClass::TextWithLinks, 1).place;
                const RECT choice = dialog.control(ControlClass::TextWithPopupMenu).place;
                const LONG right = dialog.item(IDC_CANCEL).place.right;
                const LONG top = band.bottom + scaled(6);
                const LONG column = choice.right - choice.left + scaled(6) + scaled(20);
                const RECT shown = dialog.edit(PasswordEdit).place;
                const LONG edit = shown.bottom - shown.top;
                const LONG line = text.bottom - text.top;
                const LONG down = (edit - line) / 2;
                EXPECT_EQ(band.top, 0);
                EXPECT_EQ(band.right, dialog.client().right);
                EXPECT_EQ(text.left, column);
                EXPECT_EQ(text.top, top);
                EXPECT_EQ(text.right, right);
                EXPECT_EQ(caption.top, top);
                EXPECT_GE(caption.left, choice.left);
                EXPECT_EQ(choice.left, scaled(20));
                EXPECT_EQ(choice.bottom - choice.top, caption.bottom - caption.top) << "as high as its line";
                EXPECT_EQ(choice.top, top + line + edit / 3 + down + down);
                for (const ShownControl& control : dialog.controls(ControlClass::EditWithIconButtons))
                {
                    const RECT wanted{column, top + line + edit / 3 + down, right, top + line + edit / 3 + down + edit};
                    EXPECT_TRUE(EqualRect(&control.place, &wanted));
                }
                expectTidy(dialog);
                expectNothingCutOff(dialog);
            });
}

TEST_F(DecryptionDialog, placesItsControlsRightFromTheStart)
{
    open(
        [](const OpenDialog& dialog)
        {
            const RECT before = dialog.edit(PasswordEdit).place;
            dialog.chooseInput(1);
            dialog.chooseInput(0);
            const RECT after = dialog.edit(PasswordEdit).place;
            EXPECT_TRUE(EqualRect(&before, &after));
        });
}

TEST_F(DecryptionDialog, measuresItsHeaderAtTheWidthOfItsWindowWithItsBorders)
{
    view->setDecryptionMode(0);
    open(
        [this](const OpenDialog& dialog)
        {
            const ShownControl header = dialog.control(ControlClass::CopyDialogGradient);
            const auto within = static_cast<int>(header.place.right);
            const RECT window = dialog.placeOf(dialog.window());
            const auto whole = static_cast<int>(window.right - window.left);
            ASSERT_GT(whole, within);
            auto* const like = createControlAs<ICopyDialogGradient>(ControlClass::CopyDialogGradient, dialog.window(),
                                                                    0, 0, within, 10);
            const auto breaksWithinOnly = [&](const std::wstring& name)
            {
                like->setText((L"Provide Key for " + name).c_str());
                return like->heightForWidth(within) != like->heightForWidth(whole);
            };
            std::wstring name(40, L'i');
            for (std::size_t wide = 0; wide < name.size() && !breaksWithinOnly(name); ++wide)
                name[wide] = L'W';
            ASSERT_TRUE(breaksWithinOnly(name));
            view->setFileName(name);
            view->setDecryptionMode(0);
            const RECT shown = dialog.control(ControlClass::CopyDialogGradient).place;
            EXPECT_EQ(shown.bottom - shown.top, like->heightForWidth(whole));
            like->destroy();
        });
}

TEST_F(DecryptionDialog, opensInTheMiddleOfTheWorkArea)
{
    open([](const OpenDialog& dialog) { expectInTheMiddleAcross(dialog); });
}

TEST_F(DecryptionDialog, forcesItselfToTheForeground)
{
    open([](const OpenDialog&) {}); // the real system finds the controls
    const Fakes::FakePlatform platform;
    open([](const OpenDialog&) {});
    EXPECT_EQ(platform.log.callsOf(L"setForegroundWindow").size(), 1u);
}

TEST_F(DecryptionDialog, paintsItsPanelAndItsBand)
{
    open([](const OpenDialog& dialog) { expectPanelAboveBand(dialog); });
}

TEST_F(DecryptionDialog, hasTheFormOfItsTemplate)
{
    open(
        [](const OpenDialog& dialog)
        {
            const LONG_PTR wanted = WS_POPUP | WS_CAPTION | WS_SYSMENU;
            EXPECT_EQ(GetWindowLongPtrW(dialog.window(), GWL_STYLE) & wanted, wanted);
            EXPECT_TRUE(GetWindowLongPtrW(dialog.window(), GWL_EXSTYLE) & WS_EX_APPWINDOW);
            const RECT whole = fromUnits(dialog.window(), 0, 0, 274, 118);
            const RECT client = dialog.client();
            EXPECT_TRUE(EqualRect(&client, &whole));
            const std::pair<int, LONG> buttons[] = {{IDC_PROCEED, 114}, {IDC_IGNORE, 166}, {IDC_CANCEL, 217}};
            for (const auto& [id, left] : buttons)
            {
                const RECT place = fromUnits(dialog.window(), left, 100, 50, 15);
                const RECT shown = dialog.item(id).place;
                EXPECT_TRUE(EqualRect(&shown, &place)) << id;
            }
            EXPECT_EQ(LOWORD(SendMessageW(dialog.window(), DM_GETDEFID, 0, 0)), IDC_PROCEED);
        });
}

namespace
{

/// A round from the edit that is seen, with the buttons behind it.
void expectRound(const OpenDialog& dialog, std::size_t edit, const std::vector<int>& buttons)
{
    ASSERT_EQ(GetFocus(), dialog.field(edit));
    std::vector<HWND> expected{dialog.iconButton(edit)};
    for (const int id : buttons)
        expected.push_back(dialog.item(id).window);
    expected.push_back(dialog.control(ControlClass::TextWithPopupMenu).window);
    expected.push_back(dialog.field(edit));
    EXPECT_EQ(dialog.tabRound(), expected);
}

} // namespace

TEST_F(DecryptionDialog, goesThroughItsControlsByTheTabKeyWithTheButtonsLast)
{
    open(
        [](const OpenDialog& dialog)
        {
            expectRound(dialog, PasswordEdit, {IDC_PROCEED, IDC_IGNORE, IDC_CANCEL});
            dialog.chooseInput(1);
            expectRound(dialog, KeyFileEdit, {IDC_PROCEED, IDC_IGNORE, IDC_CANCEL});
        });
}

TEST_F(DecryptionDialog, leavesTheHiddenIgnoreOutOfTheRoundForADocument)
{
    view->setDecryptionMode(2);
    open([](const OpenDialog& dialog) { expectRound(dialog, PasswordEdit, {IDC_PROCEED, IDC_CANCEL}); });
}

} // namespace JobRunner
