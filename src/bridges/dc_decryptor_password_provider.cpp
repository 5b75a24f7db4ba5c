#include "bridges/dc_decryptor_password_provider.h"

#include "bridges/module_factories.h"
#include "interfaces/vaultcore/exception.h"
#include "platform/narrow_text.h"
#include "windows/decryption_password/i_decryption_password_view.h"

#include <stdexcept>

namespace JobRunner
{

int DcDecryptorPasswordProvider::GetPasswordWindowMode()
{
    return DecryptionOpensDocument;
}

IDpvKeyValidation* DcDecryptorPasswordProvider::GetKeyValidation()
{
    return this;
}

bool DcDecryptorPasswordProvider::ValidateKeyFile(const wchar_t* path, std::wstring& message)
{
    try
    {
        const auto factory = createVaultCoreFactory();
        const ReleasePtr<VaultCore::IKey> key(factory->LoadKeyFile(path));
        if (key->GetKeyType() != VaultCore::KeyTypeSymmetric)
            throw std::runtime_error("PKI key files could not be used for decrypt/open/encrypt mode.");
        return true;
    }
    catch (const VaultCore::Exception& failure)
    {
        message = failure.GetText();
    }
    catch (const std::exception& failure)
    {
        message = Platform::widenThreadText(failure.what());
    }
    return false;
}

} // namespace JobRunner
