#pragma once

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/slot.h"

namespace VaultCore
{

inline constexpr std::array<std::uint8_t, 8> ContainerMagic{0x89, 'V', 'L', 'T', '\r', '\n', 0x1A, '\n'};
inline constexpr std::uint16_t ContainerVersion = 1;
inline constexpr std::uint32_t SmallestChunk = 4 * 1024;
inline constexpr std::uint32_t LargestChunk = 1024 * 1024;
inline constexpr std::size_t LargestRiddle = std::size_t{64} * 1024;
inline constexpr std::size_t LargestSlots = std::size_t{16} * 1024;

/// Start of a container. It is not encrypted.
struct Head
{
    std::uint16_t algorithm = 0;
    std::uint32_t chunkSize = 0;
    std::uint32_t detailsSize = 0;
    std::string riddle;
    std::vector<Slot> slots;
};

/// A head as it was read.
struct ReadHead
{
    Head head;
    /// What the tag covers.
    Bytes bytes;
    /// Proves under the file key that nothing in `bytes` was changed.
    Digest tag{};
};

/// The whole head with its tag. Throws `AbsurdParameters` for a riddle that is too long.
Bytes encodeHead(const Head& head, const SecureBytes& fileKey);
/// Takes the head from the source. Everything that it announces has been checked against the limits before it is read.
ReadHead readHead(IByteSource& source);
bool isGenuine(const ReadHead& head, const SecureBytes& fileKey);

} // namespace VaultCore
