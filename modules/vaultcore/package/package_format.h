#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/crypto.h"

#include <cstdint>
#include <string>
#include <vector>

// The bytes of a package, as docs/package-format.md tells them: the program, one container per file, the directory's
// container, the comment, the trailer. Nothing lies between them.

namespace VaultCore
{

inline constexpr std::uint16_t PackageVersion = 1;
inline constexpr std::size_t TrailerSize = 72;
inline constexpr std::size_t LargestComment = std::size_t{64} * 1024;
inline constexpr std::size_t MostPackageFiles = 100'000;
/// Of the directory's content. It is the one part of a package that is kept in memory as a whole.
inline constexpr std::size_t LargestDirectory = std::size_t{32} << 20;
/// Windows starts no larger program.
inline constexpr std::uint64_t LargestPackage = 0xFFFFFFFF;
/// Of the start of a container that its digest covers: head and sealed details at their largest.
inline constexpr std::size_t LargestContainerStart = std::size_t{2} << 20;

/// Name of the directory's container; no file inside a package can have it.
inline constexpr const char* DirectoryName = "//directory";

struct Trailer
{
    /// Size of the program, and so the place of the first container.
    std::uint64_t programSize = 0;
    std::uint64_t directoryOffset = 0;
    std::uint64_t directorySize = 0;
    std::uint64_t commentOffset = 0;
    std::uint32_t commentSize = 0;
};

/// One file of a package.
struct PackageEntry
{
    /// UTF-8, parts joined by '/'.
    std::string name;
    /// Size of the file itself.
    std::uint64_t contentSize = 0;
    /// Where its container is.
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    /// Digest of the first `startSize` bytes of the container, head and details.
    std::uint32_t startSize = 0;
    Digest start{};
};

/// What the directory's container holds.
struct Directory
{
    std::uint64_t programSize = 0;
    Digest comment{};
    std::vector<PackageEntry> entries;
};

Bytes encodeTrailer(const Trailer& trailer);
/// Throws `ContainerFailure`: `NotAContainer` for what is no trailer, `UnknownVersion`, `AbsurdParameters`, `Damaged`
/// when its parts do not fill a file of `packageSize` bytes.
Trailer decodeTrailer(ByteView bytes, std::uint64_t packageSize);

/// Bytes that an entry takes in the directory.
std::size_t directoryBytesOf(const PackageEntry& entry);
Bytes encodeDirectory(const Directory& directory);
/// Throws `Damaged` or `AbsurdParameters`; every name has been checked, alone and beside the others.
Directory decodeDirectory(ByteView bytes, const Trailer& trailer);

} // namespace VaultCore
