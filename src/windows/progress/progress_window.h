#pragma once

#include "systemutilities/stopwatch.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace JobRunner
{

class IProgressWindowView;

/// Controller of the progress display: the job's byte counters, and the user's Pause and Cancel. All operations
/// may be called on any thread. Whoever holds the lock never waits for the display's thread, so a click cannot
/// block and painting never slows the engine. Without an open view an operation changes its counters alone.
class ProgressWindow
{
public:
    ProgressWindow();
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    /// Makes a view for the `ProgressOperation` and returns when it exists, still hidden.
    void openWindow(int operation);
    /// Ends the view and waits for its thread.
    void closeWindow();
    /// Hides the view and stops the stopwatch, for the time of a prompt.
    void hideWindow();
    void showWindow();
    /// The display follows with the next report.
    void setCurrentFile(const wchar_t* name);
    void setTotalSize(std::uint64_t bytes);
    /// Bytes of the current file. Shows a hidden view.
    void reportFileProgress(std::uint64_t done, std::uint64_t size);
    /// Bytes of the second phase of the current file; nothing unless half-file mode is on.
    void reportWipeProgress(std::uint64_t done);
    void finishFile();
    void requestCancel();
    void togglePause();
    bool isCancelled();
    bool isPaused();
    /// On when each file passes through two phases, of which each fills one half of its bar.
    void setHalfFileMode(bool on);

private:
    // With the lock held.
    void showFile(bool wiping);
    void refresh();
    void refreshTime(std::uint64_t done, std::uint64_t bytesLeft);

    std::unique_ptr<IProgressWindowView> view_; ///< null while no window is open
    int operation_ = 0;
    bool cancelled_ = false;
    bool paused_ = false;
    std::wstring currentFile_;
    std::uint64_t fileSize_ = 0;
    std::uint64_t fileDone_ = 0;
    std::uint64_t totalSize_ = 0;
    std::uint64_t doneBefore_ = 0;
    std::mutex lock_;
    Halden::SystemUtilities::Stopwatch stopwatch_;
    bool halfFileMode_ = false;
};

} // namespace JobRunner
