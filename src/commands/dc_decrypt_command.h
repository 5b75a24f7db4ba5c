#pragma once

#include "commands/command.h"
#include "telemetry/i_event_tracker.h"

#include <string>

namespace JobRunner
{

/// What the decrypt step of a double-click job leaves to the steps behind it. Intended: ordinary strings, which hold
/// the password in clear for the whole job and are not wiped at its end: the user is never asked twice.
struct DecryptedDocument
{
    bool usesKeyFile = false;
    std::wstring keyFile;
    std::wstring password;
    /// Intended: the engine's text of the file has two roles. Only an empty one lets the job go on, and the steps
    /// behind take it for the path of the document.
    std::wstring file;
};

/// The job of a double click on an encrypted file: decrypts it, opens the document and waits, then encrypts the
/// document again if it was changed, or wipes it if not. Each step is run to its end and destroyed before the next one
/// is made.
class DcDecryptCommand final : public Command
{
public:
    /// Throws `Exception` unless the document's list has exactly one entry, the encrypted file. First thread.
    DcDecryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                     Halden::ZEL::Telemetry::EventTrackerPtr tracker);

    void Run() override;

private:
    /// True when the document is to be opened.
    bool RunDecryptStep(DecryptedDocument& document);
    /// True when the document was opened and changed. Takes a text of its own.
    bool RunOpenStep(std::wstring file);
    void RunReencryptStep(const DecryptedDocument& document, const std::wstring& encryptedPath);
    void RunCleanStep(const std::wstring& file);

    void beginStep(const wchar_t* tag, const wchar_t* title);
    void track(const wchar_t* action);
    void trackSuccess(bool succeeded);

    std::wstring path_; ///< the encrypted file
    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
