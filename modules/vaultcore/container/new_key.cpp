#include "vaultcore/container/new_key.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/key_file.h"
#include "vaultcore/container/rsa.h"

namespace VaultCore
{

KeyMaterial newSymmetricKey()
{
    KeyMaterial key;
    key.type = KeyTypeSymmetric;
    key.secret = SecureBytes(SymmetricKeySize);
    fillRandom(key.secret.bytes());
    return key;
}

KeyMaterial newRsaPair(std::size_t modulusSize)
{
    KeyMaterial key;
    key.type = KeyTypeRsaPair;
    key.rsa = generateRsaPair(modulusSize);
    return key;
}

KeyMaterial halfOf(const KeyMaterial& pair, int type)
{
    KeyMaterial half;
    half.type = type;
    if (type == KeyTypePrivateRsa)
        half.rsa = pair.rsa.copy();
    half.rsa.modulus = pair.rsa.modulus;
    half.rsa.exponent = pair.rsa.exponent;
    return half;
}

} // namespace VaultCore
