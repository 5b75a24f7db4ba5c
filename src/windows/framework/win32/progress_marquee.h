#pragma once

#include <windows.h>

namespace JobRunner
{

/// Turns a progress bar into a marquee with an interval of 10 milliseconds.
void SetProgressMarquee(HWND bar);
/// Turns a marquee back into a bar from 0 to 100.
void ClearProgressMarquee(HWND bar);

} // namespace JobRunner
