#pragma once

#include "commands/encrypt_command.h"

namespace VaultCore
{
class IKey;
class ISfxOptions;
} // namespace VaultCore

namespace JobRunner
{

class EncryptionPasswordWindow;

/// Encrypts the files of the job's list into a self-extracting file. Opens the password window itself, on the job
/// thread; what the base asks and reports does not take place.
class EncryptSfxCommand : public EncryptCommand
{
public:
    EncryptSfxCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                      Halden::ZEL::Telemetry::EventTrackerPtr tracker);

    void Run() override;

private:
    /// False when the engine is not to run.
    bool PrepareSfxEncryption(ZelPlatform::IEncryptorSfxThreadDocument& document, VaultCore::ISfxOptions& options);
    bool askUser(EncryptionPasswordWindow& window, ZelPlatform::IEncryptorSfxThreadDocument& document);
    bool setKey(VaultCore::IFactory& factory, VaultCore::ISfxOptions& options, EncryptionPasswordWindow& window);
    void trackParameters(EncryptionPasswordWindow& window, const std::wstring& comment);
    void saveComment(const std::wstring& comment);

    ZelPlatform::IEncryptorSfxThreadDocument* sfx_; ///< the document's other side
};

} // namespace JobRunner
