#include "statistics/journal_line.h"

#include <gtest/gtest.h>

namespace StatisticsModule
{
namespace
{

using namespace std::chrono_literals;

constexpr std::chrono::sys_days Day = std::chrono::sys_days(std::chrono::year(2026) / 3 / 7);

std::string lineOf(const Call& call)
{
    return journalLine(Day + 4h + 5min + 6s + 78ms + 900us, 4711, call);
}

/// The text as the only argument, as it stands in the line.
std::string written(std::wstring_view text)
{
    const std::string line = lineOf({"F", {text}});
    const std::string start = "[\"2026-03-07T04:05:06.078Z\", 4711, \"F\", ";
    EXPECT_TRUE(line.starts_with(start)) << line;
    EXPECT_TRUE(line.ends_with("]\n")) << line;
    return line.substr(start.size(), line.size() - start.size() - 2);
}

} // namespace

TEST(AJournalLine, hasTimeProcessOperationAndArguments)
{
    EXPECT_EQ(lineOf({"SendEvent", {L"a/b", L"c", L"d", L"", std::int64_t{-3}}}),
              "[\"2026-03-07T04:05:06.078Z\", 4711, \"SendEvent\", \"a/b\", \"c\", \"d\", \"\", -3]\n");
    EXPECT_EQ(lineOf({"Flush", {}}), "[\"2026-03-07T04:05:06.078Z\", 4711, \"Flush\"]\n");
}

TEST(AJournalLine, hasTheDayOfATimeJustBeforeMidnight)
{
    const std::string line = journalLine(Day - 1ms, 1, {"Flush", {}});
    EXPECT_EQ(line, "[\"2026-03-06T23:59:59.999Z\", 1, \"Flush\"]\n");
}

TEST(AJournalLine, takesTheLargestAndTheSmallestNumber)
{
    EXPECT_NE(lineOf({"F", {INT64_MIN, INT64_MAX}}).find(", -9223372036854775808, 9223372036854775807]"),
              std::string::npos);
}

TEST(AJournalLine, hasNullForAValueThatIsAbsent)
{
    EXPECT_NE(lineOf({"F", {valueOf(-99999), valueOf(-99998), valueOf(0)}}).find("\"F\", null, -99998, 0]"),
              std::string::npos);
}

TEST(AJournalLine, tellsTextsApartThatHoldWhatSeparatesThem)
{
    EXPECT_NE(lineOf({"F", {L"a\", \"b"}}), lineOf({"F", {L"a", L"b"}}));
    EXPECT_EQ(written(L"a\", \"b"), R"("a\", \"b")");
    EXPECT_EQ(written(L"C:\\x"), R"("C:\\x")");
    EXPECT_EQ(written(L"\\u000a"), R"("\\u000a")");
}

TEST(AJournalLine, escapesEverythingThatCouldEndIt)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(written(L"\r\n\t\x1f\x7f"), R"("\u000d\u000a\u0009\u001f\u007f")");
    EXPECT_EQ(written(L"\u0085\u009f\u2028\u2029"), R"("\u0085\u009f\u2028\u2029")");
    EXPECT_EQ(written(L"a\0b"sv), R"("a\u0000b")");
}

TEST(AJournalLine, isUtf8)
{
    EXPECT_EQ(written(L"f\u00fcr \u20ac"), "\"f\xC3\xBCr \xE2\x82\xAC\"");
    EXPECT_EQ(written(L"\U0001F511!"), "\"\xF0\x9F\x94\x91!\"");
    EXPECT_EQ(written(L"\U00010000"), "\"\xF0\x90\x80\x80\"");
    EXPECT_EQ(written(L"\U0010FFFF"), "\"\xF4\x8F\xBF\xBF\"");
}

TEST(AJournalLine, escapesHalfACharacter)
{
    EXPECT_EQ(written(std::wstring(1, wchar_t{0xD83D})), R"("\ud83d")");
    const std::wstring pair{wchar_t{0xD83D}, wchar_t{0xDD11}};
    EXPECT_EQ(written(std::wstring_view(pair).substr(0, 1)), R"("\ud83d")");
    EXPECT_EQ(written(std::wstring{L'a', wchar_t{0xDC80}, L'b'}), R"("a\udc80b")");
}

} // namespace StatisticsModule
