#include "systemutilities/time_texts.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Halden::SystemUtilities;

namespace
{

constexpr std::int64_t Noon = 1'009'713'600; // 30 December 2001, a Sunday, 12:00

struct FormatDateTimeTest : testing::Test
{
    Fakes::FakePlatform platform;
};

} // namespace

TEST(FormatSeconds, leavesOutWhatIsZeroInFront)
{
    EXPECT_EQ(FormatSeconds(0), L"0s");
    EXPECT_EQ(FormatSeconds(59), L"59s");
    EXPECT_EQ(FormatSeconds(60), L"1m 0s");
    EXPECT_EQ(FormatSeconds(3599), L"59m 59s");
    EXPECT_EQ(FormatSeconds(3600), L"1h 0m 0s");
    EXPECT_EQ(FormatSeconds(3661), L"1h 1m 1s");
    EXPECT_EQ(FormatSeconds(7325), L"2h 2m 5s");
    EXPECT_EQ(FormatSeconds(360'000), L"100h 0m 0s");
    EXPECT_EQ(FormatSeconds(std::numeric_limits<std::int32_t>::max()), L"596523h 14m 7s");
}

TEST(FormatSeconds, eachPartOfANegativeTimeHasItsSign)
{
    EXPECT_EQ(FormatSeconds(-1), L"-1s");
    EXPECT_EQ(FormatSeconds(-60), L"-1m 0s");
    EXPECT_EQ(FormatSeconds(-3600), L"-1h 0m 0s");
    EXPECT_EQ(FormatSeconds(-3661), L"-1h -1m -1s");
    EXPECT_EQ(FormatSeconds(std::numeric_limits<std::int32_t>::min()), L"-596523h -14m -8s");
}

TEST_F(FormatDateTimeTest, isTheUsersDateABlankAndTheUsersTime)
{
    EXPECT_EQ(FormatDateTime(Noon + 3'723), L"12/30/2001 1:02:03 PM");
    platform.locale.texts[Platform::LocaleShortDate] = L"dd.MM.yy";
    platform.locale.texts[Platform::LocaleTimeFormat] = L"HH:mm:ss";
    EXPECT_EQ(FormatDateTime(Noon + 3'723), L"30.12.01 13:02:03");
}

TEST_F(FormatDateTimeTest, isInTheUsersTimeZone)
{
    platform.locale.offset = 13 * 3600;
    EXPECT_EQ(FormatDateTime(Noon), L"12/31/2001 1:00:00 AM");
}

TEST_F(FormatDateTimeTest, startsIn1970AndGoesBeyond32Bits)
{
    EXPECT_EQ(FormatDateTime(0), L"1/1/1970 12:00:00 AM");
    EXPECT_EQ(FormatDateTime(0x1'0000'0000), L"2/7/2106 6:28:16 AM");
}

TEST_F(FormatDateTimeTest, aTimeThatTheSystemHasNoFieldsForHasNoDate)
{
    EXPECT_EQ(FormatDateTime(-1), L" 12:00:00 AM");
    EXPECT_EQ(FormatDateTime(std::numeric_limits<std::int64_t>::max()), L" 12:00:00 AM");
}

TEST_F(FormatDateTimeTest, picturesOf79CharactersFit)
{
    platform.locale.texts[Platform::LocaleShortDate] = std::wstring(78, L'-') + L"d";
    platform.locale.texts[Platform::LocaleTimeFormat] = std::wstring(78, L'-') + L"H";
    EXPECT_EQ(FormatDateTime(Noon), std::wstring(78, L'-') + L"30 " + std::wstring(78, L'-') + L"12");
}

TEST(FormatDateTimeOfTheSystem, hasTheYearAndTheMinute)
{
    const std::wstring text = FormatDateTime(Noon + 34 * 60);
    EXPECT_NE(text.find(L"01"), std::wstring::npos) << text.c_str();
    EXPECT_NE(text.find_first_of(L"34"), std::wstring::npos) << text.c_str();
    EXPECT_NE(text.find(L' '), std::wstring::npos);
    EXPECT_GE(text.size(), 12u);
}
