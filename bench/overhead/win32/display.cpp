#include "overhead/display.h"

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <windows.h>

namespace Benchmarks
{

namespace
{

constexpr UINT MessageHang = WM_APP + 100;
constexpr std::chrono::seconds HangTime{5};

std::atomic<bool> hanging{false};
std::atomic<bool> released{false};
WNDPROC dialogProcedure = nullptr;

void waitFor(const std::atomic<bool>& state, bool wanted)
{
    while (state != wanted)
        Sleep(10);
}

LRESULT CALLBACK hangingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != MessageHang)
        return CallWindowProcW(dialogProcedure, window, message, wParam, lParam);
    hanging = true;
    waitFor(released, true);
    hanging = false;
    return 0;
}

HWND ownDialog()
{
    HWND dialog = nullptr;
    while ((dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr)) != nullptr)
    {
        DWORD process = 0;
        GetWindowThreadProcessId(dialog, &process);
        if (process == GetCurrentProcessId())
            return dialog;
    }
    throw std::runtime_error("there is no progress dialog");
}

WNDPROC setProcedure(HWND window, WNDPROC procedure)
{
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

} // namespace

int runWithDisplay(int (*measure)(std::FILE* results))
{
    return measure(stdout);
}

struct HangingDisplay::State
{
    HWND dialog = ownDialog();
    std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + HangTime;
};

HangingDisplay::HangingDisplay(const std::function<void()>& change) : state_(std::make_unique<State>())
{
    change();
    dialogProcedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(state_->dialog, GWLP_WNDPROC));
    setProcedure(state_->dialog, hangingProcedure);
    PostMessageW(state_->dialog, MessageHang, 0, 0);
    waitFor(hanging, true);
}

HangingDisplay::~HangingDisplay()
{
    std::this_thread::sleep_until(state_->end);
    released = true;
    waitFor(hanging, false);
    setProcedure(state_->dialog, dialogProcedure);
}

bool HangingDisplay::hangs() const
{
    return hanging;
}

} // namespace Benchmarks
