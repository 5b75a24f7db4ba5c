#include "systemutilities/device_paths.h"

#include "fakes/fake_platform.h"
#include "systemutilities/testing_failures.h"

#include <gtest/gtest.h>

using namespace Halden::SystemUtilities;

namespace
{

using Calls = std::vector<std::wstring>;

struct DevicePathsTest : testing::Test
{
    DevicePathsTest() { platform.paths.devices.clear(); }

    void map(const std::wstring& drive, const std::vector<std::wstring>& devices)
    {
        platform.paths.devices[drive] = devices;
    }
    /// Maps a drive so that the whole answer has so many characters with its two terminators.
    std::wstring mapLong(const std::wstring& drive, std::size_t characters)
    {
        std::wstring device = L"\\Device\\";
        device += std::wstring(characters - 2 - device.size(), L'd');
        map(drive, {device});
        return device;
    }

    Fakes::FakePlatform platform;
};

} // namespace

TEST_F(DevicePathsTest, anEmptyPathStaysEmptyWithoutAQuestion)
{
    EXPECT_EQ(DevicePathFromDosPath(L""), L"");
    EXPECT_EQ(DosPathFromDevicePath(L""), L"");
    EXPECT_EQ(platform.log.calls(), Calls{});
}

TEST_F(DevicePathsTest, theDriveBecomesItsDevice)
{
    map(L"C:", {L"\\Device\\Volume1"});
    EXPECT_EQ(DevicePathFromDosPath(L"C:\\a\\b.txt"), L"\\Device\\Volume1\\a\\b.txt");
    EXPECT_EQ(DevicePathFromDosPath(L"C:"), L"\\Device\\Volume1");
    EXPECT_EQ(DevicePathFromDosPath(L"C:x:y"), L"\\Device\\Volume1x:y");
    EXPECT_EQ(platform.log.callsOf(L"queryDosDevice"), Calls(3, L"queryDosDevice C: 260"));
}

TEST_F(DevicePathsTest, allUpToTheColonIsTheDrive)
{
    map(L"COM1:", {L"\\Device\\Serial0"});
    map(L"::", {L"\\Device\\Odd"});
    EXPECT_EQ(DevicePathFromDosPath(L"COM1:rest"), L"\\Device\\Serial0rest");
    EXPECT_EQ(DevicePathFromDosPath(L"::x"), L"\\Device\\Oddx");
}

TEST_F(DevicePathsTest, aPathWithoutADriveHasNoDevice)
{
    platform.handles.setLastError(7);
    for (const wchar_t* path : {L"x", L":", L":\\x", L"\\\\server\\share", L"\\\\\\", L"a\\b"})
        expectFailure([=] { DevicePathFromDosPath(path); }, "Can't convert NT path. Invalid path: ", path, 7);
    EXPECT_EQ(platform.log.calls(), Calls{});
}

TEST_F(DevicePathsTest, aDriveThatIsMappedToNothingHasNoDevice)
{
    expectFailure([] { DevicePathFromDosPath(L"Q:\\x"); }, "Could not get size of nt path", L"Q:\\x", 2);
}

TEST_F(DevicePathsTest, aDeviceHasToFitInto260CharactersWithBothTerminators)
{
    const std::wstring device = mapLong(L"C:", 260);
    EXPECT_EQ(DevicePathFromDosPath(L"C:\\x"), device + L"\\x");
    mapLong(L"C:", 261);
    expectFailure([] { DevicePathFromDosPath(L"C:\\x"); }, "Could not get size of nt path", L"C:\\x", 122);
    EXPECT_EQ(platform.log.callsOf(L"queryDosDevice"), Calls(2, L"queryDosDevice C: 260"));
}

TEST_F(DevicePathsTest, aDriveThatWasMappedTwiceKeepsTheDeviceBehindTheFirst)
{
    map(L"C:", {L"\\Device\\New", L"\\Device\\Old"});
    EXPECT_EQ(DevicePathFromDosPath(L"C:\\x"), std::wstring(L"\\Device\\New\0\\Device\\Old\\x", 25));
}

TEST_F(DevicePathsTest, theRestMayHaveAnyLength)
{
    map(L"C:", {L"\\Device\\Volume1"});
    for (const std::size_t length : {2u, 3u, 259u, 260u, 261u, 32767u})
    {
        const std::wstring rest(length - 2, L'x');
        EXPECT_EQ(DevicePathFromDosPath(L"C:" + rest), L"\\Device\\Volume1" + rest);
    }
}

TEST_F(DevicePathsTest, theDeviceBecomesItsDrive)
{
    map(L"C:", {L"\\Device\\Volume1"});
    map(L"D:", {L"\\Device\\Volume12"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Volume1\\a\\b.txt"), L"C:\\a\\b.txt");
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Volume12\\a"), L"D:\\a");
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Volume1\\"), L"C:");
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Volume1\\\\a"), L"C:\\a");
}

TEST_F(DevicePathsTest, aPathOfFewerThanThreeBackslashesIsNoDevicePath)
{
    platform.handles.setLastError(7);
    for (const wchar_t* path : {L"x", L"\\", L"\\Device", L"\\Device\\Volume1", L"\\\\", L"C:\\x"})
        expectFailure([=] { DosPathFromDevicePath(path); }, "Can't normalize NT path. Can't find third slash", path, 7);
    EXPECT_EQ(platform.log.calls(), Calls{});
}

TEST_F(DevicePathsTest, onlySeparatorsAreTheDeviceOfTwoOfThem)
{
    map(L"F:", {L"\\\\"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\\\\\"), L"F:");
    map(L"F:", {L"\\Device\\Volume1"});
    expectFailure([] { DosPathFromDevicePath(L"\\\\\\\\"); }, "Can't resolve NT path", L"\\\\\\\\", 2);
}

TEST_F(DevicePathsTest, theFirstBackslashNeedNotBeOne)
{
    map(L"C:", {L"xDevice\\Volume1"});
    EXPECT_EQ(DosPathFromDevicePath(L"xDevice\\Volume1\\a"), L"C:\\a");
}

TEST_F(DevicePathsTest, theFirstLetterOfADeviceIsTaken)
{
    map(L"A:", {L"\\Device\\One"});
    map(L"B:", {L"\\Device\\Two"});
    map(L"C:", {L"\\Device\\Two"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\One\\x"), L"A:\\x");
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Two\\x"), L"B:\\x");
}

TEST_F(DevicePathsTest, everyLetterUpToYIsTriedAndZIsNot)
{
    map(L"Y:", {L"\\Device\\Y"});
    map(L"Z:", {L"\\Device\\Z"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Y\\x"), L"Y:\\x");
    platform.log.clear();
    expectFailure([] { DosPathFromDevicePath(L"\\Device\\Z\\x"); }, "Can't resolve NT path", L"\\Device\\Z\\x", 2);
    const Calls calls = platform.log.calls();
    ASSERT_EQ(calls.size(), 25u);
    EXPECT_EQ(calls.front(), L"queryDosDevice A: 260");
    EXPECT_EQ(calls.back(), L"queryDosDevice Y: 260");
}

TEST_F(DevicePathsTest, namesAreComparedCharacterByCharacter)
{
    map(L"C:", {L"\\Device\\Volume1"});
    EXPECT_TRUE(failureOf([] { DosPathFromDevicePath(L"\\device\\Volume1\\x"); }));
    EXPECT_TRUE(failureOf([] { DosPathFromDevicePath(L"\\Device\\Volume\\x"); }));
}

TEST_F(DevicePathsTest, theBufferIsDoubledForALongDevice)
{
    const std::wstring device = mapLong(L"A:", 1041);
    EXPECT_EQ(DosPathFromDevicePath(device + L"\\x"), L"A:\\x");
    EXPECT_EQ(platform.log.calls(), (Calls{L"queryDosDevice A: 260", L"queryDosDevice A: 520",
                                           L"queryDosDevice A: 1040", L"queryDosDevice A: 2080"}));
}

TEST_F(DevicePathsTest, theBufferOfEachLetterStartsSmall)
{
    mapLong(L"A:", 300);
    map(L"C:", {L"\\Device\\Volume1"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Volume1\\x"), L"C:\\x");
    EXPECT_EQ(platform.log.calls(), (Calls{L"queryDosDevice A: 260", L"queryDosDevice A: 520", L"queryDosDevice B: 260",
                                           L"queryDosDevice C: 260"}));
}

TEST_F(DevicePathsTest, anErrorFromBeforeDoesNotDoubleTheBuffer)
{
    platform.handles.setLastError(Platform::ErrorInsufficientBuffer);
    map(L"A:", {L"\\Device\\One"});
    map(L"B:", {L"\\Device\\Two"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\Two\\x"), L"B:\\x");
    EXPECT_EQ(platform.log.calls(), (Calls{L"queryDosDevice A: 260", L"queryDosDevice B: 260"}));
}

TEST_F(DevicePathsTest, aSystemThatAlwaysAsksForMoreIsGivenUp)
{
    platform.paths.failures[L"queryDosDevice"] = Platform::ErrorInsufficientBuffer;
    expectFailure([] { DosPathFromDevicePath(L"\\Device\\Volume1\\x"); }, "Can't resolve NT path",
                  L"\\Device\\Volume1\\x", 122);
}

TEST_F(DevicePathsTest, ofADriveThatWasMappedTwiceTheFirstDeviceHolds)
{
    map(L"C:", {L"\\Device\\New", L"\\Device\\Old"});
    EXPECT_EQ(DosPathFromDevicePath(L"\\Device\\New\\x"), L"C:\\x");
    EXPECT_TRUE(failureOf([] { DosPathFromDevicePath(L"\\Device\\Old\\x"); }));
}
