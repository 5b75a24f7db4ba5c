#include "windows/text_editors/edit_text.h"

#include "windows/text_editors/i_riddle_window_view.h"
#include "windows/text_editors/i_sfx_comment_window_view.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{

/// An editor whose user types, maybe checks the box, and ends it. Ends by its `release`, once.
template <class Interface> class Editor : public Interface
{
public:
    void setText(const std::wstring& text) override { shown = text; }
    std::wstring getText() override { return typed; }
    bool doModal() override { return confirmed; }
    void release() override { ++releases; }

    std::wstring shown;
    std::wstring typed = L"typed";
    bool confirmed = true;
    int releases = 0;
};

class CommentEditor final : public Editor<ISfxCommentWindowView>
{
public:
    bool isSetDefault() override { return checked; }
    bool checked = true;
};

} // namespace

TEST(EditRiddle, takesTheTextOfAConfirmedEditor)
{
    Editor<IRiddleWindowView> editor;
    std::wstring riddle = L"old";
    EXPECT_TRUE(editRiddle(editor, riddle));
    EXPECT_EQ(editor.shown, L"old");
    EXPECT_EQ(riddle, L"typed");
    EXPECT_EQ(editor.releases, 1);
}

TEST(EditRiddle, aCancelLeavesTheRiddleAsItWasWhateverWasTyped)
{
    Editor<IRiddleWindowView> editor;
    editor.confirmed = false;
    std::wstring riddle = L"old";
    EXPECT_FALSE(editRiddle(editor, riddle));
    EXPECT_EQ(riddle, L"old");
    EXPECT_EQ(editor.releases, 1);
}

TEST(EditRiddle, anEmptyTextIsTaken)
{
    Editor<IRiddleWindowView> editor;
    editor.typed.clear();
    std::wstring riddle = L"old";
    EXPECT_TRUE(editRiddle(editor, riddle));
    EXPECT_EQ(riddle, L"");
}

TEST(EditSfxComment, takesTheTextAndTheBoxOfAConfirmedEditor)
{
    CommentEditor editor;
    std::wstring comment = L"old";
    bool keep = false;
    EXPECT_TRUE(editSfxComment(editor, comment, keep));
    EXPECT_EQ(editor.shown, L"old");
    EXPECT_EQ(comment, L"typed");
    EXPECT_TRUE(keep);
    EXPECT_EQ(editor.releases, 1);
}

TEST(EditSfxComment, aLaterEditorTakesTheCheckBack)
{
    CommentEditor editor;
    editor.checked = false;
    std::wstring comment;
    bool keep = true;
    editSfxComment(editor, comment, keep);
    EXPECT_FALSE(keep);
}

TEST(EditSfxComment, aCheckedBoxOfACancelledEditorDoesNotCount)
{
    CommentEditor editor;
    editor.confirmed = false;
    std::wstring comment = L"old";
    bool keep = false;
    EXPECT_FALSE(editSfxComment(editor, comment, keep));
    EXPECT_EQ(comment, L"old");
    EXPECT_FALSE(keep);
    EXPECT_EQ(editor.releases, 1);
}
