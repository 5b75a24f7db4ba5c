#include "platform/handles.h"
#include "platform/platform.h"
#include "systemutilities/device_paths.h"
#include "systemutilities/path_names.h"
#include "systemutilities/path_system.h"
#include "systemutilities/testing_failures.h"
#include "systemutilities/testing_paths.h"

#include <gtest/gtest.h>

using namespace Halden::SystemUtilities;

TEST_F(RealPathsTest, theProgramIsThisOne)
{
    EXPECT_EQ(GetExecutableName(), L"systemutilities_test.exe");
    EXPECT_TRUE(IsAbsolutePath(GetModuleDirectory()));
    EXPECT_EQ(MakeAbsolutePath(L"x"), GetModuleDirectory() + L"\\x");
}

TEST_F(RealPathsTest, theSystemsRootIsThere)
{
    const std::wstring root = GetSystemRoot();
    EXPECT_TRUE(IsAbsolutePath(root));
    EXPECT_NE(Platform::nativeSystem().paths.attributes(root) & Platform::AttributeDirectory, 0u);
}

TEST_F(RealPathsTest, aNameWithBlanksHasAShortFormThatLeadsBack)
{
    const std::wstring path = file(L"a name with blanks.text");
    const std::wstring brief = GetShortPath(path);
    EXPECT_EQ(GetFileName(brief).find(L' '), std::wstring::npos);
    EXPECT_LE(GetFileName(brief).size(), 12u);
    EXPECT_EQ(GetFileName(GetLongPath(brief)), L"a name with blanks.text");
    EXPECT_EQ(GetLongPath(brief), GetLongPath(path));
}

TEST_F(RealPathsTest, aMissingFileHasNoOtherForm)
{
    const std::wstring path = folder.path() + L"\\none.txt";
    expectFailure([&] { GetLongPath(path); }, "GetLongPathName", path, 2);
    expectFailure([&] { GetShortPath(path); }, "GetShortPathName", path, 2);
    const std::wstring below = folder.path() + L"\\none\\a.txt";
    EXPECT_TRUE(failureOf([&] { GetLongPath(below); }));
    EXPECT_TRUE(failureOf([] { GetLongPath(L""); }));
}

TEST_F(RealPathsTest, aPathThatIsTooLongIsAnErrorAndNoCrash)
{
    for (const std::size_t length : {260u, 261u, 32767u})
    {
        const std::wstring path = L"C:\\" + std::wstring(length - 3, L'x');
        EXPECT_TRUE(failureOf([&] { GetLongPath(path); })) << length;
        EXPECT_TRUE(failureOf([&] { GetShortPath(path); })) << length;
        EXPECT_TRUE(CanonicalizePath(path).empty()) << length;
        EXPECT_NO_THROW(ClearReadOnly(path)) << length;
        EXPECT_NO_THROW(SetReadOnly(path)) << length;
        EXPECT_TRUE(failureOf([&] { SetAttributes(path, Platform::AttributeReadOnly); })) << length;
    }
}

TEST_F(RealPathsTest, theReadOnlyBitOfAFileIsSetAndCleared)
{
    const std::wstring path = file(L"bits.txt");
    SetReadOnly(path);
    EXPECT_TRUE(isReadOnly(path));
    SetReadOnly(path);
    EXPECT_TRUE(isReadOnly(path));
    ClearReadOnly(path);
    EXPECT_FALSE(isReadOnly(path));
    ClearReadOnly(path);
    EXPECT_FALSE(isReadOnly(path));
}

TEST_F(RealPathsTest, bitsOfAMissingFileAreNoErrorUnlessTheyAreWritten)
{
    const std::wstring path = folder.path() + L"\\none.txt";
    EXPECT_NO_THROW(SetReadOnly(path));
    EXPECT_NO_THROW(ClearReadOnly(path));
    expectFailure([&] { SetAttributes(path, 0); }, "SetFileAttributes failed", path, 2);
}

TEST_F(RealPathsTest, aPathOfADriveComesBackFromItsDevice)
{
    const std::wstring device = DevicePathFromDosPath(L"C:\\a\\b.txt");
    EXPECT_TRUE(device.starts_with(L"\\"));
    EXPECT_TRUE(device.ends_with(L"\\a\\b.txt"));
    EXPECT_EQ(device.find(L'\0'), std::wstring::npos);
    const std::size_t third = device.find(L'\\', device.find(L'\\', 1) + 1);
    // Where the device is not of the form "\Device\Name" it cannot be told from the rest of the path.
    if (device.substr(third) == L"\\a\\b.txt")
        EXPECT_EQ(DosPathFromDevicePath(device), L"C:\\a\\b.txt");
    else
        EXPECT_TRUE(failureOf([&] { DosPathFromDevicePath(device); }));
}

TEST_F(RealPathsTest, aDriveThatIsMappedToNothingHasNoDevice)
{
    expectFailure([] { DevicePathFromDosPath(L"1:\\x"); }, "Could not get size of nt path", L"1:\\x", 2);
    EXPECT_TRUE(failureOf([] { DosPathFromDevicePath(L"\\Device\\NoSuchVolume\\x"); }));
}

TEST_F(RealPathsTest, dotsAreTakenOut)
{
    EXPECT_EQ(CanonicalizePath(L"C:\\a\\.\\b\\..\\c"), L"C:\\a\\c");
    EXPECT_EQ(CanonicalizePath(L"C:\\.."), L"C:\\");
}
