#include "windows/framework/win32/background.h"

#include "windows/drawing/gdi_handles.h"

namespace JobRunner
{

namespace
{

constexpr COLORREF Grey = RGB(240, 240, 240);
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Line = RGB(183, 231, 252);
constexpr int FirstButton = 1;

RECT clientArea(HWND window)
{
    RECT area{};
    GetClientRect(window, &area);
    return area;
}

/// Half a button's height above the first button.
LONG lineAbove(HWND dialog)
{
    RECT button{};
    GetWindowRect(GetDlgItem(dialog, FirstButton), &button);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&button), 2);
    return button.top - (button.bottom - button.top) / 2;
}

void drawLine(HDC dc, const RECT& client, LONG y)
{
    const Drawing::GdiObject<HPEN> pen(CreatePen(PS_SOLID, 1, Line));
    const Drawing::Selected selected(dc, pen.get());
    MoveToEx(dc, static_cast<int>(client.left), static_cast<int>(y), nullptr);
    LineTo(dc, static_cast<int>(client.right), static_cast<int>(y));
}

} // namespace

void DialogBackground::prepare(HWND dialog)
{
    const RECT client = clientArea(dialog);
    const Drawing::WindowDc dc(dialog);
    if (buffer_.create(dc.get(), static_cast<int>(client.right), static_cast<int>(client.bottom)))
        Drawing::fillSolid(buffer_.dc(), client, White);
}

void DialogBackground::free()
{
    buffer_.free();
}

void DialogBackground::paint(HWND dialog, HDC dc, const std::vector<ICustomControl*>& controls)
{
    const RECT client = clientArea(dialog);
    Drawing::fillSolid(dc, client, Grey);
    const LONG y = lineAbove(dialog);
    Drawing::fillSolid(dc, RECT{client.left, client.top, client.right, y}, White);
    drawLine(dc, client, y);
    for (ICustomControl* const control : controls)
        if (auto* const background = dynamic_cast<IControlBackground*>(control))
            background->setBackground(dialog, buffer_.dc());
}

} // namespace JobRunner
