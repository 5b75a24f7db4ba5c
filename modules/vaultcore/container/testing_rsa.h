#pragma once

#include "vaultcore/container/new_key.h"
#include "vaultcore/container/rsa.h"

namespace VaultCore
{

/// Making a pair takes a while, so the tests of a run share one.
inline const KeyMaterial& rsaPair()
{
    static const KeyMaterial pair = newRsaPair(RsaSmallModulus);
    return pair;
}

inline std::unique_ptr<Key> rsaKey(int type)
{
    return createKey(type == KeyTypeRsaPair ? rsaPair().copy() : halfOf(rsaPair(), type));
}

/// Another pair than all the rest.
inline std::unique_ptr<Key> otherRsaKey()
{
    static const KeyMaterial pair = newRsaPair(RsaSmallModulus);
    return createKey(pair.copy());
}

} // namespace VaultCore
