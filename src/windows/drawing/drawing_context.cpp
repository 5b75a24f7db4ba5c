#include "windows/drawing/drawing_context.h"

#include "systemutilities/shell_utilities.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <string>

namespace Drawing
{

namespace
{

constexpr Gdiplus::REAL DefaultSize = 12.0F; // pixels
constexpr LONG OldFontHeight = 80;
constexpr LONG PointFontHeight = 90; // tenths of a point

DrawingContext context;

/// A library from the system's own folder and nowhere else.
HMODULE loadSystemLibrary(const wchar_t* name)
{
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    return LoadLibraryW((std::wstring(folder) + L"\\" + name).c_str());
}

bool isCompositionEnabled()
{
    const HMODULE library = loadSystemLibrary(L"dwmapi.dll");
    if (!library)
        return false;
    using Query = HRESULT(WINAPI*)(BOOL*);
    Query query = nullptr;
    const FARPROC address = GetProcAddress(library, "DwmIsCompositionEnabled");
    std::memcpy(&query, &address, sizeof query);
    BOOL enabled = FALSE;
    const bool answered = query && SUCCEEDED(query(&enabled));
    FreeLibrary(library);
    return answered && enabled;
}

void setFace(LOGFONTW& font, const wchar_t* face, LONG height)
{
    std::wcsncpy(font.lfFaceName, face, std::size(font.lfFaceName) - 1);
    font.lfHeight = height;
}

std::unique_ptr<Gdiplus::Font> systemFont()
{
    const WindowDc screen(nullptr);
    const auto stock = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    return std::make_unique<Gdiplus::Font>(screen.get(), stock);
}

std::unique_ptr<Gdiplus::FontFamily> familyOf(const Gdiplus::Font& font)
{
    auto family = std::make_unique<Gdiplus::FontFamily>();
    font.GetFamily(family.get());
    return family;
}

void makeDefaultFont(bool vista)
{
    if (!vista)
    {
        setFace(context.logFont, L"MS Shell Dlg 2", OldFontHeight);
        context.defaultFont = systemFont();
        context.defaultFamily = familyOf(*context.defaultFont);
        return;
    }
    context.defaultFamily = std::make_unique<Gdiplus::FontFamily>(L"Segoe UI");
    // Where the face is not installed, that of the system's dialogs stands in, so that text is never left out.
    if (!context.defaultFamily->IsAvailable())
        context.defaultFamily = familyOf(*systemFont());
    context.defaultFont = std::make_unique<Gdiplus::Font>(context.defaultFamily.get(), DefaultSize,
                                                          Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
}

void makeGdiFont()
{
    setFace(context.logFont, L"Segoe UI", PointFontHeight);
    const WindowDc screen(nullptr);
    LOGFONTW font = context.logFont;
    font.lfHeight = heightOfPoints(screen.get(), static_cast<int>(context.logFont.lfHeight));
    context.gdiFont.reset(CreateFontIndirectW(&font));
}

} // namespace

int heightOfPoints(HDC dc, int tenths)
{
    constexpr int TenthsPerInch = 720;
    POINT point{0, MulDiv(GetDeviceCaps(dc, LOGPIXELSY), tenths, TenthsPerInch)};
    POINT origin{0, 0};
    DPtoLP(dc, &point, 1);
    DPtoLP(dc, &origin, 1);
    return -std::abs(static_cast<int>(point.y - origin.y));
}

DrawingContext& acquireDrawing()
{
    if (++context.count > 1)
        return context;
    Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&context.token, &input, nullptr);
    const bool vista = Halden::SystemUtilities::isVistaOrLater();
    context.composition = vista && isCompositionEnabled();
    context.logFont = {};
    makeDefaultFont(vista);
    makeGdiFont();
    return context;
}

void releaseDrawing()
{
    if (context.count == 0 || --context.count > 0)
        return;
    context.defaultFont.reset();
    context.defaultFamily.reset();
    context.gdiFont.reset();
    Gdiplus::GdiplusShutdown(context.token);
    context.token = 0;
}

DrawingContext& drawingContext()
{
    return context;
}

} // namespace Drawing
