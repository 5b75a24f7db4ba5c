#include "platform/posix/terminal_modes.h"

#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

namespace Platform
{

namespace
{

constexpr int EndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGABRT};

// Read by the signal handler; `changedInput` is written last and cleared first.
termios foundModes;
volatile sig_atomic_t changedInput = -1;

void onEndingSignal(int signal)
{
    restoreInputMode();
    // The system's own action is back by now and follows when the handler returns.
    raise(signal);
}

void watchEnding()
{
    static const bool watched = []
    {
        std::atexit(restoreInputMode);
        for (const int signal : EndingSignals)
        {
            struct sigaction current
            {
            };
            sigaction(signal, nullptr, &current);
            if (current.sa_handler != SIG_DFL)
                continue;
            struct sigaction action
            {
            };
            action.sa_handler = onEndingSignal;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(signal, &action, nullptr);
        }
        return true;
    }();
    static_cast<void>(watched);
}

} // namespace

void restoreInputMode()
{
    if (changedInput >= 0)
        tcsetattr(changedInput, TCSADRAIN, &foundModes);
    changedInput = -1;
}

void setInputMode(int input, InputMode mode)
{
    if (mode == InputMode::Lines)
    {
        restoreInputMode();
        return;
    }
    watchEnding();
    if (changedInput < 0)
    {
        if (tcgetattr(input, &foundModes) != 0)
            return;
        changedInput = input;
    }
    termios modes = foundModes;
    modes.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (mode == InputMode::Hidden)
        modes.c_lflag |= ECHONL;
    else
        modes.c_lflag &= ~static_cast<tcflag_t>(ICANON);
    tcsetattr(input, TCSADRAIN, &modes);
}

bool ownsTerminal(int input)
{
    return isatty(input) && tcgetpgrp(input) == getpgrp();
}

} // namespace Platform
