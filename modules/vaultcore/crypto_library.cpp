#include "vaultcore/crypto_library.h"

#include <gcrypt.h>

namespace VaultCore
{
namespace
{

constexpr unsigned GuardedMemory = 256 * 1024;

bool prepare()
{
    if (gcry_check_version(GCRYPT_VERSION) == nullptr)
        return false;
    // RSA numbers are worked on in memory that is wiped. Where it cannot be locked as well, that is no failure.
    gcry_control(GCRYCTL_DISABLE_SECMEM_WARN, 0);
    gcry_control(GCRYCTL_INIT_SECMEM, GuardedMemory, 0);
    gcry_control(GCRYCTL_AUTO_EXPAND_SECMEM, GuardedMemory, 0);
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
