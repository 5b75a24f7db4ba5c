#include "vaultcore/container/chunk_cipher.h"
#include "vaultcore/container/details.h"
#include "vaultcore/container/head.h"
#include "vaultcore/container/testing_damage.h"

#include <set>

// Heads with more than the one slot that is written.

namespace VaultCore
{
namespace
{

SecureBytes fileKeyOf(std::uint8_t first)
{
    SecureBytes key(FileKeySize);
    std::iota(key.bytes().begin(), key.bytes().end(), first);
    return key;
}

Slot slotFor(const Key& key, const SecureBytes& fileKey)
{
    SlotStart start = startSlot(key, CheapArgon2);
    wrapFileKey(start.slot, start.slotKey, fileKey);
    return std::move(start.slot);
}

/// A container under `fileKey`, whatever its slots hold.
Bytes containerWith(std::vector<Slot> slots, const SecureBytes& fileKey, ByteView content)
{
    const Bytes details = encodeDetails(detailsOf(content.size()));
    Head head;
    head.algorithm = Aes256;
    head.chunkSize = Chunk;
    head.detailsSize = static_cast<std::uint32_t>(details.size());
    head.slots = std::move(slots);
    Bytes container = encodeHead(head, fileKey);
    const auto cipher = createChunkCipher(*findAlgorithm(Aes256), fileKey.bytes(), Chunk);
    const auto append = [&](ChunkPlace place, ByteView plain)
    {
        Bytes chunk(plain.size() + cipher->tagSize());
        cipher->seal(place, plain, chunk);
        container.insert(container.end(), chunk.begin(), chunk.end());
    };
    append({0, false}, details);
    append({1, true}, content);
    return container;
}

TEST(KeySlots, eachOpenTheSameContent)
{
    const auto password = createPasswordKey(L"swordfish");
    const auto file = symmetricKey();
    const Bytes container =
        containerWith({slotFor(*password, fileKeyOf(1)), slotFor(*file, fileKeyOf(1))}, fileKeyOf(1), contentOf(100));
    EXPECT_EQ(unseal(container, *password), contentOf(100));
    EXPECT_EQ(unseal(container, *file), contentOf(100));
}

/// One container has one content, whatever key opens it: the head is genuine under one file key only.
TEST(KeySlots, withTwoFileKeysOpenNoSecondContent)
{
    const auto honest = createPasswordKey(L"swordfish");
    const auto other = createPasswordKey(L"trout");
    const Bytes container =
        containerWith({slotFor(*honest, fileKeyOf(1)), slotFor(*other, fileKeyOf(2))}, fileKeyOf(1), contentOf(100));
    const auto cache = createDerivationCache();
    EXPECT_EQ(unseal(container, *honest, *cache), contentOf(100));
    EXPECT_EQ(faultOf([&] { unseal(container, *other, *cache); }), ContainerFault::Damaged);
}

TEST(KeySlots, giveOutNoFileKeyThatWasChanged)
{
    const auto key = symmetricKey();
    const auto cache = createDerivationCache();
    const Slot slot = slotFor(*key, fileKeyOf(1));
    EXPECT_TRUE(sameSecret(openSlot(slot, *key, *cache)->bytes(), fileKeyOf(1).bytes()));
    for (std::size_t at = 0; at < slot.wrapTag.size(); ++at)
    {
        Slot changed = slot;
        changed.wrapTag[at] ^= 1;
        EXPECT_EQ(faultOf([&] { openSlot(changed, *key, *cache); }), ContainerFault::Damaged) << at;
    }
    Slot changed = slot;
    changed.wrappedFileKey[5] ^= 1;
    EXPECT_EQ(faultOf([&] { openSlot(changed, *key, *cache); }), ContainerFault::Damaged);
}

TEST(KeySlots, ofOneJobShareTheirSaltAndNothingElse)
{
    const auto key = symmetricKey();
    const auto session = startEncryptionWith(*key, Aes256, cheapParameters());
    std::set<std::array<std::uint8_t, 12>> nonces;
    std::set<Bytes> fileKeys;
    std::set<std::array<std::uint8_t, 32>> salts;
    constexpr std::size_t Count = 50;
    for (std::size_t number = 0; number < Count; ++number)
    {
        const Bytes container = sealWith(*session, {});
        MemorySource source(container);
        const Slot slot = readHead(source).head.slots.at(0);
        nonces.insert(slot.nonce);
        salts.insert(slot.salt);
        const auto fileKey = openSlot(slot, *key, *createDerivationCache());
        ASSERT_TRUE(fileKey);
        fileKeys.insert(Bytes(fileKey->bytes().begin(), fileKey->bytes().end()));
    }
    EXPECT_EQ(nonces.size(), Count);
    EXPECT_EQ(fileKeys.size(), Count);
    EXPECT_EQ(salts.size(), 1U);
}

TEST(KeySlots, ofTwoJobsShareNothing)
{
    for (const KeyKind kind : {KeyKind::Password, KeyKind::Symmetric, KeyKind::Rsa})
    {
        const SlotStart first = startSlot(*keyOf(kind), CheapArgon2);
        const SlotStart second = startSlot(*keyOf(kind), CheapArgon2);
        EXPECT_NE(first.slot.salt, second.slot.salt);
        EXPECT_NE(first.slot.check, second.slot.check);
        EXPECT_FALSE(sameSecret(first.slotKey.bytes(), second.slotKey.bytes()));
    }
}

/// The cache must not take one derivation for another.
TEST(KeySlots, areDerivedAgainForOtherCosts)
{
    const auto key = createPasswordKey(L"swordfish");
    const auto cache = createDerivationCache();
    const Slot slot = slotFor(*key, fileKeyOf(1));
    ASSERT_TRUE(openSlot(slot, *key, *cache));
    for (const Argon2Parameters& argon2 : {Argon2Parameters{72, 1, 1}, {64, 2, 1}, {64, 1, 2}})
    {
        Slot changed = slot;
        changed.argon2 = argon2;
        EXPECT_FALSE(openSlot(changed, *key, *cache));
    }
    Slot changed = slot;
    changed.salt[0] ^= 1;
    EXPECT_FALSE(openSlot(changed, *key, *cache));
}

TEST(KeySlots, ofAnRsaKeyAreOpenedAgainWhenTheyWereChanged)
{
    const auto key = rsaKey(KeyTypeRsaPair);
    const auto cache = createDerivationCache();
    Slot slot = slotFor(*key, fileKeyOf(1));
    ASSERT_TRUE(openSlot(slot, *key, *cache));
    slot.sealedSlotKey[100] ^= 1;
    EXPECT_EQ(faultOf([&] { openSlot(slot, *key, *cache); }), ContainerFault::Damaged);
}

TEST(KeySlots, ofAnRsaKeyHoldASlotKeyOfItsWholeSize)
{
    const auto key = rsaKey(KeyTypeRsaPair);
    for (const std::size_t size : {std::size_t{1}, DerivedKeySize - 1, DerivedKeySize + 1})
    {
        SlotStart start = startSlot(*key, CheapArgon2);
        const SecureBytes slotKey(contentOf(size));
        start.slot.sealedSlotKey = sealWithRsa(rsaPair().rsa, slotKey);
        const SecureBytes check = expandKey(slotKey.bytes(), "vaultcore check", {}, start.slot.check.size());
        std::copy(check.bytes().begin(), check.bytes().end(), start.slot.check.begin());
        wrapFileKey(start.slot, slotKey, fileKeyOf(1));
        EXPECT_EQ(faultOf([&] { openSlot(start.slot, *key, *createDerivationCache()); }), ContainerFault::Damaged);
    }
}

TEST(KeySlots, areNoLongerAndNoShorterThanTheirKindAsksFor)
{
    for (const KeyKind kind : {KeyKind::Password, KeyKind::Symmetric, KeyKind::Rsa})
    {
        const Bytes whole = encodeSlots({slotFor(*keyOf(kind), fileKeyOf(1))});
        EXPECT_EQ(decodeSlots(whole).size(), 1U);
        Bytes longer = whole;
        longer[2] = static_cast<std::uint8_t>(longer[2] + 1);
        longer.push_back(0);
        EXPECT_EQ(faultOf([&] { decodeSlots(longer); }), ContainerFault::Damaged);
        Bytes shorter = whole;
        shorter[2] = static_cast<std::uint8_t>(shorter[2] - 1);
        shorter.pop_back();
        EXPECT_EQ(faultOf([&] { decodeSlots(shorter); }), ContainerFault::Damaged);
    }
}

TEST(KeySlots, areAtMostEight)
{
    const Slot slot = slotFor(*symmetricKey(), fileKeyOf(1));
    EXPECT_EQ(decodeSlots(encodeSlots(std::vector<Slot>(MostSlots, slot))).size(), MostSlots);
    EXPECT_EQ(faultOf([&] { decodeSlots(encodeSlots(std::vector<Slot>(MostSlots + 1, slot))); }),
              ContainerFault::AbsurdParameters);
}

TEST(KeySlots, costNoMoreTogetherThanOneMayAlone)
{
    Slot slot;
    const auto faultWith = [&](const Argon2Parameters& argon2, std::size_t count)
    {
        slot.argon2 = argon2;
        return faultOf([&] { decodeSlots(encodeSlots(std::vector<Slot>(count, slot))); });
    };
    EXPECT_FALSE(faultWith(LargestArgon2, 1));
    EXPECT_EQ(faultWith(LargestArgon2, 2), ContainerFault::AbsurdParameters);
    EXPECT_FALSE(faultWith(UsualArgon2, MostSlots));
    const Argon2Parameters half{LargestArgon2.memoryKiB / 2, LargestArgon2.passes, 1};
    EXPECT_FALSE(faultWith(half, 2));
    EXPECT_EQ(faultWith(half, 3), ContainerFault::AbsurdParameters);
}

TEST(Details, areRefusedWithAnythingBehindTheirTexts)
{
    Bytes details = encodeDetails(detailsOf(5));
    EXPECT_EQ(decodeDetails(details).name, detailsOf(5).name);
    details.back() = 1;
    EXPECT_EQ(faultOf([&] { decodeDetails(details); }), ContainerFault::Damaged);
}

TEST(Details, areRefusedWhenTheirTextsReachBehindThem)
{
    Bytes details = encodeDetails(detailsOf(5));
    for (const std::size_t at : {std::size_t{24}, std::size_t{28}})
    {
        Bytes changed = details;
        changed[at + 3] = 0xFF;
        EXPECT_EQ(faultOf([&] { decodeDetails(changed); }), ContainerFault::Damaged);
    }
    EXPECT_EQ(faultOf([&] { decodeDetails(ByteView(details).first(31)); }), ContainerFault::Damaged);
}

/// Someone who has the key can write anything, and the reader still has to hold.
TEST(ContainerReader, staysBrokenWhenItsDetailsAre)
{
    const auto key = symmetricKey();
    Bytes container = containerWith({slotFor(*key, fileKeyOf(1))}, fileKeyOf(1), contentOf(100));
    container[container.size() - 100 - AesTag - 1] ^= 1;
    MemorySource source(container);
    const auto reader = openContainer(source);
    const auto cache = createDerivationCache();
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(faultOf([&] { reader->unlock(*key, *cache); }), ContainerFault::Damaged);
    EXPECT_EQ(faultOf([&] { reader->read(); }), ContainerFault::Damaged);
}

} // namespace
} // namespace VaultCore
