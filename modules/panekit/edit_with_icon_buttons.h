#pragma once

#include "panekit/balloon_tip.h"
#include "panekit/control.h"
#include "panekit/icon_button.h"
#include "panekit/text_field.h"

#include <memory>
#include <vector>

namespace Panekit
{

/// A field with icon buttons at its right. Its height is that of one line from the start. The focus goes on to the
/// field inside; Tab goes from there to the buttons.
class EditWithIconButtons final : public Control<IEditWithIconButtons>
{
public:
    ~EditWithIconButtons();

    void destroy() override { delete this; }
    void maskText() override;
    void unmaskText() override;
    const wchar_t* getText() override;
    /// Tells the parent when the text is another one.
    void setText(const wchar_t* text) override;
    /// The newest button is the rightmost. A picture that does not load leaves its button empty.
    void addIconButton(void* module, const wchar_t* pngName) override;
    /// Takes the focus to the field. A hidden field shows nothing.
    void showBalloon(const wchar_t* title, const wchar_t* text) override;
    /// Black stands for the system's own colour of text.
    void setTextColor(std::uint32_t colour) override;
    /// Wide enough for the text, and for some more.
    SIZE contentSize(int width) override;

private:
    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    DWORD windowStyle() const override { return WS_CLIPCHILDREN; }
    DWORD extendedStyle() const override { return WS_EX_CONTROLPARENT; }
    void onOpened() override;
    void onFontChanged() override;
    void onFieldEvent(WORD event);
    void onTimer(WPARAM timer);
    void onHidden();
    LRESULT colourField(HDC dc) const;
    void layOut();
    void hideBalloon();
    void forgetText();

    TextField field_;
    std::vector<std::unique_ptr<IconButton>> buttons_;
    BalloonTip balloon_;
    RECT balloonOf_{}; // where the control was when the balloon came up
    COLORREF colour_ = 0;
    std::wstring text_;
};

} // namespace Panekit
