#pragma once

#include "fakes/fake_call_log.h"
#include "platform/desktop.h"

#include <map>

namespace Fakes
{

struct FakeWindow
{
    std::uint32_t thread = 0;
    bool visible = true;
};

/// Windows in memory, which a test opens, hides and closes through the public members. Logs its calls, with windows
/// and threads as numbers: "foregroundWindow", "enumWindows", "isVisible 7", "isWindow 7", "windowThread 7",
/// "windowText 7 1024", "attachThreadInput 1 2 attach" (or "detach"), "setWindowPosition 7 0 67",
/// "setForegroundWindow 7".
class FakeDesktop : public Platform::Desktop
{
public:
    explicit FakeDesktop(CallLog& log) : log_(log) {}

    /// The handle that the log shows as this number.
    static Platform::WindowHandle windowNumber(std::uintptr_t number)
    {
        return reinterpret_cast<Platform::WindowHandle>(number);
    }

    Platform::WindowHandle foreground = nullptr;
    /// The top-level windows; they are enumerated by their numbers.
    std::map<Platform::WindowHandle, FakeWindow> windows;

    Platform::WindowHandle foregroundWindow() override;
    void enumWindows(const std::function<bool(Platform::WindowHandle)>& receiver) override;
    bool isVisible(Platform::WindowHandle window) override;
    bool isWindow(Platform::WindowHandle window) override;
    std::uint32_t windowThread(Platform::WindowHandle window) override;
    std::wstring windowText(Platform::WindowHandle window, int characters) override;
    void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override;
    void setWindowPosition(Platform::WindowHandle window, Platform::WindowHandle insertAfter,
                           std::uint32_t flags) override;
    void setForegroundWindow(Platform::WindowHandle window) override;

private:
    FakeWindow* find(Platform::WindowHandle window);

    CallLog& log_;
};

} // namespace Fakes
