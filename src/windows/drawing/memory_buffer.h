#pragma once

#include <windows.h>

namespace Drawing
{

/// A memory device context with a compatible bitmap of its own. Empty until `create`.
class MemoryBuffer
{
public:
    MemoryBuffer() = default;
    ~MemoryBuffer();
    MemoryBuffer(const MemoryBuffer&) = delete;
    MemoryBuffer& operator=(const MemoryBuffer&) = delete;

    /// Compatible with `reference`. Frees what was there. A side below 1 counts as 1. False when the system refuses.
    bool create(HDC reference, int width, int height);
    void free();

    /// Null while empty.
    HDC dc() const { return dc_; }
    int width() const { return width_; }
    int height() const { return height_; }

private:
    HDC dc_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ oldBitmap_ = nullptr;
    int width_ = 0;
    int height_ = 0;
};

/// Fills a rectangle with a solid colour and puts the old background colour back.
void fillSolid(HDC dc, const RECT& area, COLORREF colour);

} // namespace Drawing
