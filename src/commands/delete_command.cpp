#include "commands/delete_command.h"

#include "bridges/events_handler.h"
#include "bridges/module_factories.h"
#include "commands/engine_run.h"
#include "commands/job_results.h"
#include "platform/message_box.h"
#include "platform/platform.h"
#include "telemetry/usage_events.h"
#include "windows/progress/i_progress_window_view.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;
using Platform::platform;

DeleteCommand::DeleteCommand(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui,
                             EventTrackerPtr tracker)
    : Command(std::move(document), gui), deletion_(dynamic_cast<ZelPlatform::IDeleterThreadDocument*>(document_.get())),
      handler_(std::make_unique<EventsHandler>(&progress_, gui)), files_(document_->GetFileList()),
      method_(deletion_->GetDeletionMethod()), tracker_(std::move(tracker))
{
}

DeleteCommand::DeleteCommand(IGuiEvents* gui, EventTrackerPtr tracker)
    : Command(nullptr, gui), handler_(std::make_unique<EventsHandler>(&progress_, gui)), tracker_(std::move(tracker))
{
}

DeleteCommand::~DeleteCommand()
{
    // Ahead of the other members: the bridges point at the window.
    handler_.reset();
}

void DeleteCommand::Run()
{
    // The same view serves a deletion that is no wipe.
    tracker_->TrackView({ProcessTag, UsageView::Wipe}, UsageView::WipeTitle);
    if (!ConfirmDeletion())
    {
        tracker_->TrackViewEvent(UsageEvent::UserCancelled, L"", NoEventValue);
        return;
    }
    runEngine();
}

bool DeleteCommand::ConfirmDeletion()
{
    const int answer =
        platform().messageBoxes.show(L"Are you sure you want to securely delete items?", L"Securely Delete Items",
                                     Platform::BoxYesNo | Platform::BoxIconQuestion);
    return answer == Platform::BoxAnswerYes;
}

bool DeleteCommand::isWipe() const
{
    return method_ == VaultCore::DeletionMethodWipe;
}

void DeleteCommand::runEngine()
{
    // Released from the last to the first, on every way out.
    const auto factory = createVaultCoreFactory();
    const ReleasePtr<VaultCore::IDeleter> deleter(factory->CreateDeleter());
    const ReleasePtr<VaultCore::IOperationEvents> events(factory->CreateOperationEvents());
    const ReleasePtr<VaultCore::IDeletionOptions> options(factory->CreateDeletionOptions());
    handler_->AttachEvents(events.get(), isWipe() ? OperationWipe : OperationDelete);
    options->SetMethod(method_);
    deleter->Start(files_, options.get(), events.get());
    waitUntilFinished(*deleter);
    trackResults();
}

void DeleteCommand::trackResults()
{
    const wchar_t* const operation = isWipe() ? UsageEvent::UseOperationWipe : UsageEvent::UseOperationDelete;
    tracker_->TrackEvent(UsageCategory::Wipe, operation, L"", NoEventValue);
    // Intended: the cancelled event goes out under the encryption category, unlike the other events of this job.
    trackJobResults(*tracker_, UsageCategory::Wipe, UsageCategory::Encryption, handler_->progress());
}

} // namespace JobRunner
