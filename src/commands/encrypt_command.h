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
    /// Asks the user. Algorithm and destiny come with their starting values; a key file that is not empty wins over
    /// the password. False when there is nothing to do. Job thread.
    virtual bool GetEncryptionParameters(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                         std::uint32_t& destiny, std::wstring& riddle);
    /// A text that the encrypted files carry; may be empty.
    virtual std::wstring GetExtraText();

private:
    struct Parameters;

    /// False when the engine is not to run.
    bool PrepareEncryption(VaultCore::IEncryptionOptions& options);
    bool setKey(VaultCore::IFactory& factory, VaultCore::IEncryptionOptions& options, const Parameters& parameters);
    void trackParameters(VaultCore::IFactory& factory, const Parameters& parameters);

protected:
    /// The document's other side; null for a document that is only self-extracting, and then not used.
    ZelPlatform::IEncryptorThreadDocument* encryption_;
    std::unique_ptr<EventsHandler> handler_;
    ProgressWindow progress_;
    VaultCore::IFileList* files_; ///< owned by the document
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
