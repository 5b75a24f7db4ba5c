#include "windows/framework/terminal/terminal_dialog.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

#include <thread>

using namespace JobRunner;

TEST(TerminalDialog, asksUntilTheAnswerIsOneOfTheLetters)
{
    PipedTerminal piped("x\nab\nB\n");
    EXPECT_EQ(TerminalDialog(piped.terminal()).choose(L"? ", L"ab", L'a'), L'b');
    EXPECT_EQ(piped.shown(), "? \n? \n? \n");
}

TEST(TerminalDialog, anEmptyLineGivesTheDefaultAndTheEndNothing)
{
    PipedTerminal piped("\n");
    TerminalDialog dialog(piped.terminal());
    EXPECT_EQ(dialog.choose(L"? ", L"ab", L'\r'), L'\r');
    EXPECT_EQ(dialog.choose(L"? ", L"ab", L'\r'), std::nullopt);
}

TEST(TerminalDialog, aLineStaysOnItsLine)
{
    PipedTerminal piped;
    TerminalDialog(piped.terminal()).printLine(L"a\nb");
    EXPECT_EQ(piped.shown(), "a?b\n");
}

TEST(TerminalDialog, lendsTheTerminalToAnotherThread)
{
    PipedTerminal piped;
    TerminalDialog dialog(piped.terminal());
    dialog.print(L"before");
    dialog.lend([&] { std::thread([&] { TerminalDialog(piped.terminal()).print(L"other"); }).join(); });
    dialog.print(L"after");
    EXPECT_EQ(piped.shown(), "before\nother\nafter\n");
}
