#pragma once

#include "windows/text_editors/i_sfx_comment_window_view.h"

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

/// The editor of a package's description in the terminal: lines up to an empty one, then the question whether they are
/// the default from now on. The end of the input answers cancel.
class SfxCommentWindowView final : public ISfxCommentWindowView
{
public:
    /// The terminal is not owned and outlives the view.
    explicit SfxCommentWindowView(Platform::Terminal& terminal) : terminal_(terminal) {}

    void setText(const std::wstring& text) override { text_ = text; }
    std::wstring getText() override { return text_; }
    bool doModal() override;
    void release() override { delete this; }
    bool isSetDefault() override { return setDefault_; }

private:
    ~SfxCommentWindowView() = default;

    Platform::Terminal& terminal_;
    std::wstring text_;
    bool setDefault_ = false;
};

} // namespace JobRunner
