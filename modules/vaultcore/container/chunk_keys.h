#pragma once

#include "vaultcore/container/algorithms.h"
#include "vaultcore/container/secure_bytes.h"

#include <cstdint>
#include <optional>
#include <span>

namespace VaultCore
{

/// The keys of a container's chunks. A key serves a group of chunks only, because a cipher leaks more the more blocks
/// one key encrypts; with blocks of 64 bits that is felt after some gigabytes already.
class ChunkKeys
{
public:
    ChunkKeys(const Algorithm& algorithm, std::span<const std::uint8_t> fileKey, std::uint32_t chunkSize,
              std::size_t keySize);
    /// The new key when the chunk at `index` belongs to another group than the one asked for before; else nothing.
    std::optional<SecureBytes> keyFor(std::uint64_t index);
    /// Number of a chunk within its group, from 0.
    std::uint64_t numberInGroup(std::uint64_t index) const;

private:
    std::uint64_t groupOf(std::uint64_t index) const;

    SecureBytes fileKey_;
    std::uint64_t chunksPerKey_;
    std::size_t keySize_;
    std::optional<std::uint64_t> group_;
};

} // namespace VaultCore
