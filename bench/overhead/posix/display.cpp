#include "overhead/display.h"

#include "platform/posix/terminal.h"

#include <chrono>
#include <clocale>
#include <future>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace Benchmarks
{

using namespace std::chrono_literals;

namespace
{

constexpr winsize Size{24, 80, 0, 0};
constexpr auto HangTime = 5s;

void readAll(int terminal)
{
    char bytes[4096];
    while (read(terminal, bytes, sizeof bytes) > 0)
    {
    }
}

} // namespace

int runWithDisplay(int (*measure)(std::FILE* results))
{
    std::setlocale(LC_ALL, "C.UTF-8");
    const int results = dup(STDOUT_FILENO);
    const int errors = dup(STDERR_FILENO);
    int terminal = -1;
    winsize size = Size;
    const pid_t process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process < 0)
        throw std::runtime_error("no terminal");
    if (process == 0)
    {
        dup2(errors, STDERR_FILENO);
        return measure(fdopen(results, "w"));
    }
    readAll(terminal);
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

struct HangingDisplay::State
{
    std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + HangTime;
    std::future<void> probe;
};

HangingDisplay::HangingDisplay(const std::function<void()>& change) : state_(std::make_unique<State>())
{
    tcflow(STDOUT_FILENO, TCOOFF);
    // While the display's thread hangs in its write it has the terminal, so that nobody else gets it.
    do
    {
        change();
        std::this_thread::sleep_for(10ms);
        state_->probe = std::async(std::launch::async, [] { Platform::terminal().pollKey(0ms); });
    } while (state_->probe.wait_for(300ms) == std::future_status::ready);
}

HangingDisplay::~HangingDisplay()
{
    std::this_thread::sleep_until(state_->end);
    tcflow(STDOUT_FILENO, TCOON);
    state_->probe.wait();
}

bool HangingDisplay::hangs() const
{
    return state_->probe.wait_for(0s) != std::future_status::ready;
}

} // namespace Benchmarks
