#include "systemutilities/file_system_exception.h"

#include <gtest/gtest.h>

using Halden::SystemUtilities::FileSystemException;

TEST(FileSystemExceptionsPath, keepsEveryByteOfAName)
{
    const FileSystemException failure("m", L"/odd \xDCFF.txt", L"/\xDC80", 2);
    EXPECT_EQ(failure.path1().native(), "/odd \xFF.txt");
    EXPECT_TRUE(failure.GetWideMessage().ends_with(L" /odd \xDCFF.txt /\xDC80"));
    EXPECT_TRUE(std::string(failure.what()).ends_with(" /odd \xFF.txt /\x80"));
}
