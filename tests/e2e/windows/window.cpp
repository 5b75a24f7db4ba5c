#include "running_program.h"

namespace EndToEnd
{
namespace
{

// A window that does not answer counts as one without text.
constexpr UINT AnswerLimit = 2000;

// Looks in a row, some 10 ms apart, at which the pointer must stand on a button before it is pressed.
constexpr int RestingLooks = 10;

std::wstring textOf(HWND window)
{
    if (window == nullptr)
        return {};
    wchar_t buffer[1024] = {};
    DWORD_PTR length = 0;
    if (SendMessageTimeoutW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(buffer), SMTO_ABORTIFHUNG, AnswerLimit,
                            &length) == 0)
        return {};
    return buffer;
}

BOOL CALLBACK collectText(HWND child, LPARAM texts)
{
    reinterpret_cast<std::vector<std::wstring>*>(texts)->push_back(textOf(child));
    return TRUE;
}

std::vector<std::wstring> textsOfChildren(HWND window)
{
    std::vector<std::wstring> texts;
    EnumChildWindows(window, collectText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

POINT centreOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

void sendMouse(DWORD flags)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
}

void sendKey(WORD key, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
}

} // namespace

std::wstring Window::caption() const
{
    return textOf(handle_);
}

std::wstring Window::text(int item) const
{
    return textOf(GetDlgItem(handle_, item));
}

bool Window::isEnabled(int item) const
{
    return IsWindowEnabled(GetDlgItem(handle_, item)) != FALSE;
}

bool Window::shows(const std::wstring& text) const
{
    for (const std::wstring& shown : textsOfChildren(handle_))
    {
        if (shown == text)
            return true;
    }
    return false;
}

std::wstring Window::allTexts() const
{
    std::wstring all;
    for (const std::wstring& shown : textsOfChildren(handle_))
        all += shown + L'\n';
    return all;
}

void Window::click(int item) const
{
    PostMessageW(GetDlgItem(handle_, item), BM_CLICK, 0, 0);
}

void Window::clickWithMouse(int item) const
{
    SetForegroundWindow(handle_);
    const HWND button = GetDlgItem(handle_, item);
    // As a person does: only once the pointer rests on a button that is there to be seen. A window that is just being
    // mapped can still throw the pointer back to where it stood before.
    int looks = 0;
    waitUntil(
        [&]
        {
            const POINT place = centreOf(button);
            POINT pointer{};
            GetCursorPos(&pointer);
            const bool rests = pointer.x == place.x && pointer.y == place.y && WindowFromPoint(place) == button;
            looks = rests ? looks + 1 : 0;
            if (!rests)
                SetCursorPos(place.x, place.y);
            return looks == RestingLooks;
        },
        milliseconds(5000));
    sendMouse(MOUSEEVENTF_LEFTDOWN);
    sendMouse(MOUSEEVENTF_LEFTUP);
}

void Window::press(WORD key) const
{
    SetForegroundWindow(handle_);
    waitUntil([this] { return GetForegroundWindow() == handle_; }, milliseconds(2000));
    sendKey(key, 0);
    sendKey(key, KEYEVENTF_KEYUP);
}

} // namespace EndToEnd
