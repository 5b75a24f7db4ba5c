#pragma once

#include "windows/drawing/gdiplus.h"

#include <string>

namespace Drawing
{

// Text by GDI+. A null font means the default font of the library, which must have been acquired.

/// Size of one line of text.
Gdiplus::SizeF measureText(Gdiplus::Graphics& graphics, const std::wstring& text, const Gdiplus::Font* font = nullptr);
/// Draws with its top left corner at `at`; the text rendering hint is put back afterwards.
void drawText(Gdiplus::Graphics& graphics, const std::wstring& text, const Gdiplus::PointF& at,
              const Gdiplus::Color& colour, const Gdiplus::Font* font = nullptr);

} // namespace Drawing
