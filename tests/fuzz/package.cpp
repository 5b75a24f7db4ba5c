#include "fuzz/container_keys.h"
#include "vaultcore/package/package_names.h"
#include "vaultcore/package/testing_package.h"

// A whole package as bytes, of which the trailer is what nobody has to have a key for. `sealed_package` changes what is
// authenticated.

namespace Fuzz
{
namespace
{

using namespace VaultCore;

bool readAll(PackageReader& reader)
{
    CheapDerivations derivations;
    if (!reader.unlock(*containerKeys()[0], derivations))
        return false;
    for (std::size_t index = 0; index < reader.entries().size(); ++index)
    {
        ContainerReader& file = reader.open(index);
        std::uint64_t size = 0;
        for (ByteView piece = file.read(); !piece.empty(); piece = file.read())
            size += piece.size();
        expect(size == reader.entries()[index].contentSize, "a file has the size that the directory tells");
    }
    return true;
}

bool readPackage(ByteView input)
{
    MemoryPackage package(Bytes(input.begin(), input.end()));
    try
    {
        PackageReader reader(package);
        expect(isPackage(package), "what is read is a package");
        expect(reader.comment().size() <= std::min(LargestComment, input.size()), "a comment was in the file");
        return readAll(reader);
    }
    catch (const ContainerFailure& failure)
    {
        expect(!failure.message.empty(), "a refusal tells why");
        return false;
    }
    catch (const TooCostly&)
    {
        return false;
    }
}

void repairPackage(std::span<std::uint8_t> input)
{
    constexpr std::size_t ChecksumSize = 16;
    if (input.size() < TrailerSize)
        return;
    const std::span<std::uint8_t> trailer = input.last(TrailerSize);
    const Digest digest = sha256(trailer.first(TrailerSize - ChecksumSize));
    std::copy_n(digest.begin(), ChecksumSize, trailer.end() - ChecksumSize);
}

std::vector<Bytes> packageSeeds()
{
    return {packageOf({}).bytes, packageOf({{"a.txt", contentOf(30)}}).bytes,
            packageOf({{"a.txt", contentOf(30)}, {"folder/b", {}}}, "").bytes};
}

const Registered registered({"package", readPackage, packageSeeds, repairPackage});

} // namespace
} // namespace Fuzz
