#include "panekit/gradient_header.h"

#include "windows/drawing/images.h"
#include "windows/drawing/shapes.h"

#include <algorithm>

namespace Panekit
{

namespace
{

// At 96 dots per inch.
constexpr int Margin = 12;
constexpr int IconLeft = 15;
constexpr int IconSize = 32;
constexpr int TextLeft = 60;

constexpr UINT TextFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX;
constexpr COLORREF White = RGB(255, 255, 255);

Gdiplus::Color opaque(COLORREF colour)
{
    Gdiplus::Color result;
    result.SetFromCOLORREF(colour);
    return result;
}

} // namespace

void GradientHeader::setIcon(void* module, const wchar_t* pngName)
{
    icon_ = Drawing::loadPngResource(static_cast<HMODULE>(module), pngName);
    invalidate();
}

void GradientHeader::setText(const wchar_t* text)
{
    text_ = text;
    publishText(text_);
}

void GradientHeader::setColors(std::uint32_t first, std::uint32_t second)
{
    first_ = first;
    second_ = second;
    invalidate();
}

RECT GradientHeader::textBox(const RECT& client) const
{
    return {scaled(TextLeft), 0, std::max<LONG>(client.right - scaled(IconLeft), scaled(TextLeft) + 1), client.bottom};
}

SIZE GradientHeader::contentSize(int width)
{
    constexpr LONG Unlimited = 0x7FFF;
    const HFONT bold = boldFont();
    const Drawing::WindowDc dc(window());
    const Drawing::Selected selected(dc.get(), bold);
    RECT box = textBox({0, 0, width > 0 ? width : Unlimited, 0});
    box.bottom = lineHeight(bold);
    if (!text_.empty())
        DrawTextW(dc.get(), text_.c_str(), static_cast<int>(text_.size()), &box, TextFormat | DT_CALCRECT);
    const LONG inner = std::max<LONG>(scaled(IconSize), box.bottom - box.top);
    return {box.right + scaled(IconLeft), inner + 2 * scaled(Margin)};
}

void GradientHeader::drawIcon(Gdiplus::Graphics& graphics, const RECT& client)
{
    if (!icon_)
        return;
    const int size = scaled(IconSize);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    graphics.DrawImage(icon_.get(), scaled(IconLeft), (static_cast<int>(client.bottom) - size) / 2, size, size);
}

void GradientHeader::paint(HDC dc, const RECT& client)
{
    {
        Gdiplus::Graphics graphics(dc);
        const Gdiplus::Rect all(0, 0, static_cast<INT>(client.right), static_cast<INT>(client.bottom));
        Drawing::fillRectangle(graphics, all, opaque(first_), opaque(second_));
        drawIcon(graphics, client);
    }
    const Drawing::Selected selected(dc, boldFont());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, White);
    // The text stands in the middle of the band, however many lines it has.
    RECT measured = textBox(client);
    DrawTextW(dc, text_.c_str(), static_cast<int>(text_.size()), &measured, TextFormat | DT_CALCRECT);
    RECT box = textBox(client);
    box.top = std::max<LONG>(0, (client.bottom - (measured.bottom - measured.top)) / 2);
    DrawTextW(dc, text_.c_str(), static_cast<int>(text_.size()), &box, TextFormat);
}

} // namespace Panekit
