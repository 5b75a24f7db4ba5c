#pragma once

#include "platform/win32/scoped_handle.h"

namespace JobRunner
{

/// Tells a window, by a posted message, that there is something new to show, some 20 times a second at most.
/// Reports come a thousand times as often, and each painted one would cost milliseconds. The message also reaches
/// the window inside the system's own loops, as while the user drags it.
class DrainPacer
{
public:
    /// The window gets `message` without parameters.
    explicit DrainPacer(UINT message);

    /// There is something new. Any thread, also before `start` and after `stop`; never waits.
    void wake();
    /// Starts the pacer's own thread.
    void start(HWND window);
    /// Ends that thread and waits for it. It waits for nobody, so this is short.
    void stop();

private:
    static DWORD WINAPI threadProcedure(void* argument);
    void run();

    const UINT message_;
    HWND window_ = nullptr;
    Platform::ScopedHandle wake_;
    Platform::ScopedHandle stop_;
    Platform::ScopedHandle thread_;
};

} // namespace JobRunner
