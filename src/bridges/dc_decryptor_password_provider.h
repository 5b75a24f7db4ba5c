#pragma once

#include "bridges/password_provider_handler.h"
#include "interfaces/process/key_validation.h"

namespace JobRunner
{

/// The provider of the double-click job. It takes no key file but a symmetric one, because the file may be encrypted
/// again with the same key.
class DcDecryptorPasswordProvider final : public PasswordProviderHandler, public IDpvKeyValidation
{
public:
    using PasswordProviderHandler::PasswordProviderHandler;

    int GetPasswordWindowMode() override;
    IDpvKeyValidation* GetKeyValidation() override;

    /// Dialog's thread. The message is the engine's own for a key file that cannot be loaded.
    bool ValidateKeyFile(const wchar_t* path, std::wstring& message) override;
};

} // namespace JobRunner
