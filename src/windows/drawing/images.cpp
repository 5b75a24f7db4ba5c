#include "windows/drawing/images.h"

#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Drawing
{

namespace
{

/// A movable block of global memory, freed on every way out.
class GlobalBlock
{
public:
    explicit GlobalBlock(SIZE_T size) : block_(GlobalAlloc(GMEM_MOVEABLE, size)) {}
    ~GlobalBlock()
    {
        if (block_)
            GlobalFree(block_);
    }
    GlobalBlock(const GlobalBlock&) = delete;
    GlobalBlock& operator=(const GlobalBlock&) = delete;

    HGLOBAL get() const { return block_; }
    bool fill(const void* bytes, SIZE_T size)
    {
        void* const memory = block_ ? GlobalLock(block_) : nullptr;
        if (!memory)
            return false;
        std::memcpy(memory, bytes, size);
        GlobalUnlock(block_);
        return true;
    }

private:
    HGLOBAL block_;
};

/// The picture reads on from its stream for as long as it lives; a copy stands alone once the block is freed.
std::unique_ptr<Gdiplus::Bitmap> copyOf(Gdiplus::Bitmap& bitmap)
{
    const auto width = static_cast<INT>(bitmap.GetWidth());
    const auto height = static_cast<INT>(bitmap.GetHeight());
    auto copy = std::make_unique<Gdiplus::Bitmap>(width, height, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(copy.get());
    graphics.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
    return graphics.DrawImage(&bitmap, 0, 0, width, height) == Gdiplus::Ok ? std::move(copy) : nullptr;
}

std::unique_ptr<Gdiplus::Bitmap> decode(HGLOBAL block)
{
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(block, FALSE, &stream)))
        return nullptr;
    std::unique_ptr<Gdiplus::Bitmap> bitmap(Gdiplus::Bitmap::FromStream(stream));
    stream->Release();
    if (!bitmap || bitmap->GetLastStatus() != Gdiplus::Ok)
        return nullptr;
    return copyOf(*bitmap);
}

using Pixels = std::vector<std::uint32_t>;

Pixels readPixels(HBITMAP bitmap, int width, int height)
{
    Pixels pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // rows from the top down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    const WindowDc screen(nullptr);
    if (GetDIBits(screen.get(), bitmap, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS) == 0)
        throw std::runtime_error("Cannot get icon info");
    return pixels;
}

constexpr std::uint32_t AlphaMask = 0xFF000000U;

bool hasAlpha(const Pixels& pixels)
{
    for (const std::uint32_t pixel : pixels)
        if (pixel & AlphaMask)
            return true;
    return false;
}

/// An old icon has no alpha of its own: what its mask leaves black is opaque.
void takeAlphaFromMask(Pixels& pixels, const Pixels& mask)
{
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = (mask[i] & ~AlphaMask) ? 0U : (pixels[i] | AlphaMask);
}

std::unique_ptr<Gdiplus::Bitmap> bitmapFromPixels(const Pixels& pixels, int width, int height)
{
    auto bitmap = std::make_unique<Gdiplus::Bitmap>(width, height, PixelFormat32bppARGB);
    const Gdiplus::Rect all(0, 0, width, height);
    Gdiplus::BitmapData data;
    if (bitmap->LockBits(&all, Gdiplus::ImageLockModeWrite, PixelFormat32bppARGB, &data) != Gdiplus::Ok)
        throw std::runtime_error("NoMem");
    const std::size_t rowSize = static_cast<std::size_t>(width) * sizeof(std::uint32_t);
    for (int row = 0; row < height; ++row)
        std::memcpy(static_cast<char*>(data.Scan0) + static_cast<std::ptrdiff_t>(row) * data.Stride,
                    pixels.data() + static_cast<std::ptrdiff_t>(row) * width, rowSize);
    bitmap->UnlockBits(&data);
    return bitmap;
}

} // namespace

std::unique_ptr<Gdiplus::Bitmap> loadPngResource(HMODULE module, const wchar_t* name, const wchar_t* type)
{
    const HRSRC found = FindResourceW(module, name, type);
    if (!found)
        return nullptr;
    const DWORD size = SizeofResource(module, found);
    const HGLOBAL loaded = LoadResource(module, found);
    const void* const bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes || size == 0)
        return nullptr;
    GlobalBlock block(size);
    if (!block.fill(bytes, size))
        return nullptr;
    return decode(block.get());
}

std::unique_ptr<Gdiplus::Bitmap> bitmapFromIcon(HICON icon)
{
    ICONINFO info{};
    if (!GetIconInfo(icon, &info))
        throw std::runtime_error("Cannot get icon info");
    const GdiObject<HBITMAP> colour(info.hbmColor);
    const GdiObject<HBITMAP> mask(info.hbmMask);
    BITMAP size{};
    // An icon of two colours keeps everything in its mask and has no picture of its own to convert.
    if (!colour || GetObjectW(colour.get(), sizeof size, &size) == 0)
        throw std::runtime_error("Cannot get icon info");
    const auto width = static_cast<int>(size.bmWidth);
    const auto height = static_cast<int>(size.bmHeight);
    try
    {
        Pixels pixels = readPixels(colour.get(), width, height);
        if (!hasAlpha(pixels))
            takeAlphaFromMask(pixels, readPixels(mask.get(), width, height));
        return bitmapFromPixels(pixels, width, height);
    }
    catch (const std::bad_alloc&)
    {
        throw std::runtime_error("NoMem");
    }
}

HICON iconFromBitmap(Gdiplus::Bitmap& bitmap)
{
    HICON icon = nullptr;
    return bitmap.GetHICON(&icon) == Gdiplus::Ok ? icon : nullptr;
}

GdiObject<HBITMAP> flatBitmap(Gdiplus::Bitmap& bitmap, const Gdiplus::Color& background)
{
    HBITMAP flat = nullptr;
    if (bitmap.GetHBITMAP(background, &flat) != Gdiplus::Ok)
        return {};
    return GdiObject<HBITMAP>(flat);
}

} // namespace Drawing
