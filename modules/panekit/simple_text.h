#pragma once

#include "panekit/control.h"
#include "panekit/path_tip.h"

namespace Panekit
{

/// Plain text, wrapped to the width. A caption is grey. A path stays on one line: what does not fit is taken out of
/// its middle, and a tooltip shows all of it.
class SimpleText final : public TextControl<ISimpleText>
{
public:
    void destroy() override { delete this; }
    void setText(const wchar_t* text) override;
    void setCaptionStyle(bool on) override;
    void setPathStyle() override;
    SIZE contentSize(int width) override;

private:
    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    UINT format() const;
    bool isShortened();

    std::wstring text_;
    bool caption_ = false;
    bool path_ = false;
    PathTip tip_;
};

} // namespace Panekit
