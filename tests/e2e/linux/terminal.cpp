#include "linux/terminal.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace EndToEnd
{
namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Messages come one to a line, whatever the width of the terminal is, so it is wide.
constexpr winsize Size{50, 400, 0, 0};

milliseconds timeLeft(Clock::time_point end)
{
    return std::max(milliseconds(0), std::chrono::duration_cast<milliseconds>(end - Clock::now()));
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    setenv("TERM", "xterm", 1);
    execv(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

Terminal::Terminal(const std::vector<std::string>& command)
{
    winsize size = Size;
    process_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (process_ < 0)
        throw std::runtime_error("no terminal");
    if (process_ == 0)
        becomeProgram(command);
}

Terminal::~Terminal()
{
    if (process_ > 0)
    {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(terminal_);
}

bool Terminal::expect(const std::string& text, milliseconds limit)
{
    const auto end = Clock::now() + limit;
    for (;;)
    {
        const std::size_t place = shown_.find(text, found_);
        if (place != std::string::npos)
        {
            found_ = place + text.size();
            return true;
        }
        if (!readMore(timeLeft(end)))
            return false;
    }
}

void Terminal::send(const std::string& keys)
{
    if (write(terminal_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::runtime_error("the terminal takes no keys");
}

void Terminal::sendEnd()
{
    send("\x04");
}

int Terminal::exitCode(milliseconds limit)
{
    const auto end = Clock::now() + limit;
    // A program that writes is stopped by a full terminal, so it is read to its end first.
    while (readMore(timeLeft(end)))
    {
    }
    while (process_ > 0)
    {
        int status = 0;
        const pid_t ended = waitpid(process_, &status, WNOHANG);
        if (ended == process_)
        {
            process_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        if (timeLeft(end) == milliseconds(0))
            return -1;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return -1;
}

bool Terminal::readMore(milliseconds limit)
{
    pollfd waiting{terminal_, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(limit.count())) <= 0)
        return false;
    char buffer[4096];
    const ssize_t count = read(terminal_, buffer, sizeof(buffer));
    // Reading fails with EIO once the program and its children have closed the terminal.
    if (count <= 0)
        return false;
    for (ssize_t index = 0; index < count; ++index)
    {
        if (buffer[index] != '\r')
            shown_.push_back(buffer[index]);
    }
    return true;
}

} // namespace EndToEnd
