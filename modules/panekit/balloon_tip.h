#pragma once

#include <windows.h>

namespace Panekit
{

/// A balloon that points at a control. It hides when it is clicked; the control decides on all else.
class BalloonTip
{
public:
    BalloonTip() = default;
    ~BalloonTip();
    BalloonTip(const BalloonTip&) = delete;
    BalloonTip& operator=(const BalloonTip&) = delete;

    /// `at` is where the balloon points to, on the screen; `widest` is the width of its text at most. A title has
    /// room for 99 characters, the rest is cut.
    void show(HWND control, POINT at, const wchar_t* title, const wchar_t* text, int widest);
    void hide();
    bool isShown() const;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self);
    bool open(HWND control);

    HWND control_ = nullptr;
    HWND tip_ = nullptr;
};

} // namespace Panekit
