#include "platform/posix/time_format.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

std::wstring picture(const std::wstring& format)
{
    return pictureOfFormat(format, L"%I:%M:%S %p");
}

} // namespace

TEST(PictureOfFormat, datesOfManyCountries)
{
    EXPECT_EQ(picture(L"%d.%m.%Y"), L"dd.MM.yyyy");
    EXPECT_EQ(picture(L"%m/%d/%y"), L"MM/dd/yy");
    EXPECT_EQ(picture(L"%Y-%m-%d"), L"yyyy-MM-dd");
    EXPECT_EQ(picture(L"%e. %b %Y"), L"d. MMM yyyy");
    EXPECT_EQ(picture(L"%A, %d %B"), L"dddd, dd MMMM");
    EXPECT_EQ(picture(L"%a %h"), L"ddd MMM");
}

TEST(PictureOfFormat, timesOfManyCountries)
{
    EXPECT_EQ(picture(L"%H:%M:%S"), L"HH:mm:ss");
    EXPECT_EQ(picture(L"%l:%M %P"), L"h:mm tt");
    EXPECT_EQ(picture(L"%k.%M"), L"H.mm");
}

TEST(PictureOfFormat, shortFormsStandForLongerOnes)
{
    EXPECT_EQ(picture(L"%T"), L"HH:mm:ss");
    EXPECT_EQ(picture(L"%R"), L"HH:mm");
    EXPECT_EQ(picture(L"%D"), L"MM/dd/yy");
    EXPECT_EQ(picture(L"%F"), L"yyyy-MM-dd");
    EXPECT_EQ(picture(L"%r"), L"hh:mm:ss tt");
    EXPECT_EQ(pictureOfFormat(L"%r", L""), L"");
    EXPECT_EQ(pictureOfFormat(L"%r", L"%r"), L"");
}

TEST(PictureOfFormat, aModifierChangesNothingButAMinusThatTakesTheZero)
{
    EXPECT_EQ(picture(L"%Ey-%Om"), L"yy-MM");
    EXPECT_EQ(picture(L"%-d.%-m.%-Y %-p"), L"d.M.yyyy tt");
    EXPECT_EQ(picture(L"%-H:%-M"), L"H:m");
}

TEST(PictureOfFormat, lettersThatWouldBeFieldsAreQuoted)
{
    EXPECT_EQ(picture(L"%d de %B"), L"dd 'd'e MMMM");
    EXPECT_EQ(picture(L"%H h"), L"HH 'h'");
    EXPECT_EQ(picture(L"'"), L"''''");
    EXPECT_EQ(picture(L"%Y\u5E74"), L"yyyy\u5E74");
}

TEST(PictureOfFormat, whatAPictureHasNotIsLeftOut)
{
    EXPECT_EQ(picture(L"%d %Z%j"), L"dd ");
    EXPECT_EQ(picture(L"100%%"), L"100%");
    EXPECT_EQ(picture(L"%d%"), L"dd");
    EXPECT_EQ(picture(L"%d%-"), L"dd");
}

TEST(GroupSeparator, isNeverThatOfTheDecimals)
{
    EXPECT_EQ(groupSeparator(L"'", L"."), L"'");
    EXPECT_EQ(groupSeparator(L"", L"."), L",");
    EXPECT_EQ(groupSeparator(L"", L","), L".");
}
