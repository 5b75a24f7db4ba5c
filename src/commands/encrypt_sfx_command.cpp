#include "commands/encrypt_sfx_command.h"

#include "bridges/events_handler.h"
#include "bridges/module_factories.h"
#include "commands/encryption_reports.h"
#include "commands/engine_run.h"
#include "commands/job_results.h"
#include "interfaces/vaultcore/exception.h"
#include "telemetry/usage_events.h"
#include "telemetry/usage_names.h"
#include "windows/encryption_password/encryption_password_window.h"
#include "windows/framework/secret_text.h"
#include "windows/progress/i_progress_window_view.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

EncryptSfxCommand::EncryptSfxCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                                     EventTrackerPtr tracker)
    : EncryptCommand(std::move(document), gui, std::move(tracker)),
      sfx_(dynamic_cast<ZelPlatform::IEncryptorSfxThreadDocument*>(document_.get()))
{
}

void EncryptSfxCommand::Run()
{
    // Released from the last to the first, on every way out.
    const auto factory = createVaultCoreFactory();
    const ReleasePtr<VaultCore::IEncryptor> encryptor(factory->CreateEncryptor());
    const ReleasePtr<VaultCore::IOperationEvents> events(factory->CreateOperationEvents());
    const ReleasePtr<VaultCore::ISfxOptions> options(factory->CreateSfxOptions());
    tracker_->TrackView({ProcessTag, UsageView::EncryptionSfx}, UsageView::EncryptionSfxTitle);
    if (!PrepareSfxEncryption(*sfx_, *options))
        return;
    handler_->AttachEvents(events.get(), OperationEncryptSfx);
    encryptor->StartSfx(document_->GetFileList(), options.get(), events.get());
    waitUntilFinished(*encryptor);
    // Intended: the cancelled event goes out under this job's own category, unlike that of a decryption or deletion.
    trackJobResults(*tracker_, UsageCategory::EncryptionSfx, UsageCategory::EncryptionSfx, handler_->progress());
}

bool EncryptSfxCommand::PrepareSfxEncryption(ZelPlatform::IEncryptorSfxThreadDocument& document,
                                             VaultCore::ISfxOptions& options)
{
    tracker_->TrackViewEvent(UsageEvent::OpenEncryptionPasswordWindow, L"", NoEventValue);
    EncryptionPasswordWindow window(true, tracker_);
    if (!askUser(window, document))
        return false;
    const auto factory = createVaultCoreFactory();
    if (!setKey(*factory, options, window))
        return false;
    const std::wstring comment = window.getSfxComment();
    options.SetAlgorithm(static_cast<std::uint32_t>(window.getAlgorithm()));
    options.SetDestiny(static_cast<std::uint32_t>(window.getDestiny()));
    options.SetRiddle(window.getRiddle().c_str());
    options.SetSfxComment(comment.c_str());
    trackParameters(window, comment);
    progress_.setHalfFileMode(window.getDestiny() == static_cast<int>(VaultCore::DestinyWipe));
    if (window.isSfxCommentDefault())
        saveComment(comment);
    return true;
}

bool EncryptSfxCommand::askUser(EncryptionPasswordWindow& window, ZelPlatform::IEncryptorSfxThreadDocument& document)
{
    window.setSfxComment(document.GetSfxComment());
    // The window shows a destiny that is neither 0 nor 1 as 2, and gives it back as 2.
    window.setDestiny(static_cast<int>(document.GetDestiny()));
    if (window.doModal())
        return true;
    tracker_->TrackViewEvent(UsageEvent::EncryptionPasswordWindowCancelled, L"", NoEventValue);
    return false;
}

bool EncryptSfxCommand::setKey(VaultCore::IFactory& factory, VaultCore::ISfxOptions& options,
                               EncryptionPasswordWindow& window)
{
    // Intended: the events of the key go out under the plain encryption, unlike the others of this job.
    if (window.isPasswordMode())
    {
        const SecretText password(window.getPassword());
        const ReleasePtr<VaultCore::IKey> key(factory.CreatePasswordKey(password.text().c_str()));
        options.SetKey(key.get());
        tracker_->TrackEvent(UsageCategory::Encryption, UsageEvent::UsePassword, L"", NoEventValue);
        return true;
    }
    try
    {
        // Intended: loaded once, so that the events of the key are guarded too, unlike those of the plain encryption.
        const ReleasePtr<VaultCore::IKey> key(factory.LoadKeyFile(window.getKeyFile().c_str()));
        options.SetKey(key.get());
        trackKeyFileType(*tracker_, *key);
        return true;
    }
    catch (const VaultCore::Exception& failure)
    {
        reportKeyFileFailure(*tracker_, failure);
        return false;
    }
}

void EncryptSfxCommand::trackParameters(EncryptionPasswordWindow& window, const std::wstring& comment)
{
    const auto track = [this](const wchar_t* action)
    { tracker_->TrackEvent(UsageCategory::EncryptionSfx, action, L"", NoEventValue); };

    // Intended: this job is not counted: there is no event ahead of these.
    trackAlgorithmAndDestiny(*tracker_, UsageCategory::EncryptionSfx, static_cast<std::uint32_t>(window.getAlgorithm()),
                             static_cast<std::uint32_t>(window.getDestiny()));
    if (!window.getRiddle().empty())
        track(UsageEvent::UseRiddle);
    // Intended: the search minds the case, and an empty comment counts as the user's own.
    if (comment.find(MakerDomain) == std::wstring::npos)
        track(UsageEvent::UseCustomSfxComment);
}

void EncryptSfxCommand::saveComment(const std::wstring& comment)
{
    const auto factory = createZelPlatformFactory();
    const ReleasePtr<ZelPlatform::IJobDocumentStore> store(factory->CreateJobDocumentStore());
    store->SaveSfxComment(comment.c_str());
    // Intended: nothing is reported of an empty comment, which is saved all the same.
    if (!comment.empty())
        tracker_->TrackViewEvent(UsageEvent::SaveSfxComment, L"", NoEventValue);
}

} // namespace JobRunner
