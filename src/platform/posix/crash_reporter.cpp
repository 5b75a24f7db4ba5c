#include "platform/posix/crash_reporter.h"

#include "platform/posix/alternate_stack.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace Platform
{

namespace
{

constexpr int LookAgain = 10; ///< milliseconds

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

/// Other threads take the signals of this process meanwhile. Faults of a thread are its own in any case.
class BlockedSignals
{
public:
    BlockedSignals()
    {
        sigset_t all;
        sigfillset(&all);
        for (const int fault : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP, SIGABRT})
            sigdelset(&all, fault);
        pthread_sigmask(SIG_BLOCK, &all, &former_);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t former_{};
};

} // namespace

CrashReporter::CrashReporter(CrashFilter filter, std::chrono::milliseconds patience)
    : filter_(filter), patience_(patience)
{
    sem_init(&wanted_, 0, 0);
    const BlockedSignals blocked;
    try
    {
        thread_ = std::thread([this] { run(); });
    }
    catch (const std::system_error&)
    {
        done_ = true; // no report can be had, so nobody waits for one
    }
}

CrashReporter::~CrashReporter()
{
    ending_ = true;
    sem_post(&wanted_);
    if (thread_.joinable())
        thread_.join();
    sem_destroy(&wanted_);
}

bool CrashReporter::report(const ExceptionRecord& record)
{
    record_ = record;
    sem_post(&wanted_);
    const int patience = static_cast<int>(patience_.count());
    for (int waited = 0; !done_ && (told_ || waited < patience); waited += LookAgain)
        poll(nullptr, 0, LookAgain);
    return told_;
}

bool CrashReporter::runsHere() const
{
    return threadId_ == gettid();
}

void CrashReporter::run()
{
    const AlternateStack stack;
    threadId_ = gettid();
    while (sem_wait(&wanted_) != 0 && errno == EINTR)
        continue;
    if (ending_)
        return;
    filter_(record_);
    told_ = true;
    done_ = true;
}

} // namespace Platform
