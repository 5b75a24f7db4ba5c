#include "platform/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using Platform::fromUtf8;
using Platform::toUtf8;

namespace
{

TEST(Utf8, plainTextStaysAsItIs)
{
    EXPECT_EQ(fromUtf8("C:\\a b.txt"), L"C:\\a b.txt");
    EXPECT_EQ(toUtf8(L"C:\\a b.txt"), "C:\\a b.txt");
    EXPECT_EQ(fromUtf8(""), L"");
    EXPECT_EQ(toUtf8(L""), "");
}

TEST(Utf8, charactersOfEveryLengthAreConverted)
{
    const std::string narrow = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x94\x92";
    const std::wstring wide = L"\u00E9\u20AC\U0001F512";
    EXPECT_EQ(fromUtf8(narrow), wide);
    EXPECT_EQ(toUtf8(wide), narrow);
}

TEST(Utf8, aNullInTheTextIsKept)
{
    EXPECT_EQ(fromUtf8(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(toUtf8(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8, anInvalidByteBecomesALoneSurrogateThatHoldsIt)
{
    EXPECT_EQ(fromUtf8("a\x80z"), std::wstring({L'a', wchar_t(0xDC80), L'z'}));
    EXPECT_EQ(fromUtf8("\xFF"), std::wstring(1, wchar_t(0xDCFF)));
}

TEST(Utf8, overlongCutAndSurrogateSequencesAreInvalidBytes)
{
    EXPECT_EQ(fromUtf8("\xC0\x80"), std::wstring({wchar_t(0xDCC0), wchar_t(0xDC80)}));
    EXPECT_EQ(fromUtf8("\xE0\x80\x80").size(), 3u);
    EXPECT_EQ(fromUtf8("\xE2\x82"), std::wstring({wchar_t(0xDCE2), wchar_t(0xDC82)}));
    EXPECT_EQ(fromUtf8("\xED\xA0\x80").size(), 3u);
    EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80").size(), 4u);
}

TEST(Utf8, aLoneSurrogateThatHoldsNoByteIsReplaced)
{
    EXPECT_EQ(toUtf8(std::wstring(1, wchar_t(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8(std::wstring(1, wchar_t(0xDC10))), "\xEF\xBF\xBD");
}

TEST(Utf8, anyBytesSurviveTheWayThereAndBack)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round)
    {
        std::string bytes;
        for (auto length = random() % 12; length > 0; --length)
            bytes += static_cast<char>(random() % 2 ? 0x80 + random() % 128 : random() % 256);
        EXPECT_EQ(toUtf8(fromUtf8(bytes)), bytes);
    }
}

} // namespace
