#pragma once

#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_display.h"
#include "windows/progress/terminal/progress_screen.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

/// The progress display in the terminal. Its own thread draws it some ten times a second and reads the keys for
/// pause and cancel. On an output that cannot redraw it prints a line a second while something changes, and the
/// last one at the end.
class ProgressWindowView : public IProgressWindowView
{
public:
    /// The terminal is not owned and outlives the view.
    ProgressWindowView(int operation, Platform::Terminal& terminal);
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
    using Clock = std::chrono::steady_clock;

    // The view's own thread.
    void run();
    void draw();
    void printSummary();
    void waitForFrame();
    void press(wchar_t key);
    bool closing();

    ProgressDisplay display_;
    Platform::Terminal& terminal_;
    std::thread thread_;
    std::mutex lock_;
    std::condition_variable changed_;
    bool created_ = false; ///< guarded by `lock_`, as the next one
    bool closing_ = false;

    // The view's own thread alone.
    ProgressScreen screen_;
    unsigned tick_ = 0;
    std::wstring printed_;
    Clock::time_point nextPrint_{};
};

} // namespace JobRunner
