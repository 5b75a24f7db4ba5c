#include "bridges/dc_encryptor_events_handler.h"

namespace JobRunner
{

DcEncryptorEventsHandler::DcEncryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui) : EventsHandler(window, gui)
{
    exchangeProgress(window);
}

} // namespace JobRunner
