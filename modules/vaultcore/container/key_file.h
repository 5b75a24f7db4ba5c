#pragma once

#include "vaultcore/container/key_material.h"

namespace VaultCore
{

/// Larger files are refused before they are read.
inline constexpr std::size_t LargestKeyFile = std::size_t{8} * 1024;
inline constexpr std::size_t SymmetricKeySize = 32;

/// Bytes of a key file. The key is no password.
SecureBytes encodeKeyFile(const KeyMaterial& key);
/// Throws `VaultCore::Exception`.
KeyMaterial decodeKeyFile(ByteView bytes);

} // namespace VaultCore
