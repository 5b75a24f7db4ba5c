#pragma once

#include "telemetry/i_event_tracker.h"

#include <cstdint>
#include <string>

namespace JobRunner
{

class IDpvKeyValidation;

// What a dialog is asked and what it answers. A request lives on the stack of the asking thread for one call.

struct EncryptionPasswordRequest
{
    std::wstring password;
    std::wstring keyFile;
    std::uint32_t algorithm = 0;
    std::uint32_t destiny = 0;
    std::wstring riddle;
};

struct DecryptionPasswordRequest
{
    std::wstring fileName;
    std::wstring password;
    std::wstring keyFile;
    std::uint32_t mode = 0;
    IDpvKeyValidation* validator = nullptr;
    std::wstring passwordOut;
    std::wstring keyFileOut;
};

struct FileErrorRequest
{
    std::wstring title;
    std::wstring header;
    std::wstring source;
    std::wstring target;
    std::wstring message;
};

/// The dialogs that the bridge opens. First thread only; each blocks until the user has answered.
class IModalDialogs
{
public:
    virtual ~IModalDialogs() = default;
    /// True when the user confirmed; only then the request changes, and of password and key file only the one that
    /// the user chose.
    virtual bool showEncryptionPassword(EncryptionPasswordRequest& request) = 0;
    /// 0 confirmed, 1 ignore, 2 cancel. The out fields change for 0 only.
    virtual int showDecryptionPassword(DecryptionPasswordRequest& request) = 0;
    /// 0 try again, 1 skip, 2 abort. Reports the error and the answer to the tracker.
    virtual int showFileError(const FileErrorRequest& request) = 0;
};

/// The dialogs of this program.
class ModalDialogs final : public IModalDialogs
{
public:
    explicit ModalDialogs(Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    bool showEncryptionPassword(EncryptionPasswordRequest& request) override;
    int showDecryptionPassword(DecryptionPasswordRequest& request) override;
    int showFileError(const FileErrorRequest& request) override;

private:
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
