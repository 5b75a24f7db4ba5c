#pragma once

#include "panekit/control.h"

namespace Panekit
{

/// A drop-down list. The parent hears of a choice once it is final: not while the arrow keys run through the open
/// list, but of the same item once more. A list that is left goes back to the item that it had.
class ComboBox final : public Control<IComboBox>
{
public:
    ~ComboBox() { close(); }

    void destroy() override { delete this; }
    void addItem(const wchar_t* text) override;
    void notCalled6() override {}
    void notCalled7() override {}
    /// Takes the focus to the list.
    void showDropDown() override;
    void clearItems() override;
    int getCurrentItem() override;
    void setCurrentItem(int index) override;
    /// Wide enough for the widest item.
    SIZE contentSize(int width) override;

private:
    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    DWORD windowStyle() const override { return WS_CLIPCHILDREN; }
    DWORD extendedStyle() const override { return WS_EX_CONTROLPARENT; }
    void onOpened() override;
    void onFontChanged() override;
    static LRESULT CALLBACK listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR self);
    LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    int closedHeight() const;
    void fitField(int height);
    LONG widestItem();
    void layOut();
    void fitOpenList();
    void onListEvent(WORD event);
    void onClosed();

    HWND list_ = nullptr;
    int fieldHeight_ = 0; // as the font needs it
    bool open_ = false;
    bool chosen_ = false;
    int before_ = -1; // the item when the list opened
};

} // namespace Panekit
