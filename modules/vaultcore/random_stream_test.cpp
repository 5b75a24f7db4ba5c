#include "vaultcore/random_stream.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

using VaultCore::RandomStream;

TEST(RandomStream, givesOtherBytesOnEveryCallAndOfEveryStream)
{
    RandomStream one;
    RandomStream two;
    std::vector<std::uint8_t> first(4096, 7);
    std::vector<std::uint8_t> second(4096, 7);
    std::vector<std::uint8_t> third(4096, 7);
    one.fill(first);
    one.fill(second);
    two.fill(third);
    EXPECT_NE(first, second);
    EXPECT_NE(first, third);
    EXPECT_EQ(std::set(first.begin(), first.end()).size(), 256U);
}

TEST(RandomStream, doesNotDependOnWhatTheBufferHeld)
{
    RandomStream stream;
    std::vector<std::uint8_t> bytes(65536, 0xFF);
    stream.fill(bytes);
    std::size_t ones = 0;
    for (const std::uint8_t byte : bytes)
        ones += static_cast<std::size_t>(__builtin_popcount(byte));
    // Half of the bits, give or take ten standard deviations.
    EXPECT_NEAR(static_cast<double>(ones), 262144.0, 3620.0);
}

TEST(RandomStream, givesSmallLettersForNames)
{
    RandomStream stream;
    const std::string name = stream.letters(12);
    EXPECT_EQ(name.size(), 12U);
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), std::string::npos);
    EXPECT_NE(name, stream.letters(12));
}
