#include "vaultcore/container/details.h"

#include "vaultcore/container/failure.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t FixedSize = 3 * 8 + 2 * 4;

} // namespace

Bytes encodeDetails(const ContainerDetails& details)
{
    if (details.name.size() > LargestDetails || details.extraText.size() > LargestDetails)
        throwAbsurd(L"The texts that belong to the file are too long.");
    const std::size_t size = FixedSize + details.name.size() + details.extraText.size();
    const std::size_t padded = (size + DetailsStep - 1) / DetailsStep * DetailsStep;
    if (padded > LargestDetails)
        throwAbsurd(L"The texts that belong to the file are too long.");
    Bytes bytes(padded);
    ByteWriter writer(bytes);
    writer.u64(details.size);
    writer.u64(details.modified);
    writer.u64(details.created);
    writer.u32(static_cast<std::uint32_t>(details.name.size()));
    writer.u32(static_cast<std::uint32_t>(details.extraText.size()));
    writer.put(viewOf(details.name));
    writer.put(viewOf(details.extraText));
    return bytes;
}

ContainerDetails decodeDetails(ByteView bytes)
{
    ByteReader reader(bytes);
    ContainerDetails details;
    details.size = reader.u64();
    details.modified = reader.u64();
    details.created = reader.u64();
    const std::uint32_t nameSize = reader.u32();
    const std::uint32_t extraSize = reader.u32();
    details.name = reader.text(nameSize);
    details.extraText = reader.text(extraSize);
    const ByteView padding = reader.rest();
    if (!reader.ok() || std::any_of(padding.begin(), padding.end(), [](std::uint8_t byte) { return byte != 0; }))
        throwDamaged();
    return details;
}

} // namespace VaultCore
