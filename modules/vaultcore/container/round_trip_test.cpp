#include "vaultcore/container/rsa.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_rsa.h"

namespace VaultCore
{
namespace
{

constexpr std::uint32_t Chunk = 4096;

std::vector<std::size_t> interestingSizes()
{
    return {0, 1, 15, 16, 17, Chunk - 1, Chunk, Chunk + 1, 2 * Chunk, 5 * Chunk + 7};
}

class EachAlgorithm : public testing::TestWithParam<std::uint32_t>
{
};

TEST_P(EachAlgorithm, givesBackWhatWasSealedWhateverItsSize)
{
    const auto key = symmetricKey();
    for (const std::size_t size : interestingSizes())
    {
        const Bytes content = contentOf(size);
        const Bytes container = seal(*key, GetParam(), content);
        EXPECT_EQ(unseal(container, *key), content) << size;
    }
}

TEST_P(EachAlgorithm, opensItsContainersWithEachKindOfKey)
{
    const Bytes content = contentOf(Chunk + 1);
    const auto password = createPasswordKey(L"correct horse");
    EXPECT_EQ(unseal(seal(*password, GetParam(), content), *password), content);
    const auto pair = rsaKey(KeyTypeRsaPair);
    EXPECT_EQ(unseal(seal(*pair, GetParam(), content), *pair), content);
    EXPECT_EQ(unseal(seal(*rsaKey(KeyTypePublicRsa), GetParam(), content), *rsaKey(KeyTypePrivateRsa)), content);
}

TEST_P(EachAlgorithm, hidesTheContent)
{
    const Bytes content(3 * Chunk, 'x');
    const Bytes container = seal(*symmetricKey(), GetParam(), content);
    const Bytes piece(8, 'x');
    EXPECT_EQ(std::search(container.begin(), container.end(), piece.begin(), piece.end()), container.end());
}

/// With blocks of 64 bits a key is changed after 4 MiB.
TEST_P(EachAlgorithm, goesOnBehindAChangeOfKeys)
{
    const Bytes content = contentOf((std::size_t{8} << 20) + 5);
    const auto key = symmetricKey();
    EXPECT_EQ(unseal(seal(*key, GetParam(), content, 256 * 1024), *key), content);
}

INSTANTIATE_TEST_SUITE_P(Containers, EachAlgorithm, testing::ValuesIn(AvailableAlgorithms));

TEST(Container, tellsTheRiddleAndTheAlgorithmWithoutTheKey)
{
    const auto session = startEncryptionWith(*symmetricKey(), 14, cheapParameters());
    const Bytes container = sealWith(*session, contentOf(10), "What walks on \xC3\xBC legs?");
    MemorySource source(container);
    const auto reader = openContainer(source);
    EXPECT_EQ(reader->riddle(), "What walks on \xC3\xBC legs?");
    EXPECT_EQ(reader->algorithm(), 14u);
}

TEST(Container, tellsTheDetailsOnceUnlocked)
{
    const Bytes container = seal(*symmetricKey(), Aes256, contentOf(10));
    MemorySource source(container);
    const auto reader = openContainer(source);
    ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
    const ContainerDetails expected = detailsOf(10);
    EXPECT_EQ(reader->details().name, expected.name);
    EXPECT_EQ(reader->details().size, 10u);
    EXPECT_EQ(reader->details().modified, expected.modified);
    EXPECT_EQ(reader->details().created, expected.created);
    EXPECT_EQ(reader->details().extraText, expected.extraText);
}

TEST(Container, takesContentInPiecesOfAnySize)
{
    const Bytes content = contentOf(3 * Chunk);
    const auto key = symmetricKey();
    const auto session = startEncryptionWith(*key, Aes256, cheapParameters());
    for (const std::size_t piece : {std::size_t{1}, std::size_t{1000}, std::size_t{Chunk}, std::size_t{Chunk + 1}})
    {
        MemorySink sink;
        const auto writer = session->begin(sink, "", detailsOf(content.size()));
        for (std::size_t done = 0; done < content.size(); done += piece)
            writer->write(ByteView(content).subspan(done, std::min(piece, content.size() - done)));
        writer->finish();
        EXPECT_EQ(unseal(sink.bytes, *key), content) << piece;
    }
}

TEST(Container, isNeverTheSameTwice)
{
    const auto session = startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
    EXPECT_NE(sealWith(*session, contentOf(10)), sealWith(*session, contentOf(10)));
}

TEST(Container, letsAnotherKeyBeTriedAfterAWrongOne)
{
    const Bytes container = seal(*createPasswordKey(L"right"), Aes256, contentOf(10));
    MemorySource source(container);
    const auto reader = openContainer(source);
    const auto cache = createDerivationCache();
    EXPECT_FALSE(reader->unlock(*createPasswordKey(L"wrong"), *cache));
    EXPECT_FALSE(reader->unlock(*createPasswordKey(L""), *cache));
    EXPECT_FALSE(reader->unlock(*symmetricKey(), *cache));
    EXPECT_FALSE(reader->unlock(*rsaKey(KeyTypeRsaPair), *cache));
    EXPECT_TRUE(reader->unlock(*createPasswordKey(L"right"), *cache));
    EXPECT_EQ(reader->read().size(), 10u);
}

TEST(Container, doesNotOpenWithAnotherKeyOfTheSameKind)
{
    const auto cache = createDerivationCache();
    const Bytes symmetric = seal(*symmetricKey(0), Aes256, contentOf(10));
    EXPECT_EQ(faultOf([&] { unseal(symmetric, *symmetricKey(1), *cache); }), ContainerFault::WrongKey);
    const Bytes rsa = seal(*rsaKey(KeyTypePublicRsa), Aes256, contentOf(10));
    EXPECT_EQ(faultOf([&] { unseal(rsa, *otherRsaKey(), *cache); }), ContainerFault::WrongKey);
}

TEST(Container, givesOutNothingWhileLocked)
{
    const Bytes container = seal(*symmetricKey(), Aes256, contentOf(10));
    MemorySource source(container);
    EXPECT_EQ(faultOf([&] { openContainer(source)->read(); }), ContainerFault::Damaged);
}

TEST(Container, staysAtItsEnd)
{
    const Bytes container = seal(*symmetricKey(), Aes256, contentOf(10));
    MemorySource source(container);
    const auto reader = openContainer(source);
    ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
    EXPECT_EQ(reader->read().size(), 10u);
    EXPECT_TRUE(reader->read().empty());
    EXPECT_TRUE(reader->read().empty());
}

TEST(StartEncryption, refusesKeysThatCannotEncrypt)
{
    const auto privateHalf = failureOf([] { startEncryption(*rsaKey(KeyTypePrivateRsa), Aes256); });
    ASSERT_TRUE(privateHalf);
    EXPECT_EQ(privateHalf->fault, ContainerFault::WrongKey);
    EXPECT_NE(privateHalf->message.find(L"private RSA key"), std::wstring::npos);
    EXPECT_EQ(faultOf([] { startEncryption(*createPasswordKey(L""), Aes256); }), ContainerFault::WrongKey);
}

TEST(Unlock, refusesAPublicKeyBecauseItCannotDecrypt)
{
    const Bytes container = seal(*rsaKey(KeyTypePublicRsa), Aes256, contentOf(10));
    const auto failure = failureOf([&] { unseal(container, *rsaKey(KeyTypePublicRsa)); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->fault, ContainerFault::WrongKey);
    EXPECT_NE(failure->message.find(L"public RSA key"), std::wstring::npos);
}

} // namespace
} // namespace VaultCore
