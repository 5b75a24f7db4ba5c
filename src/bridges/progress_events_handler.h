#pragma once

#include "bridges/file_destiny_handler.h"

#include <memory>

namespace Platform
{
class Event;
}

namespace JobRunner
{

class ProgressWindow;

/// Receives the engine's progress of one job: opens, feeds and closes the progress window, counts the results, and
/// turns the window's pause and cancel into answers to the engine. The callbacks come on the engine's threads; the
/// results are read after the engine has finished, so that they need no lock.
class ProgressEventsHandler : public VaultCore::IOverallProgressEvents,
                              public VaultCore::IFileListBuilderEvents,
                              public VaultCore::IFileProgressEvents,
                              public IFileDestinyEvents
{
public:
    /// `window` is not owned.
    explicit ProgressEventsHandler(ProgressWindow* window);
    ProgressEventsHandler(const ProgressEventsHandler&) = delete;
    ProgressEventsHandler& operator=(const ProgressEventsHandler&) = delete;

    // These stand before the other overrides, so that they come right behind the first base in the table.
    virtual ~ProgressEventsHandler();
    /// Gives the parts of this bridge to the engine's collecting object, before the engine starts.
    virtual void AttachProgress(VaultCore::IOperationEvents* events, int operation);

    void OnOperationStarted() override;
    void OnFileStarted(const wchar_t* name) override;
    void OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error) override;
    void OnOperationFinished() override;

    /// Waits without limit until the operation has started.
    void OnFileListBuilt(std::uint32_t word, std::uint64_t totalSize) override;
    int OnFileListEntry(std::uint32_t first, std::uint32_t second, std::uint32_t third) override;

    /// Stays here for as long as the user pauses.
    int OnFileProgress(std::uint64_t done, std::uint64_t total) override;
    int OnDestinyProgress(std::uint64_t done, std::uint64_t total) override;

    /// Files that ended without an error, and with one.
    std::int64_t processedFiles() const { return processedFiles_; }
    std::int64_t failedFiles() const { return failedFiles_; }
    /// Sizes in bytes of the files that reached their end.
    std::uint64_t processedBytes() const { return processedBytes_; }
    /// True when the engine was told to stop.
    bool isCancelled() const { return cancelled_; }

private:
    void waitWhilePaused();

    FileDestinyHandler destinyAdapter_;
    int operation_ = 0;
    std::unique_ptr<Platform::Event> started_; ///< signalled while the window exists
    ProgressWindow* window_;
    std::int64_t processedFiles_ = 0;
    std::int64_t failedFiles_ = 0;
    std::uint64_t processedBytes_ = 0;
    bool cancelled_ = false;
};

} // namespace JobRunner
