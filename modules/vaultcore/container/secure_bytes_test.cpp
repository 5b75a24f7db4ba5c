#include "vaultcore/container/secure_bytes.h"

#include "vaultcore/container/secret_cells.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace VaultCore
{
namespace
{

using Plain = std::vector<std::uint8_t>;

Plain plainOf(const SecureBytes& secret)
{
    return {secret.bytes().begin(), secret.bytes().end()};
}

TEST(SecureBytes, startAsZeros)
{
    EXPECT_EQ(plainOf(SecureBytes(5000)), Plain(5000));
}

TEST(SecureBytes, ofAnySizeAndNumberAreThere)
{
    for (const SecretCells* cells : {&SecretCells::ofKeys(), &SecretCells::ofFiles()})
    {
        const std::size_t size = cells->cellSize();
        std::vector<SecureBytes> many;
        for (std::size_t index = 0; index < 2 * cells->count(); ++index)
            many.emplace_back(Plain(size, static_cast<std::uint8_t>(index)));
        for (std::size_t index = 0; index < many.size(); ++index)
            EXPECT_EQ(plainOf(many[index]), Plain(size, static_cast<std::uint8_t>(index)));
    }
    EXPECT_EQ(plainOf(SecureBytes(Plain(100000, 5))), Plain(100000, 5));
}

TEST(SecureBytes, areWipedBeforeTheirMemoryIsUsedAgain)
{
    for (const std::size_t size : {std::size_t{40}, std::size_t{5000}})
    {
        for (int round = 0; round < 3; ++round)
        {
            SecureBytes secret(size);
            EXPECT_EQ(plainOf(secret), Plain(size));
            std::fill(secret.bytes().begin(), secret.bytes().end(), std::uint8_t{0xAA});
        }
    }
}

/// How many cells for files nobody uses.
std::size_t freeCells()
{
    std::vector<std::uint8_t*> taken;
    while (std::uint8_t* const cell = SecretCells::ofFiles().take())
        taken.push_back(cell);
    for (std::uint8_t* const cell : taken)
        SecretCells::ofFiles().give(cell);
    return taken.size();
}

TEST(SecureBytes, ofASmallFileAreInACell)
{
    const std::size_t before = freeCells();
    {
        const SecureBytes small(std::size_t{4097});
        EXPECT_EQ(freeCells(), before - 1);
        const SecureBytes large(std::size_t{1} << 20);
        EXPECT_EQ(freeCells(), before - 1);
    }
    EXPECT_EQ(freeCells(), before);
}

TEST(SecureBytes, areTakenAndGivenBackOnManyThreads)
{
    std::vector<std::thread> threads;
    for (std::uint8_t number = 1; number <= 4; ++number)
        threads.emplace_back(
            [number]
            {
                for (int round = 0; round < 2000; ++round)
                {
                    const SecureBytes secret(Plain(64, number));
                    ASSERT_EQ(plainOf(secret), Plain(64, number));
                }
            });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(SecureBytes, moveTheirContent)
{
    SecureBytes first(Plain{1, 2, 3});
    SecureBytes second(std::move(first));
    EXPECT_EQ(plainOf(second), (Plain{1, 2, 3}));
    EXPECT_TRUE(first.empty());
    SecureBytes third(Plain{4});
    third = std::move(second);
    EXPECT_EQ(plainOf(third), (Plain{1, 2, 3}));
    EXPECT_TRUE(second.empty());
}

TEST(SecureBytes, copyOnPurpose)
{
    const SecureBytes original(Plain{1, 2});
    SecureBytes copy = original.copy();
    copy.bytes()[0] = 9;
    EXPECT_EQ(plainOf(original), (Plain{1, 2}));
    EXPECT_TRUE(SecureBytes().copy().empty());
}

TEST(Wipe, overwritesEverything)
{
    Plain bytes(1000, 7);
    wipe(bytes);
    EXPECT_EQ(bytes, Plain(1000));
    wipe({});
}

TEST(SameSecret, comparesSizeAndContent)
{
    EXPECT_TRUE(sameSecret(Plain{1, 2}, Plain{1, 2}));
    EXPECT_FALSE(sameSecret(Plain{1, 2}, Plain{1, 3}));
    EXPECT_FALSE(sameSecret(Plain{1, 2}, Plain{1, 2, 0}));
    EXPECT_TRUE(sameSecret({}, {}));
}

} // namespace
} // namespace VaultCore
