#include "windows/progress/progress_window.h"

#include "systemutilities/progress_arithmetic.h"
#include "windows/framework/view_factory.h"
#include "windows/progress/i_progress_window_view.h"

#include <utility>

namespace JobRunner
{

using Halden::SystemUtilities::EstimateRemainingSeconds;
using Halden::SystemUtilities::percentOf;

namespace
{

/// Never with the lock held: the view's thread may be in a callback that wants it.
void endView(std::unique_ptr<IProgressWindowView> view)
{
    if (view)
        view->close();
}

} // namespace

ProgressWindow::ProgressWindow() = default;

ProgressWindow::~ProgressWindow()
{
    closeWindow();
}

void ProgressWindow::openWindow(int operation)
{
    std::unique_ptr<IProgressWindowView> view = viewFactory().createProgressWindowView(operation);
    // Before the view's thread runs, so that it never reads a pair that is being written.
    view->onCancel = {[](void* window) { static_cast<ProgressWindow*>(window)->requestCancel(); }, this};
    view->onPause = {[](void* window) { static_cast<ProgressWindow*>(window)->togglePause(); }, this};
    view->create();
    {
        const std::lock_guard guard(lock_);
        operation_ = operation;
        view_.swap(view);
        stopwatch_.restart();
        refresh();
    }
    endView(std::move(view));
}

void ProgressWindow::closeWindow()
{
    std::unique_ptr<IProgressWindowView> view;
    {
        const std::lock_guard guard(lock_);
        view_.swap(view);
    }
    endView(std::move(view));
}

void ProgressWindow::hideWindow()
{
    const std::lock_guard guard(lock_);
    if (!view_)
        return;
    view_->hide();
    stopwatch_.stop();
}

void ProgressWindow::showWindow()
{
    const std::lock_guard guard(lock_);
    if (!view_)
        return;
    view_->show();
    stopwatch_.resume();
}

void ProgressWindow::setCurrentFile(const wchar_t* name)
{
    const std::lock_guard guard(lock_);
    currentFile_ = name;
}

void ProgressWindow::setTotalSize(std::uint64_t bytes)
{
    const std::lock_guard guard(lock_);
    totalSize_ = bytes;
    refresh();
}

void ProgressWindow::reportFileProgress(std::uint64_t done, std::uint64_t size)
{
    const std::lock_guard guard(lock_);
    fileDone_ = halfFileMode_ ? done >> 1 : done;
    fileSize_ = size;
    showFile(false);
}

void ProgressWindow::reportWipeProgress(std::uint64_t done)
{
    const std::lock_guard guard(lock_);
    if (!halfFileMode_)
        return;
    fileDone_ = (fileSize_ >> 1) + (done >> 1);
    showFile(true);
}

void ProgressWindow::finishFile()
{
    const std::lock_guard guard(lock_);
    doneBefore_ += fileSize_;
    fileSize_ = 0;
    fileDone_ = 0;
    refresh();
}

void ProgressWindow::requestCancel()
{
    const std::lock_guard guard(lock_);
    cancelled_ = true;
}

void ProgressWindow::togglePause()
{
    const std::lock_guard guard(lock_);
    // Intended: the watch runs through the first pause and stands still after the resume, until the next pause.
    if (paused_)
        stopwatch_.stop();
    else
        stopwatch_.resume();
    paused_ = !paused_;
    if (!view_)
        return;
    if (paused_)
        view_->onPaused();
    else
        view_->onResumed();
}

bool ProgressWindow::isCancelled()
{
    const std::lock_guard guard(lock_);
    return cancelled_;
}

bool ProgressWindow::isPaused()
{
    const std::lock_guard guard(lock_);
    return paused_;
}

void ProgressWindow::setHalfFileMode(bool on)
{
    const std::lock_guard guard(lock_);
    halfFileMode_ = on;
}

void ProgressWindow::showFile(bool wiping)
{
    if (!view_)
        return;
    view_->setFileProgress(currentFile_.c_str(), percentOf(fileDone_, fileSize_), wiping);
    refresh();
    // The window is first seen at the first report of a file, and a report brings it back.
    if (view_->isHidden())
        view_->show();
}

void ProgressWindow::refresh()
{
    if (!view_)
        return;
    const std::uint64_t done = doneBefore_ + fileDone_;
    view_->setTotalProgress(totalSize_ == 0 ? UnknownPercent : percentOf(done, totalSize_), false);
    view_->setElapsedBytes(done);
    const std::uint64_t bytesLeft = totalSize_ - done;
    if (totalSize_ == 0)
    {
        view_->setBytesLeft(UnknownBytes);
        view_->setTotalBytes(UnknownBytes);
    }
    else
    {
        view_->setTotalBytes(totalSize_);
        view_->setBytesLeft(bytesLeft);
    }
    refreshTime(done, bytesLeft);
}

void ProgressWindow::refreshTime(std::uint64_t done, std::uint64_t bytesLeft)
{
    const std::uint32_t elapsed = stopwatch_.elapsed();
    view_->setElapsedTime(static_cast<int>(elapsed));
    view_->setSpeed(elapsed == 0 ? 0 : done / elapsed);
    if (totalSize_ == 0)
        view_->setTimeLeft(UnknownTime);
    else
        view_->setTimeLeft(static_cast<int>(EstimateRemainingSeconds(done, elapsed, bytesLeft)));
}

} // namespace JobRunner
