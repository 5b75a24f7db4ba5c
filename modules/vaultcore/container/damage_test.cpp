#include "vaultcore/container/testing_damage.h"

namespace VaultCore
{
namespace
{

class EachKeyKind : public testing::TestWithParam<KeyKind>
{
protected:
    std::optional<ContainerFault> faultOfChange(std::size_t index, std::uint8_t bits, bool fitChecksum)
    {
        Bytes changed = container;
        changed[index] ^= bits;
        if (fitChecksum)
            changed = withChecksum(std::move(changed), slotEnd(GetParam()));
        const Reading reading = readAll(changed, *key, *cache);
        expectGenuineBeginning(reading.content, content);
        return reading.fault;
    }

    const std::unique_ptr<Key> key = keyOf(GetParam());
    const Bytes content = contentOf(300);
    const Bytes container = seal(*key, Aes256, content);
    const std::unique_ptr<DerivationCache> cache = createDerivationCache();
};

TEST_P(EachKeyKind, refusesEachByteThatWasChanged)
{
    for (std::size_t index = 0; index < container.size(); ++index)
    {
        const auto fault = faultOfChange(index, static_cast<std::uint8_t>(1u << index % 8), false);
        ASSERT_TRUE(fault) << index;
        if (index < VersionAt)
            EXPECT_EQ(fault, ContainerFault::NotAContainer) << index;
        else if (index < AlgorithmAt)
            EXPECT_EQ(fault, ContainerFault::UnknownVersion) << index;
        else if (index < ChunkSizeAt || index >= RiddleAt)
            EXPECT_EQ(fault, ContainerFault::Damaged) << index;
        else
            // A size is either beyond the limits or leads the reader astray.
            EXPECT_TRUE(fault == ContainerFault::Damaged || fault == ContainerFault::AbsurdParameters) << index;
    }
}

TEST_P(EachKeyKind, refusesEachChangeOfTheHeadWhoseChecksumWasMadeFit)
{
    const std::size_t end = slotEnd(GetParam());
    for (std::size_t index = AlgorithmAt; index < end; ++index)
    {
        // An RSA operation for each of the encrypted bytes would take too long.
        if (GetParam() == KeyKind::Rsa && index > KindPartAt + 20 && index % 50 != 0)
            continue;
        EXPECT_TRUE(faultOfChange(index, 0x01, true)) << index;
    }
}

TEST_P(EachKeyKind, tellsAChangedRiddleFromAWrongKey)
{
    for (std::size_t index = RiddleAt; index < SlotAt; ++index)
        EXPECT_EQ(faultOfChange(index, 0x20, true), ContainerFault::Damaged) << index;
}

TEST_P(EachKeyKind, tellsAChangedFileKeyFromAWrongKey)
{
    for (std::size_t index = NonceAt; index < KindPartAt; ++index)
        EXPECT_EQ(faultOfChange(index, 0x01, true), ContainerFault::Damaged) << index;
}

TEST_P(EachKeyKind, takesAChangedSaltForAWrongKey)
{
    EXPECT_EQ(faultOfChange(SaltAt, 0x01, true), ContainerFault::WrongKey);
}

/// The mark of an RSA slot tells already that the key is the right one.
TEST_P(EachKeyKind, takesAChangedCheckForAWrongKeyUnlessTheKeyHasAMark)
{
    const bool marked = GetParam() == KeyKind::Rsa;
    EXPECT_EQ(faultOfChange(CheckAt, 0x01, true), marked ? ContainerFault::Damaged : ContainerFault::WrongKey);
    if (marked)
    {
        EXPECT_EQ(faultOfChange(KindPartAt, 0x01, true), ContainerFault::WrongKey);
        EXPECT_EQ(faultOfChange(KindPartAt + 16 + 200, 0x01, true), ContainerFault::Damaged);
    }
}

TEST_P(EachKeyKind, refusesEachShorterLength)
{
    for (std::size_t size = 0; size < container.size(); ++size)
    {
        const Reading reading = readAll(ByteView(container).first(size), *key, *cache);
        EXPECT_EQ(reading.fault, size < VersionAt ? ContainerFault::NotAContainer : ContainerFault::Damaged) << size;
        EXPECT_TRUE(reading.content.empty());
    }
}

TEST_P(EachKeyKind, refusesBytesBehindTheEnd)
{
    Bytes longer = container;
    longer.push_back(0);
    EXPECT_EQ(readAll(longer, *key, *cache).fault, ContainerFault::Damaged);
    longer = container;
    longer.insert(longer.end(), container.begin(), container.end());
    EXPECT_EQ(readAll(longer, *key, *cache).fault, ContainerFault::Damaged);
}

INSTANTIATE_TEST_SUITE_P(DamagedContainer, EachKeyKind,
                         testing::Values(KeyKind::Password, KeyKind::Symmetric, KeyKind::Rsa));

class EachDamagedAlgorithm : public testing::TestWithParam<std::uint32_t>
{
};

TEST_P(EachDamagedAlgorithm, refusesEachChangedByteOfTheChunks)
{
    const auto key = symmetricKey();
    const auto cache = createDerivationCache();
    const Bytes content = contentOf(100);
    const Bytes container = seal(*key, GetParam(), content);
    for (std::size_t index = detailsAt(KeyKind::Symmetric); index < container.size(); ++index)
    {
        Bytes changed = container;
        changed[index] ^= 0x80;
        const Reading reading = readAll(changed, *key, *cache);
        EXPECT_EQ(reading.fault, ContainerFault::Damaged) << index;
        EXPECT_TRUE(reading.content.empty()) << index;
    }
}

INSTANTIATE_TEST_SUITE_P(DamagedContainer, EachDamagedAlgorithm, testing::ValuesIn(AvailableAlgorithms));

TEST(DamagedContainer, givesOutNothingMoreOnceItHasFailed)
{
    Bytes container = seal(*symmetricKey(), Aes256, contentOf(ContentSize));
    container[detailsAt(KeyKind::Symmetric) + DetailsChunk + FullChunk] ^= 1;
    MemorySource source(container);
    const auto reader = openContainer(source);
    ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
    EXPECT_EQ(reader->read().size(), Chunk);
    for (int attempt = 0; attempt < 3; ++attempt)
        EXPECT_EQ(faultOf([&] { reader->read(); }), ContainerFault::Damaged);
}

/// What is cut off could be just what the reader's memory holds in its place.
TEST(DamagedContainer, withoutALastByteOfZeroIsRefused)
{
    const auto key = symmetricKey();
    for (const std::uint32_t algorithm : {Aes256, 16u})
    {
        const auto session = startEncryptionWith(*key, algorithm, cheapParameters(Chunk));
        Bytes container;
        do
            container = sealWith(*session, contentOf(5));
        while (container.back() != 0);
        container.pop_back();
        EXPECT_EQ(readAll(container, *key, *createDerivationCache()).fault, ContainerFault::Damaged);
    }
}

TEST(DamagedContainer, ofAnyFewBytesIsRefused)
{
    for (std::size_t size = 0; size <= 64; ++size)
        for (const int byte : {0x00, 0xFF, 0x89})
        {
            const Bytes bytes(size, static_cast<std::uint8_t>(byte));
            MemorySource source(bytes);
            EXPECT_EQ(faultOf([&] { openContainer(source); }), ContainerFault::NotAContainer);
        }
}

} // namespace
} // namespace VaultCore
