#pragma once

#include "panekit/control.h"
#include "panekit/link_text.h"

#include <optional>

namespace Panekit
{

/// Text with links. Tab reaches it when it has a link, the arrow keys go from link to link, Enter and Space follow.
class TextWithLinks final : public TextControl<ITextWithLinks>
{
public:
    void destroy() override { delete this; }
    void setText(const wchar_t* text) override;
    void setCaptionStyle(bool on) override;
    SIZE contentSize(int width) override;

private:
    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    FlowedText flow(int width);
    bool isLink(std::size_t run) const;
    std::vector<std::size_t> links() const;
    /// The link run at a point of the control.
    std::optional<std::size_t> linkAt(POINT point);
    bool isOverLink();
    void onMouseMove(LPARAM lParam);
    void onMouseLeave();
    void onButtonDown(LPARAM lParam);
    void onButtonUp(LPARAM lParam);
    bool onKey(WPARAM key, bool repeated);
    void moveFocus(int step);
    /// Sends the target to the parent; the control may be gone afterwards.
    void follow(const std::wstring& href);
    void drawPiece(HDC dc, const TextPiece& piece);

    std::vector<TextRun> runs_;
    bool caption_ = false;
    bool mouseInside_ = false;
    std::optional<std::size_t> pressed_;
    std::size_t focused_ = 0; // index among the links
};

} // namespace Panekit
