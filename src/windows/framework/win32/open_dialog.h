#pragma once

// For the tests of dialogs: what an open dialog shows, and what its user does.

#include "interfaces/panekit/controls.h"

#include <cwchar>
#include <string>
#include <vector>

#include <windows.h>

#include <commctrl.h>

namespace JobRunner
{

/// A child of a dialog.
struct ShownControl
{
    HWND window = nullptr;
    std::wstring kind; ///< a `ControlClass`, or "Button"
    std::wstring text;
    int id = 0;
    RECT place{}; ///< in client coordinates of the dialog
    bool visible = false;
};

class OpenDialog
{
public:
    explicit OpenDialog(HWND window) : window_(window) {}

    HWND window() const { return window_; }
    std::wstring caption() const { return textOf(window_); }
    RECT client() const
    {
        RECT client{};
        GetClientRect(window_, &client);
        return client;
    }
    /// Where the window ends, in client coordinates.
    LONG bottom() const { return placeOf(window_).bottom; }
    RECT placeOf(HWND window) const
    {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    /// The children, in the order of the Tab key.
    std::vector<ShownControl> controls() const
    {
        std::vector<ShownControl> found;
        for (HWND child = GetWindow(window_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            found.push_back(look(child));
        return found;
    }
    /// Those of a class, in the order of their making.
    std::vector<ShownControl> controls(const std::wstring& kind) const
    {
        std::vector<ShownControl> found = controls();
        std::erase_if(found, [&kind](const ShownControl& control) { return control.kind != kind; });
        return found;
    }
    ShownControl control(const std::wstring& kind, std::size_t index = 0) const { return controls(kind).at(index); }
    ShownControl edit(std::size_t index) const { return control(ControlClass::EditWithIconButtons, index); }
    ShownControl item(int id) const { return look(GetDlgItem(window_, id)); }
    /// True when a control that can be seen has just this text.
    bool shows(const std::wstring& text) const
    {
        for (const ShownControl& control : controls())
            if (control.visible && control.text == text)
                return true;
        return false;
    }
    /// The control with this text, seen or not; an empty one when there is none.
    ShownControl withText(const std::wstring& text) const
    {
        for (const ShownControl& control : controls())
            if (control.text == text)
                return control;
        return {};
    }

    /// The window inside an edit that holds the text.
    HWND field(std::size_t index) const { return FindWindowExW(edit(index).window, nullptr, L"EDIT", nullptr); }
    HWND iconButton(std::size_t index) const
    {
        const HWND first = GetWindow(edit(index).window, GW_CHILD);
        return first == field(index) ? GetWindow(first, GW_HWNDNEXT) : first;
    }
    std::wstring input(std::size_t index) const { return textOf(field(index)); }
    bool isMasked(std::size_t index) const { return SendMessageW(field(index), EM_GETPASSWORDCHAR, 0, 0) != 0; }
    bool hasFocus(std::size_t index) const { return GetFocus() == field(index); }
    COLORREF inputColour(std::size_t index) const
    {
        const HDC dc = GetDC(field(index));
        SendMessageW(edit(index).window, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                     reinterpret_cast<LPARAM>(field(index)));
        const COLORREF colour = GetTextColor(dc);
        ReleaseDC(field(index), dc);
        return colour;
    }

    /// Character after character, behind what is there.
    void type(std::size_t index, const std::wstring& text) const
    {
        for (const wchar_t character : text)
            SendMessageW(field(index), WM_CHAR, character, 1);
    }
    void setInput(std::size_t index, const std::wstring& text) const { SetWindowTextW(field(index), text.c_str()); }
    void hold(std::size_t index) const { SendMessageW(iconButton(index), WM_LBUTTONDOWN, MK_LBUTTON, 0); }
    void letGo(std::size_t index) const { SendMessageW(iconButton(index), WM_LBUTTONUP, 0, 0); }
    /// Returns once the button has done its work.
    void click(int id) const { SendMessageW(item(id).window, BM_CLICK, 0, 0); }
    void close() const { PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0); }
    /// A message of the controls; true when the dialog takes it as handled.
    bool tell(const wchar_t* message, WPARAM control, LPARAM detail) const
    {
        return handles(RegisterWindowMessageW(message), control, detail);
    }
    bool handles(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(window_, DWLP_DLGPROC));
        return procedure(window_, message, wParam, lParam) != FALSE;
    }
    /// Opens the menu of the input choice and picks an item with the keys.
    void chooseInput(int index) const
    {
        const HWND choice = control(ControlClass::TextWithPopupMenu).window;
        for (int i = 0; i <= index; ++i)
            PostMessageW(choice, WM_KEYDOWN, VK_DOWN, 1);
        PostMessageW(choice, WM_KEYDOWN, VK_RETURN, 1);
        SendMessageW(choice, WM_KEYDOWN, VK_SPACE, 1);
    }
    void follow(const wchar_t* href) const
    {
        tell(ControlMessage::HyperlinkClicked, 0, reinterpret_cast<LPARAM>(href));
    }

    /// Keys as the dialog's own loop takes them, for the window that has the focus.
    void press(WPARAM key) const
    {
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
        PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
        pump();
    }
    void pump() const
    {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        {
            if (IsWindow(window_) && IsDialogMessageW(window_, &message))
                continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    /// What the Tab key reaches from here on, until it comes round.
    std::vector<HWND> tabRound() const
    {
        const std::size_t most = 30;
        const HWND start = GetFocus();
        std::vector<HWND> reached;
        while (reached.size() < most && (reached.empty() || reached.back() != start))
        {
            press(VK_TAB);
            reached.push_back(GetFocus());
        }
        return reached;
    }

    static std::wstring textOf(HWND window)
    {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
        return text;
    }

private:
    ShownControl look(HWND child) const
    {
        wchar_t kind[100] = {};
        GetClassNameW(child, kind, 100);
        return {child, kind, textOf(child), GetDlgCtrlID(child), placeOf(child), IsWindowVisible(child) != FALSE};
    }

    HWND window_;
};

inline bool isBalloon(HWND window)
{
    wchar_t name[40] = {};
    GetClassNameW(window, name, 40);
    return std::wcscmp(name, TOOLTIPS_CLASSW) == 0;
}

/// The balloon that can be seen.
class ShownBalloon
{
public:
    ShownBalloon() { EnumThreadWindows(GetCurrentThreadId(), find, reinterpret_cast<LPARAM>(this)); }

    /// The control that it belongs to; null when there is no balloon.
    HWND control = nullptr;
    std::wstring text;

private:
    static constexpr std::size_t Longest = 200;

    static BOOL CALLBACK find(HWND window, LPARAM self)
    {
        if (!isBalloon(window) || !IsWindowVisible(window))
            return TRUE;
        reinterpret_cast<ShownBalloon*>(self)->read(window);
        return FALSE;
    }

    void read(HWND balloon)
    {
        wchar_t shown[Longest] = {};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.lpszText = shown;
        SendMessageW(balloon, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool)); // its only one
        control = tool.hwnd;
        tool.lpszText = shown;
        SendMessageW(balloon, TTM_GETTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
        text = shown;
    }
};

/// Notes the title that a balloon of this thread is given. Not every system gives it back.
class BalloonTitle
{
public:
    BalloonTitle() { last.clear(); }
    ~BalloonTitle() { UnhookWindowsHookEx(hook_); }
    BalloonTitle(const BalloonTitle&) = delete;
    BalloonTitle& operator=(const BalloonTitle&) = delete;

    static inline std::wstring last;

private:
    static LRESULT CALLBACK onCall(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& call = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && call.message == TTM_SETTITLEW && isBalloon(call.hwnd))
            last = reinterpret_cast<const wchar_t*>(call.lParam);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    const HHOOK hook_ = SetWindowsHookExW(WH_CALLWNDPROC, onCall, nullptr, GetCurrentThreadId());
};

} // namespace JobRunner
