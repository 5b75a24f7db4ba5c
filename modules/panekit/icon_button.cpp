#include "panekit/icon_button.h"

#include "panekit/field_colours.h"

#include <algorithm>
#include <utility>

namespace Panekit
{

namespace
{

// At 96 dots per inch.
constexpr int PaddingAcross = 5;
constexpr int PaddingDown = 2;
constexpr int EmptyIcon = 16;

constexpr LPARAM RepeatedKey = 1 << 30;

void frame(HDC dc, const RECT& area, COLORREF colour, int thickness)
{
    const Drawing::GdiObject<HBRUSH> brush(CreateSolidBrush(colour));
    RECT ring = area;
    for (int i = 0; i < thickness; ++i)
    {
        FrameRect(dc, &ring, brush.get());
        InflateRect(&ring, -1, -1);
    }
}

} // namespace

IconButton::IconButton(std::unique_ptr<Gdiplus::Bitmap> icon, Tell tell)
    : icon_(std::move(icon)), tell_(std::move(tell))
{
}

SIZE IconButton::iconSize() const
{
    if (!icon_)
        return {scaled(EmptyIcon), scaled(EmptyIcon)};
    return {scaled(static_cast<int>(icon_->GetWidth())), scaled(static_cast<int>(icon_->GetHeight()))};
}

SIZE IconButton::contentSize(int)
{
    const SIZE icon = iconSize();
    return {icon.cx + 2 * scaled(PaddingAcross), icon.cy + 2 * scaled(PaddingDown)};
}

void IconButton::paint(HDC dc, const RECT& client)
{
    const FieldColours colours = fieldColours();
    COLORREF fill = GetSysColor(COLOR_WINDOW);
    if (holder_ != Holder::None)
        fill = colours.pressedButton;
    else if (hot_)
        fill = colours.hotButton;
    Drawing::fillSolid(dc, client, fill);
    drawIcon(dc, client);
    if (GetFocus() == window())
        frame(dc, client, colours.focusedFrame, std::max(1, scaled(1)));
}

void IconButton::drawIcon(HDC dc, const RECT& client)
{
    if (!icon_)
        return;
    const SIZE size = iconSize();
    const auto width = static_cast<int>(size.cx);
    const auto height = static_cast<int>(size.cy);
    Gdiplus::Graphics graphics(dc);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics.DrawImage(icon_.get(), (static_cast<int>(client.right) - width) / 2,
                       (static_cast<int>(client.bottom) - height) / 2, width, height);
}

LRESULT IconButton::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
        onMouseDown();
        return 0;
    case WM_MOUSEMOVE:
        onMouseMove(wParam);
        return 0;
    case WM_MOUSELEAVE:
        hot_ = false;
        invalidate();
        return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
        if (holder_ == Holder::Mouse)
            release();
        return 0;
    case WM_GETDLGCODE:
    {
        const auto* const next = reinterpret_cast<const MSG*>(lParam);
        const bool enter = next && next->message == WM_KEYDOWN && next->wParam == VK_RETURN;
        return DLGC_WANTARROWS | (enter ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        if (onKeyDown(wParam, lParam))
            return 0;
        break;
    case WM_KEYUP:
        if (holder_ == Holder::Key && wParam == key_)
            release();
        return 0;
    case WM_SETFOCUS:
        invalidate();
        return 0;
    case WM_KILLFOCUS:
        invalidate();
        if (holder_ == Holder::Key)
            release();
        return 0;
    case WM_CANCELMODE:
        release();
        return 0;
    default:
        break;
    }
    return ControlWindow::onMessage(message, wParam, lParam);
}

void IconButton::onMouseDown()
{
    // The typing goes on in the field, so the button does not take the focus from it.
    const HWND field = GetParent(window());
    if (!IsChild(field, GetFocus()))
        SetFocus(field);
    SetCapture(window());
    hold(Holder::Mouse);
}

void IconButton::onMouseMove(WPARAM buttons)
{
    if (!hot_)
    {
        TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window(), 0};
        hot_ = TrackMouseEvent(&leave) != FALSE;
        invalidate();
    }
    // The button went up where no message told of it, as over another program's window.
    if (holder_ == Holder::Mouse && !(buttons & MK_LBUTTON))
        release();
}

bool IconButton::onKeyDown(WPARAM key, LPARAM details)
{
    if (key != VK_SPACE && key != VK_RETURN)
        return false;
    if (details & RepeatedKey)
        return true;
    if (holder_ == Holder::None)
        key_ = key;
    hold(Holder::Key);
    return true;
}

void IconButton::hold(Holder holder)
{
    if (holder_ != Holder::None)
        return;
    holder_ = holder;
    invalidate();
    UpdateWindow(window()); // the answer may keep this thread busy for long
    const Tell tell = tell_;
    tell(true);
}

void IconButton::release()
{
    if (holder_ == Holder::None)
        return;
    holder_ = Holder::None;
    invalidate();
    if (GetCapture() == window())
        ReleaseCapture();
    const Tell tell = tell_;
    tell(false);
}

} // namespace Panekit
