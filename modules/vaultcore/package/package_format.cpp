#include "vaultcore/package/package_format.h"

#include "platform/utf8.h"
#include "vaultcore/package/package_failure.h"
#include "vaultcore/package/package_names.h"

namespace VaultCore
{
namespace
{

constexpr std::array<std::uint8_t, 8> Magic{0x89, 'V', 'P', 'K', '\r', '\n', 0x1A, '\n'};
/// Finds damage by accident before any key is asked for.
constexpr std::size_t ChecksumSize = 16;
constexpr std::size_t DirectoryStart = 8 + DigestSize + 4;
constexpr std::size_t EntryStart = 3 * 8 + 2 * 4 + DigestSize;

/// Does the part begin at `offset`, and end inside the package?
bool follows(std::uint64_t offset, std::uint64_t size, std::uint64_t expected, std::uint64_t end)
{
    return offset == expected && offset <= end && size <= end - offset;
}

void checkTrailer(const Trailer& trailer, std::uint64_t packageSize)
{
    if (trailer.commentSize > LargestComment)
        throwAbsurdPackage(L"the comment is too long");
    const std::uint64_t end = packageSize - TrailerSize;
    const bool inside = trailer.programSize <= trailer.directoryOffset &&
                        follows(trailer.directoryOffset, trailer.directorySize, trailer.directoryOffset, end);
    const std::uint64_t behindDirectory = inside ? trailer.directoryOffset + trailer.directorySize : 0;
    if (!inside || !follows(trailer.commentOffset, trailer.commentSize, behindDirectory, end) ||
        trailer.commentOffset + trailer.commentSize != end)
        throwDamagedPackage(L"its parts do not fill the file");
}

void checkEntry(const PackageEntry& entry, std::uint64_t expected, std::uint64_t end)
{
    if (!follows(entry.offset, entry.size, expected, end))
        throwDamagedPackage(L"the files in it are not one behind the other");
    if (entry.startSize > LargestContainerStart)
        throwAbsurdPackage(L"the start of a file in it is too long");
    if (entry.startSize > entry.size || entry.contentSize > entry.size)
        throwDamagedPackage(L"the sizes of a file in it do not fit");
    if (const auto fault = faultOfName(entry.name))
        throw ContainerFailure{ContainerFault::Damaged, L"The package holds a name that is refused: " + *fault + L"."};
}

PackageEntry decodeEntry(ByteReader& reader)
{
    PackageEntry entry;
    entry.offset = reader.u64();
    entry.size = reader.u64();
    entry.contentSize = reader.u64();
    entry.startSize = reader.u32();
    const std::uint32_t nameSize = reader.u32();
    reader.fill(entry.start);
    if (nameSize > LongestPackageName)
        throwAbsurdPackage(L"a name in it is too long");
    entry.name = reader.text(nameSize);
    if (!reader.ok())
        throwDamagedPackage(L"its directory ends too early");
    return entry;
}

} // namespace

Bytes encodeTrailer(const Trailer& trailer)
{
    Bytes bytes(TrailerSize);
    ByteWriter writer(bytes);
    writer.put(Magic);
    writer.u16(PackageVersion);
    writer.u16(0);
    writer.u32(trailer.commentSize);
    writer.u64(trailer.programSize);
    writer.u64(trailer.directoryOffset);
    writer.u64(trailer.directorySize);
    writer.u64(trailer.commentOffset);
    writer.u64(0);
    const Digest digest = sha256(ByteView(bytes).first(TrailerSize - ChecksumSize));
    writer.put(ByteView(digest).first(ChecksumSize));
    return bytes;
}

Trailer decodeTrailer(ByteView bytes, std::uint64_t packageSize)
{
    if (bytes.size() != TrailerSize || packageSize < TrailerSize ||
        !std::equal(Magic.begin(), Magic.end(), bytes.begin()))
        throw ContainerFailure{ContainerFault::NotAContainer, L"The file is no package of this program."};
    ByteReader reader(bytes.subspan(Magic.size()));
    const std::uint16_t version = reader.u16();
    if (version != PackageVersion)
        throw ContainerFailure{ContainerFault::UnknownVersion, L"The package has the format version " +
                                                                   std::to_wstring(version) +
                                                                   L", which this engine does not know."};
    const Digest digest = sha256(bytes.first(TrailerSize - ChecksumSize));
    if (!std::equal(digest.begin(), digest.begin() + ChecksumSize, bytes.end() - ChecksumSize))
        throwDamagedPackage(L"its end was changed");
    const std::uint16_t flags = reader.u16();
    Trailer trailer;
    trailer.commentSize = reader.u32();
    trailer.programSize = reader.u64();
    trailer.directoryOffset = reader.u64();
    trailer.directorySize = reader.u64();
    trailer.commentOffset = reader.u64();
    if (flags != 0 || reader.u64() != 0)
        throwDamagedPackage(L"its end holds something unknown");
    checkTrailer(trailer, packageSize);
    return trailer;
}

std::size_t directoryBytesOf(const PackageEntry& entry)
{
    return EntryStart + entry.name.size();
}

Bytes encodeDirectory(const Directory& directory)
{
    std::size_t size = DirectoryStart;
    for (const PackageEntry& entry : directory.entries)
        size += directoryBytesOf(entry);
    Bytes bytes(size);
    ByteWriter writer(bytes);
    writer.u64(directory.programSize);
    writer.put(directory.comment);
    writer.u32(static_cast<std::uint32_t>(directory.entries.size()));
    for (const PackageEntry& entry : directory.entries)
    {
        writer.u64(entry.offset);
        writer.u64(entry.size);
        writer.u64(entry.contentSize);
        writer.u32(entry.startSize);
        writer.u32(static_cast<std::uint32_t>(entry.name.size()));
        writer.put(entry.start);
        writer.put(viewOf(entry.name));
    }
    return bytes;
}

Directory decodeDirectory(ByteView bytes, const Trailer& trailer)
{
    ByteReader reader(bytes);
    Directory directory;
    directory.programSize = reader.u64();
    reader.fill(directory.comment);
    const std::uint32_t count = reader.u32();
    if (!reader.ok() || directory.programSize != trailer.programSize)
        throwDamagedPackage(L"its directory does not belong to it");
    if (count > MostPackageFiles || count > reader.left() / EntryStart)
        throwAbsurdPackage(L"it announces too many files");
    PackageNames names;
    std::uint64_t expected = trailer.programSize;
    directory.entries.reserve(count);
    for (std::uint32_t index = 0; index < count; ++index)
    {
        PackageEntry entry = decodeEntry(reader);
        checkEntry(entry, expected, trailer.directoryOffset);
        if (!names.addFile(Platform::fromUtf8(entry.name)))
            throw ContainerFailure{ContainerFault::Damaged, L"The package holds two files of the same name."};
        expected = entry.offset + entry.size;
        directory.entries.push_back(std::move(entry));
    }
    if (reader.left() != 0 || expected != trailer.directoryOffset)
        throwDamagedPackage(L"its directory does not tell all of it");
    return directory;
}

} // namespace VaultCore
