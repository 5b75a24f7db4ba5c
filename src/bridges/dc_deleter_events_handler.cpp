#include "bridges/dc_deleter_events_handler.h"

namespace JobRunner
{

DcDeleterEventsHandler::DcDeleterEventsHandler(ProgressWindow* window, IGuiEvents* gui) : EventsHandler(window, gui)
{
    exchangeProgress(window);
}

} // namespace JobRunner
