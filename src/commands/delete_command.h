#pragma once

#include "commands/command.h"
#include "interfaces/vaultcore/deleter.h"
#include "telemetry/i_event_tracker.h"
#include "windows/progress/progress_window.h"

#include <cstdint>
#include <memory>

namespace JobRunner
{

class EventsHandler;

/// Deletes or wipes the files of the job's list, after one question to the user.
class DeleteCommand : public Command
{
public:
    DeleteCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                  Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~DeleteCommand() override;

    void Run() override;

protected:
    /// Without a document: a wipe, of a list that the derived command sets before it runs.
    DeleteCommand(IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);

    /// True when the user wants it. Job thread.
    virtual bool ConfirmDeletion();

private:
    bool isWipe() const;
    void runEngine();
    void trackResults();

protected:
    ZelPlatform::IDeleterThreadDocument* deletion_ = nullptr; ///< the document's other side
    ProgressWindow progress_;
    std::unique_ptr<EventsHandler> handler_;
    VaultCore::IFileList* files_ = nullptr; ///< not owned
    std::uint32_t method_ = VaultCore::DeletionMethodWipe;
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
