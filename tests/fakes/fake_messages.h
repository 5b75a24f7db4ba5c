#pragma once

#include "fakes/fake_call_log.h"
#include "platform/thread_messages.h"

namespace Fakes
{

/// Windows and messages in memory, between real threads. Logs "registerClass NAME", "unregisterClass NAME",
/// "createWindow CLASS TITLE", "destroyWindow", "send NUMBER", "postQuit" and "runLoop".
class FakeMessages : public Platform::ThreadMessages
{
public:
    explicit FakeMessages(CallLog& log) : log_(log) {}

    bool registerClass(const std::wstring& className) override;
    void unregisterClass(const std::wstring& className) override;
    Platform::WindowHandle createWindow(const std::wstring& className, const std::wstring& title,
                                        Platform::WindowProcedure& procedure) override;
    void destroyWindow(Platform::WindowHandle window) override;
    std::intptr_t send(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;
    void postQuit() override;
    bool dispatchOne() override;
    void runLoop() override;

    /// Posted messages that wait for the one thread of a test; each is logged as "dispatch" when it is taken.
    int waiting = 0;

    /// While true, `registerClass` gives false. Set it while no other thread runs.
    bool failRegisterClass = false;
    /// While true, `createWindow` gives null. Set it while no other thread runs.
    bool failCreateWindow = false;

private:
    CallLog& log_;
};

} // namespace Fakes
