#include "bridges/progress_events_handler.h"

#include "platform/platform.h"
#include "platform/threads.h"
#include "windows/progress/progress_window.h"

namespace JobRunner
{

namespace
{

constexpr int GoOn = 1;
constexpr int Stop = 0;
constexpr std::uint32_t PauseStep = 200; // milliseconds

} // namespace

ProgressEventsHandler::ProgressEventsHandler(ProgressWindow* window)
    : destinyAdapter_(this), started_(Platform::platform().threads.createEvent()), window_(window)
{
}

ProgressEventsHandler::~ProgressEventsHandler() = default;

void ProgressEventsHandler::AttachProgress(VaultCore::IOperationEvents* events, int operation)
{
    operation_ = operation;
    events->SetFileListBuilderEvents(this);
    events->SetOverallProgressEvents(this);
    events->SetFileProgressEvents(this);
    events->SetDestinyProgressEvents(&destinyAdapter_);
}

void ProgressEventsHandler::OnOperationStarted()
{
    window_->openWindow(operation_);
    started_->set();
}

void ProgressEventsHandler::OnFileStarted(const wchar_t* name)
{
    window_->setCurrentFile(name);
}

void ProgressEventsHandler::OnFileFinished(const void*, const wchar_t*, std::uint32_t error)
{
    window_->finishFile();
    ++(error == 0 ? processedFiles_ : failedFiles_);
}

void ProgressEventsHandler::OnOperationFinished()
{
    window_->closeWindow();
    started_->reset();
}

void ProgressEventsHandler::OnFileListBuilt(std::uint32_t, std::uint64_t totalSize)
{
    // The list may be ready on one thread of the engine before another has opened the window.
    started_->wait();
    window_->setTotalSize(totalSize);
}

int ProgressEventsHandler::OnFileListEntry(std::uint32_t, std::uint32_t, std::uint32_t)
{
    return GoOn;
}

int ProgressEventsHandler::OnFileProgress(std::uint64_t done, std::uint64_t total)
{
    window_->reportFileProgress(done, total);
    if (done == total)
        processedBytes_ += total; // Intended: a file that is reported complete twice counts twice.
    waitWhilePaused();
    if (!window_->isCancelled())
        return GoOn;
    cancelled_ = true;
    return Stop;
}

int ProgressEventsHandler::OnDestinyProgress(std::uint64_t done, std::uint64_t)
{
    window_->reportWipeProgress(done);
    waitWhilePaused();
    // Intended: a stop during the treatment of a source file does not mark the job as cancelled.
    return window_->isCancelled() ? Stop : GoOn;
}

// Without a lock across the sleep: the click that ends the pause needs the window's.
void ProgressEventsHandler::waitWhilePaused()
{
    while (window_->isPaused())
        Platform::platform().threads.sleep(PauseStep);
}

} // namespace JobRunner
