#include "windows/progress/terminal/progress_window_view.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

#include <pty.h>

using namespace JobRunner;

TEST(ProgressInTerminal, doesNothingAtTheCloseOfAViewThatNeverStarted)
{
    PipedTerminal piped;
    ProgressWindowView(OperationEncrypt, piped.terminal()).close();
    EXPECT_EQ(piped.shown(), "");
}

TEST(ProgressInTerminal, showsNothingWhileHidden)
{
    PipedTerminal piped;
    ProgressWindowView view(OperationEncrypt, piped.terminal());
    view.create();
    EXPECT_TRUE(view.isHidden());
    view.setFileProgress(L"a.txt", 50, false);
    view.close();
    EXPECT_EQ(piped.shown(), "");
}

TEST(ProgressInTerminal, tellsTheLastStateOnAnOutputThatCannotRedraw)
{
    PipedTerminal piped;
    ProgressWindowView view(OperationEncrypt, piped.terminal());
    view.create();
    view.show();
    view.setFileProgress(L"a.txt", 100, false);
    view.setTotalProgress(100, false);
    view.close();
    EXPECT_TRUE(piped.shown().ends_with("Encryption: a.txt (100.00%), Total: 100.0%\n"));
}

TEST(ProgressInTerminal, canBeClosedTwice)
{
    PipedTerminal piped;
    ProgressWindowView view(OperationEncrypt, piped.terminal());
    view.create();
    view.close();
    view.close();
    EXPECT_EQ(piped.shown(), "");
}

TEST(ProgressInTerminal, drawsTheDisplayOnATerminalAndTakesItAwayAtTheEnd)
{
    int master = -1;
    int slave = -1;
    winsize size{24, 100, 0, 0};
    ASSERT_EQ(openpty(&master, &slave, nullptr, nullptr, &size), 0);
    {
        Platform::Terminal terminal(slave, slave);
        ProgressWindowView view(OperationDecrypt, terminal);
        view.create();
        view.setTotalProgress(42, false);
        view.show();
        view.close();
    }
    std::string shown(4096, '\0');
    const ssize_t length = ::read(master, shown.data(), shown.size());
    ASSERT_GT(length, 0);
    shown.resize(static_cast<std::size_t>(length));
    EXPECT_NE(shown.find("Decryption"), std::string::npos);
    EXPECT_NE(shown.find("Total: 42.0%"), std::string::npos);
    EXPECT_NE(shown.find("[c] Cancel  [p] Pause"), std::string::npos);
    EXPECT_TRUE(shown.ends_with("\x1b[K"));
    ::close(master);
    ::close(slave);
}
