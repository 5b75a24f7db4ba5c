#include "bridges/decryptor_events_handler.h"

#include "bridges/dc_decryptor_password_provider.h"
#include "interfaces/vaultcore/decryptor.h"
#include "interfaces/vaultcore/events.h"
#include "windows/progress/i_progress_window_view.h"

namespace JobRunner
{

DecryptorEventsHandler::DecryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui)
    : EventsHandler(window, gui), provider_(makePasswordProvider<PasswordProviderHandler>(window, gui))
{
}

void DecryptorEventsHandler::AttachDecryptionEvents(VaultCore::IDecryptionEvents* events,
                                                    VaultCore::IDecryptionOptions* options)
{
    AttachEvents(events, OperationDecrypt);
    provider_->setDeletesOriginals(options->GetMode() != 0);
    events->SetPasswordProvider(provider_.get());
}

void DecryptorEventsHandler::exchangeProvider(ProgressWindow* window, IGuiEvents* gui)
{
    provider_.reset();
    provider_ = makePasswordProvider<DcDecryptorPasswordProvider>(window, gui);
}

} // namespace JobRunner
