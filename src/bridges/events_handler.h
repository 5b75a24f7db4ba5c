#pragma once

#include <memory>

namespace VaultCore
{
class IOperationEvents;
}

namespace JobRunner
{

class FileConflictEventsHandler;
class IGuiEvents;
class ProgressEventsHandler;
class ProgressWindow;

/// Owns what the engine calls back during one job, and gives it to the engine once. Written on the job thread before
/// the engine starts; lives until no callback can come any more.
class EventsHandler
{
public:
    /// Neither is owned.
    EventsHandler(ProgressWindow* window, IGuiEvents* gui);
    EventsHandler(const EventsHandler&) = delete;
    EventsHandler& operator=(const EventsHandler&) = delete;
    virtual ~EventsHandler();

    /// `events` is the engine's collecting object, `operation` a `ProgressOperation`.
    virtual void AttachEvents(VaultCore::IOperationEvents* events, int operation);

    /// Results of the job, to be read after the engine has finished.
    const ProgressEventsHandler& progress() const { return *progress_; }

protected:
    /// Puts a `DcdProgressHandler` in the place of the progress bridge, which goes first. For the constructor of a
    /// derived handler.
    void exchangeProgress(ProgressWindow* window);

private:
    std::unique_ptr<ProgressEventsHandler> progress_;
    std::unique_ptr<FileConflictEventsHandler> conflict_;
};

} // namespace JobRunner
