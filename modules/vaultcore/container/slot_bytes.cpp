#include "vaultcore/container/failure.h"
#include "vaultcore/container/rsa.h"
#include "vaultcore/container/slot.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t HeaderSize = 4;
constexpr std::size_t CommonSize = 32 + 16 + 12 + FileKeySize + 16;
constexpr std::size_t Argon2Size = std::size_t{3} * 4;
constexpr std::size_t KeyMarkSize = 16;

std::size_t bodySize(const Slot& slot)
{
    switch (slot.kind)
    {
    case SlotKind::Password:
        return CommonSize + Argon2Size;
    case SlotKind::Rsa:
        return CommonSize + KeyMarkSize + slot.sealedSlotKey.size();
    case SlotKind::Symmetric:
        break;
    }
    return CommonSize;
}

void encode(const Slot& slot, ByteWriter& writer)
{
    writer.u16(static_cast<std::uint16_t>(slot.kind));
    writer.u16(static_cast<std::uint16_t>(bodySize(slot)));
    writer.put(slot.salt);
    writer.put(slot.check);
    writer.put(slot.nonce);
    writer.put(slot.wrappedFileKey);
    writer.put(slot.wrapTag);
    if (slot.kind == SlotKind::Password)
    {
        writer.u32(slot.argon2.memoryKiB);
        writer.u32(slot.argon2.passes);
        writer.u32(slot.argon2.lanes);
    }
    if (slot.kind == SlotKind::Rsa)
    {
        writer.put(slot.keyMark);
        writer.put(slot.sealedSlotKey);
    }
}

[[noreturn]] void throwAbsurdCost()
{
    throwAbsurd(L"The encrypted file asks for a key derivation beyond the limits of this engine.");
}

/// Memory that is passed over in a derivation. 0 for slots that need none.
std::uint64_t costOf(const Argon2Parameters& parameters)
{
    return std::uint64_t{parameters.memoryKiB} * parameters.passes;
}

void decodePassword(Slot& slot, ByteReader& reader)
{
    slot.argon2.memoryKiB = reader.u32();
    slot.argon2.passes = reader.u32();
    slot.argon2.lanes = reader.u32();
    if (reader.ok() && !withinLimits(slot.argon2))
        throwAbsurdCost();
}

void decodeRsa(Slot& slot, ByteReader& reader)
{
    reader.fill(slot.keyMark);
    const ByteView sealed = reader.rest();
    if (sealed.size() != RsaSmallModulus && sealed.size() != RsaLargeModulus)
        throwDamaged();
    slot.sealedSlotKey.assign(sealed.begin(), sealed.end());
}

bool isKnown(SlotKind kind)
{
    return kind == SlotKind::Password || kind == SlotKind::Symmetric || kind == SlotKind::Rsa;
}

Slot decode(SlotKind kind, ByteReader reader)
{
    Slot slot;
    slot.kind = kind;
    reader.fill(slot.salt);
    reader.fill(slot.check);
    reader.fill(slot.nonce);
    reader.fill(slot.wrappedFileKey);
    reader.fill(slot.wrapTag);
    if (kind == SlotKind::Password)
        decodePassword(slot, reader);
    if (kind == SlotKind::Rsa)
        decodeRsa(slot, reader);
    if (!reader.ok() || reader.left() != 0)
        throwDamaged();
    return slot;
}

} // namespace

Bytes encodeSlots(const std::vector<Slot>& slots)
{
    std::size_t size = 0;
    for (const Slot& slot : slots)
        size += HeaderSize + bodySize(slot);
    Bytes bytes(size);
    ByteWriter writer(bytes);
    for (const Slot& slot : slots)
        encode(slot, writer);
    return bytes;
}

std::vector<Slot> decodeSlots(ByteView bytes)
{
    std::vector<Slot> slots;
    std::uint64_t cost = 0;
    ByteReader reader(bytes);
    for (std::size_t count = 0; reader.left() != 0; ++count)
    {
        const auto kind = static_cast<SlotKind>(reader.u16());
        const std::size_t size = reader.u16();
        const ByteView body = reader.take(size);
        if (!reader.ok())
            throwDamaged();
        if (count == MostSlots)
            throwAbsurd(L"The encrypted file has more key slots than this engine takes.");
        if (!isKnown(kind))
            continue;
        slots.push_back(decode(kind, ByteReader(body)));
        cost += costOf(slots.back().argon2);
        // Each of them may have to be derived before the right one is found.
        if (cost > costOf(LargestArgon2))
            throwAbsurdCost();
    }
    return slots;
}

} // namespace VaultCore
