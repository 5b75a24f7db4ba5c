#include "vaultcore/crypto_library.h"

#include <gcrypt.h>

namespace VaultCore
{
namespace
{

bool prepare()
{
    if (gcry_check_version(GCRYPT_VERSION) == nullptr)
        return false;
    // Locked memory needs a limit that not every user has; nothing here keeps a secret longer than a file's work.
    gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
    return true;
}

} // namespace

bool prepareCryptoLibrary()
{
    static const bool prepared = prepare();
    return prepared;
}

} // namespace VaultCore
