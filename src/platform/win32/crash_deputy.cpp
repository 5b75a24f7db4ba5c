#include "platform/win32/crash_deputy.h"

namespace Platform
{

CrashDeputy::CrashDeputy()
{
    if (!ScopedHandle(CreateThread(nullptr, 0, waitAndRun, this, 0, &threadId_)))
        threadId_ = 0;
}

std::int32_t CrashDeputy::run(CrashFilter filter, const ExceptionRecord& record)
{
    filter_ = filter;
    record_ = record;
    SetEvent(wanted_.get());
    WaitForSingleObject(done_.get(), INFINITE);
    return answer_;
}

DWORD WINAPI CrashDeputy::waitAndRun(void* deputy)
{
    auto& self = *static_cast<CrashDeputy*>(deputy);
    WaitForSingleObject(self.wanted_.get(), INFINITE);
    self.answer_ = self.filter_(self.record_);
    SetEvent(self.done_.get());
    return 0;
}

} // namespace Platform
