#pragma once

// For the tests of dialogs: a window that they open above.

#include <windows.h>

namespace JobRunner
{

/// A window of this thread that is the active one.
class ActiveWindow
{
public:
    ActiveWindow() { SetActiveWindow(window_); }
    ~ActiveWindow() { DestroyWindow(window_); }
    ActiveWindow(const ActiveWindow&) = delete;
    ActiveWindow& operator=(const ActiveWindow&) = delete;

    HWND window() const { return window_; }
    bool owns(HWND dialog) const { return GetWindow(dialog, GW_OWNER) == window_; }

private:
    const HWND window_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 100, 100, 300, 200, nullptr, nullptr,
                                         nullptr, nullptr);
};

} // namespace JobRunner
