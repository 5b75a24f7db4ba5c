#include "platform/locale.h"

#include "platform/each_system.h"

#include <gtest/gtest.h>

namespace
{

constexpr std::uint32_t Enough = 80;
constexpr std::int64_t Day = 86'400;
constexpr std::int64_t NoonInTheYear2001 = 1'009'713'600; // 30 December, a Sunday

struct LocaleTest : EachSystem
{
    Platform::Locale& locale() { return system().locale; }
};

} // namespace

TEST_P(LocaleTest, theSeparatorsAreThereAndDiffer)
{
    const std::wstring decimal = locale().information(Platform::LocaleDecimal, 8);
    const std::wstring thousand = locale().information(Platform::LocaleThousand, 8);
    EXPECT_FALSE(decimal.empty());
    EXPECT_FALSE(thousand.empty());
    EXPECT_NE(decimal, thousand);
}

TEST_P(LocaleTest, aTextFitsOnlyWithItsTerminator)
{
    const std::wstring decimal = locale().information(Platform::LocaleDecimal, 8);
    const auto length = static_cast<std::uint32_t>(decimal.size());
    EXPECT_EQ(locale().information(Platform::LocaleDecimal, length + 1), decimal);
    EXPECT_EQ(locale().information(Platform::LocaleDecimal, length), L"");
    EXPECT_EQ(locale().information(Platform::LocaleDecimal, 0), L"");
}

TEST_P(LocaleTest, whatIsNoTypeHasNoText)
{
    EXPECT_EQ(locale().information(0xFFFF, Enough), L"");
}

TEST_P(LocaleTest, thePicturesOfTheUserHaveTheFieldsOfADateAndOfATime)
{
    const std::wstring date = locale().information(Platform::LocaleShortDate, Enough);
    for (const wchar_t field : L"dMy")
        EXPECT_TRUE(field == 0 || date.find(field) != std::wstring::npos) << date.c_str();
    const std::wstring time = locale().information(Platform::LocaleTimeFormat, Enough);
    EXPECT_NE(time.find_first_of(L"hH"), std::wstring::npos) << time.c_str();
    EXPECT_NE(time.find(L'm'), std::wstring::npos) << time.c_str();
}

TEST_P(LocaleTest, aDateIsWrittenAsThePictureSays)
{
    const Platform::LocalTime time{2007, 3, 5, 1, 9, 4, 2};
    EXPECT_EQ(locale().dateText(time, L"yyyy-MM-dd"), L"2007-03-05");
    EXPECT_EQ(locale().dateText(time, L"d.M.yy"), L"5.3.07");
    EXPECT_EQ(locale().dateText(time, L"'day' d"), L"day 5");
    EXPECT_EQ(locale().dateText(time, L"HH"), L"HH");
    EXPECT_FALSE(locale().dateText(time, L"dddd, d MMMM").empty());
}

TEST_P(LocaleTest, aTimeIsWrittenAsThePictureSays)
{
    const Platform::LocalTime time{2007, 3, 5, 1, 21, 4, 2};
    EXPECT_EQ(locale().timeText(time, L"HH:mm:ss"), L"21:04:02");
    EXPECT_EQ(locale().timeText(time, L"hh h H m s"), L"09 9 21 4 2");
    EXPECT_EQ(locale().timeText(time, L"H 'o''clock'"), L"21 o'clock");
    EXPECT_EQ(locale().timeText(time, L"dd"), L"dd");
}

TEST_P(LocaleTest, midnightAndNoonAreTwelve)
{
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 0, 30, 0}, L"h:mm"), L"12:30");
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 12, 30, 0}, L"h:mm"), L"12:30");
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 13, 30, 0}, L"h:mm"), L"1:30");
}

TEST_P(LocaleTest, aDayThatIsNotInTheCalendarHasNoText)
{
    EXPECT_EQ(locale().dateText({}, L"d.M.yyyy"), L"");
    EXPECT_EQ(locale().dateText({2008, 2, 29, 5, 0, 0, 0}, L"d.M.yyyy"), L"29.2.2008");
    EXPECT_EQ(locale().dateText({2007, 13, 1, 4, 0, 0, 0}, L"d.M.yyyy"), L"");
}

TEST_P(LocaleTest, aTimeThatNoClockShowsHasNoText)
{
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 24, 0, 0}, L"H:mm"), L"");
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 23, 60, 0}, L"H:mm"), L"");
}

TEST_P(LocaleTest, theFieldsOfATimeAreThoseOfItsDay)
{
    const Platform::LocalTime time = locale().localTime(NoonInTheYear2001);
    EXPECT_EQ(time.year, 2001);
    EXPECT_EQ(time.month, 12);
    EXPECT_NEAR(time.day, 30, 1);
    EXPECT_EQ(time.dayOfWeek, (time.day - 30 + 7) % 7);
    EXPECT_EQ(time.second, 0);
}

TEST_P(LocaleTest, aDayLaterIsTheSameTimeOfTheNextDay)
{
    const Platform::LocalTime first = locale().localTime(NoonInTheYear2001);
    const Platform::LocalTime second = locale().localTime(NoonInTheYear2001 + Day + 61);
    EXPECT_EQ(second.hour, first.hour);
    EXPECT_EQ(second.minute, first.minute + 1);
    EXPECT_EQ(second.second, 1);
    EXPECT_EQ(second.dayOfWeek, (first.dayOfWeek + 1) % 7);
}

TEST_P(LocaleTest, aTimeThatNoCalendarHoldsHasNoFields)
{
    const Platform::LocalTime time = locale().localTime(std::int64_t{1} << 62);
    EXPECT_EQ(time.year, 0);
    EXPECT_EQ(time.month, 0);
    EXPECT_EQ(time.day, 0);
}

TEST(FakeLocaleTest, knowsNoTimeBefore1970AndCountsFromTheUsersClock)
{
    Fakes::FakePlatform platform;
    EXPECT_EQ(platform.locale.localTime(-1).year, 0);
    EXPECT_EQ(platform.locale.localTime(0).year, 1970);
    EXPECT_EQ(platform.locale.localTime(0).dayOfWeek, 4);
    platform.locale.offset = -3600;
    EXPECT_EQ(platform.locale.localTime(0).year, 1969);
    EXPECT_EQ(platform.locale.localTime(0).hour, 23);
}

INSTANTIATE_EACH_SYSTEM(LocaleTest);
