#include "bridges/dc_decryptor_events_handler.h"

namespace JobRunner
{

DcDecryptorEventsHandler::DcDecryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui)
    : DecryptorEventsHandler(window, gui)
{
    exchangeProgress(window);
    exchangeProvider(window, gui);
}

void DcDecryptorEventsHandler::AttachDecryptionEvents(VaultCore::IDecryptionEvents* events,
                                                      VaultCore::IDecryptionOptions* options)
{
    // Intended: the steps of the base, in an operation of its own.
    DecryptorEventsHandler::AttachDecryptionEvents(events, options);
}

} // namespace JobRunner
