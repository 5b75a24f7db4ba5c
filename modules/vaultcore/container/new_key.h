#pragma once

#include "vaultcore/container/key_material.h"

namespace VaultCore
{

/// Keys for key files, from fresh random data.
KeyMaterial newSymmetricKey();
/// `modulusSize` is one of the sizes in rsa.h. May take some seconds.
KeyMaterial newRsaPair(std::size_t modulusSize);
/// The half of a pair that `type` names, public or private.
KeyMaterial halfOf(const KeyMaterial& pair, int type);

} // namespace VaultCore
