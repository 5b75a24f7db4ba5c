#include "platform/picture_text.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

constexpr LocalTime Evening{2007, 3, 5, 0, 21, 4, 2}; // a Monday, whatever its field says

std::wstring date(const std::wstring& picture, const LocalTime& time = Evening)
{
    return datePictureText(time, picture, englishWords());
}

std::wstring time(const std::wstring& picture, const LocalTime& fields = Evening)
{
    return timePictureText(fields, picture, englishWords());
}

} // namespace

TEST(DatePictureText, knowsEveryFormOfEachField)
{
    EXPECT_EQ(date(L"d|dd|ddd|dddd"), L"5|05|Mon|Monday");
    EXPECT_EQ(date(L"M|MM|MMM|MMMM"), L"3|03|Mar|March");
    EXPECT_EQ(date(L"y|yy|yyyy"), L"7|07|2007");
}

TEST(DatePictureText, aLongerRunIsTheLongestForm)
{
    EXPECT_EQ(date(L"ddddd MMMMMM yyyyy"), L"Monday March 2007");
}

TEST(DatePictureText, numbersOfTwoDigitsStandAsTheyAre)
{
    EXPECT_EQ(date(L"d/dd M/MM y/yy", {1999, 12, 31, 0, 0, 0, 0}), L"31/31 12/12 99/99");
}

TEST(DatePictureText, theWeekFollowsFromTheDate)
{
    EXPECT_EQ(date(L"ddd", {2000, 1, 1, 0, 0, 0, 0}), L"Sat");
    EXPECT_EQ(date(L"dddd", {2000, 1, 2, 6, 0, 0, 0}), L"Sunday");
}

TEST(DatePictureText, everyOtherCharacterStandsForItself)
{
    EXPECT_EQ(date(L"hHmst, \u5E74"), L"hHmst, \u5E74");
    EXPECT_EQ(date(L""), L"");
}

TEST(PictureText, quotesKeepLetters)
{
    EXPECT_EQ(date(L"'d''M' d"), L"d'M 5");
    EXPECT_EQ(date(L"''d"), L"5");
    EXPECT_EQ(date(L"''''d"), L"'5");
    EXPECT_EQ(date(L"d 'open d"), L"5 open d");
    EXPECT_EQ(date(L"d'"), L"5");
    EXPECT_EQ(time(L"H'h'mm"), L"21h04");
}

TEST(DatePictureText, aDateBefore1601IsNone)
{
    EXPECT_EQ(date(L"yyyy", {1600, 12, 31, 0, 0, 0, 0}), L"");
    EXPECT_EQ(date(L"yyyy", {1601, 1, 1, 0, 0, 0, 0}), L"1601");
}

TEST(DatePictureText, aDayThatItsMonthHasNotIsNone)
{
    EXPECT_EQ(date(L"d.M.yyyy", {2007, 2, 29, 0, 0, 0, 0}), L"");
    EXPECT_EQ(date(L"d.M.yyyy", {2008, 2, 29, 0, 0, 0, 0}), L"29.2.2008");
    EXPECT_EQ(date(L"d.M.yyyy", {2007, 0, 1, 0, 0, 0, 0}), L"");
    EXPECT_EQ(date(L"d.M.yyyy", {2007, 1, 0, 0, 0, 0, 0}), L"");
    EXPECT_EQ(date(L"d.M.yyyy", {2007, 257, 1, 0, 0, 0, 0}), L"");
}

TEST(DatePictureText, theWordsAreThoseThatAreGiven)
{
    PictureWords words = englishWords();
    words.shortMonths[2] = L"M\u00E4r";
    words.days[1] = L"Montag";
    EXPECT_EQ(datePictureText(Evening, L"dddd, d. MMM", words), L"Montag, 5. M\u00E4r");
}

TEST(TimePictureText, knowsEveryFormOfEachField)
{
    EXPECT_EQ(time(L"h|hh|H|HH"), L"9|09|21|21");
    EXPECT_EQ(time(L"m|mm|s|ss"), L"4|04|2|02");
    EXPECT_EQ(time(L"t|tt"), L"P|PM");
    EXPECT_EQ(time(L"hhh HHH mmm sss ttt"), L"09 21 04 02 PM");
}

TEST(TimePictureText, theHalvesOfTheDayChangeAtTwelve)
{
    EXPECT_EQ(time(L"h tt", {2007, 3, 5, 1, 0, 0, 0}), L"12 AM");
    EXPECT_EQ(time(L"h tt", {2007, 3, 5, 1, 11, 59, 59}), L"11 AM");
    EXPECT_EQ(time(L"h tt", {2007, 3, 5, 1, 12, 0, 0}), L"12 PM");
    EXPECT_EQ(time(L"H", {2007, 3, 5, 1, 0, 0, 0}), L"0");
}

TEST(TimePictureText, aLanguageWithoutHalvesLeavesThemOut)
{
    PictureWords words = englishWords();
    words.afternoon.clear();
    EXPECT_EQ(timePictureText(Evening, L"H:mm t tt", words), L"21:04  ");
}

TEST(TimePictureText, whatNoClockShowsIsNone)
{
    EXPECT_EQ(time(L"H", {2007, 3, 5, 1, -1, 0, 0}), L"");
    EXPECT_EQ(time(L"H", {2007, 3, 5, 1, 0, -1, 0}), L"");
    EXPECT_EQ(time(L"H", {2007, 3, 5, 1, 0, 0, -1}), L"");
    EXPECT_EQ(time(L"H", {2007, 3, 5, 1, 0, 0, 60}), L"");
}
