#include "windows/text_editors/edit_text.h"

#include "windows/text_editors/i_riddle_window_view.h"
#include "windows/text_editors/i_sfx_comment_window_view.h"

#include <memory>

namespace JobRunner
{

namespace
{

struct EndView
{
    template <class View> void operator()(View* view) const { view->release(); }
};

} // namespace

bool editRiddle(IRiddleWindowView& view, std::wstring& riddle)
{
    const std::unique_ptr<IRiddleWindowView, EndView> owner(&view);
    view.setText(riddle);
    if (!view.doModal())
        return false;
    riddle = view.getText();
    return true;
}

bool editSfxComment(ISfxCommentWindowView& view, std::wstring& comment, bool& keepAsDefault)
{
    const std::unique_ptr<ISfxCommentWindowView, EndView> owner(&view);
    view.setText(comment);
    if (!view.doModal())
        return false;
    comment = view.getText();
    keepAsDefault = view.isSetDefault();
    return true;
}

} // namespace JobRunner
