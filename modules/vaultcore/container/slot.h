#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/container.h"
#include "vaultcore/container/derivation.h"
#include "vaultcore/container/key_material.h"

#include <optional>

// A key slot holds the file key of one container, sealed under a slot key. The slot key comes from the user's key and
// is the same for all containers of one job.

namespace VaultCore
{

enum class SlotKind : std::uint16_t
{
    Password = 1,
    Symmetric = 2,
    Rsa = 3,
};

inline constexpr std::size_t FileKeySize = 32;
inline constexpr std::size_t MostSlots = 8;

struct Slot
{
    SlotKind kind = SlotKind::Password;
    std::array<std::uint8_t, 32> salt{};
    /// Tells whether a slot key is the right one.
    std::array<std::uint8_t, 16> check{};
    std::array<std::uint8_t, 12> nonce{};
    std::array<std::uint8_t, FileKeySize> wrappedFileKey{};
    std::array<std::uint8_t, 16> wrapTag{};
    /// Of a password slot.
    Argon2Parameters argon2;
    /// Of an RSA slot: which key pair it is for, told only to who knows the public key.
    std::array<std::uint8_t, 16> keyMark{};
    /// Of an RSA slot: the slot key under the public key.
    Bytes sealedSlotKey;
};

/// Slots one behind the other.
Bytes encodeSlots(const std::vector<Slot>& slots);
/// Leaves slots of kinds that are not known out. Throws `Damaged` or `AbsurdParameters`.
std::vector<Slot> decodeSlots(ByteView bytes);

/// A slot with everything but the file key, and the slot key.
struct SlotStart
{
    Slot slot;
    SecureBytes slotKey;
};

/// A fresh slot for a key. Throws `ContainerFailure` for a key that cannot encrypt. `argon2` serves a password.
SlotStart startSlot(const Key& key, const Argon2Parameters& argon2);
/// Seals a file key in a slot.
void wrapFileKey(Slot& slot, const SecureBytes& slotKey, const SecureBytes& fileKey);
/// The file key, or nothing when the key does not fit. Throws `Damaged` when it fits and the slot was changed.
std::optional<SecureBytes> openSlot(const Slot& slot, const Key& key, DerivationCache& cache);

} // namespace VaultCore
