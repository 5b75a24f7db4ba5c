#include "windows/encryption_password/win32/test_dialog.h"

#include "windows/encryption_password/encryption_password_texts.h"
#include "windows/framework/win32/readable_dialog.h"
#include "windows/framework/win32/scale.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

LONG widthOf(const ShownControl& control)
{
    return control.place.right - control.place.left;
}

LONG heightOf(const ShownControl& control)
{
    return control.place.bottom - control.place.top;
}

/// What the rules of the dialog start from, and the columns and rows that they give.
struct Grid
{
    explicit Grid(const OpenDialog& shown)
        : dialog(shown), origin(dialog.withText(L"Origin:")), choice(dialog.control(ControlClass::TextWithPopupMenu)),
          repeat(dialog.withText(L"Repeat:")), cancel(dialog.item(IDC_CANCEL)),
          edit(heightOf(dialog.edit(PasswordEdit)))
    {
        const LONG widest = std::max({widthOf(origin), widthOf(choice), widthOf(repeat)});
        top = dialog.control(ControlClass::CopyDialogGradient).place.bottom + scaled(6);
        column = scaled(6) + widest + scaled(20);
        down = (edit - heightOf(origin)) / 2;
        first = top + heightOf(origin) + edit / 3 + down;
        second = first + edit / 3 + edit;
    }

    LONG scaled(int distance) const { return scaleByDpi(dialog.window(), distance); }

    const OpenDialog& dialog;
    const ShownControl origin;
    const ShownControl choice;
    const ShownControl repeat;
    const ShownControl cancel;
    const LONG edit;
    LONG top;
    LONG column;
    LONG down; // of a text beside an edit
    LONG first;
    LONG second;
};

void expectAt(const ShownControl& control, LONG left, LONG top)
{
    EXPECT_EQ(control.place.left, left);
    EXPECT_EQ(control.place.top, top);
}

void expectColumnsAndEdits(const OpenDialog& dialog)
{
    const Grid grid(dialog);
    const ShownControl header = dialog.control(ControlClass::CopyDialogGradient);
    expectAt(header, 0, 0);
    EXPECT_EQ(header.place.right, dialog.client().right);
    EXPECT_LT(header.place.bottom, grid.scaled(100)) << "as high as its text";
    const LONG caption = grid.origin.place.left;
    EXPECT_GE(caption, grid.choice.place.left);
    EXPECT_EQ(grid.origin.place.top, grid.top);
    expectAt(grid.choice, grid.scaled(20), grid.first + grid.down);
    expectAt(grid.repeat, caption, grid.second + grid.down);
    expectAt(dialog.control(ControlClass::TextWithLinks, 1), grid.column, grid.top);
    expectAt(dialog.edit(PasswordEdit), grid.column, grid.first);
    expectAt(dialog.edit(KeyFileEdit), grid.column, grid.first);
    expectAt(dialog.edit(RepeatEdit), grid.column, grid.second);
    for (const ShownControl& control : dialog.controls(ControlClass::EditWithIconButtons))
        EXPECT_EQ(control.place.right, grid.cancel.place.right);
    EXPECT_EQ(dialog.control(ControlClass::TextWithLinks, 1).place.right, grid.cancel.place.right);
}

void expectButtons(const OpenDialog& dialog, LONG lowest)
{
    const Grid grid(dialog);
    const LONG top = lowest + grid.scaled(20);
    const std::pair<int, LONG> places[] = {{IDC_PROCEED, 166}, {IDC_CANCEL, 217}, {IDC_SECTION, 7}};
    for (const auto& [id, left] : places)
    {
        const RECT inTemplate = fromUnits(dialog.window(), left, 100, 50, 15);
        const ShownControl button = dialog.item(id);
        expectAt(button, inTemplate.left, top);
        EXPECT_EQ(widthOf(button), inTemplate.right - inTemplate.left);
        EXPECT_EQ(heightOf(button), inTemplate.bottom - inTemplate.top);
    }
    EXPECT_EQ(dialog.bottom(), grid.cancel.place.bottom + grid.scaled(14));
}

/// The bottom of the last row.
LONG expectRows(const OpenDialog& dialog, std::size_t count, LONG above)
{
    const Grid grid(dialog);
    const std::vector<ShownControl> texts = dialog.controls(ControlClass::TextWithLinks);
    EXPECT_EQ(texts.size(), 3 + 2 * count);
    LONG bottom = above;
    for (std::size_t row = 0; row < count; ++row)
    {
        const ShownControl& caption = texts[3 + 2 * row];
        const ShownControl& value = texts[4 + 2 * row];
        expectAt(value, grid.column, bottom + heightOf(grid.choice) + 1);
        expectAt(caption, grid.origin.place.left, value.place.top);
        EXPECT_EQ(value.place.right, grid.cancel.place.right);
        bottom = value.place.bottom;
    }
    return bottom;
}

void expectReadable(const OpenDialog& dialog)
{
    expectTidy(dialog);
    expectNothingCutOff(dialog);
}

} // namespace

TEST_F(EncryptionDialog, opensInTheMiddleOfTheWorkArea)
{
    open([](const OpenDialog& dialog) { expectInTheMiddleAcross(dialog); });
}

TEST_F(EncryptionDialog, paintsItsPanelAndItsBand)
{
    open(
        [](const OpenDialog& dialog)
        {
            expectPanelAboveBand(dialog);
            dialog.click(IDC_SECTION);
            expectPanelAboveBand(dialog);
        });
}

TEST_F(EncryptionDialog, hasTheFormOfItsTemplate)
{
    open(
        [](const OpenDialog& dialog)
        {
            const LONG_PTR style = GetWindowLongPtrW(dialog.window(), GWL_STYLE);
            const LONG_PTR wanted = WS_POPUP | WS_CAPTION | WS_SYSMENU;
            EXPECT_EQ(style & wanted, wanted);
            EXPECT_TRUE(GetWindowLongPtrW(dialog.window(), GWL_EXSTYLE) & WS_EX_APPWINDOW);
            const RECT whole = fromUnits(dialog.window(), 0, 0, 274, 118);
            EXPECT_EQ(dialog.client().right, whole.right);
            EXPECT_EQ(LOWORD(SendMessageW(dialog.window(), DM_GETDEFID, 0, 0)), IDC_PROCEED);
        });
}

TEST_F(EncryptionDialog, placesPasswordsWithTheSectionClosed)
{
    open(
        [](const OpenDialog& dialog)
        {
            expectColumnsAndEdits(dialog);
            expectButtons(dialog, dialog.edit(RepeatEdit).place.bottom);
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, placesAKeyFileWithTheSectionClosed)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            expectColumnsAndEdits(dialog);
            expectButtons(dialog, dialog.edit(KeyFileEdit).place.bottom);
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, placesPasswordsWithTheSectionOpen)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            EXPECT_TRUE(dialog.shows(L"<< Less"));
            expectColumnsAndEdits(dialog);
            expectButtons(dialog, expectRows(dialog, 2, dialog.edit(RepeatEdit).place.bottom));
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, placesAKeyFileWithTheSectionOpen)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            dialog.chooseInput(1);
            expectColumnsAndEdits(dialog);
            expectButtons(dialog, expectRows(dialog, 2, dialog.edit(PasswordEdit).place.bottom));
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, placesTheRowsOfItsSelfExtractingForm)
{
    beSelfExtracting();
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            expectButtons(dialog, expectRows(dialog, 3, dialog.edit(RepeatEdit).place.bottom));
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, closesTheSectionAgainToTheSamePlaces)
{
    open(
        [](const OpenDialog& dialog)
        {
            const LONG before = dialog.bottom();
            dialog.click(IDC_SECTION);
            EXPECT_GT(dialog.bottom(), before);
            dialog.click(IDC_SECTION);
            EXPECT_EQ(dialog.bottom(), before);
            EXPECT_TRUE(dialog.shows(L"More >>"));
            EXPECT_FALSE(dialog.shows(L"Algorithm:"));
            expectReadable(dialog);
        });
}

TEST_F(EncryptionDialog, putsTheListWhereTheLinkWas)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_SECTION);
            const ShownControl link = dialog.withText(L"AES-256");
            dialog.follow(L"algorithm_AES-256");
            const ShownControl list = dialog.control(ControlClass::ComboBox);
            expectAt(list, link.place.left, link.place.top);
            EXPECT_EQ(widthOf(list), 100);
            expectTidy(dialog);
        });
}

} // namespace JobRunner
