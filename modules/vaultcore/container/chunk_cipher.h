#pragma once

#include "vaultcore/container/algorithms.h"
#include "vaultcore/container/crypto.h"

namespace VaultCore
{

/// Where a chunk stands. A chunk fits at its own place of its own container only.
struct ChunkPlace
{
    /// 0 is the details, 1 the first piece of content.
    std::uint64_t index = 0;
    bool last = false;
};

/// Seals and opens the chunks of one container. Not for two threads at once.
class ChunkCipher
{
public:
    virtual ~ChunkCipher() = default;
    /// Bytes that a sealed chunk is longer than its content.
    virtual std::size_t tagSize() const = 0;
    /// `sealed` has room for the content and the tag.
    virtual void seal(ChunkPlace place, ByteView plain, std::span<std::uint8_t> sealed) = 0;
    /// Opens `chunk` where it lies; the content is its beginning. False when the chunk is not the one that was sealed
    /// for this place; its bytes are wiped then.
    virtual bool open(ChunkPlace place, std::span<std::uint8_t> chunk) = 0;
};

/// `chunkSize` is the content of a full chunk, a multiple of the cipher's block.
std::unique_ptr<ChunkCipher> createChunkCipher(const Algorithm& algorithm, ByteView fileKey, std::uint32_t chunkSize);
/// Tag size of the chunks of an algorithm.
std::size_t chunkTagSize(const Algorithm& algorithm);

} // namespace VaultCore
