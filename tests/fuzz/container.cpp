#include "fuzz/container_keys.h"
#include "vaultcore/container/crypto.h"
#include "vaultcore/container/head.h"

// A whole container as bytes. Changes behind the head are not authenticated any more; `sealed_container` gets past
// that.

namespace Fuzz
{
namespace
{

using namespace VaultCore;

constexpr std::size_t RiddleSizeAt = 20, RiddleAt = 28, ChecksumSize = 16;

bool unlockWithAny(ContainerReader& reader)
{
    CheapDerivations derivations;
    for (const auto& key : containerKeys())
        if (reader.unlock(*key, derivations))
            return true;
    return false;
}

std::uint64_t readToTheEnd(ContainerReader& reader)
{
    std::uint64_t count = 0;
    for (ByteView piece = reader.read(); !piece.empty(); piece = reader.read())
        count += piece.size();
    return count;
}

bool readContainer(ByteView input)
try
{
    MeasuredSource source(input);
    const auto reader = openContainer(source);
    expect(reader->riddle().size() <= LargestRiddle, "a riddle is no longer than its limit");
    expect(!missingAlgorithm(reader->algorithm()), "an algorithm that is not here is refused");
    source.setUnlocked();
    if (!unlockWithAny(*reader))
        return false;
    expect(reader->details().name.size() + reader->details().extraText.size() <= input.size(),
           "texts were in the file");
    expect(readToTheEnd(*reader) == reader->details().size, "a container that is whole has the size that it tells");
    expect(reader->read().empty(), "the end stays the end");
    return true;
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

/// The checksum, as far as the head tells where it is; then the tag, when the slots still open.
void repairContainer(std::span<std::uint8_t> input)
{
    if (input.size() < RiddleAt + ChecksumSize)
        return;
    ByteReader sizes(ByteView(input).subspan(RiddleSizeAt));
    const std::uint64_t slotsAt = RiddleAt + std::uint64_t{sizes.u32()};
    const std::uint64_t end = slotsAt + sizes.u32();
    if (end > input.size() - ChecksumSize)
        return;
    const auto covered = static_cast<std::size_t>(end);
    const Digest digest = sha256(input.first(covered));
    std::copy_n(digest.begin(), ChecksumSize, input.begin() + static_cast<std::ptrdiff_t>(covered));
    if (input.size() < covered + ChecksumSize + DigestSize)
        return;
    try
    {
        CheapDerivations derivations;
        const auto slots = decodeSlots(input.first(covered).subspan(static_cast<std::size_t>(slotsAt)));
        const auto fileKey = slots.empty() ? std::nullopt : openSlot(slots[0], *containerKeys()[0], derivations);
        if (!fileKey)
            return;
        const SecureBytes headKey = expandKey(fileKey->bytes(), "vaultcore head", {}, DigestSize);
        const Digest tag = hmacSha256(headKey.bytes(), input.first(covered + ChecksumSize));
        std::copy(tag.begin(), tag.end(), input.begin() + static_cast<std::ptrdiff_t>(covered + ChecksumSize));
    }
    catch (const ContainerFailure&)
    {
        // Slots that are refused have no key.
    }
}

std::vector<Bytes> containerSeeds()
{
    std::vector<Bytes> seeds{hex(GoldenPassword), hex(GoldenSymmetric), hex(GoldenRsa)};
    for (const std::uint32_t algorithm : AvailableAlgorithms)
        seeds.push_back(seal(*containerKeys()[0], algorithm, contentOf(40)));
    seeds.push_back(seal(*containerKeys()[0], Aes256, contentOf(4096 + 20)));
    seeds.push_back(seal(*containerKeys()[1], Aes256, contentOf(10)));
    seeds.push_back(seal(*containerKeys()[2], Aes256, {}));
    return seeds;
}

const Registered registered({"container", readContainer, containerSeeds, repairContainer});

} // namespace
} // namespace Fuzz
