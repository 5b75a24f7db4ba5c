#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/secure_bytes.h"

namespace VaultCore
{

/// Cost of the derivation of a key from a password, by Argon2id (RFC 9106, version 1.3).
struct Argon2Parameters
{
    std::uint32_t memoryKiB = 0;
    std::uint32_t passes = 0;
    std::uint32_t lanes = 0;

    bool operator==(const Argon2Parameters&) const = default;
};

/// What new containers get: the second choice of RFC 9106, about half a second on a plain machine.
inline constexpr Argon2Parameters UsualArgon2{64 * 1024, 3, 4};
/// What a reader takes at most: a container from elsewhere can neither use up the memory of a 32-bit process nor keep
/// it busy for long.
inline constexpr Argon2Parameters LargestArgon2{512 * 1024, 16, 8};
/// Argon2 itself asks for this much memory for each lane.
inline constexpr std::uint32_t LeastKiBPerLane = 8;

inline constexpr std::size_t DerivedKeySize = 32;

bool withinLimits(const Argon2Parameters& parameters);
/// `parameters` are within the limits and `password` is not empty. Throws `std::bad_alloc`.
SecureBytes deriveFromPassword(ByteView password, ByteView salt, const Argon2Parameters& parameters);

} // namespace VaultCore
