#pragma once

#include <windows.h>

namespace Panekit
{

inline constexpr int PlainDensity = 96;

/// Dots per inch of the screen, as the window's device context has it.
int densityOf(HWND window);
/// Lets every control believe in a density, so that all of them can be tried on one screen; 0 ends it.
void pretendDensity(int dotsPerInch);

} // namespace Panekit
