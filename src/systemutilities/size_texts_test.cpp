#include "systemutilities/size_texts.h"

#include "fakes/fake_platform.h"
#include "platform/system_with.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Halden::SystemUtilities;

namespace
{

constexpr std::uint64_t KB = 1024;
constexpr std::uint64_t MB = 1'048'576;
constexpr std::uint64_t GB = 1'073'741'824;
constexpr std::uint64_t Largest = std::numeric_limits<std::uint64_t>::max();

struct SizeTextsTest : testing::Test
{
    SizeTextsTest() { forgetSeparators(); }
    ~SizeTextsTest() override { forgetSeparators(); }

    void useSeparators(const std::wstring& decimal, const std::wstring& thousand)
    {
        platform.locale.texts[Platform::LocaleDecimal] = decimal;
        platform.locale.texts[Platform::LocaleThousand] = thousand;
    }

    Fakes::FakePlatform platform;
};

using FormatScaledTest = SizeTextsTest;
using FormatSizeTest = SizeTextsTest;

} // namespace

TEST_F(FormatScaledTest, takesTrailingZerosOffTheFraction)
{
    EXPECT_EQ(FormatScaled(1536, 1024, 1), L"1.5");
    EXPECT_EQ(FormatScaled(1536, 1024, 3), L"1.5");
    EXPECT_EQ(FormatScaled(2048, 1024, 1), L"2");
    EXPECT_EQ(FormatScaled(105, 100, 4), L"1.05");
    EXPECT_EQ(FormatScaled(1005, 10000, 4), L"0.1005");
}

TEST_F(FormatScaledTest, writesAWholePartOfZero)
{
    EXPECT_EQ(FormatScaled(0, 1024, 2), L"0");
    EXPECT_EQ(FormatScaled(512, 1024, 2), L"0.5");
    EXPECT_EQ(FormatScaled(0, 1, 0), L"0");
}

TEST_F(FormatScaledTest, aFractionThatIsRoundedToOneCountsInTheWholePart)
{
    EXPECT_EQ(FormatScaled(1999, 1000, 2), L"2");
    EXPECT_EQ(FormatScaled(1994, 1000, 2), L"1.99");
    EXPECT_EQ(FormatScaled(1995, 1000, 2), L"2");
    EXPECT_EQ(FormatScaled(999'999, 1000, 1), L"1,000");
    EXPECT_EQ(FormatScaled(999, 1000, 0), L"1");
}

TEST_F(FormatScaledTest, aHalfRoundsUpward)
{
    EXPECT_EQ(FormatScaled(5, 2, 0), L"3");
    EXPECT_EQ(FormatScaled(249, 100, 0), L"2");
    EXPECT_EQ(FormatScaled(125, 100, 1), L"1.3");
    EXPECT_EQ(FormatScaled(124, 100, 1), L"1.2");
}

TEST_F(FormatScaledTest, noDecimalsLeaveNoSeparator)
{
    EXPECT_EQ(FormatScaled(1100, 1000, 0), L"1");
    EXPECT_EQ(FormatScaled(1100, 1000, -1), L"1");
    EXPECT_EQ(FormatScaled(1900, 1000, std::numeric_limits<int>::min()), L"2");
}

TEST_F(FormatScaledTest, keepsEveryDecimalThatThereIs)
{
    EXPECT_EQ(FormatScaled(1, 1024, 10), L"0.0009765625");
    EXPECT_EQ(FormatScaled(1, 1024, 12), L"0.0009765625");
    EXPECT_EQ(FormatScaled(1, 1024, 9), L"0.000976563");
}

TEST_F(FormatScaledTest, moreDecimalsThanADoubleHasAreNoHarm)
{
    EXPECT_TRUE(FormatScaled(3, 2, 300).starts_with(L"1.5"));
    EXPECT_EQ(FormatScaled(3, 2, std::numeric_limits<int>::max()), FormatScaled(3, 2, 300));
}

TEST_F(FormatScaledTest, partsTheWholePartInGroupsOfThree)
{
    EXPECT_EQ(FormatScaled(1, 1, 0), L"1");
    EXPECT_EQ(FormatScaled(12, 1, 0), L"12");
    EXPECT_EQ(FormatScaled(123, 1, 0), L"123");
    EXPECT_EQ(FormatScaled(1234, 1, 0), L"1,234");
    EXPECT_EQ(FormatScaled(12345, 1, 0), L"12,345");
    EXPECT_EQ(FormatScaled(123456, 1, 0), L"123,456");
    EXPECT_EQ(FormatScaled(1234567, 1, 0), L"1,234,567");
    EXPECT_EQ(FormatScaled(1000, 1, 0), L"1,000");
    EXPECT_EQ(FormatScaled(Largest, 1, 2), L"18,446,744,073,709,551,615");
    EXPECT_EQ(FormatScaled(Largest, Largest, 2), L"1");
}

TEST_F(FormatScaledTest, writesAsTheUserDoes)
{
    useSeparators(L",", L"\u202F");
    EXPECT_EQ(FormatScaled(12'345'500, 1000, 2), L"12\u202F345,5");
}

TEST_F(FormatScaledTest, groupsMayBePartedBySeveralCharactersOrByNone)
{
    useSeparators(L"**", L"--");
    EXPECT_EQ(FormatScaled(12'345'500, 1000, 2), L"12--345**5");
    forgetSeparators();
    useSeparators(L",", L"");
    EXPECT_EQ(FormatScaled(12'345'500, 1000, 2), L"12345,5");
}

TEST_F(FormatScaledTest, aNotationThatCannotBeReadIsPointAndComma)
{
    useSeparators(L"", L"");
    EXPECT_EQ(FormatScaled(12'345'500, 1000, 2), L"12,345.5");
}

TEST_F(FormatScaledTest, aSeparatorOfSevenCharactersFitsAndNoLongerOne)
{
    useSeparators(L"1234567", L"abcdefg");
    EXPECT_EQ(FormatScaled(1'500'500, 1000, 2), L"1abcdefg5001234567"
                                                L"5");
    forgetSeparators();
    useSeparators(L"12345678", L"abcdefgh");
    EXPECT_EQ(FormatScaled(1'500'500, 1000, 2), L"1,500.5");
}

TEST_F(FormatScaledTest, theSeparatorsAreReadOnceInTheirOrder)
{
    FormatScaled(1, 1, 0);
    FormatScaled(1536, 1024, 1);
    FormatSize(Largest, 2);
    EXPECT_EQ(platform.log.callsOf(L"information"),
              (std::vector<std::wstring>{L"information 14 8", L"information 15 8"}));
}

TEST_F(FormatScaledTest, aLaterChangeOfTheNotationIsNotSeen)
{
    EXPECT_EQ(FormatScaled(1'234'500, 1000, 1), L"1,234.5");
    useSeparators(L",", L".");
    EXPECT_EQ(FormatScaled(1'234'500, 1000, 1), L"1,234.5");
}

TEST_F(FormatScaledTest, firstTextsOnSeveralThreadsAreTheSame)
{
    std::vector<std::wstring> texts(8);
    std::vector<std::thread> threads;
    for (std::wstring& text : texts)
        threads.emplace_back([&text] { text = FormatScaled(1'234'500, 1000, 1); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(texts, std::vector<std::wstring>(8, L"1,234.5"));
}

TEST_F(SizeTextsTest, bytesAreWhole)
{
    EXPECT_EQ(FormatBytes(0), L"0 Bytes");
    EXPECT_EQ(FormatBytes(1), L"1 Bytes");
    EXPECT_EQ(FormatBytes(1536), L"1,536 Bytes");
    EXPECT_EQ(FormatBytes(Largest), L"18,446,744,073,709,551,615 Bytes");
}

TEST_F(SizeTextsTest, kilobytesHaveADecimalBelowNine)
{
    EXPECT_EQ(FormatKilobytes(0), L"0 KB");
    EXPECT_EQ(FormatKilobytes(1), L"0 KB");
    EXPECT_EQ(FormatKilobytes(52), L"0.1 KB");
    EXPECT_EQ(FormatKilobytes(1536), L"1.5 KB");
    EXPECT_EQ(FormatKilobytes(8 * KB + 512), L"8.5 KB");
    EXPECT_EQ(FormatKilobytes(9 * KB - 1), L"9 KB");
    EXPECT_EQ(FormatKilobytes(9 * KB), L"9 KB");
    EXPECT_EQ(FormatKilobytes(9 * KB + 307), L"9 KB");
    EXPECT_EQ(FormatKilobytes(9 * KB + 512), L"10 KB");
}

TEST_F(SizeTextsTest, megabytesChooseADecimalBelowAHundred)
{
    EXPECT_EQ(FormatMegabytes(MB + MB / 2, -1), L"1.5 MB");
    EXPECT_EQ(FormatMegabytes(99 * MB + MB / 4, -1), L"99.3 MB");
    EXPECT_EQ(FormatMegabytes(100 * MB - 1, -1), L"100 MB");
    EXPECT_EQ(FormatMegabytes(100 * MB + MB / 4, -1), L"100 MB");
    EXPECT_EQ(FormatMegabytes(100 * MB + MB / 2, -1), L"101 MB");
}

TEST_F(SizeTextsTest, megabytesTakeTheDecimalsThatAreGiven)
{
    EXPECT_EQ(FormatMegabytes(MB + MB / 4, 2), L"1.25 MB");
    EXPECT_EQ(FormatMegabytes(MB + MB / 4, 0), L"1 MB");
    EXPECT_EQ(FormatMegabytes(500 * MB + MB / 4, 2), L"500.25 MB");
    EXPECT_EQ(FormatMegabytes(MB + MB / 4, -2), L"1 MB");
}

TEST_F(SizeTextsTest, gigabytesTakeTheDecimalsThatAreGiven)
{
    EXPECT_EQ(FormatGigabytes(GB + GB / 4, 2), L"1.25 GB");
    EXPECT_EQ(FormatGigabytes(GB + GB / 4, 1), L"1.3 GB");
    EXPECT_EQ(FormatGigabytes(GB + GB / 4, 0), L"1 GB");
    EXPECT_EQ(FormatGigabytes(GB + GB / 4, -1), L"1 GB");
    EXPECT_EQ(FormatGigabytes(Largest, 2), L"17,179,869,184 GB");
}

TEST_F(FormatSizeTest, isInKilobytesBelowAMegabyteWhateverTheDecimals)
{
    EXPECT_EQ(FormatSize(0, -1), L"0 KB");
    EXPECT_EQ(FormatSize(1536, 0), L"1.5 KB");
    EXPECT_EQ(FormatSize(1536, 4), L"1.5 KB");
    EXPECT_EQ(FormatSize(100 * KB + 512, 2), L"101 KB");
    EXPECT_EQ(FormatSize(MB - 1, -1), L"1,024 KB");
}

TEST_F(FormatSizeTest, isInMegabytesBelow999OfThem)
{
    EXPECT_EQ(FormatSize(MB, -1), L"1 MB");
    EXPECT_EQ(FormatSize(MB + MB / 2, -1), L"2 MB");
    EXPECT_EQ(FormatSize(MB + MB / 4, 2), L"1.25 MB");
    EXPECT_EQ(FormatSize(MB + MB / 4, 0), L"1 MB");
    EXPECT_EQ(FormatSize(999 * MB - 1, -1), L"999 MB");
    EXPECT_EQ(FormatSize(999 * MB - MB / 4, 2), L"998.75 MB");
}

TEST_F(FormatSizeTest, isInGigabytesFromThereOn)
{
    EXPECT_EQ(FormatSize(999 * MB, -1), L"0.98 GB");
    EXPECT_EQ(FormatSize(999 * MB, 0), L"1 GB");
    EXPECT_EQ(FormatSize(999 * MB, 3), L"0.976 GB");
    EXPECT_EQ(FormatSize(GB + GB / 4, -1), L"1.25 GB");
    EXPECT_EQ(FormatSize(5000 * GB, -1), L"5,000 GB");
}

TEST_F(SizeTextsTest, kilobytesBecomeMegabytesFrom999999OfThemOn)
{
    EXPECT_EQ(FormatKilobytesOrMegabytes(1536), L"1.5 KB");
    EXPECT_EQ(FormatKilobytesOrMegabytes(999'998 * KB), L"999,998 KB");
    EXPECT_EQ(FormatKilobytesOrMegabytes(999'999 * KB - 1), L"999,999 KB");
    EXPECT_EQ(FormatKilobytesOrMegabytes(999'999 * KB), L"977 MB");
}

TEST(SizeTextsOfTheSystem, areInTheNotationOfItsUser)
{
    Platform::Locale& locale = Platform::nativeSystem().locale;
    forgetSeparators();
    const std::wstring text = FormatScaled(12'345'500, 1000, 1);
    forgetSeparators();
    EXPECT_EQ(text, L"12" + locale.information(Platform::LocaleThousand, 8) + L"345" +
                        locale.information(Platform::LocaleDecimal, 8) + L"5");
}
