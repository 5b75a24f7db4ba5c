#include "vaultcore/container/head.h"

#include "vaultcore/container/details.h"
#include "vaultcore/container/failure.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t MagicAndVersion = ContainerMagic.size() + 2;
constexpr std::size_t FixedSize = MagicAndVersion + 2 + std::size_t{4} * 4;
/// Finds damage by accident before any key is asked for.
constexpr std::size_t ChecksumSize = 16;

Digest tagOf(ByteView bytes, const SecureBytes& fileKey)
{
    return hmacSha256(expandKey(fileKey.bytes(), "vaultcore head", {}, DigestSize).bytes(), bytes);
}

ByteView checksumOf(const Digest& digest)
{
    return ByteView(digest).first(ChecksumSize);
}

/// Appends the next bytes of the source.
void extend(Bytes& bytes, IByteSource& source, std::size_t size)
{
    const std::size_t before = bytes.size();
    bytes.resize(before + size);
    bytes.resize(before + source.read(std::span(bytes).subspan(before)));
    if (bytes.size() != before + size)
        throwDamaged();
}

void readMagicAndVersion(Bytes& bytes, IByteSource& source)
{
    bytes.resize(MagicAndVersion);
    bytes.resize(source.read(bytes));
    if (bytes.size() < ContainerMagic.size() ||
        !std::equal(ContainerMagic.begin(), ContainerMagic.end(), bytes.begin()))
        throw ContainerFailure{ContainerFault::NotAContainer, L"The file is no encrypted file of this program."};
    if (bytes.size() < MagicAndVersion)
        throwDamaged();
    const std::uint16_t version = ByteReader(ByteView(bytes).subspan(ContainerMagic.size())).u16();
    if (version != ContainerVersion)
        throw ContainerFailure{ContainerFault::UnknownVersion, L"The encrypted file has the format version " +
                                                                   std::to_wstring(version) +
                                                                   L", which this engine does not know."};
}

bool isChunkSize(std::uint32_t size)
{
    return size >= SmallestChunk && size <= LargestChunk && (size & (size - 1)) == 0;
}

void checkAlgorithm(std::uint16_t algorithm)
{
    if (const auto message = missingAlgorithm(algorithm))
        throw ContainerFailure{ContainerFault::UnknownAlgorithm, *message};
}

} // namespace

Bytes encodeHead(const Head& head, const SecureBytes& fileKey)
{
    if (head.riddle.size() > LargestRiddle)
        throwAbsurd(L"The riddle is too long.");
    const Bytes slots = encodeSlots(head.slots);
    const std::size_t covered = FixedSize + head.riddle.size() + slots.size() + ChecksumSize;
    Bytes bytes(covered + DigestSize);
    ByteWriter writer(bytes);
    writer.put(ContainerMagic);
    writer.u16(ContainerVersion);
    writer.u16(head.algorithm);
    writer.u32(head.chunkSize);
    writer.u32(head.detailsSize);
    writer.u32(static_cast<std::uint32_t>(head.riddle.size()));
    writer.u32(static_cast<std::uint32_t>(slots.size()));
    writer.put(viewOf(head.riddle));
    writer.put(slots);
    writer.put(checksumOf(sha256(ByteView(bytes).first(covered - ChecksumSize))));
    writer.put(tagOf(ByteView(bytes).first(covered), fileKey));
    return bytes;
}

ReadHead readHead(IByteSource& source)
{
    ReadHead read;
    readMagicAndVersion(read.bytes, source);
    extend(read.bytes, source, FixedSize - MagicAndVersion);
    ByteReader fixed(ByteView(read.bytes).subspan(MagicAndVersion));
    read.head.algorithm = fixed.u16();
    read.head.chunkSize = fixed.u32();
    read.head.detailsSize = fixed.u32();
    const std::uint32_t riddleSize = fixed.u32();
    const std::uint32_t slotsSize = fixed.u32();
    if (!isChunkSize(read.head.chunkSize) || read.head.detailsSize > LargestDetails || riddleSize > LargestRiddle ||
        slotsSize > LargestSlots)
        throwAbsurd(L"The encrypted file announces sizes beyond the limits of this engine.");

    extend(read.bytes, source, riddleSize + slotsSize + ChecksumSize);
    const ByteView covered(read.bytes);
    const Digest digest = sha256(covered.first(covered.size() - ChecksumSize));
    if (!sameSecret(checksumOf(digest), covered.last(ChecksumSize)))
        throwDamaged();
    ByteReader texts(covered.subspan(FixedSize));
    read.head.riddle = texts.text(riddleSize);
    checkAlgorithm(read.head.algorithm);
    read.head.slots = decodeSlots(texts.take(slotsSize));
    Bytes tag;
    extend(tag, source, read.tag.size());
    ByteReader(tag).fill(read.tag);
    return read;
}

bool isGenuine(const ReadHead& head, const SecureBytes& fileKey)
{
    return sameSecret(tagOf(head.bytes, fileKey), head.tag);
}

} // namespace VaultCore
