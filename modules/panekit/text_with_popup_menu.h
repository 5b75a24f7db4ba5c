#pragma once

#include "panekit/control.h"

#include <vector>

namespace Panekit
{

/// The current choice with a small arrow; a click, Space, Enter or the down key offers all choices in a menu. The
/// first text of an item is what the control shows, the second stands in the menu.
class TextWithPopupMenu final : public TextControl<ITextWithPopupMenu>
{
public:
    void destroy() override { delete this; }
    void addItem(const wchar_t* text, const wchar_t* secondText) override;
    void notCalled6() override {}
    /// An index that is none of the items changes nothing.
    void setCurrentItem(int index) override;
    int getCaptionLeft() override;
    /// Wide enough for the widest choice, so that the control does not jump from one to the other.
    SIZE contentSize(int width) override;

private:
    struct Item
    {
        std::wstring text;
        std::wstring menuText;
    };

    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    DWORD windowStyle() const override { return WS_TABSTOP; }
    const std::wstring& currentText() const;
    LONG widthOf(const std::wstring& text);
    void drawArrow(HDC dc, LONG left, LONG middle);
    /// Runs the menu and tells the parent; the control may be gone afterwards.
    void offerChoices();
    int pickFromMenu();

    std::vector<Item> items_;
    std::size_t current_ = 0;
};

} // namespace Panekit
