#include "windows/drawing/shapes.h"

namespace Drawing
{

namespace
{

constexpr Gdiplus::REAL PenWidth = 1.0F;

Gdiplus::LinearGradientBrush verticalGradient(const Gdiplus::Rect& area, const Gdiplus::Color& top,
                                              const Gdiplus::Color& bottom)
{
    return {area, top, bottom, Gdiplus::LinearGradientModeVertical};
}

/// Pixels as the page unit for as long as it lives.
class PixelUnit
{
public:
    explicit PixelUnit(Gdiplus::Graphics& graphics) : graphics_(graphics), old_(graphics.GetPageUnit())
    {
        graphics_.SetPageUnit(Gdiplus::UnitPixel);
    }
    ~PixelUnit() { graphics_.SetPageUnit(old_); }
    PixelUnit(const PixelUnit&) = delete;
    PixelUnit& operator=(const PixelUnit&) = delete;

private:
    Gdiplus::Graphics& graphics_;
    Gdiplus::Unit old_;
};

void drawRounded(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Pen& pen)
{
    const PixelUnit unit(graphics);
    Gdiplus::GraphicsPath path;
    buildRoundedPath(path, area.X, area.Y, area.Width, area.Height, radius);
    graphics.DrawPath(&pen, &path);
}

void fillRounded(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Brush& brush)
{
    const PixelUnit unit(graphics);
    Gdiplus::GraphicsPath path;
    buildRoundedPath(path, area.X, area.Y, area.Width, area.Height, radius);
    graphics.FillPath(&brush, &path);
}

} // namespace

void drawRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& colour)
{
    const Gdiplus::Pen pen(colour, PenWidth);
    graphics.DrawRectangle(&pen, area);
}

void fillRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& colour)
{
    const Gdiplus::SolidBrush brush(colour);
    graphics.FillRectangle(&brush, area);
}

void drawRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& top,
                   const Gdiplus::Color& bottom)
{
    const auto brush = verticalGradient(area, top, bottom);
    const Gdiplus::Pen pen(&brush, PenWidth);
    graphics.DrawRectangle(&pen, area);
}

void fillRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& top,
                   const Gdiplus::Color& bottom)
{
    const auto brush = verticalGradient(area, top, bottom);
    graphics.FillRectangle(&brush, area);
}

void buildRoundedPath(Gdiplus::GraphicsPath& path, int x, int y, int width, int height, int radius)
{
    constexpr int OddDiameter = 20;
    const int d = 2 * radius;
    path.Reset();
    if (d > width || d > height)
    {
        path.AddEllipse(x, y, width, height);
        return;
    }
    // Intended: at a diameter of exactly 20 the last three arcs are 21 wide and high, placed by sides 1 smaller.
    const int extra = d == OddDiameter ? 1 : 0;
    const int size = d + extra;
    const int right = x + width - extra - d;
    const int bottom = y + height - extra - d;
    path.AddArc(x, y, d, d, 180.0F, 90.0F);
    path.AddArc(right, y, size, size, 270.0F, 90.0F);
    path.AddArc(right, bottom, size, size, 0.0F, 90.0F);
    path.AddArc(x, bottom, size, size, 90.0F, 90.0F);
    path.CloseFigure();
}

void drawRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius,
                          const Gdiplus::Color& colour)
{
    drawRounded(graphics, area, radius, Gdiplus::Pen(colour, PenWidth));
}

void fillRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius,
                          const Gdiplus::Color& colour)
{
    fillRounded(graphics, area, radius, Gdiplus::SolidBrush(colour));
}

void drawRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Color& top,
                          const Gdiplus::Color& bottom)
{
    const auto brush = verticalGradient(area, top, bottom);
    drawRounded(graphics, area, radius, Gdiplus::Pen(&brush, PenWidth));
}

void fillRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Color& top,
                          const Gdiplus::Color& bottom)
{
    fillRounded(graphics, area, radius, verticalGradient(area, top, bottom));
}

} // namespace Drawing
