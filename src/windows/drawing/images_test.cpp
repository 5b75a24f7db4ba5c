#include "windows/drawing/images.h"

#include "windows/drawing/drawing_context.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace Drawing
{

namespace
{

class Images : public testing::Test
{
protected:
    static std::unique_ptr<Gdiplus::Bitmap> load(const wchar_t* name)
    {
        return loadPngResource(GetModuleHandleW(nullptr), name);
    }

    static Gdiplus::Color pixel(Gdiplus::Bitmap& bitmap, int x, int y)
    {
        Gdiplus::Color colour;
        bitmap.GetPixel(x, y, &colour);
        return colour;
    }

private:
    DrawingScope scope_;
};

struct Picture
{
    const wchar_t* name;
    UINT size;
};

} // namespace

TEST_F(Images, ofTheDialogsLoadInTheirSizes)
{
    const Picture pictures[] = {{L"ZELICON32.PNG", 32}, {L"QUESTION32.PNG", 32}, {L"SHOWPASS.PNG", 16},
                                {L"DOTS.PNG", 14},      {L"KEYBOARD.PNG", 16},   {L"USB.PNG", 16}};
    for (const Picture& picture : pictures)
    {
        const auto bitmap = load(picture.name);
        ASSERT_TRUE(bitmap) << picture.size;
        EXPECT_EQ(bitmap->GetWidth(), picture.size);
        EXPECT_EQ(bitmap->GetHeight(), picture.size);
        EXPECT_EQ(pixel(*bitmap, 0, 0).GetAlpha(), 0);
    }
}

TEST_F(Images, thatAreMissingAreNull)
{
    EXPECT_FALSE(load(L"NOSUCH.PNG"));
    EXPECT_FALSE(loadPngResource(GetModuleHandleW(nullptr), L"DOTS.PNG", L"NOSUCHTYPE"));
}

TEST_F(Images, areNullWhenTheResourceIsNoPicture)
{
    const auto manifest = MAKEINTRESOURCEW(1);
    const auto type = MAKEINTRESOURCEW(24);
    ASSERT_TRUE(FindResourceW(nullptr, manifest, type));
    EXPECT_FALSE(loadPngResource(GetModuleHandleW(nullptr), manifest, type));
}

TEST_F(Images, keepTheirAlphaThroughAnIcon)
{
    Gdiplus::Bitmap original(16, 16, PixelFormat32bppARGB);
    original.SetPixel(3, 4, Gdiplus::Color(255, 10, 20, 30));
    original.SetPixel(5, 6, Gdiplus::Color(128, 200, 100, 50));
    const HICON icon = iconFromBitmap(original);
    ASSERT_TRUE(icon);
    const auto back = bitmapFromIcon(icon);
    DestroyIcon(icon);
    EXPECT_EQ(pixel(*back, 3, 4).GetValue(), Gdiplus::Color(255, 10, 20, 30).GetValue());
    EXPECT_EQ(pixel(*back, 5, 6).GetAlpha(), 128);
    EXPECT_EQ(pixel(*back, 0, 0).GetAlpha(), 0);
}

TEST_F(Images, ofAnIconWithoutAlphaTakeItFromItsMask)
{
    std::vector<BYTE> bits(16 * 2, 0);
    for (std::size_t row = 0; row < 16; ++row)
        bits[row * 2] = 0xFF; // the left half shows nothing
    const WindowDc screen(nullptr);
    const GdiObject<HBITMAP> mask(CreateBitmap(16, 16, 1, 1, bits.data()));
    const GdiObject<HBITMAP> colour(CreateCompatibleBitmap(screen.get(), 16, 16));
    ICONINFO description{TRUE, 0, 0, mask.get(), colour.get()};
    const HICON icon = CreateIconIndirect(&description);
    ASSERT_TRUE(icon);
    const auto bitmap = bitmapFromIcon(icon);
    DestroyIcon(icon);
    EXPECT_EQ(pixel(*bitmap, 3, 3).GetAlpha(), 0);
    EXPECT_EQ(pixel(*bitmap, 12, 3).GetAlpha(), 255);
}

TEST_F(Images, ofNoIconRaiseTheKnownText)
{
    try
    {
        bitmapFromIcon(nullptr);
        FAIL();
    }
    catch (const std::runtime_error& error)
    {
        EXPECT_EQ(std::string(error.what()), "Cannot get icon info");
    }
}

TEST_F(Images, onAColourLoseTheirTransparency)
{
    Gdiplus::Bitmap picture(4, 4, PixelFormat32bppARGB);
    picture.SetPixel(1, 1, Gdiplus::Color(255, 1, 2, 3));
    const auto flat = flatBitmap(picture, Gdiplus::Color(255, 40, 50, 60));
    ASSERT_TRUE(flat);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ old = SelectObject(dc, flat.get());
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(40, 50, 60));
    EXPECT_EQ(GetPixel(dc, 1, 1), RGB(1, 2, 3));
    SelectObject(dc, old);
    DeleteDC(dc);
}

} // namespace Drawing
