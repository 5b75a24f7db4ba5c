#include "platform/win32/concerns.h"

#include <windows.h>

namespace Platform
{

namespace
{

static_assert(sizeof(WNDCLASSEXW) == 48);
static_assert(WindowDestroyed == WM_DESTROY);

constexpr std::intptr_t BackgroundBrush = 6;
constexpr int WindowWidth = 100;
constexpr int WindowHeight = 100;

HWND windowOf(WindowHandle handle)
{
    return static_cast<HWND>(handle);
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
    {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG>(creation->lpCreateParams));
        // Intended: the system's own procedure does not see this message, so the window keeps no title.
        return 1;
    }
    auto* procedure = reinterpret_cast<WindowProcedure*>(GetWindowLongW(window, GWL_USERDATA));
    if (!procedure)
        return DefWindowProcW(window, message, wParam, lParam);
    return procedure->onMessage(window, message, wParam, lParam);
}

class Win32Messages : public Messages
{
public:
    bool registerClass(const std::wstring& className) override
    {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = windowProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(BackgroundBrush);
        windowClass.lpszClassName = className.c_str();
        return RegisterClassExW(&windowClass) != 0;
    }

    void unregisterClass(const std::wstring& className) override
    {
        UnregisterClassW(className.c_str(), GetModuleHandleW(nullptr));
    }

    WindowHandle createWindow(const std::wstring& className, const std::wstring& title,
                              WindowProcedure& procedure) override
    {
        return CreateWindowExW(0, className.c_str(), title.c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                               WindowWidth, WindowHeight, nullptr, nullptr, GetModuleHandleW(nullptr), &procedure);
    }

    void destroyWindow(WindowHandle window) override { DestroyWindow(windowOf(window)); }

    std::intptr_t defaultProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) override
    {
        return DefWindowProcW(windowOf(window), message, wParam, static_cast<LPARAM>(lParam));
    }

    std::intptr_t send(WindowHandle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) override
    {
        return SendMessageW(windowOf(window), message, wParam, static_cast<LPARAM>(lParam));
    }

    void postQuit() override { PostQuitMessage(0); }

    bool dispatchOne() override
    {
        MSG message{};
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            return false;
        TranslateMessage(&message);
        DispatchMessageW(&message);
        return true;
    }

    void runLoop() override
    {
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0))
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
};

} // namespace

Messages& win32Messages()
{
    static Win32Messages messages;
    return messages;
}

} // namespace Platform
