#include "systemutilities/file_system_exception.h"

#include <gtest/gtest.h>

using Halden::SystemUtilities::FileSystemException;

namespace
{

std::wstring shownAs(const std::wstring& path)
{
    const FileSystemException failure("m", L"", path, 2);
    const std::wstring message = failure.GetWideMessage();
    return message.substr(message.rfind(L' ') + 1);
}

} // namespace

TEST(FileSystemExceptionsPath, keepsWholePairsOfSurrogates)
{
    EXPECT_EQ(shownAs(L"a\xD83D\xDE00z"), L"a\xD83D\xDE00z");
    EXPECT_EQ(shownAs(L"\xD83D\xDE00\xD83D\xDE00"), L"\xD83D\xDE00\xD83D\xDE00");
}

TEST(FileSystemExceptionsPath, showsWhatStandsAloneAsTheReplacementCharacter)
{
    EXPECT_EQ(shownAs(L"a\xD83Dz"), L"a\xFFFDz");
    EXPECT_EQ(shownAs(L"a\xDE00"), L"a\xFFFD");
    EXPECT_EQ(shownAs(L"a\xD83D"), L"a\xFFFD");
    EXPECT_EQ(shownAs(L"\xDE00\xD83D"), L"\xFFFD\xFFFD");
    EXPECT_EQ(shownAs(L"\xD83D\xD83D\xDE00"), L"\xFFFD\xD83D\xDE00");
}
