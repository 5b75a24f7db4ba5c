#pragma once

#include "commands/decrypt_command.h"

namespace JobRunner
{

class DcDecryptorPasswordProvider;
class DcDecryptorEventsHandler;
class DcdProgressHandler;

/// The first step of the double-click job: decrypts one file, which stays, to where the engine puts it. Job thread.
class DcDecryptSubCommand final : public DecryptCommand
{
public:
    /// `file` is the encrypted one.
    DcDecryptSubCommand(const std::wstring& file, IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~DcDecryptSubCommand() override;

    void Run() override;

    // Results, to be read after `Run`.

    /// True as well when the engine reported no file.
    bool succeeded() const;
    /// What the engine said of the file at its end.
    std::wstring lastFileText() const;
    /// What the user entered last: a key file or a password, the other one is empty.
    bool usesKeyFile() const;
    std::wstring keyFile() const;
    std::wstring password() const;

private:
    const DcDecryptorEventsHandler& handler() const;
    const DcdProgressHandler& progress() const;
    const DcDecryptorPasswordProvider& provider() const;
};

} // namespace JobRunner
