#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

using WindowHandle = void*;

/// `WM_DESTROY`, the one message of the system that a hidden window answers itself.
inline constexpr std::uint32_t WindowDestroyed = 2;

/// Answers the messages of one hidden window, always on the thread that created it.
class WindowProcedure
{
public:
    /// Messages before `WM_NCCREATE` was answered do not arrive here. `window` is the receiving window.
    virtual std::intptr_t onMessage(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                    std::intptr_t lParam) = 0;

protected:
    ~WindowProcedure() = default;
};

/// Hidden windows, blocking messages between threads, and the message loop.
class Messages
{
public:
    virtual ~Messages() = default;
    /// `RegisterClassExW`. False when the class cannot be registered. Stays until `unregisterClass` or process end.
    virtual bool registerClass(const std::wstring& className) = 0;
    virtual void unregisterClass(const std::wstring& className) = 0;
    /// `CreateWindowExW`, never shown, owned by the calling thread. Null on failure. The procedure is not owned.
    virtual WindowHandle createWindow(const std::wstring& className, const std::wstring& title,
                                      WindowProcedure& procedure) = 0;
    /// `DestroyWindow`: sends `WindowDestroyed` to the procedure before the window is gone. Owning thread only.
    virtual void destroyWindow(WindowHandle window) = 0;
    /// `DefWindowProcW`.
    virtual std::intptr_t defaultProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                           std::intptr_t lParam) = 0;
    /// `SendMessageW`: blocks until the owning thread has answered; runs at once on the owning thread. Any thread.
    /// A null window answers 0 at once.
    virtual std::intptr_t send(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                               std::intptr_t lParam) = 0;
    /// `PostQuitMessage`: ends the calling thread's loop.
    virtual void postQuit() = 0;
    /// `PeekMessageW` with `PM_REMOVE`, `TranslateMessage`, `DispatchMessageW`, once. False when no message waits for
    /// the calling thread.
    virtual bool dispatchOne() = 0;
    /// `GetMessageW`, `TranslateMessage`, `DispatchMessageW` until the quit message.
    virtual void runLoop() = 0;
};

} // namespace Platform
