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

    /// What the user entered, to be read after the engine has finished.
    const PasswordProviderHandler& provider() const { return *provider_; }

protected:
    /// Puts a `DcDecryptorPasswordProvider` in the place of the provider, which goes first. For the constructor of a
    /// derived handler.
    void exchangeProvider(ProgressWindow* window, IGuiEvents* gui);

private:
    PasswordProviderPtr provider_;
};

} // namespace JobRunner
