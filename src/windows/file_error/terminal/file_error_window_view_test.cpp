#include "windows/file_error/terminal/file_error_window_view.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{

constexpr const char* Question = "Try Again (t) / Skip File (s) / Abort (a): ";

int answerTo(const std::string& typed)
{
    PipedTerminal piped(typed);
    return FileErrorWindowView(piped.terminal()).doModal();
}

} // namespace

TEST(FileErrorInTerminal, answersByTheFirstLetterOfEachButton)
{
    EXPECT_EQ(answerTo("t\n"), FileErrorTryAgain);
    EXPECT_EQ(answerTo("s\n"), FileErrorSkipFile);
    EXPECT_EQ(answerTo("a\n"), FileErrorAbortJob);
    EXPECT_EQ(answerTo("S\n"), FileErrorSkipFile);
}

TEST(FileErrorInTerminal, takesAnEmptyLineAsTheDefaultButton)
{
    EXPECT_EQ(answerTo("\n"), FileErrorTryAgain);
}

TEST(FileErrorInTerminal, asksAgainAfterAnyOtherLine)
{
    EXPECT_EQ(answerTo("what\nskip\ns\n"), FileErrorSkipFile);
}

TEST(FileErrorInTerminal, answersAbortAtTheEndOfTheInput)
{
    EXPECT_EQ(answerTo(""), FileErrorAbortJob);
    EXPECT_EQ(answerTo("what\n"), FileErrorAbortJob);
}

TEST(FileErrorInTerminal, showsTheDefaultTexts)
{
    PipedTerminal piped("a\n");
    FileErrorWindowView(piped.terminal()).doModal();
    EXPECT_TRUE(piped.shown().starts_with("File Error Occured\nPlease choose what to do with file.\nSource: \n"
                                          "Unknown error occured\n" +
                                          std::string(Question)));
}

TEST(FileErrorInTerminal, showsTheTargetOnlyWhenThereIsOne)
{
    PipedTerminal piped("a\n");
    FileErrorWindowView view(piped.terminal());
    view.setTitle(L"title");
    view.setHeader(L"header");
    view.setSource(L"/source");
    view.setTarget(L"/target");
    view.setMessage(L"");
    view.doModal();
    EXPECT_TRUE(piped.shown().starts_with("title\nheader\nSource: /source\nTarget: /target\n\n"));
}

TEST(FileErrorInTerminal, keepsAPathOnItsLine)
{
    PipedTerminal piped("a\n");
    FileErrorWindowView view(piped.terminal());
    view.setSource(L"/a\nTarget: /forged\x1b[2J");
    view.doModal();
    EXPECT_NE(piped.shown().find("Source: /a?Target: /forged?[2J\n"), std::string::npos);
}
