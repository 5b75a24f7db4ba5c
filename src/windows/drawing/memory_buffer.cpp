#include "windows/drawing/memory_buffer.h"

#include <algorithm>

namespace Drawing
{

MemoryBuffer::~MemoryBuffer()
{
    free();
}

bool MemoryBuffer::create(HDC reference, int width, int height)
{
    free();
    dc_ = CreateCompatibleDC(reference);
    if (!dc_)
        return false;
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
    bitmap_ = CreateCompatibleBitmap(reference, width_, height_);
    if (!bitmap_)
    {
        free();
        return false;
    }
    oldBitmap_ = SelectObject(dc_, bitmap_);
    return true;
}

void MemoryBuffer::free()
{
    if (oldBitmap_)
        SelectObject(dc_, oldBitmap_);
    if (bitmap_)
        DeleteObject(bitmap_);
    if (dc_)
        DeleteDC(dc_);
    dc_ = nullptr;
    bitmap_ = nullptr;
    oldBitmap_ = nullptr;
    width_ = 0;
    height_ = 0;
}

void fillSolid(HDC dc, const RECT& area, COLORREF colour)
{
    const COLORREF old = SetBkColor(dc, colour);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, L"", 0, nullptr);
    SetBkColor(dc, old);
}

} // namespace Drawing
