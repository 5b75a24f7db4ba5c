#pragma once

#include "commands/command.h"
#include "telemetry/i_event_tracker.h"
#include "windows/progress/progress_window.h"

#include <cstdint>
#include <memory>
#include <string>

namespace JobRunner
{

class DecryptorEventsHandler;

/// Decrypts the files of the job's list. Asks nothing itself: the engine asks for keys while it works.
class DecryptCommand : public Command
{
public:
    DecryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                   Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~DecryptCommand() override;

    void Run() override;

protected:
    /// Without a document: no path, mode 1, and a list that the derived command sets before it runs.
    DecryptCommand(IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);

    ZelPlatform::IDecryptorThreadDocument* decryption_ = nullptr; ///< the document's other side
    std::unique_ptr<DecryptorEventsHandler> handler_;
    ProgressWindow progress_;
    std::wstring path_;                     ///< for the engine, which knows what it means
    std::uint32_t mode_ = 1;                ///< 0 keeps the encrypted files, any other value deletes them
    VaultCore::IFileList* files_ = nullptr; ///< not owned
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
