#pragma once

#include <windows.h>

namespace Panekit
{

/// Colours of a field that the user fills in, and of the buttons in it.
struct FieldColours
{
    COLORREF frame;
    COLORREF focusedFrame;
    COLORREF hotButton;
    COLORREF pressedButton;
};

/// With high contrast all colours are the system's own.
FieldColours fieldColours(bool highContrast);
/// As the user has set up the system.
FieldColours fieldColours();

} // namespace Panekit
