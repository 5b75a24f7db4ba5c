#include "windows/drawing/text.h"

#include "windows/drawing/drawing_context.h"

namespace Drawing
{

namespace
{

const Gdiplus::Font* fontOrDefault(const Gdiplus::Font* font)
{
    return font ? font : drawingContext().defaultFont.get();
}

} // namespace

Gdiplus::SizeF measureText(Gdiplus::Graphics& graphics, const std::wstring& text, const Gdiplus::Font* font)
{
    Gdiplus::RectF box;
    graphics.MeasureString(text.c_str(), static_cast<INT>(text.size()), fontOrDefault(font), Gdiplus::PointF(0, 0),
                           &box);
    return {box.Width, box.Height};
}

void drawText(Gdiplus::Graphics& graphics, const std::wstring& text, const Gdiplus::PointF& at,
              const Gdiplus::Color& colour, const Gdiplus::Font* font)
{
    const Gdiplus::TextRenderingHint old = graphics.GetTextRenderingHint();
    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintClearTypeGridFit);
    const Gdiplus::SolidBrush brush(colour);
    graphics.DrawString(text.c_str(), static_cast<INT>(text.size()), fontOrDefault(font), at, &brush);
    graphics.SetTextRenderingHint(old);
}

} // namespace Drawing
