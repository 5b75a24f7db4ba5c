#pragma once

#include "resources/resource.h"
#include "windows/text_editors/i_sfx_comment_window_view.h"
#include "windows/text_editors/win32/text_editor_dialog.h"

namespace JobRunner
{

/// The dialog of template 306. Its box opens unchecked each time. Made with `new`; see `ISfxCommentWindowView`.
class SfxCommentWindowView final : public ISfxCommentWindowView
{
public:
    void setText(const std::wstring& text) override { dialog_.text = text; }
    std::wstring getText() override { return dialog_.text; }
    bool doModal() override { return dialog_.doModal(); }
    void release() override { delete this; }
    bool isSetDefault() override { return dialog_.checked; }

private:
    ~SfxCommentWindowView() = default;

    TextEditorDialog dialog_{IDD_SFX_COMMENT, IDC_SET_DEFAULT};
};

} // namespace JobRunner
