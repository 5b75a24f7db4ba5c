#include "windows/framework/win32/progress_marquee.h"

#include <commctrl.h>

namespace JobRunner
{

namespace
{

constexpr LPARAM MarqueeIntervalMilliseconds = 10;
constexpr LPARAM RangeFrom0To100 = 6553600;
static_assert(PBS_MARQUEE == 8);
static_assert(PBM_SETMARQUEE == 1034);
static_assert(PBM_SETRANGE == 1025);

} // namespace

void SetProgressMarquee(HWND bar)
{
    SetWindowLongW(bar, GWL_STYLE, GetWindowLongW(bar, GWL_STYLE) | PBS_MARQUEE);
    SendMessageW(bar, PBM_SETMARQUEE, 1, MarqueeIntervalMilliseconds);
}

void ClearProgressMarquee(HWND bar)
{
    SendMessageW(bar, PBM_SETMARQUEE, 0, 0);
    SetWindowLongW(bar, GWL_STYLE, GetWindowLongW(bar, GWL_STYLE) & ~PBS_MARQUEE);
    SendMessageW(bar, PBM_SETRANGE, 1, RangeFrom0To100);
}

} // namespace JobRunner
