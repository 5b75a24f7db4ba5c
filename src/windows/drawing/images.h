#pragma once

#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/gdiplus.h"

#include <memory>

namespace Drawing
{

/// A picture from a module's resources. Null when it is missing, empty or not an image.
std::unique_ptr<Gdiplus::Bitmap> loadPngResource(HMODULE module, const wchar_t* name, const wchar_t* type = L"PNG");

/// The icon with its alpha channel. Raises `std::runtime_error` "Cannot get icon info" or "NoMem".
std::unique_ptr<Gdiplus::Bitmap> bitmapFromIcon(HICON icon);
/// Null on failure; the caller destroys the icon.
HICON iconFromBitmap(Gdiplus::Bitmap& bitmap);
/// The picture drawn on a solid colour. Empty on failure.
GdiObject<HBITMAP> flatBitmap(Gdiplus::Bitmap& bitmap, const Gdiplus::Color& background);

} // namespace Drawing
