#pragma once

#include "platform/crashes.h"
#include "platform/win32/scoped_handle.h"

namespace Platform
{

/// A thread that waits to run the filter for one that has no stack left to run it on.
class CrashDeputy
{
public:
    CrashDeputy();

    /// Runs it there and gives its answer. Takes next to no stack of the caller. Call it once.
    std::int32_t run(CrashFilter filter, const ExceptionRecord& record);
    /// Where the filter runs. 0 when the system had no thread left: the caller has to run it himself then.
    DWORD threadId() const { return threadId_; }

private:
    static DWORD WINAPI waitAndRun(void* deputy);

    const ScopedHandle wanted_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    const ScopedHandle done_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    CrashFilter filter_ = nullptr;
    ExceptionRecord record_;
    std::int32_t answer_ = 0;
    DWORD threadId_ = 0;
};

} // namespace Platform
