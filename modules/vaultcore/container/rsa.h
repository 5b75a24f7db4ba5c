#pragma once

#include "vaultcore/container/key_material.h"

#include <optional>

// RSA with OAEP (SHA-256), for moduli of 3072 and 4096 bits.

namespace VaultCore
{

inline constexpr std::uint32_t RsaExponent = 65537;
inline constexpr std::size_t RsaSmallModulus = 3072 / 8;
inline constexpr std::size_t RsaLargeModulus = 4096 / 8;

/// True for numbers of a supported size that belong together; the secret ones are looked at when they are there. Takes
/// some milliseconds for a private key.
bool isSoundRsaKey(const RsaNumbers& numbers);
/// A new pair. `modulusSize` is one of the two sizes above, in bytes. May take some seconds.
RsaNumbers generateRsaPair(std::size_t modulusSize);
/// As long as the modulus. Needs no secret number.
Bytes sealWithRsa(const RsaNumbers& numbers, const SecureBytes& secret);
/// Null when `sealed` was not made for this key or was changed. Needs the secret numbers.
std::optional<SecureBytes> openWithRsa(const RsaNumbers& numbers, ByteView sealed);

} // namespace VaultCore
