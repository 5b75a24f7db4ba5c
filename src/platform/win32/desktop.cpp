#include "platform/win32/concerns.h"

#include <windows.h>

#include <algorithm>

namespace Platform
{

namespace
{

HWND windowOf(WindowHandle handle)
{
    return static_cast<HWND>(handle);
}

using Receiver = std::function<bool(WindowHandle)>;

BOOL CALLBACK receiveWindow(HWND window, LPARAM receiver)
{
    return (*reinterpret_cast<const Receiver*>(receiver))(window);
}

class Win32Desktop : public Desktop
{
public:
    WindowHandle foregroundWindow() override { return GetForegroundWindow(); }

    void enumWindows(const Receiver& receiver) override
    {
        EnumWindows(receiveWindow, reinterpret_cast<LPARAM>(&receiver));
    }

    bool isVisible(WindowHandle window) override { return IsWindowVisible(windowOf(window)); }
    bool isWindow(WindowHandle window) override { return IsWindow(windowOf(window)); }

    std::uint32_t windowThread(WindowHandle window) override
    {
        return GetWindowThreadProcessId(windowOf(window), nullptr);
    }

    std::wstring windowText(WindowHandle window, int characters) override
    {
        std::wstring buffer(static_cast<std::size_t>(std::max(characters, 1)), L'\0');
        const int length = GetWindowTextW(windowOf(window), buffer.data(), static_cast<int>(buffer.size()));
        return buffer.substr(0, static_cast<std::size_t>(length));
    }

    void attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override
    {
        AttachThreadInput(from, to, attach);
    }

    void setWindowPosition(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) override
    {
        SetWindowPos(windowOf(window), windowOf(insertAfter), 0, 0, 0, 0, flags);
    }

    void setForegroundWindow(WindowHandle window) override { SetForegroundWindow(windowOf(window)); }
};

} // namespace

Desktop& win32Desktop()
{
    static Win32Desktop desktop;
    return desktop;
}

} // namespace Platform
