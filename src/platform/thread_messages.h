#pragma once

#include "platform/messages.h"

#include <memory>

namespace Platform
{

/// The rules of hidden windows and blocking messages without a window system: what a system without windows uses.
/// A window answers on its own thread only: from the message loop, or while that thread itself waits in `send`.
/// Whoever waits for a window that ends gets 0. Any thread.
class ThreadMessages : public Messages
{
public:
    ThreadMessages();
    ~ThreadMessages();

    bool registerClass(const std::wstring& className) override;
    void unregisterClass(const std::wstring& className) override;
    WindowHandle createWindow(const std::wstring& className, const std::wstring& title,
                              WindowProcedure& procedure) override;
    void destroyWindow(WindowHandle window) override;
    std::intptr_t defaultProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) override;
    std::intptr_t send(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;
    void postQuit() override;
    bool dispatchOne() override;
    void runLoop() override;

private:
    class State;
    // Shared with the threads that own windows, which may outlive this object.
    std::shared_ptr<State> state_;
};

} // namespace Platform
