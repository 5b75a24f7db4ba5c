#include "platform/utf16.h"

#include <gtest/gtest.h>

#include <random>

using Platform::fromUtf16;
using Platform::toUtf16;

namespace
{

using Bytes = std::vector<std::uint8_t>;

TEST(Utf16, aUnitIsTwoBytesTheLowOneFirst)
{
    EXPECT_EQ(toUtf16(L"A\u20AC"), (Bytes{0x41, 0x00, 0xAC, 0x20}));
    EXPECT_EQ(fromUtf16(Bytes{0x41, 0x00, 0xAC, 0x20}), L"A\u20AC");
    EXPECT_EQ(toUtf16(L"\uFFFF"), (Bytes{0xFF, 0xFF}));
    EXPECT_EQ(fromUtf16(Bytes{0xFF, 0xFF}), L"\uFFFF");
}

TEST(Utf16, noTextIsNoBytes)
{
    EXPECT_EQ(toUtf16(L""), Bytes{});
    EXPECT_EQ(fromUtf16({}), L"");
}

TEST(Utf16, aCharacterBeyondTheFirstPlaneIsAPairOfUnits)
{
    EXPECT_EQ(toUtf16(L"\U0001F512"), (Bytes{0x3D, 0xD8, 0x12, 0xDD}));
    EXPECT_EQ(fromUtf16(Bytes{0x3D, 0xD8, 0x12, 0xDD}), L"\U0001F512");
    EXPECT_EQ(toUtf16(L"\U00010000\U0010FFFF"), (Bytes{0x00, 0xD8, 0x00, 0xDC, 0xFF, 0xDB, 0xFF, 0xDF}));
    EXPECT_EQ(fromUtf16(Bytes{0x00, 0xD8, 0x00, 0xDC, 0xFF, 0xDB, 0xFF, 0xDF}), L"\U00010000\U0010FFFF");
}

TEST(Utf16, aSurrogateThatStandsAloneStays)
{
    const Bytes highAtTheEnd{0x41, 0x00, 0x3D, 0xD8};
    EXPECT_EQ(fromUtf16(highAtTheEnd), std::wstring({L'A', wchar_t(0xD83D)}));
    const Bytes lowFirst{0x12, 0xDD, 0x3D, 0xD8};
    EXPECT_EQ(fromUtf16(lowFirst), std::wstring({wchar_t(0xDD12), wchar_t(0xD83D)}));
    const Bytes highBeforeALetter{0x3D, 0xD8, 0x41, 0x00};
    EXPECT_EQ(fromUtf16(highBeforeALetter), std::wstring({wchar_t(0xD83D), L'A'}));
    const Bytes highBeforeAPair{0x3D, 0xD8, 0x3D, 0xD8, 0x12, 0xDD};
    EXPECT_EQ(fromUtf16(highBeforeAPair), std::wstring(1, wchar_t(0xD83D)) + L"\U0001F512");
    for (const Bytes& bytes : {highAtTheEnd, lowFirst, highBeforeALetter, highBeforeAPair})
        EXPECT_EQ(toUtf16(fromUtf16(bytes)), bytes);
}

TEST(Utf16, theLastByteOfAnOddNumberIsDropped)
{
    EXPECT_EQ(fromUtf16(Bytes{0x41}), L"");
    EXPECT_EQ(fromUtf16(Bytes{0x41, 0x00, 0x42}), L"A");
    EXPECT_EQ(fromUtf16(Bytes{0x3D, 0xD8, 0x12}), std::wstring(1, wchar_t(0xD83D)));
}

TEST(Utf16, aNullIsACharacterLikeAnyOther)
{
    EXPECT_EQ(fromUtf16(Bytes{0x41, 0, 0, 0, 0x42, 0}), std::wstring(L"A\0B", 3));
    EXPECT_EQ(toUtf16(std::wstring(L"A\0B", 3)), (Bytes{0x41, 0, 0, 0, 0x42, 0}));
}

TEST(Utf16, whatIsNoCharacterIsReplacedAndAUnitNeverIs)
{
    const bool wideIsAUnit = sizeof(wchar_t) == 2;
    EXPECT_EQ(toUtf16(std::wstring(1, static_cast<wchar_t>(-1))),
              wideIsAUnit ? (Bytes{0xFF, 0xFF}) : (Bytes{0xFD, 0xFF}));
}

TEST(Utf16, anyUnitsSurviveTheWayThereAndBack)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round)
    {
        Bytes bytes;
        for (auto length = random() % 12; length > 0; --length)
        {
            bytes.push_back(static_cast<std::uint8_t>(random() % 256));
            bytes.push_back(static_cast<std::uint8_t>(random() % 2 ? 0xD8 + random() % 8 : random() % 256));
        }
        EXPECT_EQ(toUtf16(fromUtf16(bytes)), bytes);
    }
}

} // namespace
