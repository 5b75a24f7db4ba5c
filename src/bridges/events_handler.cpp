#include "bridges/events_handler.h"

#include "bridges/dcd_progress_handler.h"
#include "bridges/file_conflict_events_handler.h"
#include "bridges/progress_events_handler.h"

namespace JobRunner
{

EventsHandler::EventsHandler(ProgressWindow* window, IGuiEvents* gui)
    : progress_(std::make_unique<ProgressEventsHandler>(window)),
      conflict_(std::make_unique<FileConflictEventsHandler>(window, gui))
{
}

EventsHandler::~EventsHandler() = default;

void EventsHandler::AttachEvents(VaultCore::IOperationEvents* events, int operation)
{
    progress_->AttachProgress(events, operation);
    conflict_->setOperation(operation);
    events->SetFileConflictEvents(conflict_.get());
}

void EventsHandler::exchangeProgress(ProgressWindow* window)
{
    progress_.reset();
    progress_ = std::make_unique<DcdProgressHandler>(window);
}

} // namespace JobRunner
