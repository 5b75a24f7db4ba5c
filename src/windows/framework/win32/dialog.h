#pragma once

#include <windows.h>

namespace JobRunner
{

/// Centres a dialog on its owner when it has one that can be seen, otherwise on the work area of its monitor.
/// The dialog stays inside the work area. Thread of the dialog.
void centreDialog(HWND dialog);

/// The view of a dialog that was made with its view as the parameter. Null until `WM_INITDIALOG`.
template <class View> View* viewOf(HWND dialog, UINT message, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
        SetWindowLongPtrW(dialog, DWLP_USER, static_cast<LONG_PTR>(lParam));
    return reinterpret_cast<View*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

/// Module that holds the dialog templates and the pictures: the program itself.
HINSTANCE resourceModule();

} // namespace JobRunner
