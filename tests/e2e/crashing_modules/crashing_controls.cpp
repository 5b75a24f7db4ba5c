#include "crashing_modules/crash_here.h"
#include "panekit/control_factory.h"

#include <windows.h>

#include <atomic>
#include <thread>

// The module of the controls; it crashes on the thread of the progress dialog, when that takes its next message.

namespace
{

constexpr int PauseButton = 1090;

/// Takes the place of the dialog's own procedure. It crashes once: a message box sends further messages.
LRESULT CALLBACK crashOnMessage(HWND window, UINT message, WPARAM first, LPARAM second)
{
    static std::atomic<bool> crashed{false};
    if (!crashed.exchange(true))
        CrashingModules::crashIfWanted("dialog");
    return DefWindowProcW(window, message, first, second);
}

BOOL CALLBACK takeProgressDialog(HWND window, LPARAM found)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() || !IsWindowVisible(window) || !GetDlgItem(window, PauseButton))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void crashProgressDialog()
{
    HWND dialog = nullptr;
    while (!dialog)
    {
        EnumWindows(takeProgressDialog, reinterpret_cast<LPARAM>(&dialog));
        Sleep(20);
    }
    SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(crashOnMessage));
    PostMessageW(dialog, WM_NULL, 0, 0);
}

} // namespace

#define EXPORTED extern "C" __declspec(dllexport)

EXPORTED int initialize(const wchar_t*)
{
    Panekit::start();
    if (CrashingModules::isWanted("dialog"))
        std::thread(crashProgressDialog).detach();
    return 1;
}

EXPORTED void uninitialize()
{
    Panekit::stop();
}

EXPORTED ICustomControl* createControl(const wchar_t* classId, void* parent, int x, int y, int width, int height)
{
    return Panekit::makeControl(classId, parent, x, y, width, height);
}
