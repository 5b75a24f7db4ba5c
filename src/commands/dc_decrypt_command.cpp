#include "commands/dc_decrypt_command.h"

#include "commands/dc_decrypt_sub_command.h"
#include "commands/dc_delete_sub_command.h"
#include "commands/dc_encrypt_sub_command.h"
#include "commands/dc_open_sub_command.h"
#include "interfaces/process/exception.h"
#include "interfaces/vaultcore/file_list.h"
#include "telemetry/usage_events.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

DcDecryptCommand::DcDecryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                                   EventTrackerPtr tracker)
    : Command(std::move(document), gui), tracker_(std::move(tracker))
{
    VaultCore::IFileList* const files = document_->GetFileList();
    // Intended: the same text for a list of several files.
    if (files->GetCount() != 1)
        throw Exception{L"Cannot decrypt file, there is no file in the pattern list"};
    path_ = files->GetItem(0);
}

void DcDecryptCommand::Run()
{
    tracker_->TrackView({ProcessTag, UsageView::DoubleClick}, UsageView::DoubleClickTitle);
    DecryptedDocument document;
    if (!RunDecryptStep(document))
        return;
    // A document that could not be opened is wiped, like one that was not changed.
    if (RunOpenStep(document.file))
        RunReencryptStep(document, path_);
    else
        RunCleanStep(document.file);
}

bool DcDecryptCommand::RunDecryptStep(DecryptedDocument& document)
{
    beginStep(UsageView::DecryptStep, UsageView::DecryptStepTitle);
    DcDecryptSubCommand step(path_, gui_, tracker_);
    step.Run();
    document.file = step.lastFileText();
    document.usesKeyFile = step.usesKeyFile();
    document.keyFile = step.keyFile();
    document.password = step.password();
    // Intended: a text ends the job, whatever the engine's error was; no text goes on, as an empty path.
    if (!document.file.empty())
    {
        track(UsageEvent::NotSucceeded);
        return false;
    }
    trackSuccess(step.succeeded());
    if (step.succeeded())
        track(document.usesKeyFile ? UsageEvent::UsedKeyFile : UsageEvent::UsedPassword);
    return step.succeeded();
}

bool DcDecryptCommand::RunOpenStep(std::wstring file)
{
    beginStep(UsageView::OpenStep, UsageView::OpenStepTitle);
    DcOpenSubCommand step(std::move(file));
    step.Execute();
    trackSuccess(step.WasOpened());
    if (step.WasOpened())
        track(step.WasModified() ? UsageEvent::FileWasModified : UsageEvent::FileWasNotModified);
    return step.WasOpened() && step.WasModified();
}

/// The document is wiped by the encryption itself. Intended: after a failure nothing cleans it up.
void DcDecryptCommand::RunReencryptStep(const DecryptedDocument& document, const std::wstring& encryptedPath)
{
    beginStep(UsageView::ReencryptStep, UsageView::ReencryptStepTitle);
    DcEncryptSubCommand step(document.file, encryptedPath, document.password, document.keyFile, gui_, tracker_);
    step.Run();
    trackSuccess(step.succeeded());
}

void DcDecryptCommand::RunCleanStep(const std::wstring& file)
{
    beginStep(UsageView::CleanStep, UsageView::CleanStepTitle);
    DcDeleteSubCommand step(file, gui_, tracker_);
    step.Run();
    trackSuccess(step.succeeded());
}

void DcDecryptCommand::beginStep(const wchar_t* tag, const wchar_t* title)
{
    // The commands inside the steps track views of their own, so that what a step tells at its end stands under theirs.
    tracker_->TrackView({ProcessTag, UsageView::DoubleClick, tag}, title);
    track(UsageEvent::Execute);
}

void DcDecryptCommand::track(const wchar_t* action)
{
    tracker_->TrackViewEvent(action, L"", NoEventValue);
}

void DcDecryptCommand::trackSuccess(bool succeeded)
{
    track(succeeded ? UsageEvent::Succeeded : UsageEvent::NotSucceeded);
}

} // namespace JobRunner
