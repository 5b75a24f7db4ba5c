#pragma once

#include "bridges/events_handler.h"
#include "bridges/password_provider_handler.h"

namespace VaultCore
{
class IDecryptionEvents;
class IDecryptionOptions;
} // namespace VaultCore

namespace JobRunner
{

/// The handler of a decryption, which also gives the engine its keys.
class DecryptorEventsHandler : public EventsHandler
{
public:
    /// Neither is owned.
    DecryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui);

    /// `AttachEvents` for a decryption. The mode of `options` has to be set; it is read here.
    virtual void AttachDecryptionEvents(VaultCore::IDecryptionEvents* events, VaultCore::IDecryptionOptions* options);

private:
    PasswordProviderPtr provider_;
};

} // namespace JobRunner
