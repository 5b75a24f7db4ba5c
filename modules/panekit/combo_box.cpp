#include "panekit/combo_box.h"

#include <algorithm>

#include <commctrl.h>

namespace Panekit
{

namespace
{

constexpr UINT_PTR SubclassId = 1;
constexpr UINT ListClosed = WM_APP + 1;
constexpr int MostRows = 30;
constexpr int Arrow = 32; // and the space around an item, at 96 dots per inch

} // namespace

void ComboBox::onOpened()
{
    list_ = CreateWindowExW(0, L"COMBOBOX", L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_HASSTRINGS, 0, 0,
                            0, 0, window(), nullptr, ownModule(), nullptr);
    SetWindowSubclass(list_, listProcedure, SubclassId, 0);
    onFontChanged();
}

LRESULT ComboBox::ask(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return window() ? SendMessageW(list_, message, wParam, lParam) : CB_ERR;
}

void ComboBox::onFontChanged()
{
    ask(WM_SETFONT, reinterpret_cast<WPARAM>(font()), TRUE);
    fieldHeight_ = closedHeight();
    changeHeight(fieldHeight_);
    layOut();
}

int ComboBox::closedHeight() const
{
    RECT closed{};
    GetWindowRect(list_, &closed);
    return static_cast<int>(closed.bottom - closed.top);
}

void ComboBox::fitField(int height)
{
    constexpr auto Field = static_cast<WPARAM>(-1);
    if (height == closedHeight())
        return;
    LRESULT inner = ask(CB_GETITEMHEIGHT, Field) + height - closedHeight();
    ask(CB_SETITEMHEIGHT, Field, std::max<LRESULT>(1, inner));
    // What is told and what is set may differ by the padding.
    inner += height - closedHeight();
    ask(CB_SETITEMHEIGHT, Field, std::max<LRESULT>(1, inner));
}

LONG ComboBox::widestItem()
{
    const Drawing::WindowDc dc(window());
    const Drawing::Selected selected(dc.get(), font());
    LONG widest = 0;
    for (WPARAM i = 0; i < static_cast<WPARAM>(ask(CB_GETCOUNT)); ++i)
    {
        std::wstring text(static_cast<std::size_t>(ask(CB_GETLBTEXTLEN, i)) + 1, L'\0');
        ask(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        SIZE size{};
        GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size() - 1), &size);
        widest = std::max(widest, size.cx);
    }
    return widest;
}

SIZE ComboBox::contentSize(int)
{
    if (!window())
        return {};
    return {widestItem() + scaled(Arrow), fieldHeight_};
}

void ComboBox::layOut()
{
    if (!list_)
        return;
    const RECT own = area();
    fitField(static_cast<int>(own.bottom - own.top));
    MoveWindow(list_, 0, 0, static_cast<int>(own.right - own.left), closedHeight(), TRUE);
}

void ComboBox::fitOpenList()
{
    const RECT own = area();
    const auto rows = static_cast<int>(std::clamp<LRESULT>(ask(CB_GETCOUNT), 1, MostRows));
    const auto row = static_cast<int>(ask(CB_GETITEMHEIGHT, 0));
    // The height of the window is that of the field and the open list.
    const int height = closedHeight() + rows * row + 2 * GetSystemMetrics(SM_CYBORDER);
    MoveWindow(list_, 0, 0, static_cast<int>(own.right - own.left), height, TRUE);
    ask(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widestItem() + scaled(Arrow)));
}

void ComboBox::paint(HDC dc, const RECT& client)
{
    paintBackground(dc, client);
}

void ComboBox::addItem(const wchar_t* text)
{
    ask(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text ? text : L""));
}

void ComboBox::clearItems()
{
    ask(CB_RESETCONTENT);
}

int ComboBox::getCurrentItem()
{
    return static_cast<int>(ask(CB_GETCURSEL));
}

void ComboBox::setCurrentItem(int index)
{
    if (index >= 0 && index < ask(CB_GETCOUNT))
        ask(CB_SETCURSEL, static_cast<WPARAM>(index));
}

void ComboBox::showDropDown()
{
    if (!window())
        return;
    SetFocus(list_);
    ask(CB_SHOWDROPDOWN, TRUE);
}

LRESULT ComboBox::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        SetFocus(list_);
        return 0;
    case WM_COMMAND:
        if (reinterpret_cast<HWND>(lParam) == list_)
            onListEvent(HIWORD(wParam));
        return 0;
    case ListClosed:
        onClosed();
        return 0;
    default:
        break;
    }
    return Control::onMessage(message, wParam, lParam);
}

void ComboBox::onListEvent(WORD event)
{
    switch (event)
    {
    case CBN_DROPDOWN:
        fitOpenList();
        open_ = true;
        chosen_ = false;
        before_ = getCurrentItem();
        break;
    case CBN_SELENDOK:
        chosen_ = true;
        break;
    case CBN_SELENDCANCEL:
        chosen_ = false;
        break;
    case CBN_CLOSEUP:
        // The list is still at work with the mouse or the key, and the parent may fill it anew.
        PostMessageW(window(), ListClosed, 0, 0);
        break;
    case CBN_SELCHANGE:
        if (!open_)
            tellParent(ControlMessage::SelectionChanged, getCurrentItem());
        break;
    default:
        break;
    }
}

void ComboBox::onClosed()
{
    if (!open_ || ask(CB_GETDROPPEDSTATE))
        return;
    open_ = false;
    if (chosen_)
        tellParent(ControlMessage::SelectionChanged, getCurrentItem());
    else
        ask(CB_SETCURSEL, static_cast<WPARAM>(before_));
}

LRESULT CALLBACK ComboBox::listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, listProcedure, SubclassId);
    const bool closed = !SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0);
    if (message == WM_KEYDOWN && closed && (wParam == VK_DOWN || wParam == VK_UP))
    {
        // A step in the closed list would already be a choice, and the items further on out of reach.
        SendMessageW(window, CB_SHOWDROPDOWN, TRUE, 0);
        return 0;
    }
    if (message == WM_MOUSEWHEEL && closed)
        return 0; // nobody chooses by scrolling past
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace Panekit
