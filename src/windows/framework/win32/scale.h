#pragma once

#include <windows.h>

namespace JobRunner
{

/// `value` at 96 dots per inch, turned to the given density: single precision, cut to a whole number.
int scaleAt(int dpi, int value);
/// `value` turned to the density of the window's device context (`LOGPIXELSX`).
int scaleByDpi(HWND window, int value);

} // namespace JobRunner
