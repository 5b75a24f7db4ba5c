#pragma once

#include "panekit/control_factory.h"

#include <functional>
#include <map>
#include <vector>

#include <windows.h>

namespace Panekit
{

/// For tests: a dialog on the screen with a default button and a Cancel button, and the loop of a modal dialog for as
/// long as there are messages. The controls that a test makes stand before the buttons.
class RealDialog
{
public:
    struct Message
    {
        int count = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
    };

    RealDialog()
    {
        start();
        const struct
        {
            DLGTEMPLATE head;
            WORD menu, windowClass, title;
        } form{{WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN, 0, 0, 10, 10, 200, 120}, 0, 0, 0};
        window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &form.head, nullptr, procedure,
                                             reinterpret_cast<LPARAM>(this));
    }
    ~RealDialog()
    {
        DestroyWindow(window_);
        stop();
    }
    RealDialog(const RealDialog&) = delete;
    RealDialog& operator=(const RealDialog&) = delete;

    template <class Interface> Interface* make(const wchar_t* classId, int y)
    {
        return static_cast<Interface*>(makeControl(classId, window_, 10, y, 150, 24));
    }
    /// Puts the buttons behind the controls, and shows the dialog.
    void open()
    {
        makeButton(IDOK, BS_DEFPUSHBUTTON, 10);
        makeButton(IDCANCEL, BS_PUSHBUTTON, 100);
        SendMessageW(window_, DM_SETDEFID, IDOK, 0);
        ShowWindow(window_, SW_SHOW);
        pump();
    }

    HWND window() const { return window_; }
    HWND button(int id) const { return GetDlgItem(window_, id); }
    const Message& received(const wchar_t* name) { return messages_[RegisterWindowMessageW(name)]; }
    /// How often a button of the dialog was chosen.
    int commands(int id) { return commands_[id]; }
    /// Instead of only counting the message.
    void onMessage(const wchar_t* name, std::function<void(LPARAM)> answer)
    {
        answers_[RegisterWindowMessageW(name)] = std::move(answer);
    }

    void pump() const
    {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        {
            if (IsDialogMessageW(window_, &message))
                continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    /// Keys that go, one after the other, to the window that has the focus at first.
    void press(const std::vector<WPARAM>& keys) const
    {
        for (const WPARAM key : keys)
        {
            PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
            PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
        }
        pump();
    }
    void press(WPARAM key) const { press(std::vector<WPARAM>{key}); }
    void hold(WPARAM key) const
    {
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
        pump();
    }

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG)
        {
            SetWindowLongPtrW(dialog, DWLP_USER, static_cast<LONG_PTR>(lParam));
            return FALSE;
        }
        auto* const self = reinterpret_cast<RealDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
        if (self)
            self->remember(message, wParam, lParam);
        return FALSE;
    }

    void remember(UINT message, WPARAM wParam, LPARAM lParam)
    {
        constexpr UINT FirstRegistered = 0xC000;
        if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED)
            ++commands_[LOWORD(wParam)];
        if (message < FirstRegistered)
            return;
        const int count = messages_[message].count + 1;
        messages_[message] = {count, wParam, lParam};
        if (const auto answer = answers_.find(message); answer != answers_.end())
            answer->second(lParam);
    }

    void makeButton(int id, DWORD style, int x)
    {
        CreateWindowExW(0, L"BUTTON", L"button", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, x, 180, 80, 24, window_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    }

    HWND window_ = nullptr;
    std::map<UINT, Message> messages_;
    std::map<UINT, std::function<void(LPARAM)>> answers_;
    std::map<int, int> commands_;
};

} // namespace Panekit
