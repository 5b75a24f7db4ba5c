#include "panekit/edit_with_icon_buttons.h"

#include "panekit/field_colours.h"
#include "windows/drawing/images.h"

#include <algorithm>

namespace Panekit
{

namespace
{

// At 96 dots per inch.
constexpr int Padding = 4;
constexpr int LeastLine = 16;
constexpr int LeastText = 120;
constexpr int BalloonWidth = 320;
constexpr int BalloonIndent = 16;

constexpr WPARAM BalloonEnds = 1;
constexpr WPARAM BalloonMoves = 2;
constexpr UINT BalloonTime = 10000;
constexpr UINT WatchTime = 200;

RECT onScreen(HWND window)
{
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

} // namespace

EditWithIconButtons::~EditWithIconButtons()
{
    close(); // the window inside calls back until it is gone
    forgetText();
}

void EditWithIconButtons::onOpened()
{
    field_.open(window(), [this] { hideBalloon(); });
    onFontChanged();
}

void EditWithIconButtons::onFontChanged()
{
    field_.setFont(font());
    changeHeight(static_cast<int>(contentSize(0).cy));
    layOut();
}

SIZE EditWithIconButtons::contentSize(int)
{
    SIZE size{};
    {
        std::wstring text = field_.text();
        const Drawing::WindowDc dc(window());
        const Drawing::Selected selected(dc.get(), font());
        GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
        SecureZeroMemory(text.data(), text.size() * sizeof(wchar_t));
    }
    LONG width = std::max<LONG>(size.cx, scaled(LeastText)) + 3 * scaled(Padding);
    for (const auto& button : buttons_)
        width += button->contentSize(0).cx;
    return {width, std::max(lineHeight(font()), scaled(LeastLine)) + 2 * scaled(Padding)};
}

void EditWithIconButtons::layOut()
{
    const RECT own = area();
    const int height = static_cast<int>(own.bottom - own.top);
    const int border = std::max(1, scaled(1));
    int right = static_cast<int>(own.right - own.left) - border;
    for (auto button = buttons_.rbegin(); button != buttons_.rend(); ++button)
    {
        const auto width = static_cast<int>((*button)->contentSize(0).cx);
        right -= width;
        MoveWindow((*button)->window(), right, border, width, std::max(0, height - 2 * border), TRUE);
    }
    const int left = border + scaled(Padding);
    const int line = lineHeight(font());
    const int top = (height - line) / 2;
    field_.place({left, top, std::max(left, right - scaled(Padding)), top + line});
}

void EditWithIconButtons::paint(HDC dc, const RECT& client)
{
    const FieldColours colours = fieldColours();
    const bool focused = GetFocus() == field_.window();
    Drawing::fillSolid(dc, client, focused ? colours.focusedFrame : colours.frame);
    const int border = std::max(1, scaled(1));
    RECT inside = client;
    InflateRect(&inside, -border, -border);
    Drawing::fillSolid(dc, inside, GetSysColor(COLOR_WINDOW));
}

LRESULT EditWithIconButtons::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
    case WM_LBUTTONDOWN: // beside the text
        SetFocus(field_.window());
        return 0;
    case WM_SETCURSOR:
        if (reinterpret_cast<HWND>(wParam) != window())
            break;
        SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_IBEAM)));
        return TRUE;
    case WM_COMMAND:
        if (reinterpret_cast<HWND>(lParam) == field_.window())
            onFieldEvent(HIWORD(wParam));
        return 0;
    case WM_CTLCOLOREDIT:
        return colourField(reinterpret_cast<HDC>(wParam));
    case WM_TIMER:
        onTimer(wParam);
        return 0;
    case WM_SHOWWINDOW:
        if (!wParam)
            onHidden();
        break;
    default:
        break;
    }
    return Control::onMessage(message, wParam, lParam);
}

void EditWithIconButtons::onFieldEvent(WORD event)
{
    if (event == EN_SETFOCUS || event == EN_KILLFOCUS)
        invalidate();
    if (event == EN_KILLFOCUS)
        hideBalloon();
    if (event != EN_CHANGE)
        return;
    hideBalloon();
    tellParent(ControlMessage::TextChanged, 0);
}

LRESULT EditWithIconButtons::colourField(HDC dc) const
{
    SetTextColor(dc, colour_ == 0 ? GetSysColor(COLOR_WINDOWTEXT) : colour_);
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

void EditWithIconButtons::onHidden()
{
    hideBalloon();
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->release();
}

void EditWithIconButtons::maskText()
{
    field_.mask();
}

void EditWithIconButtons::unmaskText()
{
    field_.unmask();
}

const wchar_t* EditWithIconButtons::getText()
{
    forgetText();
    text_ = field_.text();
    return text_.c_str();
}

void EditWithIconButtons::forgetText()
{
    // It may be a password.
    SecureZeroMemory(text_.data(), text_.capacity() * sizeof(wchar_t));
    text_.clear();
}

void EditWithIconButtons::setText(const wchar_t* text)
{
    const std::wstring wanted = text ? text : L"";
    if (field_.text() != wanted)
        field_.setText(wanted);
}

void EditWithIconButtons::addIconButton(void* module, const wchar_t* pngName)
{
    const auto index = static_cast<LPARAM>(buttons_.size());
    auto button = std::make_unique<IconButton>(
        Drawing::loadPngResource(static_cast<HMODULE>(module), pngName),
        [this, index](bool held)
        {
            hideBalloon();
            tellParent(held ? ControlMessage::ButtonPressed : ControlMessage::ButtonClicked, index);
        });
    if (!button->open(IconButton::ClassName, window(), RECT{}))
        return;
    buttons_.push_back(std::move(button));
    layOut();
}

void EditWithIconButtons::setTextColor(std::uint32_t colour)
{
    colour_ = colour;
    if (field_.window())
        InvalidateRect(field_.window(), nullptr, TRUE);
}

void EditWithIconButtons::showBalloon(const wchar_t* title, const wchar_t* text)
{
    if (!window() || !IsWindowVisible(window()))
        return;
    SetFocus(field_.window());
    balloonOf_ = onScreen(window());
    const POINT at{balloonOf_.left + scaled(BalloonIndent), balloonOf_.bottom - scaled(Padding)};
    balloon_.show(window(), at, title, text, scaled(BalloonWidth));
    SetTimer(window(), BalloonEnds, BalloonTime, nullptr);
    SetTimer(window(), BalloonMoves, WatchTime, nullptr);
}

void EditWithIconButtons::onTimer(WPARAM timer)
{
    const RECT now = onScreen(window());
    const bool gone = !EqualRect(&now, &balloonOf_) || !IsWindowVisible(window());
    if (timer == BalloonEnds || gone || !balloon_.isShown())
        hideBalloon();
}

void EditWithIconButtons::hideBalloon()
{
    balloon_.hide();
    if (!window())
        return;
    KillTimer(window(), BalloonEnds);
    KillTimer(window(), BalloonMoves);
}

} // namespace Panekit
