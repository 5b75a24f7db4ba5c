#include "screenshot.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <objidl.h>

// The drawing headers rely on the names that the lean Windows header leaves out.
using std::max;
using std::min;
#include <gdiplus.h>

namespace EndToEnd
{
namespace
{

constexpr CLSID PngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

class GdiPlus
{
public:
    GdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

private:
    ULONG_PTR token_ = 0;
};

struct BitmapDeleter
{
    using pointer = HBITMAP;
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};

std::unique_ptr<HBITMAP, BitmapDeleter> copyOfScreen(const RECT& place)
{
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    std::unique_ptr<HBITMAP, BitmapDeleter> bitmap(CreateCompatibleBitmap(screen, width, height));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

} // namespace

bool takeScreenshot(const Window& window, const std::wstring& name)
{
    const wchar_t* const folder = _wgetenv(L"JOBRUNNER_SCREENSHOTS");
    if (folder == nullptr || *folder == L'\0')
        return true;
    RECT place{};
    GetWindowRect(window.handle(), &place);
    const auto bitmap = copyOfScreen(place);
    const GdiPlus drawing;
    Gdiplus::Bitmap picture(bitmap.get(), nullptr);
    const std::filesystem::path file = std::filesystem::path(folder) / (name + L".png");
    return picture.Save(file.c_str(), &PngEncoder, nullptr) == Gdiplus::Ok;
}

} // namespace EndToEnd
