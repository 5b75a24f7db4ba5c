#include "panekit/simple_text.h"

#include "panekit/text_colours.h"

namespace Panekit
{

namespace
{
constexpr LONG Unlimited = 0x7FFF;
}

void SimpleText::setText(const wchar_t* text)
{
    text_ = text;
    publishText(text_);
}

void SimpleText::setCaptionStyle(bool on)
{
    caption_ = on;
    invalidate();
}

void SimpleText::setPathStyle()
{
    path_ = true;
    tip_.attach(window());
    invalidate();
}

UINT SimpleText::format() const
{
    if (path_)
        return DT_SINGLELINE | DT_NOPREFIX | DT_PATH_ELLIPSIS | DT_END_ELLIPSIS;
    // As in an edit, a word that is wider than the line goes on in the next one.
    return DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;
}

SIZE SimpleText::contentSize(int width)
{
    const auto line = static_cast<LONG>(lineHeight(font()));
    if (text_.empty())
        return {0, line}; // an empty line
    const Drawing::WindowDc dc(window());
    const Drawing::Selected selected(dc.get(), font());
    const UINT measured = path_ ? DT_SINGLELINE | DT_NOPREFIX : format();
    RECT box{0, 0, width > 0 ? width : Unlimited, 0};
    DrawTextW(dc.get(), text_.c_str(), static_cast<int>(text_.size()), &box, measured | DT_CALCRECT);
    return {box.right, box.bottom > line ? box.bottom : line};
}

void SimpleText::paint(HDC dc, const RECT& client)
{
    paintBackground(dc, client);
    const Drawing::Selected selected(dc, font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, caption_ ? CaptionColour : TextColour);
    RECT box = client;
    DrawTextW(dc, text_.c_str(), static_cast<int>(text_.size()), &box, format());
}

bool SimpleText::isShortened()
{
    const RECT own = area();
    return path_ && contentSize(0).cx > own.right - own.left;
}

LRESULT SimpleText::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY && tip_.answer(lParam, isShortened() ? text_ : std::wstring()))
        return 0;
    return TextControl::onMessage(message, wParam, lParam);
}

} // namespace Panekit
