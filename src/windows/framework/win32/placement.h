#pragma once

#include "interfaces/panekit/controls.h"
#include "windows/framework/layout_box.h"

#include <windows.h>

// Measures and places what a dialog holds, in client coordinates. Thread of the dialog.

namespace JobRunner
{

LayoutBox boxOf(ICustomControl& control);
/// The same of an item of the template.
LayoutBox boxOfItem(HWND dialog, int id);
/// Moves and keeps the size.
void moveTo(ICustomControl& control, const LayoutPoint& place);
void moveItem(HWND dialog, int id, const LayoutPoint& place);
/// Gives a text its width and the height that it then needs.
void setTextWidth(ICustomControl& text, int width);
void showControl(ICustomControl& control, bool shown);
void focusControl(ICustomControl& control);
/// Ends the dialog's window at that height of its client area.
void endWindowAt(HWND dialog, int clientY);
/// Puts an item behind everything else in the order of the Tab key.
void makeLastTabStop(HWND dialog, int id);

} // namespace JobRunner
