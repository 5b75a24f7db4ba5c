#include "linux/terminal.h"

#include <gtest/gtest.h>

using EndToEnd::Terminal;
using std::chrono::milliseconds;

TEST(Terminal, findsWhatAProgramShowsInItsOrder)
{
    Terminal terminal({"/bin/sh", "-c", "echo one; echo two"});
    EXPECT_TRUE(terminal.expect("one"));
    EXPECT_TRUE(terminal.expect("two\n"));
    EXPECT_FALSE(terminal.expect("one", milliseconds(2000)));
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST(Terminal, givesTheExitCode)
{
    Terminal terminal({"/bin/sh", "-c", "exit 7"});
    EXPECT_EQ(terminal.exitCode(), 7);
}

TEST(Terminal, givesTheSignalThatEndedAProgram)
{
    Terminal terminal({"/bin/sh", "-c", "kill -6 $$"});
    EXPECT_EQ(terminal.exitCode(), 128 + 6);
}

TEST(Terminal, typesForTheProgram)
{
    Terminal terminal({"/bin/sh", "-c", "read answer; echo got-$answer"});
    terminal.send("yes\n");
    EXPECT_TRUE(terminal.expect("got-yes"));
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST(Terminal, endsTheInput)
{
    Terminal terminal({"/bin/cat"});
    terminal.sendEnd();
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST(Terminal, doesNotWaitForeverForAProgramThatGoesOn)
{
    Terminal terminal({"/bin/cat"});
    EXPECT_EQ(terminal.exitCode(milliseconds(50)), -1);
}

TEST(Terminal, isATerminalForTheProgram)
{
    Terminal terminal({"/bin/sh", "-c", "test -t 0 && test -t 1 && echo terminal"});
    EXPECT_TRUE(terminal.expect("terminal"));
}
