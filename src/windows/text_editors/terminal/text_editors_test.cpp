#include "windows/text_editors/terminal/riddle_window_view.h"
#include "windows/text_editors/terminal/sfx_comment_window_view.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

#include <memory>

using namespace JobRunner;

namespace
{

struct Release
{
    template <class View> void operator()(View* view) const { view->release(); }
};

class TextEditorsInTerminal : public testing::Test
{
protected:
    bool editRiddle(const std::string& typed)
    {
        PipedTerminal piped(typed);
        riddle_.reset(new RiddleWindowView(piped.terminal()));
        riddle_->setText(L"old");
        return riddle_->doModal();
    }

    bool editComment(const std::string& typed)
    {
        PipedTerminal piped(typed);
        comment_.reset(new SfxCommentWindowView(piped.terminal()));
        comment_->setText(L"old");
        const bool confirmed = comment_->doModal();
        shown_ = piped.shown();
        return confirmed;
    }

    std::unique_ptr<RiddleWindowView, Release> riddle_;
    std::unique_ptr<SfxCommentWindowView, Release> comment_;
    std::string shown_;
};

} // namespace

TEST_F(TextEditorsInTerminal, theRiddleIsOneLine)
{
    EXPECT_TRUE(editRiddle("a cat?\nmore\n"));
    EXPECT_EQ(riddle_->getText(), L"a cat?");
}

TEST_F(TextEditorsInTerminal, anEmptyLineRemovesTheRiddle)
{
    EXPECT_TRUE(editRiddle("\n"));
    EXPECT_EQ(riddle_->getText(), L"");
}

TEST_F(TextEditorsInTerminal, theEndOfTheInputLeavesTheRiddle)
{
    EXPECT_FALSE(editRiddle(""));
    EXPECT_EQ(riddle_->getText(), L"old");
}

TEST_F(TextEditorsInTerminal, theCommentIsShownAndTakesLinesUpToAnEmptyOne)
{
    EXPECT_TRUE(editComment("one\ntwo\n\n\n"));
    EXPECT_TRUE(shown_.starts_with("old\nNew Sfx Comment (an empty line ends it"));
    EXPECT_EQ(comment_->getText(), L"one\ntwo");
    EXPECT_FALSE(comment_->isSetDefault());
}

TEST_F(TextEditorsInTerminal, theCommentBecomesTheDefaultWhenTheUserSaysSo)
{
    EXPECT_TRUE(editComment("one\n\ny\n"));
    EXPECT_TRUE(comment_->isSetDefault());
    EXPECT_TRUE(editComment("\nn\n"));
    EXPECT_EQ(comment_->getText(), L"");
    EXPECT_FALSE(comment_->isSetDefault());
}

TEST_F(TextEditorsInTerminal, theEndOfTheInputLeavesCommentAndDefault)
{
    for (const char* const typed : {"", "one\n", "one\n\n"})
    {
        EXPECT_FALSE(editComment(typed));
        EXPECT_EQ(comment_->getText(), L"old");
        EXPECT_FALSE(comment_->isSetDefault());
    }
}
