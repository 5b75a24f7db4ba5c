#pragma once

#include "commands/encrypt_command.h"

namespace JobRunner
{

/// The step of the double-click job that encrypts a changed document again and wipes it, with what opened it. Asks
/// nothing. Job thread.
class DcEncryptSubCommand final : public EncryptCommand
{
public:
    /// `file` is the decrypted document. A key file that is not empty wins over the password.
    DcEncryptSubCommand(std::wstring file, std::wstring encryptedPath, std::wstring password, std::wstring keyFile,
                        IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~DcEncryptSubCommand() override;

    void Run() override;

    /// To be read after `Run`. True as well when the engine reported no file.
    bool succeeded() const;

protected:
    /// Always the same but for the key: AES-256, the document is wiped, no riddle. True.
    bool GetEncryptionParameters(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                 std::uint32_t& destiny, std::wstring& riddle) override;
    /// Empty.
    std::wstring GetExtraText() override;

private:
    std::wstring keyFile_;
    std::wstring password_; ///< intended: an ordinary string, which is not wiped
    std::wstring file_;
    /// Intended: read by nothing. The engine chooses where the encrypted file goes.
    [[maybe_unused]] std::wstring encryptedPath_;
};

} // namespace JobRunner
