#include "fakes/fake_desktop.h"

namespace Fakes
{

namespace
{

std::wstring number(Platform::WindowHandle window)
{
    return std::to_wstring(reinterpret_cast<std::uintptr_t>(window));
}

} // namespace

FakeWindow* FakeDesktop::find(Platform::WindowHandle handle)
{
    const auto found = windows.find(handle);
    return found == windows.end() ? nullptr : &found->second;
}

Platform::WindowHandle FakeDesktop::foregroundWindow()
{
    log_.add(L"foregroundWindow");
    return foreground;
}

std::uint32_t FakeDesktop::windowThread(Platform::WindowHandle window)
{
    log_.add(L"windowThread " + number(window));
    const FakeWindow* found = find(window);
    return found ? found->thread : 0;
}

void FakeDesktop::attachThreadInput(std::uint32_t from, std::uint32_t to, bool attach)
{
    log_.add(L"attachThreadInput " + std::to_wstring(from) + L' ' + std::to_wstring(to) +
             (attach ? L" attach" : L" detach"));
}

void FakeDesktop::setWindowPosition(Platform::WindowHandle window, Platform::WindowHandle insertAfter,
                                    std::uint32_t flags)
{
    log_.add(L"setWindowPosition " + number(window) + L' ' + number(insertAfter) + L' ' + std::to_wstring(flags));
}

void FakeDesktop::setForegroundWindow(Platform::WindowHandle window)
{
    log_.add(L"setForegroundWindow " + number(window));
}

void FakeDesktop::enumWindows(const std::function<bool(Platform::WindowHandle)>& receiver)
{
    log_.add(L"enumWindows");
    for (const auto& [handle, window] : windows)
    {
        if (!receiver(handle))
            return;
    }
}

bool FakeDesktop::isVisible(Platform::WindowHandle window)
{
    log_.add(L"isVisible " + number(window));
    const FakeWindow* found = find(window);
    return found && found->visible;
}

bool FakeDesktop::isWindow(Platform::WindowHandle window)
{
    log_.add(L"isWindow " + number(window));
    return find(window) != nullptr;
}

std::wstring FakeDesktop::windowText(Platform::WindowHandle window, int characters)
{
    log_.add(L"windowText " + number(window) + L' ' + std::to_wstring(characters));
    const std::size_t room = static_cast<std::size_t>(characters) - 1;
    return find(window) ? std::wstring(L"a window").substr(0, room) : std::wstring();
}

} // namespace Fakes
