#include "fakes/fake_messages.h"

namespace Fakes
{

bool FakeMessages::registerClass(const std::wstring& className)
{
    log_.add(L"registerClass " + className);
    return !failRegisterClass && ThreadMessages::registerClass(className);
}

void FakeMessages::unregisterClass(const std::wstring& className)
{
    log_.add(L"unregisterClass " + className);
    ThreadMessages::unregisterClass(className);
}

Platform::WindowHandle FakeMessages::createWindow(const std::wstring& className, const std::wstring& title,
                                                  Platform::WindowProcedure& procedure)
{
    log_.add(L"createWindow " + className + L' ' + title);
    return failCreateWindow ? nullptr : ThreadMessages::createWindow(className, title, procedure);
}

void FakeMessages::destroyWindow(Platform::WindowHandle window)
{
    log_.add(L"destroyWindow");
    ThreadMessages::destroyWindow(window);
}

std::intptr_t FakeMessages::send(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam)
{
    log_.add(L"send " + std::to_wstring(message));
    return ThreadMessages::send(window, message, wParam, lParam);
}

void FakeMessages::postQuit()
{
    log_.add(L"postQuit");
    ThreadMessages::postQuit();
}

bool FakeMessages::dispatchOne()
{
    if (waiting == 0)
        return ThreadMessages::dispatchOne();
    log_.add(L"dispatch");
    --waiting;
    return true;
}

void FakeMessages::runLoop()
{
    log_.add(L"runLoop");
    ThreadMessages::runLoop();
}

} // namespace Fakes
