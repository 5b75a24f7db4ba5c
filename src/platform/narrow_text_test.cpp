#include "platform/narrow_text.h"

#include <gtest/gtest.h>

using Platform::widenThreadText;

TEST(ANarrowText, ofPlainCharactersStaysAsItIs)
{
    EXPECT_EQ(widenThreadText("Incompatible key type (3)."), L"Incompatible key type (3).");
}

TEST(ANarrowText, thatIsEmptyStaysEmpty)
{
    EXPECT_EQ(widenThreadText(""), L"");
}

TEST(ANarrowText, isTakenToItsEndAndNotToItsFirstNull)
{
    EXPECT_EQ(widenThreadText(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(ANarrowText, isTakenNoFurtherThanToItsEnd)
{
    EXPECT_EQ(widenThreadText(std::string_view("abcdef", 3)), L"abc");
}

TEST(ANarrowText, withBytesThatStandForNothingIsStillGivenWithTheRest)
{
    const std::wstring wide = widenThreadText("key \xFF\xFE file");
    EXPECT_EQ(wide.substr(0, 4), L"key ");
    EXPECT_EQ(wide.substr(wide.size() - 5), L" file");
}

TEST(ANarrowText, comesBackFromWideText)
{
    EXPECT_EQ(Platform::narrowThreadText(L"Cannot do it (3)."), "Cannot do it (3).");
    EXPECT_EQ(Platform::narrowThreadText(L""), "");
    EXPECT_EQ(Platform::narrowThreadText(std::wstring_view(L"a\0bc", 3)), std::string("a\0b", 3));
}
