#include "windows/framework/win32/placement.h"

namespace JobRunner
{

namespace
{

constexpr UINT MoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

HWND windowOf(ICustomControl& control)
{
    return static_cast<HWND>(control.getWindowHandle());
}

} // namespace

LayoutBox boxOf(ICustomControl& control)
{
    ControlRect rect{};
    control.getRect(&rect);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

LayoutBox boxOfItem(HWND dialog, int id)
{
    RECT rect{};
    GetWindowRect(GetDlgItem(dialog, id), &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right - rect.left),
            static_cast<int>(rect.bottom - rect.top)};
}

void moveTo(ICustomControl& control, const LayoutPoint& place)
{
    control.move(place.x, place.y);
}

void moveItem(HWND dialog, int id, const LayoutPoint& place)
{
    SetWindowPos(GetDlgItem(dialog, id), nullptr, place.x, place.y, 0, 0, MoveOnly);
}

void setTextWidth(ICustomControl& text, int width)
{
    text.setWidth(width, true);
    text.setHeight(text.heightForWidth(width));
}

void showControl(ICustomControl& control, bool shown)
{
    ShowWindow(windowOf(control), shown ? SW_SHOW : SW_HIDE);
}

void focusControl(ICustomControl& control)
{
    SetFocus(windowOf(control));
}

void endWindowAt(HWND dialog, int clientY)
{
    POINT end{0, clientY};
    ClientToScreen(dialog, &end);
    RECT window{};
    GetWindowRect(dialog, &window);
    SetWindowPos(dialog, nullptr, 0, 0, static_cast<int>(window.right - window.left),
                 static_cast<int>(end.y - window.top), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void makeLastTabStop(HWND dialog, int id)
{
    SetWindowPos(GetDlgItem(dialog, id), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

} // namespace JobRunner
