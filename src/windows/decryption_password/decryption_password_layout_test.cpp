#include "windows/decryption_password/decryption_password_layout.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

DecryptionContent plain()
{
    DecryptionContent content;
    content.scale = [](int distance) { return distance; };
    content.captionColumn = [](LayoutPoint inputChoice) { return inputChoice.x + 4; };
    content.headerBottom = 50;
    content.cancelRight = 400;
    content.inputChoiceWidth = 70;
    content.originTextHeight = 13;
    content.editHeight = 22;
    return content;
}

} // namespace

TEST(DecryptionLayout, theInputChoiceDecidesTheValueColumn)
{
    const DecryptionLayout layout = layOutDecryption(plain());
    EXPECT_EQ(layout.originText, (LayoutPoint{70 + 6 + 20, 50 + 6}));
    EXPECT_EQ(layout.valueWidth, 400 - 96);
}

TEST(DecryptionLayout, putsTheEditsBelowTheOrigin)
{
    const DecryptionLayout layout = layOutDecryption(plain());
    EXPECT_EQ(layout.edit, (LayoutPoint{96, 56 + 13 + 7 + 4}));
    EXPECT_EQ(layout.inputChoice, (LayoutPoint{20, layout.edit.y + 4}));
    EXPECT_EQ(layout.originCaption, (LayoutPoint{24, 56}));
}

TEST(DecryptionLayout, everySpacingIsScaled)
{
    DecryptionContent content = plain();
    content.scale = [](int distance) { return 2 * distance; };
    const DecryptionLayout layout = layOutDecryption(content);
    EXPECT_EQ(layout.originText, (LayoutPoint{70 + 12 + 40, 62}));
    EXPECT_EQ(layout.edit.y, 62 + 13 + 7 + 4);
    EXPECT_EQ(layout.inputChoice.x, 40);
}

} // namespace JobRunner
