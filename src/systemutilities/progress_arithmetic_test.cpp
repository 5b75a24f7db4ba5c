#include "systemutilities/progress_arithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Halden::SystemUtilities;

namespace
{
constexpr std::int32_t NotANumber = std::numeric_limits<std::int32_t>::min();
constexpr std::uint64_t Largest = std::numeric_limits<std::uint64_t>::max();
} // namespace

TEST(RoundTo, roundsAHalfUpward)
{
    EXPECT_EQ(RoundTo(0.5, 0), 1.0);
    EXPECT_EQ(RoundTo(2.5, 0), 3.0);
    EXPECT_EQ(RoundTo(2.4999, 0), 2.0);
    EXPECT_EQ(RoundTo(99.5, 0), 100.0);
}

TEST(RoundTo, keepsSoManyDecimals)
{
    EXPECT_EQ(RoundTo(1.25, 1), 1.3);
    EXPECT_EQ(RoundTo(3.14159, 3), 3.0 + 0.142);
    EXPECT_EQ(RoundTo(7.0, 5), 7.0);
}

TEST(RoundTo, followsTheValueOfTheDoubleItself)
{
    EXPECT_NEAR(RoundTo(2.675, 2), 2.67, 1e-12);
}

TEST(RoundTo, splitsTowardZero)
{
    EXPECT_EQ(RoundTo(-1.0, 0), -1.0);
    EXPECT_EQ(RoundTo(-1.5, 0), -1.0);
    EXPECT_EQ(RoundTo(-1.9, 0), -1.0);
    EXPECT_EQ(RoundTo(-0.7, 0), 0.0);
}

TEST(RoundTo, leavesWhatIsNotANumber)
{
    EXPECT_TRUE(std::isnan(RoundTo(std::nan(""), 0)));
    EXPECT_TRUE(std::isnan(RoundTo(std::nan(""), 2)));
}

TEST(percentOf, givesTheRoundedShare)
{
    EXPECT_EQ(percentOf(50, 200), 25);
    EXPECT_EQ(percentOf(200, 200), 100);
    EXPECT_EQ(percentOf(1, 3), 33);
    EXPECT_EQ(percentOf(2, 3), 67);
    EXPECT_EQ(percentOf(300, 100), 300);
}

TEST(percentOf, ofAPartOfZeroIsZero)
{
    EXPECT_EQ(percentOf(0, 200), 0);
    EXPECT_EQ(percentOf(0, 0), 0);
    EXPECT_EQ(percentOf(0, Largest), 0);
}

TEST(percentOf, ofATotalOfZeroIsNotANumber)
{
    EXPECT_TRUE(std::isnan(percentOfDouble(7, 0, 0)));
    EXPECT_EQ(percentOf(7, 0), NotANumber);
    EXPECT_EQ(percentOf(Largest, 0), NotANumber);
}

TEST(percentOf, ofAPartThatScalesDownToZeroIsNotANumber)
{
    EXPECT_TRUE(std::isnan(percentOfDouble(1, 10'000'000'000, 0)));
    EXPECT_EQ(percentOf(1, 10'000'000'000), NotANumber);
    EXPECT_EQ(percentOf(9'999, 10'000'000'000), NotANumber);
    EXPECT_EQ(percentOf(10'000, 10'000'000'000), 0);
}

TEST(percentOf, scalesFromTenMillionOn)
{
    EXPECT_EQ(percentOf(1, 9'999'999), 0);
    EXPECT_EQ(percentOf(99, 10'000'000), NotANumber);
    EXPECT_EQ(percentOf(100, 10'000'000), 0);
    EXPECT_EQ(percentOf(9'999, 999'999'999), 0);
    EXPECT_EQ(percentOf(9'999, 1'000'000'000), NotANumber);
}

TEST(percentOf, scalesAsIfDividedByAHundredAgainAndAgain)
{
    std::uint64_t number = 88172645463325252; // xorshift
    for (int i = 0; i < 20'000; ++i)
    {
        number ^= number << 13;
        number ^= number >> 7;
        number ^= number << 17;
        const std::uint64_t total = number >> (number % 60);
        const std::uint64_t part = (number * 2654435761u) >> (number % 63);
        std::uint64_t smallTotal = total;
        std::uint64_t smallPart = part;
        while (smallTotal > 9'999'999)
        {
            smallTotal /= 100;
            smallPart /= 100;
        }
        const bool lost = part != 0 && smallPart == 0;
        EXPECT_EQ(percentOf(part, total), lost ? NotANumber : percentOf(smallPart, smallTotal))
            << part << " of " << total;
    }
}

TEST(percentOf, cutsToThirtyTwoBits)
{
    EXPECT_EQ(percentOf(21'474'836, 1), 2'147'483'600);
    EXPECT_EQ(percentOf(21'474'837, 1), NotANumber);
    EXPECT_EQ(percentOf(Largest, 1), NotANumber);
}

// The share by way of its inverse lands just below a half in some cases, on every system in the same ones.
TEST(percentOf, givesTheSameOnEverySystem)
{
    struct Case
    {
        std::uint64_t part;
        std::uint64_t total;
        std::int32_t percent;
    };
    constexpr Case cases[] = {
        {5, 8, 62},
        {1, 8, 13},
        {3, 8, 38},
        {7, 8, 88},
        {9, 40, 22},
        {10, 16, 62},
        {23, 40, 57},
        {25, 40, 62},
        {27, 40, 68},
        {1, 200, 1},
        {199, 200, 100},
        {5'000'000'000, 8'000'000'000, 62},
        {123'456'789, 987'654'321, 12},
        {Largest, Largest, 100},
        {Largest / 2, Largest, 50},
    };
    for (const Case& entry : cases)
        EXPECT_EQ(percentOf(entry.part, entry.total), entry.percent) << entry.part << " of " << entry.total;
}

TEST(percentOfDouble, keepsDecimals)
{
    EXPECT_NEAR(percentOfDouble(1, 3, 2), 33.33, 1e-9);
    EXPECT_NEAR(percentOfDouble(2, 3, 1), 66.7, 1e-9);
}

TEST(EstimateRemainingSeconds, dividesByTheSpeedSoFar)
{
    EXPECT_EQ(EstimateRemainingSeconds(1000, 10, 500), 5u);
    EXPECT_EQ(EstimateRemainingSeconds(1099, 10, 1000), 9u); // a speed in whole units
}

TEST(EstimateRemainingSeconds, takesNoElapsedTimeAsOneSecond)
{
    EXPECT_EQ(EstimateRemainingSeconds(100, 0, 1000), 10u);
}

TEST(EstimateRemainingSeconds, takesASpeedOfZeroAsOne)
{
    EXPECT_EQ(EstimateRemainingSeconds(0, 10, 1000), 1000u);
    EXPECT_EQ(EstimateRemainingSeconds(9, 10, Largest), Largest);
}

TEST(cutToInteger, cutsTowardZero)
{
    EXPECT_EQ(cutToInteger(62.9), 62);
    EXPECT_EQ(cutToInteger(-1.9), -1);
    EXPECT_EQ(cutToInteger(2147483647.9), 2147483647);
    EXPECT_EQ(cutToInteger(-2147483648.5), NotANumber);
}

TEST(cutToInteger, givesTheSmallestNumberForWhatDoesNotFit)
{
    EXPECT_EQ(cutToInteger(2147483648.0), NotANumber);
    EXPECT_EQ(cutToInteger(-1e300), NotANumber);
    EXPECT_EQ(cutToInteger(std::nan("")), NotANumber);
    EXPECT_EQ(cutToInteger(HUGE_VAL), NotANumber);
}
