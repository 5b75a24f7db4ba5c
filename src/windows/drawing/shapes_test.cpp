#include "windows/drawing/shapes.h"

#include "windows/drawing/drawing_context.h"
#include "windows/drawing/memory_buffer.h"
#include "windows/drawing/text.h"

#include <gtest/gtest.h>

#include <vector>

namespace Drawing
{

namespace
{

constexpr float Near = 0.01F;

class Shapes : public testing::Test
{
protected:
    static std::vector<Gdiplus::PointF> rounded(int width, int height, int radius)
    {
        Gdiplus::GraphicsPath path;
        buildRoundedPath(path, 0, 0, width, height, radius);
        std::vector<Gdiplus::PointF> points(static_cast<std::size_t>(path.GetPointCount()));
        path.GetPathPoints(points.data(), path.GetPointCount());
        return points;
    }

    static void expectPoint(const Gdiplus::PointF& point, float x, float y)
    {
        EXPECT_NEAR(point.X, x, Near);
        EXPECT_NEAR(point.Y, y, Near);
    }

    static Gdiplus::Color pixel(Gdiplus::Bitmap& bitmap, int x, int y)
    {
        Gdiplus::Color colour;
        bitmap.GetPixel(x, y, &colour);
        return colour;
    }

private:
    DrawingScope scope_;
};

// Points of the path: four for each corner, its start first and its end last.
constexpr std::size_t CornerPoints = 4;

} // namespace

TEST_F(Shapes, aRoundedPathStartsAtTheTopLeftAndGoesClockwise)
{
    const auto points = rounded(100, 60, 9);
    ASSERT_EQ(points.size(), 4 * CornerPoints);
    expectPoint(points[0], 0, 9);
    expectPoint(points[3], 9, 0);
    expectPoint(points[4], 91, 0);
    expectPoint(points[7], 100, 9);
    expectPoint(points[8], 100, 51);
    expectPoint(points[11], 91, 60);
    expectPoint(points[12], 9, 60);
    expectPoint(points[15], 0, 51);
}

TEST_F(Shapes, aRoundedPathOfDiameter20HasThreeCornersOf21)
{
    const auto points = rounded(100, 60, 10);
    ASSERT_EQ(points.size(), 4 * CornerPoints);
    expectPoint(points[0], 0, 10);
    expectPoint(points[3], 10, 0);
    expectPoint(points[4], 79 + 10.5F, 0);
    expectPoint(points[7], 100, 10.5F);
    expectPoint(points[8], 100, 39 + 10.5F);
    expectPoint(points[11], 79 + 10.5F, 60);
    expectPoint(points[12], 10.5F, 60);
    expectPoint(points[15], 0, 39 + 10.5F);
}

TEST_F(Shapes, aRoundedPathIsAnEllipseWhenTheDiameterExceedsASide)
{
    constexpr std::size_t EllipsePoints = 13;
    EXPECT_EQ(rounded(100, 19, 10).size(), EllipsePoints);
    EXPECT_EQ(rounded(19, 100, 10).size(), EllipsePoints);
    // The ellipse starts at its right end, the path of corners at its left end.
    expectPoint(rounded(100, 19, 10)[0], 100, 9.5F);
    expectPoint(rounded(24, 24, 12)[0], 0, 12);
}

TEST_F(Shapes, aRoundedPathForgetsWhatWasInIt)
{
    Gdiplus::GraphicsPath path;
    path.AddLine(0, 0, 500, 500);
    buildRoundedPath(path, 0, 0, 100, 60, 9);
    EXPECT_EQ(path.GetPointCount(), static_cast<int>(4 * CornerPoints));
}

TEST_F(Shapes, fillASolidRectangle)
{
    Gdiplus::Bitmap bitmap(20, 20, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    fillRectangle(graphics, Gdiplus::Rect(5, 5, 10, 10), Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(pixel(bitmap, 5, 5).GetValue(), Gdiplus::Color(255, 1, 2, 3).GetValue());
    EXPECT_EQ(pixel(bitmap, 14, 14).GetValue(), Gdiplus::Color(255, 1, 2, 3).GetValue());
    EXPECT_EQ(pixel(bitmap, 15, 15).GetAlpha(), 0);
}

TEST_F(Shapes, drawARectangleOnePixelWide)
{
    Gdiplus::Bitmap bitmap(20, 20, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    drawRectangle(graphics, Gdiplus::Rect(5, 5, 10, 10), Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(pixel(bitmap, 4, 10).GetAlpha(), 0);
    EXPECT_EQ(pixel(bitmap, 5, 10).GetAlpha(), 255);
    EXPECT_EQ(pixel(bitmap, 6, 10).GetAlpha(), 0);
}

TEST_F(Shapes, aGradientGoesFromTheTopDown)
{
    Gdiplus::Bitmap bitmap(20, 20, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    fillRectangle(graphics, Gdiplus::Rect(0, 0, 20, 20), Gdiplus::Color(255, 200, 0, 0), Gdiplus::Color(255, 0, 0, 0));
    EXPECT_GT(pixel(bitmap, 10, 1).GetRed(), 170);
    EXPECT_LT(pixel(bitmap, 10, 18).GetRed(), 30);
    EXPECT_EQ(pixel(bitmap, 2, 10).GetValue(), pixel(bitmap, 17, 10).GetValue());
}

TEST_F(Shapes, aRoundedRectangleLeavesItsCornersFree)
{
    Gdiplus::Bitmap bitmap(40, 40, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    fillRoundedRectangle(graphics, Gdiplus::Rect(0, 0, 40, 40), 9, Gdiplus::Color(255, 1, 2, 3),
                         Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(pixel(bitmap, 0, 0).GetAlpha(), 0);
    EXPECT_EQ(pixel(bitmap, 20, 20).GetAlpha(), 255);
}

TEST_F(Shapes, aRoundedRectangleIsMeasuredInPixels)
{
    Gdiplus::Bitmap bitmap(40, 40, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    graphics.SetPageUnit(Gdiplus::UnitPoint);
    fillRoundedRectangle(graphics, Gdiplus::Rect(0, 0, 20, 20), 4, Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(pixel(bitmap, 18, 10).GetAlpha(), 255);
    EXPECT_EQ(pixel(bitmap, 22, 10).GetAlpha(), 0);
}

TEST_F(Shapes, aRoundedRectanglePutsThePageUnitBack)
{
    Gdiplus::Bitmap bitmap(40, 40, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    graphics.SetPageUnit(Gdiplus::UnitPoint);
    drawRoundedRectangle(graphics, Gdiplus::Rect(0, 0, 30, 30), 9, Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(graphics.GetPageUnit(), Gdiplus::UnitPoint);
    fillRoundedRectangle(graphics, Gdiplus::Rect(0, 0, 30, 30), 9, Gdiplus::Color(255, 1, 2, 3));
    EXPECT_EQ(graphics.GetPageUnit(), Gdiplus::UnitPoint);
    drawRoundedRectangle(graphics, Gdiplus::Rect(0, 0, 30, 30), 9, Gdiplus::Color(255, 1, 2, 3),
                         Gdiplus::Color(255, 3, 2, 1));
    EXPECT_EQ(graphics.GetPageUnit(), Gdiplus::UnitPoint);
}

TEST_F(Shapes, textTakesTheDefaultFontAndPutsTheHintBack)
{
    Gdiplus::Bitmap bitmap(100, 30, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    const Gdiplus::SizeF one = measureText(graphics, L"Source:");
    const Gdiplus::SizeF two = measureText(graphics, L"Source:Source:");
    EXPECT_GT(one.Height, 8.0F);
    EXPECT_GT(two.Width, one.Width * 1.5F);
    const Gdiplus::Font large(drawingContext().defaultFamily.get(), 30.0F, Gdiplus::FontStyleRegular,
                              Gdiplus::UnitPixel);
    EXPECT_GT(measureText(graphics, L"Source:", &large).Height, one.Height);

    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
    drawText(graphics, L"Source:", Gdiplus::PointF(0, 0), Gdiplus::Color(255, 0, 0, 0));
    EXPECT_EQ(graphics.GetTextRenderingHint(), Gdiplus::TextRenderingHintAntiAlias);
}

TEST(FillSolid, putsTheBackgroundColourBack)
{
    const WindowDc screen(nullptr);
    MemoryBuffer buffer;
    ASSERT_TRUE(buffer.create(screen.get(), 4, 4));
    SetBkColor(buffer.dc(), RGB(9, 8, 7));
    fillSolid(buffer.dc(), RECT{0, 0, 4, 4}, RGB(10, 20, 30));
    EXPECT_EQ(GetPixel(buffer.dc(), 3, 3), RGB(10, 20, 30));
    EXPECT_EQ(GetBkColor(buffer.dc()), RGB(9, 8, 7));
}

TEST(MemoryBuffer, isNeverEmptyOnceItIsMade)
{
    const WindowDc screen(nullptr);
    MemoryBuffer buffer;
    EXPECT_FALSE(buffer.dc());
    ASSERT_TRUE(buffer.create(screen.get(), 0, -5));
    EXPECT_EQ(buffer.width(), 1);
    EXPECT_EQ(buffer.height(), 1);
    buffer.free();
    EXPECT_FALSE(buffer.dc());
}

} // namespace Drawing
