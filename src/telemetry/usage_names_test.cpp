#include "telemetry/usage_names.h"

#include "telemetry/usage_events.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Halden::ZEL::Telemetry;

TEST(TheNameOfAnAlgorithm, isTheOneOfItsNumber)
{
    const std::vector<std::wstring> names{L"desx",    L"blowfish-448", L"3-des",   L"aes-256",  L"rc2",    L"diamond2",
                                          L"tea-128", L"safer-128",    L"3-way",   L"gost-256", L"shark",  L"cast256e",
                                          L"square",  L"skipjack80",   L"twofish", L"mars-448", L"serpent"};
    ASSERT_EQ(names.size(), 17U);
    for (std::uint32_t number = 0; number < names.size(); ++number)
        EXPECT_EQ(algorithmName(number), names[number]) << number;
}

TEST(TheNameOfAnAlgorithm, isEmptyOutsideTheTableSoThatTheEventIsTheBarePrefix)
{
    EXPECT_EQ(UsageEvent::UseAlgorithmPrefix + algorithmName(17), L"use_alg_");
    EXPECT_EQ(algorithmName(0xFFFFFFFF), L"");
}

TEST(TheNameOfADestiny, isTheOneOfItsNumber)
{
    EXPECT_EQ(destinyName(0), L"leave");
    EXPECT_EQ(destinyName(1), L"delete");
    EXPECT_EQ(UsageEvent::UseDestinyPrefix + destinyName(2), L"use_destiny_wipe");
}

TEST(TheNameOfADestiny, isUnknownForAnyOtherNumber)
{
    EXPECT_EQ(UsageEvent::UseDestinyPrefix + destinyName(3), L"use_destiny_unknown");
    EXPECT_EQ(destinyName(0xFFFFFFFF), L"unknown");
}

TEST(TheEventOfAnExtraText, hasTheSameNameAsTheOneOfARiddle)
{
    EXPECT_STREQ(UsageEvent::UseExtraText, UsageEvent::UseRiddle);
    EXPECT_STREQ(UsageEvent::UseRiddle, L"use_riddle");
}
