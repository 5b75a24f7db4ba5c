#include "vaultcore/package/package_format.h"

#include "vaultcore/container/testing_container.h"
#include "vaultcore/package/testing_package.h"

#include <limits>

// What a trailer and a directory may say, by numbers that no writer would write.

namespace VaultCore
{
namespace
{

constexpr std::uint64_t Greatest = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t PackageSize = 2000;

Trailer goodTrailer()
{
    return {100, 1000, 400, 1400, static_cast<std::uint32_t>(PackageSize - TrailerSize - 1400)};
}

std::optional<ContainerFault> faultOfTrailer(const Trailer& trailer)
{
    return faultOf([&] { decodeTrailer(encodeTrailer(trailer), PackageSize); });
}

TEST(PackageTrailer, fillsThePackageExactly)
{
    EXPECT_FALSE(faultOfTrailer(goodTrailer()));
    for (const int change : {-1, 1})
    {
        Trailer trailer = goodTrailer();
        trailer.directorySize += static_cast<std::uint64_t>(change);
        EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
        trailer = goodTrailer();
        trailer.commentSize += static_cast<std::uint32_t>(change);
        EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
        trailer = goodTrailer();
        trailer.commentOffset += static_cast<std::uint64_t>(change);
        EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
    }
    Trailer trailer = goodTrailer();
    trailer.programSize = trailer.directoryOffset + 1;
    EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
}

TEST(PackageTrailer, hasNoSumThatGoesRoundTheGreatestNumber)
{
    Trailer trailer = goodTrailer();
    trailer.directorySize = Greatest - trailer.directoryOffset + 1 + 14;
    trailer.commentOffset = 14;
    trailer.commentSize = static_cast<std::uint32_t>(PackageSize - TrailerSize - 14);
    EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
    trailer = goodTrailer();
    trailer.directoryOffset = Greatest - 99;
    trailer.directorySize = 1500;
    EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
    trailer = goodTrailer();
    trailer.programSize = Greatest;
    EXPECT_EQ(faultOfTrailer(trailer), ContainerFault::Damaged);
}

TEST(PackageTrailer, holdsNothingUnknown)
{
    for (const std::size_t at : {std::size_t{10}, std::size_t{48}, std::size_t{55}})
    {
        Bytes bytes = encodeTrailer(goodTrailer());
        bytes[at] = 1;
        const Digest digest = sha256(ByteView(bytes).first(56));
        std::copy_n(digest.begin(), 16, bytes.begin() + 56);
        EXPECT_EQ(faultOf([&] { decodeTrailer(bytes, PackageSize); }), ContainerFault::Damaged) << at;
    }
}

/// Refused before any of it is read.
TEST(PackageReader, takesNoDirectoryBeyondItsLimit)
{
    for (const std::uint64_t more : {0U, 1U})
    {
        MemoryPackage package(bytesOf(TestProgram));
        Trailer trailer;
        trailer.programSize = package.size();
        trailer.directoryOffset = package.size();
        const auto session = startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
        session->begin(package, "", {DirectoryName, LargestDirectory + more, 0, 0, ""});
        trailer.directorySize = package.size() - trailer.directoryOffset;
        trailer.commentOffset = package.size();
        package.write(encodeTrailer(trailer));
        PackageReader reader(package);
        EXPECT_EQ(faultOf([&] { reader.unlock(*symmetricKey(), *createDerivationCache()); }),
                  more != 0 ? ContainerFault::AbsurdParameters : ContainerFault::Damaged);
    }
}

Directory goodDirectory()
{
    Directory directory;
    directory.programSize = 100;
    directory.entries = {{"a", 10, 100, 400, 300, {}}, {"b", 10, 500, 500, 300, {}}};
    return directory;
}

std::optional<ContainerFault> faultOfDirectory(const Directory& directory)
{
    return faultOf([&] { decodeDirectory(encodeDirectory(directory), goodTrailer()); });
}

TEST(PackageDirectory, tellsOfFilesOneBehindTheOther)
{
    EXPECT_FALSE(faultOfDirectory(goodDirectory()));
    for (std::uint64_t PackageEntry::*number : {&PackageEntry::offset, &PackageEntry::size})
        for (std::size_t index = 0; index < 2; ++index)
            for (const std::uint64_t change : {std::uint64_t{1}, Greatest})
            {
                Directory directory = goodDirectory();
                directory.entries[index].*number += change;
                EXPECT_EQ(faultOfDirectory(directory), ContainerFault::Damaged);
            }
    Directory directory = goodDirectory();
    directory.entries.pop_back();
    EXPECT_EQ(faultOfDirectory(directory), ContainerFault::Damaged);
}

TEST(PackageDirectory, hasNoSumThatGoesRoundTheGreatestNumber)
{
    Directory directory = goodDirectory();
    // The second entry would lead back to where the first one ends.
    directory.entries[0].size = Greatest - 100 + 1 + 50;
    directory.entries[1].offset = 50;
    directory.entries[1].size = 950;
    EXPECT_EQ(faultOfDirectory(directory), ContainerFault::Damaged);
}

TEST(PackageDirectory, tellsOfNoContentLargerThanItsContainer)
{
    Directory directory = goodDirectory();
    directory.entries[0].contentSize = directory.entries[0].size;
    EXPECT_FALSE(faultOfDirectory(directory));
    ++directory.entries[0].contentSize;
    EXPECT_EQ(faultOfDirectory(directory), ContainerFault::Damaged);
    directory = goodDirectory();
    directory.entries[0].startSize = 401;
    EXPECT_EQ(faultOfDirectory(directory), ContainerFault::Damaged);
    directory.entries[0].startSize = static_cast<std::uint32_t>(LargestContainerStart) + 1;
    EXPECT_EQ(faultOfDirectory(directory), ContainerFault::AbsurdParameters);
}

TEST(PackageDirectory, endsBehindItsLastEntry)
{
    Bytes bytes = encodeDirectory(goodDirectory());
    bytes.push_back(0);
    EXPECT_EQ(faultOf([&] { decodeDirectory(bytes, goodTrailer()); }), ContainerFault::Damaged);
    for (std::size_t size = 0; size + 1 < bytes.size(); ++size)
        EXPECT_TRUE(faultOf([&] { decodeDirectory(ByteView(bytes).first(size), goodTrailer()); })) << size;
}

} // namespace
} // namespace VaultCore
