#include "panekit/text_with_popup_menu.h"

#include "panekit/text_colours.h"

#include <algorithm>

namespace Panekit
{

namespace
{

// At 96 dots per inch.
constexpr int Padding = 3;
constexpr int ArrowGap = 5;
constexpr int ArrowWidth = 7;
constexpr int After = 12; // captions below may be longer, and what stands beside keeps its distance from them too

bool opensMenu(WPARAM key)
{
    return key == VK_SPACE || key == VK_RETURN || key == VK_DOWN || key == VK_UP || key == VK_F4;
}

void forget(HWND window, UINT message)
{
    MSG waiting{};
    while (PeekMessageW(&waiting, window, message, message, PM_REMOVE))
        continue;
}

} // namespace

void TextWithPopupMenu::addItem(const wchar_t* text, const wchar_t* secondText)
{
    items_.push_back({text, secondText});
    if (items_.size() == 1)
        publishText(currentText());
}

void TextWithPopupMenu::setCurrentItem(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= items_.size())
        return;
    current_ = static_cast<std::size_t>(index);
    publishText(currentText());
}

int TextWithPopupMenu::getCaptionLeft()
{
    return static_cast<int>(area().left) + scaled(Padding);
}

const std::wstring& TextWithPopupMenu::currentText() const
{
    static const std::wstring none;
    return items_.empty() ? none : items_[current_].text;
}

LONG TextWithPopupMenu::widthOf(const std::wstring& text)
{
    const Drawing::WindowDc dc(window());
    const Drawing::Selected selected(dc.get(), font());
    SIZE size{};
    GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

SIZE TextWithPopupMenu::contentSize(int)
{
    LONG widest = 0;
    for (const Item& item : items_)
        widest = std::max(widest, widthOf(item.text));
    // As high as a caption, so that the texts of a row stand on one line.
    return {widest + scaled(ArrowGap) + scaled(ArrowWidth) + 2 * scaled(Padding) + scaled(After), lineHeight(font())};
}

void TextWithPopupMenu::paint(HDC dc, const RECT& client)
{
    paintBackground(dc, client);
    const Drawing::Selected selected(dc, font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, LinkColour);
    RECT box = client;
    box.left += scaled(Padding);
    DrawTextW(dc, currentText().c_str(), -1, &box, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    drawArrow(dc, box.left + widthOf(currentText()) + scaled(ArrowGap), client.bottom / 2);
    if (GetFocus() == window())
        DrawFocusRect(dc, &client);
}

void TextWithPopupMenu::drawArrow(HDC dc, LONG left, LONG middle)
{
    const LONG half = scaled(ArrowWidth) / 2;
    const POINT corners[] = {
        {left, middle - half / 2}, {left + 2 * half, middle - half / 2}, {left + half, middle - half / 2 + half}};
    const Drawing::GdiObject<HBRUSH> brush(CreateSolidBrush(LinkColour));
    const Drawing::GdiObject<HPEN> pen(CreatePen(PS_SOLID, 1, LinkColour));
    const Drawing::Selected selectedBrush(dc, brush.get());
    const Drawing::Selected selectedPen(dc, pen.get());
    Polygon(dc, corners, 3);
}

LRESULT TextWithPopupMenu::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
        SetFocus(window());
        offerChoices();
        return 0;
    case WM_SETCURSOR:
        SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
        return TRUE;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        invalidate();
        return 0;
    case WM_GETDLGCODE:
    {
        const auto* const next = reinterpret_cast<const MSG*>(lParam);
        const bool enter = next && next->message == WM_KEYDOWN && next->wParam == VK_RETURN;
        return DLGC_WANTARROWS | (enter ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        if (!opensMenu(wParam))
            break;
        offerChoices();
        return 0;
    case WM_SYSKEYDOWN:
        if (wParam != VK_DOWN && wParam != VK_UP)
            break;
        offerChoices();
        return 0;
    default:
        break;
    }
    return TextControl::onMessage(message, wParam, lParam);
}

int TextWithPopupMenu::pickFromMenu()
{
    const HMENU menu = CreatePopupMenu();
    for (std::size_t i = 0; i < items_.size(); ++i)
    {
        const UINT check = i == current_ ? MF_CHECKED : MF_UNCHECKED;
        AppendMenuW(menu, MF_STRING | check, i + 1, items_[i].menuText.c_str());
    }
    POINT below{0, area().bottom - area().top};
    ClientToScreen(window(), &below);
    const int picked = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_TOPALIGN,
                                      static_cast<int>(below.x), static_cast<int>(below.y), 0, window(), nullptr);
    DestroyMenu(menu);
    return picked - 1;
}

void TextWithPopupMenu::offerChoices()
{
    const HWND own = window();
    // The character of the key that opens the menu would close it again.
    forget(own, WM_CHAR);
    const int picked = pickFromMenu();
    // And the click on the control that closes the menu would open it again.
    if (picked < 0)
        forget(own, WM_LBUTTONDOWN);
    // The dialog, and with it this object, may have ended while the menu was up.
    if (picked < 0 || !IsWindow(own))
        return;
    setCurrentItem(picked);
    tellParent(ControlMessage::ItemChanged, picked);
}

} // namespace Panekit
