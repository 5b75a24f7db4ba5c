#include "platform/posix/terminal.h"

#include "platform/message_box.h"
#include "platform/posix/concerns.h"
#include "platform/posix/terminal_modes.h"
#include "platform/posix/terminal_text.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>

using namespace Platform;
using namespace std::chrono_literals;

namespace
{

std::string readAvailable(int descriptor, std::chrono::milliseconds patience)
{
    std::string text;
    pollfd ready{descriptor, POLLIN, 0};
    while (poll(&ready, 1, static_cast<int>(patience.count())) > 0)
    {
        std::array<char, 4096> bytes{};
        const ssize_t length = read(descriptor, bytes.data(), bytes.size());
        if (length <= 0)
            break;
        text.append(bytes.data(), static_cast<std::size_t>(length));
    }
    return text;
}

/// A terminal on two pipes: what a program has whose input and output are redirected.
class PipedTerminal
{
public:
    explicit PipedTerminal(const std::string& typed)
    {
        EXPECT_EQ(pipe(input_.data()), 0);
        EXPECT_EQ(pipe(output_.data()), 0);
        EXPECT_EQ(write(input_[1], typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
        close(input_[1]);
    }
    ~PipedTerminal()
    {
        close(input_[0]);
        close(output_[0]);
        close(output_[1]);
    }
    PipedTerminal(const PipedTerminal&) = delete;
    PipedTerminal& operator=(const PipedTerminal&) = delete;

    int input() const { return input_[0]; }
    int output() const { return output_[1]; }
    std::string shown(std::chrono::milliseconds patience = 0ms) { return readAvailable(output_[0], patience); }
    /// Bytes that nobody has read yet.
    int waiting() const
    {
        int count = 0;
        ioctl(output_[0], FIONREAD, &count);
        return count;
    }

private:
    std::array<int, 2> input_{};
    std::array<int, 2> output_{};
};

/// Runs `program` in a process of its own that has a terminal, and gives what that terminal showed and how it ended.
struct Session
{
    std::string shown;
    int status = 0;
};

Session runOnTerminal(const std::string& awaited, const std::string& typed,
                      const std::function<int(Terminal&)>& program)
{
    int user = -1;
    fflush(nullptr); // else the child shows it once more
    const pid_t child = forkpty(&user, nullptr, nullptr, nullptr);
    if (child == 0)
    {
        Terminal onPty(STDIN_FILENO, STDOUT_FILENO);
        std::exit(program(onPty));
    }
    Session session;
    // Types only when the program has asked, as a person does.
    for (int round = 0; round < 100 && session.shown.find(awaited) == std::string::npos; ++round)
        session.shown += readAvailable(user, 50ms);
    if (!typed.empty())
    {
        EXPECT_EQ(write(user, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    }
    session.shown += readAvailable(user, 2000ms);
    waitpid(child, &session.status, 0);
    close(user);
    return session;
}

TEST(TerminalText, whatCouldCommandTheTerminalIsReplaced)
{
    EXPECT_EQ(displayText(L"a\x1b[2Jb\x7f"), L"a?[2Jb?");
    EXPECT_EQ(displayText(L"one\r\ntwo"), L"one\ntwo");
    EXPECT_EQ(displayLine(L"one\r\ntwo\t\u009B\u202E"), L"one??two???");
    EXPECT_EQ(displayLine(std::wstring(1, wchar_t(0xDC9B))), L"?");
    EXPECT_EQ(displayLine(L"\u00E4 \u20AC.txt"), L"\u00E4 \u20AC.txt");
}

TEST(TerminalText, aLineIsCutToTheColumns)
{
    EXPECT_EQ(fitColumns(L"abcdef", 4), L"abcd");
    EXPECT_EQ(fitColumns(L"abc", 4), L"abc");
}

TEST(Terminal, withoutATerminalItReadsLinesUntilTheInputEnds)
{
    PipedTerminal pipes("first\r\n\nlast");
    Terminal terminal(pipes.input(), pipes.output());
    Terminal::Prompt prompt(terminal);
    EXPECT_EQ(prompt.readLine(L"? "), L"first");
    EXPECT_EQ(prompt.readHidden(L"? "), L"");
    EXPECT_EQ(prompt.readLine(L"? "), L"last");
    EXPECT_EQ(prompt.readLine(L"? "), std::nullopt);
    EXPECT_EQ(prompt.readHidden(L"? "), std::nullopt);
}

TEST(Terminal, withoutATerminalThereIsNoStatusAndNoKey)
{
    PipedTerminal pipes("p");
    Terminal terminal(pipes.input(), pipes.output());
    terminal.drawStatus({L"50 %"});
    EXPECT_EQ(terminal.pollKey(1ms), std::nullopt);
    EXPECT_EQ(pipes.shown(), "");
}

TEST(Terminal, aTextThatIsLongerThanThePipeArrivesWholeAcrossASignal)
{
    struct sigaction interrupting
    {
    };
    struct sigaction before
    {
    };
    interrupting.sa_handler = [](int) {};
    sigaction(SIGUSR1, &interrupting, &before);
    PipedTerminal pipes("");
    Terminal terminal(pipes.input(), pipes.output());
    const std::wstring text(200000, L'x');
    std::thread printing([&] { Terminal::Prompt(terminal).print(text); });
    while (pipes.waiting() < 60000)
        std::this_thread::yield();
    pthread_kill(printing.native_handle(), SIGUSR1);
    const std::string shown = pipes.shown(500ms);
    printing.join();
    EXPECT_EQ(shown.size(), text.size());
    sigaction(SIGUSR1, &before, nullptr);
}

TEST(Terminal, aPromptInsideAPromptOfTheSameThreadGoesOn)
{
    PipedTerminal pipes("x\n");
    Terminal terminal(pipes.input(), pipes.output());
    Terminal::Prompt outer(terminal);
    {
        Terminal::Prompt inner(terminal);
        inner.print(L"inner\n");
    }
    EXPECT_EQ(outer.readLine(L""), L"x");
}

TEST(Terminal, aPromptOfAnotherThreadWaitsForTheOpenOne)
{
    PipedTerminal pipes("");
    Terminal terminal(pipes.input(), pipes.output());
    std::thread other;
    {
        Terminal::Prompt prompt(terminal);
        other = std::thread(
            [&]
            {
                Terminal::Prompt second(terminal);
                second.print(L"second");
            });
        std::this_thread::sleep_for(20ms);
        prompt.print(L"first ");
    }
    other.join();
    EXPECT_EQ(pipes.shown(), "first second");
}

TEST(Terminal, statusLinesAreErasedForAPromptAndComeBack)
{
    const Session session = runOnTerminal("name? ", "me\n",
                                          [](Terminal& terminal)
                                          {
                                              terminal.drawStatus({L"one", L"two"});
                                              {
                                                  Terminal::Prompt prompt(terminal);
                                                  terminal.drawStatus({L"hidden meanwhile"});
                                                  prompt.readLine(L"name? ");
                                              }
                                              terminal.clearStatus();
                                              return 0;
                                          });
    EXPECT_EQ(session.shown, "one\r\ntwo\r\x1b[K\x1b[1A\r\x1b[Kname? me\r\nhidden meanwhile\r\x1b[K");
}

TEST(Terminal, aHiddenLineIsNotShown)
{
    const Session session = runOnTerminal("password: ", "secret\n",
                                          [](Terminal& terminal)
                                          {
                                              Terminal::Prompt prompt(terminal);
                                              const bool right = prompt.readHidden(L"password: ") == L"secret";
                                              termios modes{};
                                              tcgetattr(STDIN_FILENO, &modes);
                                              return right && (modes.c_lflag & ECHO) ? 0 : 1;
                                          });
    EXPECT_EQ(session.status, 0);
    EXPECT_EQ(session.shown, "password: \r\n");
}

TEST(Terminal, aKeyArrivesWithoutEnterAndIsNotShown)
{
    const Session session = runOnTerminal("ready", "p",
                                          [](Terminal& terminal)
                                          {
                                              static_cast<void>(terminal.pollKey(50ms));
                                              terminal.drawStatus({L"ready"});
                                              return terminal.pollKey(5s) == L'p' ? 0 : 1;
                                          });
    EXPECT_EQ(session.status, 0);
    EXPECT_EQ(session.shown, "ready");
}

TEST(Terminal, aKeyThatSendsSeveralCharactersIsLeftOut)
{
    const Session session = runOnTerminal("ready", "\x1b[A",
                                          [](Terminal& terminal)
                                          {
                                              static_cast<void>(terminal.pollKey(50ms));
                                              terminal.drawStatus({L"ready"});
                                              return terminal.pollKey(300ms) ? 1 : 0;
                                          });
    EXPECT_EQ(session.status, 0);
}

TEST(Terminal, aSignalThatEndsTheProcessPutsTheModesBack)
{
    const Session session =
        runOnTerminal("restored", "",
                      [](Terminal& terminal)
                      {
                          const pid_t child = fork();
                          if (child == 0)
                          {
                              static_cast<void>(terminal.pollKey(50ms));
                              std::raise(SIGTERM);
                          }
                          int status = 0;
                          waitpid(child, &status, 0);
                          termios modes{};
                          tcgetattr(STDIN_FILENO, &modes);
                          const bool restored = (modes.c_lflag & ECHO) && (modes.c_lflag & ICANON);
                          terminal.drawStatus({L"restored"});
                          return WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM && restored ? 0 : 1;
                      });
    EXPECT_EQ(session.status, 0);
}

TEST(TerminalMessageBoxes, aQuestionIsAskedUntilItIsAnswered)
{
    PipedTerminal pipes("maybe\nYes\n");
    Terminal terminal(pipes.input(), pipes.output());
    EXPECT_EQ(terminalMessageBoxes(terminal)->show(L"Sure?", L"Title", BoxYesNo | BoxIconQuestion), BoxAnswerYes);
    EXPECT_EQ(pipes.shown(), "Title\nSure?\n[y/n] \n[y/n] \n");
}

TEST(TerminalMessageBoxes, theEndOfTheInputMeansNoOrOk)
{
    PipedTerminal pipes("");
    Terminal terminal(pipes.input(), pipes.output());
    EXPECT_EQ(terminalMessageBoxes(terminal)->show(L"Sure?", L"Title", BoxYesNo), BoxAnswerNo);
    EXPECT_EQ(terminalMessageBoxes(terminal)->show(L"Text", L"Title", BoxOk), BoxAnswerOk);
}

TEST(TerminalMessageBoxes, aMessageWaitsForEnter)
{
    PipedTerminal pipes("\nn\n");
    Terminal terminal(pipes.input(), pipes.output());
    const auto boxes = terminalMessageBoxes(terminal);
    EXPECT_EQ(boxes->show(L"Text", L"Title", BoxOk | BoxIconInformation), BoxAnswerOk);
    EXPECT_EQ(boxes->show(L"Sure?", L"Title", BoxYesNo), BoxAnswerNo);
}

} // namespace
