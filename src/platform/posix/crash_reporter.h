#pragma once

#include "platform/crashes.h"

#include <semaphore.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace Platform
{

/// Runs the filter of a crash on a thread of its own, since a thread that was stopped by a signal may neither take
/// memory nor a lock. That thread sleeps until then, and takes no signal but those of its own faults.
class CrashReporter
{
public:
    /// `patience` is how long a report may take until its message box is shown.
    CrashReporter(CrashFilter filter, std::chrono::milliseconds patience);
    /// Waits for a filter that still runs.
    ~CrashReporter();
    CrashReporter(const CrashReporter&) = delete;
    CrashReporter& operator=(const CrashReporter&) = delete;

    /// Has the filter report it and waits; once the box is shown, for as long as the user lets it stand. False when
    /// it came to nothing in time: the thread that crashed may have a lock that the filter waits for. Call it once;
    /// safe in a signal handler.
    bool report(const ExceptionRecord& record);

    /// Is this the thread that runs the filter? Safe in a signal handler.
    bool runsHere() const;
    /// Says that the user sees the message box of the report.
    void boxIsShown() { told_ = true; }
    /// Says that the filter will not come back. Safe in a signal handler.
    void giveUp() { done_ = true; }

private:
    void run();

    const CrashFilter filter_;
    const std::chrono::milliseconds patience_;
    ExceptionRecord record_;
    sem_t wanted_{};
    std::atomic<bool> ending_{false};
    std::atomic<bool> told_{false};
    std::atomic<bool> done_{false};
    std::atomic<int> threadId_{0};
    std::thread thread_;
};

/// Tells the reporter of this process, if there is one and it runs on this thread, that a message box is shown.
void noteShownBox();

} // namespace Platform
