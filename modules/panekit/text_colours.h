#pragma once

#include <windows.h>

namespace Panekit
{

inline constexpr COLORREF TextColour = RGB(24, 24, 24);
inline constexpr COLORREF CaptionColour = RGB(96, 102, 112);
inline constexpr COLORREF LinkColour = RGB(0, 84, 166);

} // namespace Panekit
