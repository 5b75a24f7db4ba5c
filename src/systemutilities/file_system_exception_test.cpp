#include "systemutilities/file_system_exception.h"

#include "fakes/fake_platform.h"
#include "platform/narrow_text.h"

#include <gtest/gtest.h>

#include <system_error>
#include <type_traits>

using Halden::SystemUtilities::FileSystemException;

namespace
{

std::wstring wordsOf(int code)
{
    return Platform::widenThreadText(std::error_code(code, std::system_category()).message());
}

struct FileSystemExceptionTest : testing::Test
{
    Fakes::FakePlatform platform;
};

} // namespace

TEST_F(FileSystemExceptionTest, isAnErrorOfTheFileSystemsAndOfTheSystem)
{
    EXPECT_TRUE((std::is_base_of_v<std::experimental::filesystem::filesystem_error, FileSystemException>));
    EXPECT_THROW(throw FileSystemException("m", L"C:\\a"), std::experimental::filesystem::filesystem_error);
    EXPECT_THROW(throw FileSystemException("m", L"C:\\a"), std::system_error);
}

TEST_F(FileSystemExceptionTest, ofOnePathEndsInABlank)
{
    const FileSystemException failure("Cannot do it", L"C:\\a", 2);
    EXPECT_EQ(failure.GetWideMessage(), L"Cannot do it: " + wordsOf(2) + L" C:\\a ");
}

TEST_F(FileSystemExceptionTest, hasABlankBeforeEachPath)
{
    const FileSystemException failure("Cannot do it", L"C:\\a", L"C:\\b", 5);
    EXPECT_EQ(failure.GetWideMessage(), L"Cannot do it: " + wordsOf(5) + L" C:\\a C:\\b");
}

TEST_F(FileSystemExceptionTest, hasTheBlankOfAnEmptyPathToo)
{
    const FileSystemException both("m", L"", L"", 2);
    EXPECT_EQ(both.GetWideMessage(), L"m: " + wordsOf(2) + L"  ");
    const FileSystemException second("m", L"", L"C:\\b", 2);
    EXPECT_EQ(second.GetWideMessage(), L"m: " + wordsOf(2) + L"  C:\\b");
}

TEST_F(FileSystemExceptionTest, takesTheCodeThatIsGiven)
{
    platform.handles.setLastError(32);
    EXPECT_EQ(FileSystemException("m", L"a", 5).code(), std::error_code(5, std::system_category()));
    EXPECT_EQ(FileSystemException("m", L"a", L"b", 3).code(), std::error_code(3, std::system_category()));
    EXPECT_EQ(FileSystemException("m", L"a", 0).code().value(), 0);
}

TEST_F(FileSystemExceptionTest, takesTheLastErrorWithoutACode)
{
    platform.handles.setLastError(32);
    const FileSystemException one("m", L"a");
    const FileSystemException two("m", L"a", L"b");
    platform.handles.setLastError(5);
    EXPECT_EQ(one.code(), std::error_code(32, std::system_category()));
    EXPECT_EQ(two.code(), std::error_code(32, std::system_category()));
    EXPECT_EQ(one.GetWideMessage(), FileSystemException("m", L"a", 32).GetWideMessage());
    EXPECT_EQ(two.GetWideMessage(), FileSystemException("m", L"a", L"b", 32).GetWideMessage());
}

TEST_F(FileSystemExceptionTest, keepsTheNarrowFormOfItsWideMessage)
{
    const FileSystemException failure("m", L"C:\\a", L"C:\\b", 2);
    EXPECT_EQ(failure.what(), Platform::narrowThreadText(failure.GetWideMessage()));
    const std::exception& base = failure;
    EXPECT_EQ(std::string(base.what()), failure.what());
}

TEST_F(FileSystemExceptionTest, withoutATextIsUnknown)
{
    const FileSystemException failure(std::string("\0m", 2), L"C:\\a", 2);
    EXPECT_EQ(failure.GetWideMessage(), L"Unknown exception C:\\a ");
    EXPECT_STREQ(failure.what(), "Unknown exception C:\\a ");
}

TEST_F(FileSystemExceptionTest, keepsItsPathsWide)
{
    const FileSystemException failure("m", L"C:\\\u0416\u20AC", L"\u00E4", 2);
    EXPECT_EQ(failure.path1(), std::experimental::filesystem::u8path("C:\\\xD0\x96\xE2\x82\xAC"));
    EXPECT_TRUE(failure.GetWideMessage().ends_with(L" C:\\\u0416\u20AC \u00E4"));
}

TEST_F(FileSystemExceptionTest, isMadeForANameThatIsNoValidText)
{
    const FileSystemException failure("m", L"C:\\odd \xDCFF \xDC80.txt", 2);
    const std::wstring message = failure.GetWideMessage();
    EXPECT_TRUE(message.starts_with(L"m: " + wordsOf(2) + L" C:\\odd "));
    EXPECT_TRUE(message.ends_with(L".txt "));
}

TEST_F(FileSystemExceptionTest, isMadeForALongPath)
{
    const std::wstring path(32767, L'x');
    EXPECT_TRUE(FileSystemException("m", path).GetWideMessage().ends_with(L' ' + path + L' '));
}

TEST_F(FileSystemExceptionTest, aCopySaysTheSame)
{
    const FileSystemException failure("m", L"C:\\a", L"C:\\b", 2);
    const FileSystemException copy = failure;
    EXPECT_STREQ(copy.what(), failure.what());
    EXPECT_EQ(copy.GetWideMessage(), failure.GetWideMessage());
    EXPECT_EQ(copy.code(), failure.code());
}
