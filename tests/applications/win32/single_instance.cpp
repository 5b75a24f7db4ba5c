#include "applications/application.h"
#include "applications/options.h"
#include "applications/release_log.h"
#include "applications/win32/dispatch.h"

#include <windows.h>

namespace Applications
{

namespace
{

constexpr wchar_t ClassName[] = L"TestApplicationInstance";
constexpr UINT_PTR CloseTimer = 1;

/// The one instance: a hidden window that documents are handed to, and on the same thread a window for each of them.
class Instance
{
public:
    explicit Instance(const Options& options) : options_(options)
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = ClassName;
        RegisterClassW(&windowClass);
        window_ = create(L"", WS_OVERLAPPED);
        note(options_.log, "serves");
    }
    ~Instance() { DestroyWindow(window_); }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Until the window of a document has closed, if that is the end.
    void run()
    {
        for (dispatchAll(); !closed_ || options_.stay == 0; dispatchAll())
            WaitMessage();
    }

private:
    HWND create(const wchar_t* title, DWORD style)
    {
        return CreateWindowExW(0, ClassName, title, style, 200, 200, 400, 200, nullptr, nullptr, nullptr, this);
    }

    void open(const std::wstring& document)
    {
        const HWND window = create(document.c_str(), WS_OVERLAPPEDWINDOW);
        ShowWindow(window, options_.front ? SW_SHOW : SW_SHOWNOACTIVATE);
        if (options_.front)
            SetForegroundWindow(window);
        if (options_.open > 0)
            SetTimer(window, CloseTimer, options_.open, nullptr);
    }

    LRESULT answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_COPYDATA)
        {
            const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
            open({static_cast<const wchar_t*>(data->lpData), data->cbData / sizeof(wchar_t)});
            return TRUE;
        }
        if (message == WM_TIMER && wParam == CloseTimer)
            DestroyWindow(window);
        if (message == WM_DESTROY && window != window_)
        {
            closed_ = true;
            note(options_.log, "closed");
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE)
            SetWindowLongW(window, GWL_USERDATA,
                           reinterpret_cast<LONG>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
        auto* instance = reinterpret_cast<Instance*>(GetWindowLongW(window, GWL_USERDATA));
        return instance ? instance->answer(window, message, wParam, lParam)
                        : DefWindowProcW(window, message, wParam, lParam);
    }

    const Options& options_;
    HWND window_ = nullptr;
    bool closed_ = false;
};

} // namespace

int serve(const Options& options)
{
    Instance instance(options);
    instance.run();
    wait(options.stay);
    return 0;
}

bool handOver(const std::wstring& document)
{
    const HWND instance = FindWindowW(ClassName, L"");
    if (!instance)
        return false;
    DWORD process = 0;
    GetWindowThreadProcessId(instance, &process);
    AllowSetForegroundWindow(process);
    COPYDATASTRUCT data{};
    data.cbData = static_cast<DWORD>(document.size() * sizeof(wchar_t));
    data.lpData = const_cast<wchar_t*>(document.data());
    return SendMessageW(instance, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)) != 0;
}

} // namespace Applications
