#pragma once

// For the tests of dialogs: what a dialog ends by itself, ahead of its window.

#include "windows/framework/win32/open_dialog.h"

#include <string>
#include <vector>

#include <windows.h>

namespace JobRunner
{

/// Watches how one dialog of this thread handles its end.
class EndedControls
{
public:
    EndedControls() { current = this; }
    ~EndedControls()
    {
        UnhookWindowsHookEx(hook_);
        current = nullptr;
    }
    EndedControls(const EndedControls&) = delete;
    EndedControls& operator=(const EndedControls&) = delete;

    void watch(HWND dialog)
    {
        own_ =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure)));
    }

    /// Texts of the controls that the dialog has ended, in that order.
    std::vector<std::wstring> ended;
    /// Kinds of those that it has left to its window.
    std::vector<std::wstring> left;

private:
    static inline EndedControls* current = nullptr;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != WM_DESTROY)
            return CallWindowProcW(current->own_, window, message, wParam, lParam);
        current->ending_ = window;
        const LRESULT result = CallWindowProcW(current->own_, window, message, wParam, lParam);
        current->ending_ = nullptr;
        for (const ShownControl& control : OpenDialog(window).controls())
            current->left.push_back(control.kind);
        return result;
    }

    static LRESULT CALLBACK onCall(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& call = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && call.message == WM_DESTROY && current->ending_ &&
            GetParent(call.hwnd) == current->ending_)
            current->ended.push_back(OpenDialog::textOf(call.hwnd));
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    WNDPROC own_ = nullptr;
    HWND ending_ = nullptr;
    const HHOOK hook_ = SetWindowsHookExW(WH_CALLWNDPROC, onCall, nullptr, GetCurrentThreadId());
};

} // namespace JobRunner
