#pragma once

#include "panekit/control.h"
#include "windows/drawing/gdiplus.h"

#include <memory>

namespace Panekit
{

/// The band across the top of a dialog: a vertical gradient, a picture and a bold white text.
class GradientHeader final : public Control<ICopyDialogGradient>
{
public:
    void destroy() override { delete this; }
    /// A picture that does not load leaves its place empty.
    void setIcon(void* module, const wchar_t* pngName) override;
    void setText(const wchar_t* text) override;
    void setColors(std::uint32_t first, std::uint32_t second) override;
    SIZE contentSize(int width) override;

private:
    void paint(HDC dc, const RECT& client) override;
    void drawIcon(Gdiplus::Graphics& graphics, const RECT& client);
    RECT textBox(const RECT& client) const;

    std::unique_ptr<Gdiplus::Bitmap> icon_;
    std::wstring text_;
    COLORREF first_ = RGB(38, 94, 150);
    COLORREF second_ = RGB(20, 56, 98);
};

} // namespace Panekit
