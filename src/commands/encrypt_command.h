#pragma once

#include "commands/command.h"
#include "telemetry/i_event_tracker.h"
#include "windows/progress/progress_window.h"

#include <cstdint>
#include <memory>
#include <string>

namespace VaultCore
{
class IEncryptionOptions;
class IFactory;
} // namespace VaultCore

namespace JobRunner
{

class EventsHandler;

/// Encrypts the files of the job's list with what the user enters; the document gives the starting values.
class EncryptCommand : public Command
{
public:
    EncryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                   Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~EncryptCommand() override;

    void Run() override;

protected:
    /// Without a document: algorithm and destiny start at 0, and the derived command sets a list before it runs and
    /// has an extra text of its own.
    EncryptCommand(IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);

    /// Asks the user. Algorithm and destiny come with their starting values; a key file that is not empty wins over
    /// the password. False when there is nothing to do. Job thread.
    virtual bool GetEncryptionParameters(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                         std::uint32_t& destiny, std::wstring& riddle);
    /// A text that the encrypted files carry; may be empty.
    virtual std::wstring GetExtraText();

private:
    struct Parameters;

    Parameters startingValues();
    /// False when the engine is not to run.
    bool PrepareEncryption(VaultCore::IEncryptionOptions& options);
    bool setKey(VaultCore::IFactory& factory, VaultCore::IEncryptionOptions& options, const Parameters& parameters);
    void trackParameters(VaultCore::IFactory& factory, const Parameters& parameters);

protected:
    /// The document's other side; null without a document, and for one that is only self-extracting, where it is not
    /// used.
    ZelPlatform::IEncryptorThreadDocument* encryption_ = nullptr;
    std::unique_ptr<EventsHandler> handler_;
    ProgressWindow progress_;
    VaultCore::IFileList* files_ = nullptr; ///< not owned
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
