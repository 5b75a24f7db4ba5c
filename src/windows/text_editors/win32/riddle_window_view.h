#pragma once

#include "resources/resource.h"
#include "windows/text_editors/i_riddle_window_view.h"
#include "windows/text_editors/win32/text_editor_dialog.h"

namespace JobRunner
{

/// The dialog of template 305. Made with `new`; see `IRiddleWindowView`.
class RiddleWindowView final : public IRiddleWindowView
{
public:
    void setText(const std::wstring& text) override { dialog_.text = text; }
    std::wstring getText() override { return dialog_.text; }
    bool doModal() override { return dialog_.doModal(); }
    void release() override { delete this; }

private:
    ~RiddleWindowView() = default;

    TextEditorDialog dialog_{IDD_RIDDLE, 0};
};

} // namespace JobRunner
