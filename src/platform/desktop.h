#pragma once

#include "platform/messages.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Platform
{

/// The windows on the user's desktop, of this process and of others. On a system without windows there are none. Any
/// thread, unless told otherwise.
class Desktop
{
public:
    virtual ~Desktop() = default;
    /// `GetForegroundWindow`; may be null.
    virtual WindowHandle foregroundWindow() = 0;
    /// `EnumWindows`: all top-level windows, until the receiver answers false.
    virtual void enumWindows(const std::function<bool(WindowHandle)>& receiver) = 0;
    /// `IsWindowVisible`.
    virtual bool isVisible(WindowHandle window) = 0;
    /// `IsWindow`.
    virtual bool isWindow(WindowHandle window) = 0;
    /// `GetWindowThreadProcessId`: the thread that owns the window, 0 when it is no window.
    virtual std::uint32_t windowThread(WindowHandle window) = 0;
    /// `GetWindowTextW`: at most `characters` - 1 of it.
    virtual std::wstring windowText(WindowHandle window, int characters) = 0;

    // What bringing a window to the front needs besides.
    virtual void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) = 0;
    virtual void setWindowPosition(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) = 0;
    virtual void setForegroundWindow(WindowHandle window) = 0;
};

} // namespace Platform
