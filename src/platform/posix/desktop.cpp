#include "platform/posix/concerns.h"

namespace Platform
{

namespace
{

/// There are no windows.
class PosixDesktop : public Desktop
{
public:
    WindowHandle foregroundWindow() override { return nullptr; }
    void enumWindows(const std::function<bool(WindowHandle)>&) override {}
    bool isVisible(WindowHandle) override { return false; }
    bool isWindow(WindowHandle) override { return false; }
    std::uint32_t windowThread(WindowHandle) override { return 0; }
    std::wstring windowText(WindowHandle, int) override { return {}; }
    void attachThreadInput(std::uint32_t, std::uint32_t, bool) override {}
    void setWindowPosition(WindowHandle, WindowHandle, std::uint32_t) override {}
    void setForegroundWindow(WindowHandle) override {}
};

} // namespace

Desktop& posixDesktop()
{
    static PosixDesktop desktop;
    return desktop;
}

} // namespace Platform
