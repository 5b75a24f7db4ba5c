#pragma once

#include "windows/drawing/gdiplus.h"

namespace Drawing
{

// Rectangles, plain and rounded, in pixels. Lines are 1 wide. A failure stays in the graphics object as its last
// status, and drawing goes on.

void drawRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& colour);
void fillRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& colour);
/// From `top` down to `bottom`.
void drawRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& top,
                   const Gdiplus::Color& bottom);
void fillRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, const Gdiplus::Color& top,
                   const Gdiplus::Color& bottom);

/// Puts the outline into `path`: an ellipse when twice the radius exceeds a side.
void buildRoundedPath(Gdiplus::GraphicsPath& path, int x, int y, int width, int height, int radius);

void drawRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius,
                          const Gdiplus::Color& colour);
void fillRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius,
                          const Gdiplus::Color& colour);
void drawRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Color& top,
                          const Gdiplus::Color& bottom);
void fillRoundedRectangle(Gdiplus::Graphics& graphics, const Gdiplus::Rect& area, int radius, const Gdiplus::Color& top,
                          const Gdiplus::Color& bottom);

} // namespace Drawing
