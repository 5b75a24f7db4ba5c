#include "windows/encryption_password/encryption_password_layout.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

/// The caption column lies this far right of the input choice.
constexpr int CaptionInChoice = 4;

EncryptionContent closedSection()
{
    EncryptionContent content;
    content.scale = [](int distance) { return distance; };
    content.captionColumn = [](LayoutPoint inputChoice) { return inputChoice.x + CaptionInChoice; };
    content.headerBottom = 50;
    content.cancelRight = 400;
    content.buttonHeight = 25;
    content.originCaption = {40, 13};
    content.inputChoice = {70, 15};
    content.repeatCaption = {42, 13};
    content.editHeight = 22;
    content.rows = {[](int) { return 13; }, [](int) { return 14; }};
    return content;
}

EncryptionContent openSection()
{
    EncryptionContent content = closedSection();
    content.sectionOpen = true;
    return content;
}

} // namespace

TEST(EncryptionLayout, theWidestCaptionDecidesTheValueColumn)
{
    const EncryptionLayout layout = layOutEncryption(closedSection());
    EXPECT_EQ(layout.originText, (LayoutPoint{6 + 70 + 20, 50 + 6}));
    EXPECT_EQ(layout.valueWidth, 400 - 96);
    EncryptionContent content = closedSection();
    content.repeatCaption.width = 90;
    EXPECT_EQ(layOutEncryption(content).originText.x, 6 + 90 + 20);
    content.originCaption.width = 110;
    EXPECT_EQ(layOutEncryption(content).originText.x, 6 + 110 + 20);
}

TEST(EncryptionLayout, putsTheEditsBelowTheOrigin)
{
    const EncryptionLayout layout = layOutEncryption(closedSection());
    const int first = 56 + 13 + 22 / 3 + (22 - 13) / 2;
    EXPECT_EQ(layout.firstEdit, (LayoutPoint{96, first}));
    EXPECT_EQ(layout.repeatEdit, (LayoutPoint{96, first + 22 / 3 + 22}));
}

TEST(EncryptionLayout, alignsTheCaptionsWithTheInputChoice)
{
    const EncryptionLayout layout = layOutEncryption(closedSection());
    EXPECT_EQ(layout.inputChoice, (LayoutPoint{20, layout.firstEdit.y + 4}));
    EXPECT_EQ(layout.originCaption, (LayoutPoint{20 + CaptionInChoice, 56}));
    EXPECT_EQ(layout.repeatCaption, (LayoutPoint{20 + CaptionInChoice, layout.repeatEdit.y + 4}));
}

TEST(EncryptionLayout, theRowsFollowTheRepeatEdit)
{
    const EncryptionLayout layout = layOutEncryption(openSection());
    const int step = 15 + 1;
    ASSERT_EQ(layout.rows.size(), 2u);
    EXPECT_EQ(layout.rows[0].value, (LayoutBox{96, layout.repeatEdit.y + 22 + step, 304, 13}));
    EXPECT_EQ(layout.rows[0].caption, (LayoutPoint{24, layout.rows[0].value.y}));
    EXPECT_EQ(layout.rows[1].value, (LayoutBox{96, layout.rows[0].value.bottom() + step, 304, 14}));
    EXPECT_EQ(layout.rows[1].caption, (LayoutPoint{24, layout.rows[1].value.y}));
}

TEST(EncryptionLayout, inKeyFileModeTheRowsFollowTheFirstEdit)
{
    EncryptionContent content = openSection();
    content.passwordMode = false;
    const EncryptionLayout layout = layOutEncryption(content);
    EXPECT_EQ(layout.rows[0].value.y, layout.firstEdit.y + 22 + 16);
}

TEST(EncryptionLayout, theButtonsFollowTheLowestControlThatCanBeSeen)
{
    const EncryptionLayout closed = layOutEncryption(closedSection());
    EXPECT_EQ(closed.lowestBottom, closed.repeatEdit.y + 22);
    const EncryptionLayout open = layOutEncryption(openSection());
    EXPECT_EQ(open.lowestBottom, open.rows.back().value.bottom());
    EncryptionContent content = closedSection();
    content.passwordMode = false;
    const EncryptionLayout keyFile = layOutEncryption(content);
    EXPECT_EQ(keyFile.lowestBottom, keyFile.firstEdit.y + 22);
    for (const EncryptionLayout& layout : {closed, open, keyFile})
    {
        EXPECT_EQ(layout.buttonsTop, layout.lowestBottom + 20);
        EXPECT_EQ(layout.dialogBottom, layout.buttonsTop + 25 + 14);
    }
}

TEST(EncryptionLayout, everySpacingIsScaled)
{
    EncryptionContent content = openSection();
    content.scale = [](int distance) { return 2 * distance; };
    const EncryptionLayout layout = layOutEncryption(content);
    EXPECT_EQ(layout.originText, (LayoutPoint{12 + 70 + 40, 62}));
    EXPECT_EQ(layout.inputChoice.x, 40);
    EXPECT_EQ(layout.firstEdit.y, 62 + 13 + 7 + 4);
    EXPECT_EQ(layout.rows[0].value.y, layout.repeatEdit.y + 22 + 16);
    EXPECT_EQ(layout.buttonsTop, layout.lowestBottom + 40);
    EXPECT_EQ(layout.dialogBottom, layout.buttonsTop + 25 + 28);
}

TEST(EncryptionLayout, aRowIsAsHighAsItsValueAtItsWidth)
{
    EncryptionContent content = openSection();
    content.rows = {[](int width) { return width; }};
    EXPECT_EQ(layOutEncryption(content).rows[0].value.height, 304);
}

} // namespace JobRunner
