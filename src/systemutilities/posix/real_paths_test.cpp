#include "platform/platform.h"
#include "systemutilities/device_paths.h"
#include "systemutilities/path_names.h"
#include "systemutilities/path_system.h"
#include "systemutilities/testing_failures.h"
#include "systemutilities/testing_paths.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Halden::SystemUtilities;

TEST_F(RealPathsTest, theProgramIsThisOne)
{
    EXPECT_EQ(GetExecutableName(), L"systemutilities_test");
    EXPECT_TRUE(IsAbsolutePath(GetModuleDirectory()));
    EXPECT_EQ(MakeAbsolutePath(L"x"), GetModuleDirectory() + L"/x");
    EXPECT_EQ(MakeAbsolutePath(L"/x"), L"/x");
}

TEST_F(RealPathsTest, thereIsNoRootOfWindows)
{
    EXPECT_THROW(GetSystemRoot(), std::runtime_error);
}

TEST_F(RealPathsTest, aFileHasOneNameAlone)
{
    const std::wstring path = file(L"a name with blanks, \u00E4 and \xDCFF.text");
    EXPECT_EQ(GetShortPath(path), path);
    EXPECT_EQ(GetLongPath(path), path);
}

TEST_F(RealPathsTest, aMissingFileHasNone)
{
    const std::wstring path = folder.path() + L"/none \xDCFF.txt";
    expectFailure([&] { GetLongPath(path); }, "GetLongPathName", path, 2);
    expectFailure([&] { GetShortPath(path); }, "GetShortPathName", path, 2);
    EXPECT_TRUE(failureOf([] { GetLongPath(L""); }));
}

TEST_F(RealPathsTest, aPathThatIsTooLongIsAnErrorAndNoCrash)
{
    for (const std::size_t length : {260u, 261u, 32767u})
    {
        const std::wstring path = L'/' + std::wstring(length - 1, L'x');
        EXPECT_TRUE(failureOf([&] { GetLongPath(path); })) << length;
        EXPECT_TRUE(CanonicalizePath(path) == path) << length;
        EXPECT_NO_THROW(SetReadOnly(path)) << length;
        EXPECT_NO_THROW(ClearReadOnly(path)) << length;
        EXPECT_TRUE(failureOf([&] { SetAttributes(path, Platform::AttributeReadOnly); })) << length;
    }
}

TEST_F(RealPathsTest, theReadOnlyBitOfAFileIsSetAndCleared)
{
    const std::wstring path = file(L"bits.txt");
    SetReadOnly(path);
    EXPECT_TRUE(isReadOnly(path));
    ClearReadOnly(path);
    EXPECT_FALSE(isReadOnly(path));
}

TEST_F(RealPathsTest, bitsOfAMissingFileAreNoErrorUnlessTheyAreWritten)
{
    const std::wstring path = folder.path() + L"/none.txt";
    EXPECT_NO_THROW(SetReadOnly(path));
    EXPECT_NO_THROW(ClearReadOnly(path));
    expectFailure([&] { SetAttributes(path, 0); }, "SetFileAttributes failed", path, 2);
}

TEST_F(RealPathsTest, thereAreNoDrives)
{
    expectFailure([] { DevicePathFromDosPath(L"C:\\x"); }, "Could not get size of nt path", L"C:\\x", 2);
    expectFailure([] { DosPathFromDevicePath(L"\\Device\\Volume1\\x"); }, "Can't resolve NT path",
                  L"\\Device\\Volume1\\x", 2);
}

TEST_F(RealPathsTest, dotsAreTakenOut)
{
    EXPECT_EQ(CanonicalizePath(L"/a/./b/../c"), L"/a/c");
    EXPECT_EQ(CanonicalizePath(L"/.."), L"/");
}
