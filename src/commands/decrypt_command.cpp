#include "commands/decrypt_command.h"

#include "bridges/decryptor_events_handler.h"
#include "bridges/module_factories.h"
#include "commands/engine_run.h"
#include "commands/job_results.h"
#include "telemetry/usage_events.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

namespace
{

const wchar_t* textOrEmpty(const wchar_t* text)
{
    return text ? text : L"";
}

} // namespace

DecryptCommand::DecryptCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                               EventTrackerPtr tracker)
    : Command(std::move(document), gui),
      decryption_(dynamic_cast<ZelPlatform::IDecryptorThreadDocument*>(document_.get())),
      handler_(std::make_unique<DecryptorEventsHandler>(&progress_, gui)),
      path_(textOrEmpty(decryption_->GetDecryptionPath())), mode_(decryption_->GetDecryptionMode()),
      files_(document_->GetFileList()), tracker_(std::move(tracker))
{
}

DecryptCommand::DecryptCommand(IGuiEvents* gui, EventTrackerPtr tracker)
    : Command(nullptr, gui), handler_(std::make_unique<DecryptorEventsHandler>(&progress_, gui)),
      tracker_(std::move(tracker))
{
}

DecryptCommand::~DecryptCommand()
{
    // Ahead of the other members: the bridges point at the window.
    handler_.reset();
}

void DecryptCommand::Run()
{
    // Released from the last to the first, on every way out.
    const auto factory = createVaultCoreFactory();
    const ReleasePtr<VaultCore::IDecryptor> decryptor(factory->CreateDecryptor());
    const ReleasePtr<VaultCore::IDecryptionEvents> events(factory->CreateDecryptionEvents());
    const ReleasePtr<VaultCore::IDecryptionOptions> options(factory->CreateDecryptionOptions());
    tracker_->TrackView({ProcessTag, UsageView::Decryption}, UsageView::DecryptionTitle);
    // Ahead of the handler, which reads the mode back.
    options->SetMode(mode_);
    options->SetPath(path_.c_str());
    handler_->AttachDecryptionEvents(events.get(), options.get());
    decryptor->Start(files_, options.get(), events.get());
    waitUntilFinished(*decryptor);
    // Intended: the cancelled event goes out under the encryption category, unlike the other events of this job.
    trackJobResults(*tracker_, UsageCategory::Decryption, UsageCategory::Encryption, handler_->progress());
}

} // namespace JobRunner
