#include "windows/framework/win32/scale.h"

#include <gtest/gtest.h>

namespace JobRunner
{

TEST(ScaleByDpi, leavesAValueAloneAt96)
{
    for (const int value : {-3, 0, 1, 6, 14, 20, 35})
        EXPECT_EQ(scaleAt(96, value), value);
}

TEST(ScaleByDpi, cutsOneAndAHalfTimesTheValueAt144)
{
    EXPECT_EQ(scaleAt(144, 20), 30);
    EXPECT_EQ(scaleAt(144, 7), 10);
    EXPECT_EQ(scaleAt(144, -7), -10);
}

TEST(ScaleByDpi, countsInSinglePrecision)
{
    EXPECT_EQ(scaleAt(120, 6), 7);
    // Single precision holds no more than 24 bits of the product.
    EXPECT_EQ(scaleAt(96, 16777217), 16777216);
}

TEST(ScaleByDpi, readsTheDensityOfTheWindow)
{
    const HWND desktop = GetDesktopWindow();
    const HDC dc = GetDC(desktop);
    const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
    ReleaseDC(desktop, dc);
    EXPECT_EQ(scaleByDpi(desktop, 20), scaleAt(dpi, 20));
}

} // namespace JobRunner
