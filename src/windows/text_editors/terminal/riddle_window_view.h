#pragma once

#include "windows/text_editors/i_riddle_window_view.h"

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

/// The riddle's editor in the terminal: one line. The end of the input answers cancel.
class RiddleWindowView final : public IRiddleWindowView
{
public:
    /// The terminal is not owned and outlives the view.
    explicit RiddleWindowView(Platform::Terminal& terminal) : terminal_(terminal) {}

    void setText(const std::wstring& text) override { text_ = text; }
    std::wstring getText() override { return text_; }
    bool doModal() override;
    void release() override { delete this; }

private:
    ~RiddleWindowView() = default;

    Platform::Terminal& terminal_;
    std::wstring text_;
};

} // namespace JobRunner
