#pragma once

#include "bridges/decryptor_events_handler.h"

namespace JobRunner
{

/// The handler of the double-click job's decryption: its progress bridge is a `DcdProgressHandler` and its provider a
/// `DcDecryptorPasswordProvider`.
class DcDecryptorEventsHandler final : public DecryptorEventsHandler
{
public:
    /// Neither is owned.
    DcDecryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui);

    void AttachDecryptionEvents(VaultCore::IDecryptionEvents* events, VaultCore::IDecryptionOptions* options) override;
};

} // namespace JobRunner
