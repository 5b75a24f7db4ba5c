#pragma once

#include "fakes/fake_call_log.h"
#include "platform/crashes.h"

#include <stdexcept>

namespace Fakes
{

/// Keeps the filter that was installed last, and crashes when a test says so. Logs "setUnhandledExceptionFilter".
class FakeCrashes : public Platform::Crashes
{
public:
    explicit FakeCrashes(CallLog& log) : log_(log) {}

    /// Null before one is installed.
    Platform::CrashFilter filter() const { return filter_; }

    /// Does what the system does on the thread that crashed, and gives the filter's answer. The process does not end.
    /// Throws std::logic_error when no filter is installed.
    std::int32_t crash(const Platform::ExceptionRecord& record) const
    {
        if (!filter_)
            throw std::logic_error("a crash without a filter");
        return filter_(record);
    }

    void setUnhandledExceptionFilter(Platform::CrashFilter newFilter) override
    {
        log_.add(L"setUnhandledExceptionFilter");
        filter_ = newFilter;
    }

private:
    CallLog& log_;
    Platform::CrashFilter filter_ = nullptr;
};

} // namespace Fakes
