#include "commands/encrypt_command.h"

#include "bridges/events_handler.h"
#include "bridges/module_factories.h"
#include "commands/encryption_reports.h"
#include "commands/engine_run.h"
#include "commands/job_results.h"
#include "interfaces/process/gui_events.h"
#include "interfaces/vaultcore/exception.h"
#include "telemetry/usage_events.h"
#include "windows/framework/secret_text.h"
#include "windows/progress/i_progress_window_view.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

/// What the user has confirmed. Gone before the engine starts: from then on the options alone hold the key.
struct EncryptCommand::Parameters
{
    ~Parameters() { wipeText(password); }

    std::wstring password;
    std::wstring keyFile;
    std::uint32_t algorithm;
    std::uint32_t destiny;
    std::wstring riddle;
};

EncryptCommand::EncryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                               EventTrackerPtr tracker)
    : Command(std::move(document), gui),
      encryption_(dynamic_cast<ZelPlatform::IEncryptorThreadDocument*>(document_.get())),
      handler_(std::make_unique<EventsHandler>(&progress_, gui)), files_(document_->GetFileList()),
      tracker_(std::move(tracker))
{
}

EncryptCommand::EncryptCommand(IGuiEvents* gui, EventTrackerPtr tracker)
    : Command(nullptr, gui), handler_(std::make_unique<EventsHandler>(&progress_, gui)), tracker_(std::move(tracker))
{
}

EncryptCommand::~EncryptCommand()
{
    // Ahead of the other members: the bridges point at the window.
    handler_.reset();
}

void EncryptCommand::Run()
{
    // Released from the last to the first, on every way out.
    const auto factory = createVaultCoreFactory();
    const ReleasePtr<VaultCore::IEncryptor> encryptor(factory->CreateEncryptor());
    const ReleasePtr<VaultCore::IOperationEvents> events(factory->CreateOperationEvents());
    const ReleasePtr<VaultCore::IEncryptionOptions> options(factory->CreateEncryptionOptions());
    tracker_->TrackView({ProcessTag, UsageView::Encryption}, UsageView::EncryptionTitle);
    if (!PrepareEncryption(*options))
        return;
    handler_->AttachEvents(events.get(), OperationEncrypt);
    encryptor->Start(files_, options.get(), events.get());
    waitUntilFinished(*encryptor);
    trackJobResults(*tracker_, UsageCategory::Encryption, UsageCategory::Encryption, handler_->progress());
}

bool EncryptCommand::GetEncryptionParameters(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                             std::uint32_t& destiny, std::wstring& riddle)
{
    return gui_->showEncryptionPasswordWindow(password, keyFile, algorithm, destiny, riddle);
}

std::wstring EncryptCommand::GetExtraText()
{
    return encryption_->GetExtraText();
}

EncryptCommand::Parameters EncryptCommand::startingValues()
{
    if (!encryption_)
        return {L"", L"", 0, VaultCore::DestinyKeep, L""};
    return {L"", L"", encryption_->GetAlgorithm(), encryption_->GetDestiny(), L""};
}

bool EncryptCommand::PrepareEncryption(VaultCore::IEncryptionOptions& options)
{
    Parameters parameters = startingValues();
    if (!GetEncryptionParameters(parameters.password, parameters.keyFile, parameters.algorithm, parameters.destiny,
                                 parameters.riddle))
        return false;
    const auto factory = createVaultCoreFactory();
    if (!setKey(*factory, options, parameters))
        return false;
    options.SetAlgorithm(parameters.algorithm);
    options.SetDestiny(parameters.destiny);
    options.SetRiddle(parameters.riddle.c_str());
    options.SetExtraText(GetExtraText().c_str());
    // A file that is wiped after its encryption passes through two phases, a deleted one does not.
    progress_.setHalfFileMode(parameters.destiny == VaultCore::DestinyWipe);
    trackParameters(*factory, parameters);
    return true;
}

bool EncryptCommand::setKey(VaultCore::IFactory& factory, VaultCore::IEncryptionOptions& options,
                            const Parameters& parameters)
{
    // Intended: nothing but the key file's emptiness is looked at, so that of both the key file wins.
    if (parameters.keyFile.empty())
    {
        const ReleasePtr<VaultCore::IKey> key(factory.CreatePasswordKey(parameters.password.c_str()));
        options.SetKey(key.get());
        return true;
    }
    try
    {
        const ReleasePtr<VaultCore::IKey> key(factory.LoadKeyFile(parameters.keyFile.c_str()));
        options.SetKey(key.get());
        return true;
    }
    catch (const VaultCore::Exception& failure)
    {
        reportKeyFileFailure(*tracker_, failure);
        return false;
    }
}

void EncryptCommand::trackParameters(VaultCore::IFactory& factory, const Parameters& parameters)
{
    const auto track = [this](const wchar_t* action)
    { tracker_->TrackEvent(UsageCategory::Encryption, action, L"", NoEventValue); };

    track(UsageEvent::Count);
    if (parameters.keyFile.empty())
    {
        track(UsageEvent::UsePassword);
    }
    else
    {
        // Intended: loaded a second time, for its type alone, and without a guard: a failure here ends the process.
        const ReleasePtr<VaultCore::IKey> key(factory.LoadKeyFile(parameters.keyFile.c_str()));
        trackKeyFileType(*tracker_, *key);
    }
    trackAlgorithmAndDestiny(*tracker_, UsageCategory::Encryption, parameters.algorithm, parameters.destiny);
    if (!parameters.riddle.empty())
        track(UsageEvent::UseRiddle);
    // Intended: the same event again, after asking for the text again, so that a job with both texts counts twice.
    if (!GetExtraText().empty())
        track(UsageEvent::UseExtraText);
}

} // namespace JobRunner
