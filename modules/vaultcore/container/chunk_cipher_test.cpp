#include "vaultcore/container/chunk_cipher.h"

#include "vaultcore/container/chunk_keys.h"
#include "vaultcore/container/testing_container.h"

#include <set>

namespace VaultCore
{
namespace
{

constexpr std::uint32_t Chunk = 4096;

class EachChunkCipher : public testing::TestWithParam<std::uint32_t>
{
protected:
    std::unique_ptr<ChunkCipher> newCipher() const { return createChunkCipher(algorithm, fileKey, Chunk); }

    static Bytes sealed(ChunkCipher& cipher, ChunkPlace place, ByteView plain)
    {
        Bytes chunk(plain.size() + cipher.tagSize());
        cipher.seal(place, plain, chunk);
        return chunk;
    }

    const Algorithm& algorithm = *findAlgorithm(GetParam());
    const Bytes fileKey = contentOf(32);
};

/// Zeros show the key stream of a counter mode, and the masks of the other one: no block of them comes twice.
TEST_P(EachChunkCipher, neverUsesABlockOfItsKeyStreamTwice)
{
    const auto cipher = newCipher();
    const Bytes zeros(Chunk);
    std::set<Bytes> blocks;
    std::size_t count = 0;
    for (std::uint64_t index = 0; index < 20; ++index)
    {
        const Bytes chunk = sealed(*cipher, {index, false}, zeros);
        for (std::size_t at = 0; at < Chunk; at += algorithm.blockSize, ++count)
        {
            const auto begin = chunk.begin() + static_cast<std::ptrdiff_t>(at);
            blocks.insert({begin, begin + static_cast<std::ptrdiff_t>(algorithm.blockSize)});
        }
    }
    EXPECT_EQ(blocks.size(), count);
}

TEST_P(EachChunkCipher, leavesNothingOfAChunkThatIsNotOfItsPlace)
{
    const auto cipher = newCipher();
    const Bytes plain = contentOf(100);
    for (const ChunkPlace place :
         {ChunkPlace{4, false}, ChunkPlace{2, false}, ChunkPlace{3, true}, ChunkPlace{0, false}})
    {
        Bytes chunk = sealed(*cipher, {3, false}, plain);
        EXPECT_FALSE(cipher->open(place, chunk));
        EXPECT_EQ(chunk, Bytes(chunk.size()));
    }
}

TEST_P(EachChunkCipher, comparesTheTagToItsEnd)
{
    const auto cipher = newCipher();
    for (std::size_t at = 0; at < cipher->tagSize(); ++at)
    {
        Bytes chunk = sealed(*cipher, {1, true}, contentOf(5));
        chunk[5 + at] ^= 1;
        EXPECT_FALSE(cipher->open({1, true}, chunk)) << at;
    }
}

TEST_P(EachChunkCipher, opensInAnyOrder)
{
    const auto cipher = newCipher();
    const std::uint64_t behindAGroup = (std::uint64_t{4} << 30) / Chunk + 1;
    std::vector<Bytes> chunks;
    for (const std::uint64_t index : {std::uint64_t{1}, behindAGroup, std::uint64_t{2}, ~std::uint64_t{0}})
        chunks.push_back(sealed(*cipher, {index, false}, contentOf(Chunk)));
    const auto reader = newCipher();
    std::size_t number = 0;
    for (const std::uint64_t index : {std::uint64_t{1}, behindAGroup, std::uint64_t{2}, ~std::uint64_t{0}})
    {
        Bytes& chunk = chunks[number++];
        ASSERT_TRUE(reader->open({index, false}, chunk));
        chunk.resize(Chunk);
        EXPECT_EQ(chunk, contentOf(Chunk));
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, EachChunkCipher, testing::ValuesIn(AvailableAlgorithms));

/// How many chunks have the key that chunk 1 has.
std::uint64_t groupSize(std::uint32_t algorithm, std::uint32_t chunkSize)
{
    ChunkKeys keys(*findAlgorithm(algorithm), contentOf(32), chunkSize, 32);
    keys.keyFor(1);
    std::uint64_t size = 1;
    while (!keys.keyFor(1 + size))
        ++size;
    return size;
}

TEST(ChunkKeys, serveFourMebibytesOfSmallBlocksAndFourGibibytesOfLargeOnes)
{
    for (const std::uint32_t algorithm : {1u, 2u, 4u, 9u})
        EXPECT_EQ(groupSize(algorithm, 256 * 1024), 16U) << algorithm;
    for (const std::uint32_t algorithm : {3u, 14u, 16u})
        EXPECT_EQ(groupSize(algorithm, 256 * 1024), 16384U) << algorithm;
    EXPECT_EQ(groupSize(1, 1024 * 1024), 4U);
    EXPECT_EQ(groupSize(1, 4096), 1024U);
}

TEST(ChunkKeys, ofTheDetailsServeNothingElse)
{
    ChunkKeys keys(*findAlgorithm(Aes256), contentOf(32), Chunk, 32);
    const auto details = keys.keyFor(0);
    const auto content = keys.keyFor(1);
    ASSERT_TRUE(details && content);
    EXPECT_FALSE(sameSecret(details->bytes(), content->bytes()));
    EXPECT_FALSE(keys.keyFor(2));
    const auto again = keys.keyFor(0);
    ASSERT_TRUE(again);
    EXPECT_TRUE(sameSecret(details->bytes(), again->bytes()));
}

TEST(ChunkKeys, countTheChunksOfAGroupFromZero)
{
    const ChunkKeys keys(*findAlgorithm(1), contentOf(32), 256 * 1024, 56);
    EXPECT_EQ(keys.numberInGroup(0), 0U);
    EXPECT_EQ(keys.numberInGroup(1), 0U);
    EXPECT_EQ(keys.numberInGroup(16), 15U);
    EXPECT_EQ(keys.numberInGroup(17), 0U);
}

} // namespace
} // namespace VaultCore
