#pragma once

#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/gdiplus.h"

#include <memory>

namespace Drawing
{

/// State of the drawing library, one per module that holds it. Counted: see `acquireDrawing`.
struct DrawingContext
{
    int count = 0;
    ULONG_PTR token = 0;
    /// Whether the desktop is composed, as it was at the start.
    bool composition = false;
    std::unique_ptr<Gdiplus::Font> defaultFont;
    std::unique_ptr<Gdiplus::FontFamily> defaultFamily;
    LOGFONTW logFont{};
    GdiObject<HFONT> gdiFont;
};

/// Counts up; the first call sets the library up. First thread, or the one thread that draws.
DrawingContext& acquireDrawing();
/// Counts down; the last call deletes the fonts and shuts GDI+ down. Does nothing when the count is 0.
void releaseDrawing();
/// The state as it is; the fonts are null while the count is 0.
DrawingContext& drawingContext();

/// Height of a font in logical units, from tenths of a point, on the given device context.
int heightOfPoints(HDC dc, int tenths);

/// Holds the library for as long as it lives.
class DrawingScope
{
public:
    DrawingScope() { acquireDrawing(); }
    ~DrawingScope() { releaseDrawing(); }
    DrawingScope(const DrawingScope&) = delete;
    DrawingScope& operator=(const DrawingScope&) = delete;
};

} // namespace Drawing
