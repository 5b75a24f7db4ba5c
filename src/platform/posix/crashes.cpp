#include "platform/posix/alternate_stack.h"
#include "platform/posix/concerns.h"
#include "platform/posix/crash_record.h"
#include "platform/posix/crash_reporter.h"
#include "platform/posix/terminal_modes.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <exception>
#include <string_view>

namespace Platform
{

namespace
{

/// A client of the statistics that is slow does not cost the user the message box.
constexpr std::chrono::milliseconds Patience{5000};
/// Written by hand where the filter comes to nothing: caption and text of its message box.
constexpr std::string_view LastWords = "\njobrunner\nApplication has crashed!\n";

constexpr int Faults[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP};

// All of it is read by signal handlers.
std::atomic<CrashFilter> installed{nullptr};
std::atomic<CrashReporter*> reporter{nullptr};
std::atomic<pid_t> owner{0};
std::atomic<pid_t> crashedThread{0};

static_assert(std::atomic<CrashReporter*>::is_always_lock_free && std::atomic<pid_t>::is_always_lock_free);

std::int32_t runFilter(const ExceptionRecord& record)
{
    return installed.load()(record);
}

void writeLastWords()
{
    static_cast<void>(!write(STDERR_FILENO, LastWords.data(), LastWords.size()));
}

/// What the process would have died of without us.
[[noreturn]] void endBySignal(int signal)
{
    restoreInputMode();
    struct sigaction action
    {
    };
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, signal);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    raise(signal);
    _exit(128 + signal);
}

/// Safe in a signal handler. The first report wins: other threads that crash wait for the end of the process.
[[noreturn]] void reportAndEnd(const ExceptionRecord& record, int signal)
{
    // A child that has not become another program yet has no reporter.
    if (getpid() != owner)
        endBySignal(signal);
    pid_t none = 0;
    if (crashedThread.compare_exchange_strong(none, gettid()))
    {
        if (!reporter.load()->report(record))
            writeLastWords();
        endBySignal(signal);
    }
    // Not even the report could be waited for.
    if (crashedThread == gettid())
        endBySignal(signal);
    // The filter itself crashed: the thread that waits for it ends the process.
    if (reporter.load()->runsHere())
        reporter.load()->giveUp();
    while (true)
        pause();
}

void onFault(int signal, siginfo_t* information, void* context)
{
    reportAndEnd(crashRecord(signal, *information, faultPlace(context)), signal);
}

[[noreturn]] void onTerminate()
{
    reportAndEnd({ExceptionOfTheLanguage, reinterpret_cast<std::uintptr_t>(__builtin_return_address(0))}, SIGABRT);
}

void handleFaults()
{
    struct sigaction action
    {
    };
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (const int fault : Faults)
        sigaction(fault, &action, nullptr);
}

class PosixCrashes : public Crashes
{
public:
    void setUnhandledExceptionFilter(CrashFilter filter) override
    {
        installed = filter;
        if (reporter)
            return;
        static const AlternateStack stackOfTheFirstThread;
        // Kept until the process ends: what crashes on the way out is reported too.
        reporter = new CrashReporter(runFilter, Patience);
        owner = getpid();
        handleFaults();
        std::set_terminate(onTerminate);
    }
};

} // namespace

void noteShownBox()
{
    if (CrashReporter* const current = reporter; current && current->runsHere())
        current->boxIsShown();
}

Crashes& posixCrashes()
{
    static PosixCrashes concern;
    return concern;
}

} // namespace Platform
