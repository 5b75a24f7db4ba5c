#include "vaultcore/container/chunk_keys.h"

#include "vaultcore/container/crypto.h"

namespace VaultCore
{
namespace
{

constexpr std::uint64_t BytesPerKeyOfSmallBlocks = std::uint64_t{4} << 20;
constexpr std::uint64_t BytesPerKey = std::uint64_t{4} << 30;

} // namespace

ChunkKeys::ChunkKeys(const Algorithm& algorithm, std::span<const std::uint8_t> fileKey, std::uint32_t chunkSize,
                     std::size_t keySize)
    : fileKey_(fileKey), chunksPerKey_((algorithm.blockSize < 16 ? BytesPerKeyOfSmallBlocks : BytesPerKey) / chunkSize),
      keySize_(keySize)
{
}

std::optional<SecureBytes> ChunkKeys::keyFor(std::uint64_t index)
{
    const std::uint64_t group = groupOf(index);
    if (group_ == group)
        return std::nullopt;
    group_ = group;
    std::array<std::uint8_t, 8> context{};
    ByteWriter(context).u64(group);
    return expandKey(fileKey_.bytes(), "vaultcore chunks", context, keySize_);
}

std::uint64_t ChunkKeys::numberInGroup(std::uint64_t index) const
{
    return index == 0 ? 0 : (index - 1) % chunksPerKey_;
}

/// The details have a key of their own.
std::uint64_t ChunkKeys::groupOf(std::uint64_t index) const
{
    return index == 0 ? 0 : 1 + (index - 1) / chunksPerKey_;
}

} // namespace VaultCore
