#pragma once

#include <windows.h>

namespace JobRunner
{

/// Centres a dialog on its owner when it has one that can be seen, otherwise on the work area of its monitor.
/// The dialog stays inside the work area. Thread of the dialog.
void centreDialog(HWND dialog);

/// Module that holds the dialog templates and the pictures: the program itself.
HINSTANCE resourceModule();

} // namespace JobRunner
