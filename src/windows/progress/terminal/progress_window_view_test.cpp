#include "windows/progress/terminal/progress_window_view.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <utmp.h>

#include <atomic>

using namespace JobRunner;

namespace
{

constexpr int LimitMilliseconds = 10000;
/// What a key needs at most to come from the keyboard's end of a terminal to the other.
constexpr int KeyMilliseconds = 100;

/// A view in a process that has a terminal of its own, and the user in front of it. The process ends at the first
/// cancel and tells by its exit code how often pause was pressed until then.
class ViewOfAProcess
{
public:
    ViewOfAProcess()
    {
        const winsize size{24, 100, 0, 0};
        if (::openpty(&master_, &slave_, nullptr, nullptr, &size) != 0)
            return;
        child_ = ::fork();
        if (child_ == 0)
            ::_exit(::login_tty(slave_) == 0 ? pausesUntilCancel() : 255);
    }
    ~ViewOfAProcess()
    {
        ::close(master_);
        ::close(slave_);
    }
    ViewOfAProcess(const ViewOfAProcess&) = delete;
    ViewOfAProcess& operator=(const ViewOfAProcess&) = delete;

    /// Reads on until the text is shown; false when it never is.
    bool shows(const std::string& text)
    {
        pollfd descriptor{master_, POLLIN, 0};
        std::string shown;
        while (shown.find(text) == std::string::npos)
        {
            char letter = 0;
            if (::poll(&descriptor, 1, LimitMilliseconds) <= 0 || ::read(master_, &letter, 1) <= 0)
                return false;
            shown += letter;
        }
        return true;
    }

    /// Comes back when the key has been read, because two that are read at once count as none.
    void press(char key)
    {
        EXPECT_EQ(::write(master_, &key, 1), 1);
        int unread = 1;
        for (int waited = 0; waited < LimitMilliseconds && unread > 0; waited += KeyMilliseconds)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(KeyMilliseconds));
            ::ioctl(slave_, FIONREAD, &unread);
        }
        EXPECT_EQ(unread, 0);
    }

    int pauses() const
    {
        int status = 0;
        ::waitpid(child_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    static int pausesUntilCancel()
    {
        Platform::Terminal terminal(STDIN_FILENO, STDOUT_FILENO);
        ProgressWindowView view(OperationWipe, terminal);
        struct User
        {
            ProgressWindowView& view;
            int pauses = 0;
            std::atomic<int> pausesAtCancel = -1;
        } user{view};
        view.onPause = {[](void* context)
                        {
                            auto& seen = *static_cast<User*>(context);
                            ++seen.pauses % 2 == 1 ? seen.view.onPaused() : seen.view.onResumed();
                        },
                        &user};
        view.onCancel = {[](void* context)
                         {
                             auto& seen = *static_cast<User*>(context);
                             if (seen.pausesAtCancel == -1)
                                 seen.pausesAtCancel = seen.pauses;
                         },
                         &user};
        view.create();
        view.show();
        for (int waited = 0; waited < LimitMilliseconds && user.pausesAtCancel == -1; ++waited)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        view.close();
        return user.pausesAtCancel;
    }

    int master_ = -1;
    int slave_ = -1;
    pid_t child_ = -1;
};

} // namespace

TEST(ProgressInTerminal, isPausedByOneKeyAndCancelledByAnotherButNotWhilePaused)
{
    ViewOfAProcess view;
    ASSERT_TRUE(view.shows("[c] Cancel  [p] Pause"));
    view.press('p');
    ASSERT_TRUE(view.shows("[p] Resume"));
    view.press('c');
    view.press('p');
    ASSERT_TRUE(view.shows("[c] Cancel  [p] Pause"));
    view.press('c');
    EXPECT_EQ(view.pauses(), 2);
}

TEST(ProgressInTerminal, ofAnOutputThatCannotRedrawTellsTheLastStateAtOnceHoweverSoonItComes)
{
    PipedTerminal piped;
    ProgressWindowView view(OperationEncrypt, piped.terminal());
    view.setTotalProgress(10, false);
    view.show();
    view.create();
    std::string shown;
    for (int waited = 0; waited < LimitMilliseconds && shown.empty(); ++waited)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        shown = piped.shown();
    }
    ASSERT_TRUE(shown.ends_with("Total: 10.0%\n"));
    view.setTotalProgress(100, false);
    view.close();
    EXPECT_TRUE(piped.shown().ends_with("Total: 100.0%\n"));
}

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
