#include "windows/progress/win32/drain_pacer.h"

namespace JobRunner
{

namespace
{

constexpr DWORD PauseMilliseconds = 50;

} // namespace

DrainPacer::DrainPacer(UINT message)
    : message_(message), wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
}

void DrainPacer::wake()
{
    SetEvent(wake_.get());
}

void DrainPacer::start(HWND window)
{
    window_ = window;
    ResetEvent(stop_.get());
    thread_ = Platform::ScopedHandle(CreateThread(nullptr, 0, threadProcedure, this, 0, nullptr));
}

void DrainPacer::stop()
{
    if (!thread_)
        return;
    SetEvent(stop_.get());
    WaitForSingleObject(thread_.get(), INFINITE);
    thread_.reset();
}

DWORD WINAPI DrainPacer::threadProcedure(void* argument)
{
    static_cast<DrainPacer*>(argument)->run();
    return 0;
}

void DrainPacer::run()
{
    const HANDLE events[] = {stop_.get(), wake_.get()};
    while (WaitForMultipleObjects(2, events, FALSE, INFINITE) == WAIT_OBJECT_0 + 1)
    {
        PostMessageW(window_, message_, 0, 0);
        if (WaitForSingleObject(stop_.get(), PauseMilliseconds) != WAIT_TIMEOUT)
            return;
    }
}

} // namespace JobRunner
