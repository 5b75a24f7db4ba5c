#include "windows/drawing/drawing_context.h"

#include <gtest/gtest.h>

#include <string>

namespace Drawing
{

TEST(AcquireDrawing, setsUpOnTheFirstCallAndEndsWithTheLast)
{
    DrawingContext& context = acquireDrawing();
    const ULONG_PTR token = context.token;
    EXPECT_NE(token, 0U);
    acquireDrawing();
    EXPECT_EQ(context.count, 2);
    EXPECT_EQ(context.token, token);
    releaseDrawing();
    EXPECT_TRUE(context.defaultFont);
    releaseDrawing();
    EXPECT_FALSE(context.defaultFont);
    EXPECT_FALSE(context.gdiFont);
    EXPECT_EQ(context.count, 0);
}

TEST(AcquireDrawing, canStartAgainAfterItsEnd)
{
    {
        const DrawingScope first;
    }
    const DrawingScope second;
    EXPECT_TRUE(drawingContext().defaultFont);
    EXPECT_EQ(drawingContext().count, 1);
}

TEST(ReleaseDrawing, withoutAnAcquireDoesNothing)
{
    releaseDrawing();
    EXPECT_EQ(drawingContext().count, 0);
}

TEST(AcquireDrawing, describesItsFontInTenthsOfAPoint)
{
    const DrawingScope scope;
    const DrawingContext& context = drawingContext();
    EXPECT_EQ(std::wstring(context.logFont.lfFaceName), L"Segoe UI");
    EXPECT_EQ(context.logFont.lfHeight, 90);

    LOGFONTW made{};
    GetObjectW(context.gdiFont.get(), sizeof made, &made);
    const WindowDc screen(nullptr);
    EXPECT_EQ(made.lfHeight, -MulDiv(GetDeviceCaps(screen.get(), LOGPIXELSY), 90, 720));
}

TEST(AcquireDrawing, takesADefaultFontOfTwelvePixels)
{
    const DrawingScope scope;
    EXPECT_FLOAT_EQ(drawingContext().defaultFont->GetSize(), 12.0F);
    EXPECT_EQ(drawingContext().defaultFont->GetUnit(), Gdiplus::UnitPixel);
}

TEST(AcquireDrawing, knowsWhetherTheDesktopIsComposed)
{
    using Query = HRESULT(WINAPI*)(BOOL*);
    const HMODULE library = LoadLibraryW(L"dwmapi.dll");
    ASSERT_TRUE(library);
    const auto query =
        reinterpret_cast<Query>(reinterpret_cast<void*>(GetProcAddress(library, "DwmIsCompositionEnabled")));
    BOOL enabled = FALSE;
    ASSERT_EQ(query(&enabled), S_OK);
    FreeLibrary(library);
    const DrawingScope scope;
    EXPECT_EQ(drawingContext().composition, enabled != FALSE);
}

} // namespace Drawing
