#include "windows/framework/win32/dialog.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

RECT workArea(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor))
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &monitor.rcWork, 0);
    return monitor.rcWork;
}

/// Null when there is no owner to be seen.
HWND visibleOwner(HWND dialog)
{
    const HWND owner = GetWindow(dialog, GW_OWNER);
    return owner && IsWindowVisible(owner) && !IsIconic(owner) ? owner : nullptr;
}

/// Start of an extent that is centred in [from, to], but not outside of [low, high].
LONG centred(LONG from, LONG to, LONG extent, LONG low, LONG high)
{
    const LONG start = from + (to - from - extent) / 2;
    return std::max(std::min(start, high - extent), low);
}

} // namespace

void centreDialog(HWND dialog)
{
    RECT own{};
    GetWindowRect(dialog, &own);
    const HWND owner = visibleOwner(dialog);
    const RECT area = workArea(owner ? owner : dialog);
    RECT around = area;
    if (owner)
        GetWindowRect(owner, &around);
    const LONG x = centred(around.left, around.right, own.right - own.left, area.left, area.right);
    const LONG y = centred(around.top, around.bottom, own.bottom - own.top, area.top, area.bottom);
    SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HINSTANCE resourceModule()
{
    return GetModuleHandleW(nullptr);
}

} // namespace JobRunner
