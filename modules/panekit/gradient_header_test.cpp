#include "panekit/test_dialog.h"

namespace Panekit
{

namespace
{

class GradientHeaderTest : public ControlTest<ICopyDialogGradient>
{
protected:
    GradientHeaderTest() : ControlTest(ControlClass::CopyDialogGradient) { control_->setWidth(300, true); }

    bool isNear(COLORREF colour, COLORREF expected)
    {
        constexpr int Step = 8;
        return std::abs(GetRValue(colour) - GetRValue(expected)) <= Step &&
               std::abs(GetGValue(colour) - GetGValue(expected)) <= Step &&
               std::abs(GetBValue(colour) - GetBValue(expected)) <= Step;
    }
};

} // namespace

TEST_F(GradientHeaderTest, goesFromTheFirstColourDownToTheSecond)
{
    control_->setColors(RGB(8, 56, 141), RGB(5, 22, 52));
    EXPECT_TRUE(isNear(painted(1, 1), RGB(8, 56, 141)));
    EXPECT_TRUE(isNear(painted(1, height() - 2), RGB(5, 22, 52)));
}

TEST_F(GradientHeaderTest, hasColoursOfItsOwn)
{
    EXPECT_NE(painted(1, 1), RGB(255, 255, 255));
    EXPECT_NE(painted(1, 1), painted(1, height() - 2));
}

TEST_F(GradientHeaderTest, drawsItsPicture)
{
    control_->setColors(0, 0);
    EXPECT_EQ(paintedUnlike(0), 0);
    control_->setIcon(GetModuleHandleW(nullptr), L"QUESTION32.PNG");
    EXPECT_GT(paintedUnlike(0), 0);
    control_->setIcon(GetModuleHandleW(nullptr), L"NOSUCH.PNG");
    EXPECT_EQ(paintedUnlike(0), 0);
}

TEST_F(GradientHeaderTest, drawsAndTellsItsText)
{
    control_->setColors(0, 0);
    control_->setText(L"Please choose what to do with file.");
    EXPECT_GT(paintedUnlike(0), 0);
    EXPECT_EQ(windowText(), L"Please choose what to do with file.");
}

TEST_F(GradientHeaderTest, showsAnAmpersandAsItIs)
{
    control_->setText(L"ab");
    control_->fitToContent();
    const int without = width();
    control_->setText(L"a&b");
    control_->fitToContent();
    EXPECT_GT(width(), without);
}

TEST_F(GradientHeaderTest, needsMoreHeightForALongTextInALittleWidth)
{
    control_->setText(L"Please choose what to do with file.");
    const int band = control_->heightForWidth(0);
    EXPECT_EQ(control_->heightForWidth(2000), band);
    control_->setText(L"Please enter password or provide key file to decrypt selected files on your computer. "
                      L"Please enter password or provide key file to decrypt selected files on your computer.");
    EXPECT_GT(control_->heightForWidth(200), band);
}

TEST_F(GradientHeaderTest, hasTheSameHeightWithAndWithoutAText)
{
    const int empty = control_->heightForWidth(0);
    control_->setText(L"Please choose what to do with file.");
    EXPECT_EQ(control_->heightForWidth(0), empty);
}

TEST_F(GradientHeaderTest, keepsItsHeightWhenItsWidthChanges)
{
    control_->setHeight(77);
    control_->setWidth(111, true);
    EXPECT_EQ(height(), 77);
}

} // namespace Panekit
