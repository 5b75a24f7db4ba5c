#pragma once

#include "platform/win32/scoped_handle.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_display.h"
#include "windows/progress/win32/drain_pacer.h"

#include <atomic>
#include <memory>

namespace JobRunner
{

class ProgressDialog;

/// The progress dialog, on a thread of its own. Setters leave their values in the mailbox and come back at once;
/// the dialog's thread shows the newest ones a little later. What the user does to the window (hidden, shown,
/// paused) is not paced.
class ProgressWindowView : public IProgressWindowView
{
public:
    explicit ProgressWindowView(int operation);
    ~ProgressWindowView() override;

    void create() override;
    void waitUntilCreated() override;
    void close() override;
    bool isHidden() override;
    void hide() override;
    void show() override;
    void setFileProgress(const wchar_t* fileName, double percent, bool wiping) override;
    void setTotalProgress(double percent, bool force) override;
    void setElapsedTime(int seconds) override;
    void setTimeLeft(int seconds) override;
    void setSpeed(std::uint64_t bytesPerSecond) override;
    void setElapsedBytes(std::uint64_t bytes) override;
    void setBytesLeft(std::uint64_t bytes) override;
    void setTotalBytes(std::uint64_t bytes) override;
    void onPaused() override;
    void onResumed() override;

private:
    static DWORD WINAPI threadProcedure(void* argument);
    static INT_PTR CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void wakeIf(bool needed);
    void wakeAtOnce();

    // Dialog's thread.
    void run();
    void onInitDialog(HWND window);
    bool onMessage(HWND window, UINT message, WPARAM wParam);
    void onCommand(int id);
    void onDestroy();
    void drain();

    ProgressDisplay display_;
    DrainPacer pacer_;
    Platform::ScopedHandle created_;
    Platform::ScopedHandle thread_;
    std::atomic<HWND> window_{nullptr};
    std::unique_ptr<ProgressDialog> dialog_; ///< dialog's thread only
};

} // namespace JobRunner
