#include "windows/progress/win32/progress_window_view.h"

#include "resources/resource.h"
#include "windows/framework/win32/dialog.h"
#include "windows/progress/win32/progress_dialog.h"

#include <commctrl.h>

namespace JobRunner
{

namespace
{

constexpr UINT MessageClose = 1124;
static_assert(MessageClose == WM_USER + 100);
constexpr UINT MessageDrain = WM_APP;

void registerBars()
{
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&classes);
}

void runLoop(HWND dialog)
{
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        if (IsDialogMessageW(dialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

ProgressWindowView::ProgressWindowView(int operation)
    : display_(operation), pacer_(MessageDrain), created_(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
}

ProgressWindowView::~ProgressWindowView()
{
    close();
}

void ProgressWindowView::create()
{
    ResetEvent(created_.get());
    thread_ = Platform::ScopedHandle(CreateThread(nullptr, 0, threadProcedure, this, 0, nullptr));
    if (thread_)
        waitUntilCreated();
}

void ProgressWindowView::waitUntilCreated()
{
    // The thread's end counts too: a dialog that cannot be made does not hold up the job.
    const HANDLE handles[] = {created_.get(), thread_.get()};
    WaitForMultipleObjects(thread_ ? 2 : 1, handles, FALSE, INFINITE);
}

void ProgressWindowView::close()
{
    if (!thread_)
        return;
    if (const HWND window = window_)
        SendMessageW(window, MessageClose, 0, 0);
    WaitForSingleObject(thread_.get(), INFINITE);
    thread_.reset();
}

bool ProgressWindowView::isHidden()
{
    return display_.isHidden();
}

void ProgressWindowView::hide()
{
    static_cast<void>(display_.setVisible(false));
    wakeAtOnce();
}

void ProgressWindowView::show()
{
    static_cast<void>(display_.setVisible(true));
    wakeAtOnce();
}

void ProgressWindowView::setFileProgress(const wchar_t* fileName, double percent, bool wiping)
{
    wakeIf(display_.setFileProgress(fileName, percent, wiping));
}

void ProgressWindowView::setTotalProgress(double percent, bool force)
{
    wakeIf(display_.setTotalProgress(percent, force));
}

void ProgressWindowView::setElapsedTime(int seconds)
{
    wakeIf(display_.setElapsedTime(seconds));
}

void ProgressWindowView::setTimeLeft(int seconds)
{
    wakeIf(display_.setTimeLeft(seconds));
}

void ProgressWindowView::setSpeed(std::uint64_t bytesPerSecond)
{
    wakeIf(display_.setSpeed(bytesPerSecond));
}

void ProgressWindowView::setElapsedBytes(std::uint64_t bytes)
{
    wakeIf(display_.setElapsedBytes(bytes));
}

void ProgressWindowView::setBytesLeft(std::uint64_t bytes)
{
    wakeIf(display_.setBytesLeft(bytes));
}

void ProgressWindowView::setTotalBytes(std::uint64_t bytes)
{
    wakeIf(display_.setTotalBytes(bytes));
}

void ProgressWindowView::onPaused()
{
    static_cast<void>(display_.setPaused(true));
    wakeAtOnce();
}

void ProgressWindowView::onResumed()
{
    static_cast<void>(display_.setPaused(false));
    wakeAtOnce();
}

void ProgressWindowView::wakeIf(bool needed)
{
    if (needed)
        pacer_.wake();
}

void ProgressWindowView::wakeAtOnce()
{
    // Without a window the pacer keeps the wake until there is one.
    const HWND window = window_;
    if (!window || !PostMessageW(window, MessageDrain, 0, 0))
        pacer_.wake();
}

DWORD WINAPI ProgressWindowView::threadProcedure(void* argument)
{
    static_cast<ProgressWindowView*>(argument)->run();
    return 0;
}

void ProgressWindowView::run()
{
    registerBars();
    const HWND window = CreateDialogParamW(resourceModule(), MAKEINTRESOURCEW(IDD_PROGRESS), GetDesktopWindow(),
                                           dialogProcedure, reinterpret_cast<LPARAM>(this));
    if (window)
    {
        pacer_.start(window);
        runLoop(window);
        pacer_.stop();
    }
    ResetEvent(created_.get());
}

INT_PTR CALLBACK ProgressWindowView::dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const view = viewOf<ProgressWindowView>(window, message, lParam);
    return view && view->onMessage(window, message, wParam);
}

void ProgressWindowView::onInitDialog(HWND window)
{
    dialog_ = std::make_unique<ProgressDialog>(window);
    window_ = window;
    SetEvent(created_.get());
}

bool ProgressWindowView::onMessage(HWND window, UINT message, WPARAM wParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        onInitDialog(window);
        return true;
    case MessageDrain:
        drain();
        return true;
    case WM_COMMAND:
        onCommand(LOWORD(wParam));
        return true;
    case MessageClose:
        DestroyWindow(window);
        return true;
    case WM_DESTROY:
        onDestroy();
        return true;
    default:
        return false;
    }
}

void ProgressWindowView::onCommand(int id)
{
    if (id == IDC_CANCEL_JOB)
        onCancel();
    else if (id == IDC_PAUSE_JOB)
        onPause();
    else
        return;
    // At once, so that no second click meets a button that is about to be disabled.
    drain();
}

void ProgressWindowView::onDestroy()
{
    window_ = nullptr;
    dialog_.reset();
    PostQuitMessage(0);
}

void ProgressWindowView::drain()
{
    if (dialog_)
        dialog_->apply(display_.take());
}

} // namespace JobRunner
