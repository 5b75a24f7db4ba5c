#include "windows/progress/progress_texts.h"

#include "windows/progress/i_progress_window_view.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>

using namespace JobRunner;

TEST(timeText, hasTwoDigitsForEachPart)
{
    EXPECT_EQ(timeText(0), L"00:00:00");
    EXPECT_EQ(timeText(59), L"00:00:59");
    EXPECT_EQ(timeText(3661), L"01:01:01");
}

TEST(timeText, doesNotCapTheHours)
{
    EXPECT_EQ(timeText(86400), L"24:00:00");
    EXPECT_EQ(timeText(2147483647), L"596523:14:07");
}

TEST(timeText, ofAnUnknownTimeIsNotAvailable)
{
    EXPECT_EQ(timeText(UnknownTime), L"n/a");
}

TEST(timeText, ofANegativeTimeKeepsTwoDigits)
{
    EXPECT_EQ(timeText(-3662), L"-01:-01:-02");
}

TEST(speedText, isShiftedToKilobytes)
{
    EXPECT_EQ(speedText(0), L"0 Kb/sec");
    EXPECT_EQ(speedText(1023), L"0 Kb/sec");
    EXPECT_EQ(speedText(1024 * 1500 + 1023), L"1500 Kb/sec");
}

TEST(speedText, isCutToThirtyTwoBits)
{
    EXPECT_EQ(speedText(std::uint64_t{0x80000000} << 10), L"-2147483648 Kb/sec");
    EXPECT_EQ(speedText(std::uint64_t{0x100000001} << 10), L"1 Kb/sec");
}

TEST(bytesText, isShiftedToMegabytes)
{
    EXPECT_EQ(bytesText(1048575), L"0 MB");
    EXPECT_EQ(bytesText(std::uint64_t{5} << 30), L"5120 MB");
}

TEST(bytesText, ofAnUnknownNumberIsNotAvailable)
{
    EXPECT_EQ(bytesText(UnknownBytes), L"n/a");
    EXPECT_EQ(bytesText(UnknownBytes - 1), L"-1 MB");
}

TEST(fileProgressText, tellsNameAndPercentAndWiping)
{
    EXPECT_EQ(fileProgressText(L"a.txt", 50, false), L"a.txt (50.00%)");
    EXPECT_EQ(fileProgressText(L"a.txt", 75, true), L"a.txt (75.00%) - Wiping");
    EXPECT_EQ(fileProgressText(L"", -2147483648.0, false), L" (-2147483648.00%)");
}

TEST(totalProgressText, hasOneDecimal)
{
    EXPECT_EQ(totalProgressText(0), L"Total: 0.0%");
    EXPECT_EQ(totalProgressText(100), L"Total: 100.0%");
    EXPECT_EQ(totalProgressText(UnknownPercent), L"Total: n/a");
}

TEST(progressTitle, isThatOfTheOperation)
{
    EXPECT_EQ(progressTitle(OperationEncrypt, std::nullopt), L"Encryption");
    EXPECT_EQ(progressTitle(OperationDecrypt, std::nullopt), L"Decryption");
    EXPECT_EQ(progressTitle(OperationDelete, std::nullopt), L"Deletion");
    EXPECT_EQ(progressTitle(OperationWipe, 7), L"Quick Wipe (7%)");
}

TEST(progressTitle, isEmptyForOtherOperations)
{
    EXPECT_EQ(progressTitle(OperationEncryptSfx, std::nullopt), L"");
    EXPECT_EQ(progressTitle(99, std::nullopt), L"");
}

namespace
{
struct CommaNumbers : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};
} // namespace

TEST(progressTexts, doNotFollowTheLocale)
{
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaNumbers));
    const std::string beforeC = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "German_Germany.1252", "fr_FR.utf8"})
        if (std::setlocale(LC_ALL, name))
            break;
    EXPECT_EQ(totalProgressText(1234.5), L"Total: 1234.5%");
    EXPECT_EQ(fileProgressText(L"a", 1234.5, false), L"a (1234.50%)");
    EXPECT_EQ(bytesText(std::uint64_t{123456} << 20), L"123456 MB");
    std::setlocale(LC_ALL, beforeC.c_str());
    std::locale::global(before);
}
