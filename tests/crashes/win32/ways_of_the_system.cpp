#include "crashes/ways_to_crash.h"

#include <windows.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <thread>

namespace CrashingApplication
{

namespace
{

DWORD WINAPI writeNull(void* nowhere)
{
    *static_cast<volatile int*>(nowhere) = 1;
    return 0;
}

void waitFor(HANDLE thread)
{
    WaitForSingleObject(thread, INFINITE);
}

constexpr UINT Fault = WM_APP;
constexpr UINT Exception = WM_APP + 1;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message == Fault)
        writeNull(nullptr);
    if (message == Exception)
        throw std::runtime_error("nobody catches it");
    return DefWindowProcW(window, message, first, second);
}

HWND makeWindow()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.lpszClassName = L"crashing";
    RegisterClassW(&windowClass);
    return CreateWindowW(L"crashing", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

void crashInWindow(UINT message)
{
    SendMessageW(makeWindow(), message, 0, 0);
}

/// The system calls the procedure while the thread asks it for a message.
void crashInSentMessage(UINT message)
{
    const HWND window = makeWindow();
    std::thread(
        [=]
        {
            SendMessageW(window, message, 0, 0);
            PostMessageW(window, WM_QUIT, 0, 0);
        })
        .detach();
    MSG taken{};
    while (GetMessageW(&taken, nullptr, 0, 0) > 0)
        DispatchMessageW(&taken);
}

} // namespace

void crashInTheWayOfTheSystem(const std::string& way)
{
    const std::map<std::string, std::function<void()>> ways = {
        {"null-write-on-system-thread", [] { waitFor(CreateThread(nullptr, 0, writeNull, nullptr, 0, nullptr)); }},
        {"null-write-in-window", [] { crashInWindow(Fault); }},
        {"exception-in-window", [] { crashInWindow(Exception); }},
        {"null-write-in-sent-message", [] { crashInSentMessage(Fault); }},
        {"exception-in-sent-message", [] { crashInSentMessage(Exception); }},
        {"raised", [] { RaiseException(0xE0001234, 0, 0, nullptr); }},
    };
    if (const auto found = ways.find(way); found != ways.end())
        found->second();
}

void runIllegalInstruction()
{
    __builtin_trap();
}

void runBreakpoint()
{
    DebugBreak();
}

} // namespace CrashingApplication
