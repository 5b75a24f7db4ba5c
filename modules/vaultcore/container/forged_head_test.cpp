#include "vaultcore/container/derivation.h"
#include "vaultcore/container/testing_damage.h"

namespace VaultCore
{
namespace
{

/// Puts other numbers into a head and makes its checksum fit.
class ForgedHead : public testing::Test
{
protected:
    std::optional<ContainerFailure> failureWith(std::size_t at, std::uint32_t value, std::size_t size = 4)
    {
        Bytes changed = container;
        for (std::size_t index = 0; index < size; ++index)
            changed[at + index] = static_cast<std::uint8_t>(value >> 8 * index);
        changed = withChecksum(std::move(changed), slotEnd(KeyKind::Password));
        return failureOf([&] { unseal(changed, *key); });
    }
    std::optional<ContainerFault> faultWith(std::size_t at, std::uint32_t value, std::size_t size = 4)
    {
        const auto failure = failureWith(at, value, size);
        return failure ? std::optional(failure->fault) : std::nullopt;
    }

    const std::unique_ptr<Key> key = createPasswordKey(L"swordfish");
    const Bytes container = seal(*key, Aes256, contentOf(10));
};

TEST_F(ForgedHead, namesAnUnknownVersion)
{
    const auto failure = failureWith(VersionAt, 513, 2);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->fault, ContainerFault::UnknownVersion);
    EXPECT_NE(failure->message.find(L" 513,"), std::wstring::npos);
    EXPECT_EQ(faultWith(VersionAt, 0, 2), ContainerFault::UnknownVersion);
}

TEST_F(ForgedHead, namesAnAlgorithmThatTheEngineLacks)
{
    const auto failure = failureWith(AlgorithmAt, 5, 2);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->fault, ContainerFault::UnknownAlgorithm);
    EXPECT_NE(failure->message.find(L"DIAMOND2"), std::wstring::npos);
    EXPECT_EQ(faultWith(AlgorithmAt, 65535, 2), ContainerFault::UnknownAlgorithm);
}

TEST_F(ForgedHead, isDamagedWithAnotherAlgorithmThatTheEngineHas)
{
    EXPECT_EQ(faultWith(AlgorithmAt, 16, 2), ContainerFault::Damaged);
}

TEST_F(ForgedHead, asksForNoMoreThanTheLimits)
{
    for (const std::uint32_t size : {0u, 1u, 2048u, 4097u, 2u << 20, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_EQ(faultWith(ChunkSizeAt, size), ContainerFault::AbsurdParameters) << size;
    EXPECT_EQ(faultWith(DetailsSizeAt, (1u << 20) + 1), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(RiddleSizeAt, 64 * 1024 + 1), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(RiddleSizeAt, 0xFFFFFFFF), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(SlotsSizeAt, 16 * 1024 + 1), ContainerFault::AbsurdParameters);
}

TEST_F(ForgedHead, derivesNoKeyBeyondTheLimits)
{
    constexpr std::size_t MemoryAt = KindPartAt, PassesAt = KindPartAt + 4, LanesAt = KindPartAt + 8;
    for (const std::uint32_t memory : {0u, 7u, LargestArgon2.memoryKiB + 1, 0xFFFFFFFFu})
        EXPECT_EQ(faultWith(MemoryAt, memory), ContainerFault::AbsurdParameters) << memory;
    for (const std::uint32_t passes : {0u, LargestArgon2.passes + 1, 0xFFFFFFFFu})
        EXPECT_EQ(faultWith(PassesAt, passes), ContainerFault::AbsurdParameters) << passes;
    for (const std::uint32_t lanes : {0u, LargestArgon2.lanes + 1, 0xFFFFFFFFu})
        EXPECT_EQ(faultWith(LanesAt, lanes), ContainerFault::AbsurdParameters) << lanes;
    EXPECT_EQ(faultWith(MemoryAt, 72), ContainerFault::WrongKey);
}

TEST_F(ForgedHead, isDamagedWhenItsSlotHasAnotherLength)
{
    for (const std::uint32_t length : {0u, 107u, 119u, 121u, 65535u})
        EXPECT_EQ(faultWith(SlotAt + 2, length, 2), ContainerFault::Damaged) << length;
}

TEST_F(ForgedHead, withASlotOfAnUnknownKindOpensWithNoKey)
{
    EXPECT_EQ(faultWith(SlotAt, 4, 2), ContainerFault::WrongKey);
    EXPECT_EQ(faultWith(SlotAt, 0, 2), ContainerFault::WrongKey);
}

} // namespace
} // namespace VaultCore
