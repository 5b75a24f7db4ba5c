#include "panekit/text_with_links.h"

#include "panekit/text_colours.h"

#include <windowsx.h>

namespace Panekit
{

namespace
{

constexpr LPARAM RepeatedKey = 1 << 30;

POINT pointOf(LPARAM lParam)
{
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

RECT boxOf(const TextPiece& piece, int height)
{
    return {piece.x, piece.y, piece.x + piece.width, piece.y + height};
}

} // namespace

void TextWithLinks::setText(const wchar_t* text)
{
    runs_ = parseLinks(text);
    pressed_.reset();
    focused_ = 0;
    const LONG_PTR style = GetWindowLongPtrW(window(), GWL_STYLE);
    const LONG_PTR tabStop = WS_TABSTOP;
    SetWindowLongPtrW(window(), GWL_STYLE, links().empty() ? style & ~tabStop : style | tabStop);
    publishText(plainText(runs_));
}

void TextWithLinks::setCaptionStyle(bool on)
{
    caption_ = on;
    invalidate();
}

bool TextWithLinks::isLink(std::size_t run) const
{
    return !runs_[run].href.empty();
}

std::vector<std::size_t> TextWithLinks::links() const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < runs_.size(); ++i)
        if (isLink(i))
            found.push_back(i);
    return found;
}

FlowedText TextWithLinks::flow(int width)
{
    const Drawing::WindowDc dc(window());
    const Drawing::Selected selected(dc.get(), font());
    return flowText(runs_, width, lineHeight(font()),
                    [&dc](const std::wstring& text)
                    {
                        SIZE size{};
                        GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
                        return static_cast<int>(size.cx);
                    });
}

SIZE TextWithLinks::contentSize(int width)
{
    const FlowedText flowed = flow(width);
    return {flowed.width, flowed.height};
}

void TextWithLinks::paint(HDC dc, const RECT& client)
{
    paintBackground(dc, client);
    SetBkMode(dc, TRANSPARENT);
    for (const TextPiece& piece : flow(static_cast<int>(client.right)).pieces)
        drawPiece(dc, piece);
}

void TextWithLinks::drawPiece(HDC dc, const TextPiece& piece)
{
    const bool link = isLink(piece.run);
    const Drawing::Selected selected(dc, link ? underlinedFont() : font());
    const COLORREF plain = caption_ ? CaptionColour : TextColour;
    SetTextColor(dc, link ? LinkColour : plain);
    TextOutW(dc, piece.x, piece.y, piece.text.c_str(), static_cast<int>(piece.text.size()));
    if (!link || GetFocus() != window() || links()[focused_] != piece.run)
        return;
    const RECT box = boxOf(piece, lineHeight(font()));
    DrawFocusRect(dc, &box);
}

std::optional<std::size_t> TextWithLinks::linkAt(POINT point)
{
    const RECT own = area();
    const int height = lineHeight(font());
    for (const TextPiece& piece : flow(static_cast<int>(own.right - own.left)).pieces)
    {
        const RECT box = boxOf(piece, height);
        if (isLink(piece.run) && PtInRect(&box, point))
            return piece.run;
    }
    return std::nullopt;
}

bool TextWithLinks::isOverLink()
{
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window(), &point);
    return linkAt(point).has_value();
}

LRESULT TextWithLinks::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_MOUSEMOVE:
        onMouseMove(lParam);
        return 0;
    case WM_MOUSELEAVE:
        onMouseLeave();
        return 0;
    case WM_LBUTTONDOWN:
        onButtonDown(lParam);
        return 0;
    case WM_LBUTTONUP:
        onButtonUp(lParam);
        return 0;
    case WM_CAPTURECHANGED:
        pressed_.reset();
        return 0;
    case WM_SETCURSOR:
        if (!isOverLink())
            break;
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
        if (onKey(wParam, (lParam & RepeatedKey) != 0))
            return 0;
        break;
    default:
        break;
    }
    return TextControl::onMessage(message, wParam, lParam);
}

void TextWithLinks::onMouseMove(LPARAM lParam)
{
    if (!mouseInside_)
    {
        TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window(), 0};
        mouseInside_ = TrackMouseEvent(&leave) != FALSE;
    }
    tellParent(ControlMessage::LinkMouseMove, lParam);
}

void TextWithLinks::onMouseLeave()
{
    mouseInside_ = false;
    tellParent(ControlMessage::LinkMouseLeave, 0);
}

void TextWithLinks::onButtonDown(LPARAM lParam)
{
    pressed_ = linkAt(pointOf(lParam));
    if (pressed_)
    {
        const std::vector<std::size_t> all = links();
        while (all[focused_] != *pressed_)
            focused_ = (focused_ + 1) % all.size();
        SetFocus(window());
        SetCapture(window());
    }
    tellParent(ControlMessage::LinkButtonDown, lParam);
}

void TextWithLinks::onButtonUp(LPARAM lParam)
{
    const HWND own = window();
    const auto released = linkAt(pointOf(lParam));
    const bool clicked = pressed_ && released == pressed_;
    const std::wstring href = clicked ? runs_[*released].href : std::wstring();
    pressed_.reset();
    if (GetCapture() == own)
        ReleaseCapture();
    tellParent(ControlMessage::LinkButtonUp, lParam);
    if (clicked && IsWindow(own))
        follow(href);
}

bool TextWithLinks::onKey(WPARAM key, bool repeated)
{
    if (links().empty())
        return false;
    switch (key)
    {
    case VK_RETURN:
    case VK_SPACE:
        if (!repeated)
            follow(std::wstring(runs_[links()[focused_]].href)); // the parent may set another text meanwhile
        return true;
    case VK_LEFT:
    case VK_UP:
        moveFocus(-1);
        return true;
    case VK_RIGHT:
    case VK_DOWN:
        moveFocus(1);
        return true;
    default:
        return false;
    }
}

void TextWithLinks::moveFocus(int step)
{
    const int last = static_cast<int>(links().size()) - 1;
    const int next = static_cast<int>(focused_) + step;
    if (next < 0 || next > last)
        return;
    focused_ = static_cast<std::size_t>(next);
    invalidate();
}

void TextWithLinks::follow(const std::wstring& href)
{
    tellParent(ControlMessage::HyperlinkClicked, reinterpret_cast<LPARAM>(href.c_str()));
}

} // namespace Panekit
