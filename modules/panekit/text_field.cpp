#include "panekit/text_field.h"

#include "panekit/control_window.h"
#include "windows/drawing/gdi_handles.h"

#include <utility>

#include <commctrl.h>

namespace Panekit
{

namespace
{

constexpr UINT_PTR SubclassId = 1;
constexpr WPARAM CtrlA = 1;
constexpr WPARAM CtrlBackspace = 0x7F;

bool isClickOrKey(UINT message)
{
    return message == WM_KEYDOWN || message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

} // namespace

void TextField::open(HWND parent, std::function<void()> touched)
{
    touched_ = std::move(touched);
    window_ = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 0, 0, 0, 0, parent,
                              nullptr, ownModule(), nullptr);
    if (!window_)
        return;
    SetWindowSubclass(window_, procedure, SubclassId, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(window_, EM_SETLIMITTEXT, 0, 0); // as long as the system can
}

void TextField::setFont(HFONT font)
{
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SendMessageW(window_, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    if (masked_)
        mask(); // the new font may lack the old one's character
}

void TextField::place(const RECT& area)
{
    MoveWindow(window_, static_cast<int>(area.left), static_cast<int>(area.top),
               static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top), TRUE);
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    select(start, end);
}

void TextField::select(DWORD start, DWORD end)
{
    // By way of the start, so that no more of the text is scrolled out than has to be.
    SendMessageW(window_, EM_SETSEL, 0, 0);
    SendMessageW(window_, EM_SCROLLCARET, 0, 0);
    SendMessageW(window_, EM_SETSEL, start, static_cast<LPARAM>(end));
    SendMessageW(window_, EM_SCROLLCARET, 0, 0);
}

void TextField::mask()
{
    masked_ = true;
    showAs(maskCharacter());
}

void TextField::unmask()
{
    masked_ = false;
    showAs(L'\0');
}

void TextField::showAs(wchar_t character)
{
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    SendMessageW(window_, EM_SETPASSWORDCHAR, character, 0);
    select(start, end);
    InvalidateRect(window_, nullptr, TRUE);
}

wchar_t TextField::maskCharacter() const
{
    constexpr WORD Missing = 0xFFFF;
    const Drawing::WindowDc dc(window_);
    const Drawing::Selected selected(dc.get(), reinterpret_cast<HFONT>(SendMessageW(window_, WM_GETFONT, 0, 0)));
    for (const wchar_t candidate : {L'\x25CF', L'\x2022'})
    {
        WORD glyph = Missing;
        GetGlyphIndicesW(dc.get(), &candidate, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS);
        if (glyph != Missing)
            return candidate;
    }
    return L'*';
}

std::wstring TextField::text() const
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()))));
    return text;
}

void TextField::setText(const std::wstring& text)
{
    SetWindowTextW(window_, text.c_str());
    const auto end = static_cast<DWORD>(text.size());
    select(end, end);
}

bool TextField::onTyped(WPARAM character)
{
    if (character == CtrlA)
        SendMessageW(window_, EM_SETSEL, 0, -1);
    // The other one would be typed as a character that nobody sees.
    return character == CtrlA || character == CtrlBackspace;
}

LRESULT CALLBACK TextField::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    auto* const self = reinterpret_cast<TextField*>(data);
    if (message == WM_NCDESTROY)
    {
        RemoveWindowSubclass(window, procedure, SubclassId);
        self->window_ = nullptr;
    }
    if (isClickOrKey(message))
        self->touched_();
    if (message == WM_CHAR && self->onTyped(wParam))
        return 0;
    if (self->masked_ && (message == WM_COPY || message == WM_CUT))
        return 0; // nobody reads a password off the clipboard
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace Panekit
