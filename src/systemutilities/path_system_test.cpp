#include "systemutilities/path_system.h"

#include "fakes/fake_platform.h"
#include "systemutilities/testing_failures.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Halden::SystemUtilities;

namespace
{

using Calls = std::vector<std::wstring>;

constexpr std::uint32_t Hidden = 0x2;
constexpr std::uint32_t System = 0x4;

struct PathSystemTest : testing::Test
{
    Fakes::FakePath& file(const std::wstring& path) { return platform.paths.files[path]; }

    Fakes::FakePlatform platform;
};

using AttributeBitsTest = PathSystemTest;

} // namespace

TEST_F(PathSystemTest, theProgramHasAFolderAndAName)
{
    EXPECT_EQ(GetModuleDirectory(), L"C:\\Suite\\bin");
    EXPECT_EQ(GetExecutableName(), L"JobRunner.exe");
}

TEST_F(PathSystemTest, theProgramsPathIsCutAt259Characters)
{
    const std::wstring folder = L"C:\\" + std::wstring(200, L'f');
    platform.paths.program = folder + L'\\' + std::wstring(55, L'n');
    ASSERT_EQ(platform.paths.program.size(), 259u);
    EXPECT_EQ(GetModuleDirectory(), folder);
    EXPECT_EQ(GetExecutableName(), std::wstring(55, L'n'));
    platform.paths.program += L"nn";
    EXPECT_EQ(GetExecutableName(), std::wstring(55, L'n'));
}

TEST_F(PathSystemTest, aProgramWithoutAPathHasNeither)
{
    platform.paths.program.clear();
    EXPECT_EQ(GetModuleDirectory(), L"");
    EXPECT_EQ(GetExecutableName(), L"");
}

TEST_F(PathSystemTest, theSystemHasARoot)
{
    EXPECT_EQ(GetSystemRoot(), L"C:\\Windows");
    platform.paths.windows = L"C:\\" + std::wstring(256, L'w');
    EXPECT_EQ(GetSystemRoot(), platform.paths.windows);
}

TEST_F(PathSystemTest, aRootThatIsMissingOrTooLongIsAnError)
{
    for (const std::size_t length : {0u, 260u})
    {
        platform.paths.windows = std::wstring(length, L'w');
        try
        {
            GetSystemRoot();
            ADD_FAILURE() << length;
        }
        catch (const std::runtime_error& error)
        {
            EXPECT_STREQ(error.what(), "Cannot get the system root directory");
            EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        }
    }
}

TEST_F(PathSystemTest, aRelativePathIsBelowTheProgramsFolder)
{
    EXPECT_EQ(MakeAbsolutePath(L"a.txt"), L"C:\\Suite\\bin\\a.txt");
    EXPECT_EQ(MakeAbsolutePath(L"\\a.txt"), L"C:\\Suite\\bin\\a.txt");
    EXPECT_EQ(MakeAbsolutePath(L"..\\a.txt"), L"C:\\Suite\\bin\\..\\a.txt");
    EXPECT_EQ(MakeAbsolutePath(L"C:"), L"C:\\Suite\\bin\\C:");
    EXPECT_EQ(MakeAbsolutePath(L""), L"C:\\Suite\\bin");
}

TEST_F(PathSystemTest, anAbsolutePathStays)
{
    EXPECT_EQ(MakeAbsolutePath(L"D:\\x\\..\\y"), L"D:\\x\\..\\y");
    EXPECT_EQ(MakeAbsolutePath(L"\\\\server\\share"), L"\\\\server\\share");
}

TEST_F(PathSystemTest, aCanonicalPathHasNoDots)
{
    EXPECT_EQ(CanonicalizePath(L"C:\\a\\.\\b\\..\\c"), L"C:\\a\\c");
    EXPECT_EQ(CanonicalizePath(L"C:\\a"), L"C:\\a");
}

TEST_F(PathSystemTest, aPathThatIsTooLongHasNoCanonicalForm)
{
    const std::wstring longest = L"C:\\" + std::wstring(256, L'x');
    EXPECT_EQ(CanonicalizePath(longest), longest);
    EXPECT_EQ(CanonicalizePath(longest + L'x'), L"");
    EXPECT_EQ(CanonicalizePath(std::wstring(32767, L'x')), L"");
}

TEST_F(PathSystemTest, longAndShortPathsAreThoseOfOneFile)
{
    file(L"C:\\a long name.txt").shortPath = L"C:\\ALONGN~1.TXT";
    EXPECT_EQ(GetLongPath(L"C:\\ALONGN~1.TXT"), L"C:\\a long name.txt");
    EXPECT_EQ(GetShortPath(L"C:\\a long name.txt"), L"C:\\ALONGN~1.TXT");
    EXPECT_EQ(GetLongPath(L"C:\\a long name.txt"), L"C:\\a long name.txt");
}

TEST_F(PathSystemTest, theSizeIsAskedForFirst)
{
    file(L"C:\\a long name.txt").shortPath = L"C:\\A~1";
    GetLongPath(L"C:\\A~1");
    GetShortPath(L"C:\\a long name.txt");
    EXPECT_EQ(platform.log.calls(),
              (Calls{L"longPathName C:\\A~1 0", L"longPathName C:\\A~1 19", L"shortPathName C:\\a long name.txt 0",
                     L"shortPathName C:\\a long name.txt 7"}));
}

TEST_F(PathSystemTest, aMissingPathHasNoOtherForm)
{
    expectFailure([] { GetLongPath(L"C:\\none"); }, "GetLongPathName", L"C:\\none", 2);
    expectFailure([] { GetShortPath(L"C:\\none"); }, "GetShortPathName", L"C:\\none", 2);
    expectFailure([] { GetLongPath(L""); }, "GetLongPathName", L"", 2);
    platform.paths.failures[L"longPathName"] = 5;
    expectFailure([] { GetLongPath(L"C:\\none"); }, "GetLongPathName", L"C:\\none", 5);
}

TEST_F(PathSystemTest, aPathThatIsGoneAtTheSecondCallIsAnErrorToo)
{
    for (const bool isLong : {true, false})
    {
        file(L"C:\\a.txt");
        platform.log.clear();
        platform.paths.onCall = [this](const std::wstring&)
        {
            if (platform.log.calls().size() == 2)
                platform.paths.files.clear();
        };
        expectFailure([&] { isLong ? GetLongPath(L"C:\\a.txt") : GetShortPath(L"C:\\a.txt"); },
                      isLong ? "GetLongPathName" : "GetShortPathName", L"C:\\a.txt", 2);
        EXPECT_EQ(platform.log.calls().size(), 2u);
    }
}

TEST_F(PathSystemTest, aNameThatChangesInBetweenIsTheLaterOne)
{
    for (const std::wstring later : {L"C:\\much longer.txt", L"C:\\a"})
    {
        file(L"C:\\a.txt").shortPath = L"C:\\A~1.TXT";
        platform.log.clear();
        platform.paths.onCall = [&](const std::wstring&)
        {
            if (platform.log.calls().size() == 2)
                file(L"C:\\a.txt").shortPath = later;
        };
        EXPECT_EQ(GetShortPath(L"C:\\a.txt"), later);
    }
}

TEST_F(PathSystemTest, pathsOfAnyLengthHaveTheirForms)
{
    for (const std::size_t length : {1u, 259u, 260u, 261u, 32767u})
    {
        const std::wstring path(length, L'x');
        file(path);
        EXPECT_EQ(GetLongPath(path), path);
        EXPECT_EQ(GetShortPath(path), path);
    }
}

TEST_F(AttributeBitsTest, bitsAreAddedToThoseThatAreThere)
{
    file(L"C:\\a").attributes = Hidden;
    SetAttributeBits(L"C:\\a", System | Platform::AttributeReadOnly);
    EXPECT_EQ(file(L"C:\\a").attributes, Hidden | System | Platform::AttributeReadOnly);
}

TEST_F(AttributeBitsTest, nothingIsAddedWhereOneOfTheBitsIsThere)
{
    file(L"C:\\a").attributes = Hidden;
    SetAttributeBits(L"C:\\a", Hidden | System);
    EXPECT_EQ(file(L"C:\\a").attributes, Hidden);
    EXPECT_EQ(platform.log.calls(), (Calls{L"attributes C:\\a"}));
}

TEST_F(AttributeBitsTest, settingBitsOfAMissingPathDoesNothing)
{
    SetAttributeBits(L"C:\\none", Hidden);
    SetReadOnly(L"C:\\none");
    EXPECT_EQ(platform.log.calls(), (Calls{L"attributes C:\\none", L"attributes C:\\none"}));
}

TEST_F(AttributeBitsTest, settingNoBitsOfAMissingPathFailsInTheWriting)
{
    expectFailure([] { SetAttributeBits(L"C:\\none", 0); }, "SetFileAttributes failed", L"C:\\none", 2);
    EXPECT_EQ(platform.log.calls(), (Calls{L"attributes C:\\none", L"setAttributes C:\\none 4294967295"}));
}

TEST_F(AttributeBitsTest, bitsAreTakenFromThoseThatAreThere)
{
    file(L"C:\\a").attributes = Hidden | System;
    ClearAttributeBits(L"C:\\a", Hidden | Platform::AttributeReadOnly);
    EXPECT_EQ(file(L"C:\\a").attributes, System);
}

TEST_F(AttributeBitsTest, nothingIsTakenWhereNoneOfTheBitsIsThere)
{
    file(L"C:\\a").attributes = Hidden;
    ClearAttributeBits(L"C:\\a", System);
    ClearAttributeBits(L"C:\\a", 0);
    EXPECT_EQ(platform.log.calls(), (Calls{L"attributes C:\\a", L"attributes C:\\a"}));
}

TEST_F(AttributeBitsTest, clearingBitsOfAMissingPathDoesNothing)
{
    ClearReadOnly(L"C:\\none");
    ClearAttributeBits(L"C:\\none", Hidden);
    ClearAttributeBits(L"", Hidden);
    EXPECT_EQ(platform.log.callsOf(L"setAttributes"), Calls{});
}

TEST_F(AttributeBitsTest, theReadOnlyBitIsSetAndCleared)
{
    file(L"C:\\a").attributes = Hidden;
    SetReadOnly(L"C:\\a");
    EXPECT_EQ(file(L"C:\\a").attributes, Hidden | Platform::AttributeReadOnly);
    ClearReadOnly(L"C:\\a");
    EXPECT_EQ(file(L"C:\\a").attributes, Hidden);
}

TEST_F(AttributeBitsTest, attributesAreWrittenAsTheyAreGiven)
{
    file(L"C:\\a").attributes = Hidden;
    SetAttributes(L"C:\\a", System);
    EXPECT_EQ(file(L"C:\\a").attributes, System);
    expectFailure([] { SetAttributes(L"C:\\none", System); }, "SetFileAttributes failed", L"C:\\none", 2);
}

TEST_F(AttributeBitsTest, aRefusedWriteIsAnError)
{
    platform.paths.failures[L"setAttributes"] = 5;
    file(L"C:\\a").attributes = Hidden;
    expectFailure([] { SetAttributeBits(L"C:\\a", System); }, "SetFileAttributes failed", L"C:\\a", 5);
    expectFailure([] { ClearAttributeBits(L"C:\\a", Hidden); }, "SetFileAttributes failed", L"C:\\a", 5);
    expectFailure([] { SetReadOnly(L"C:\\a"); }, "SetFileAttributes failed", L"C:\\a", 5);
    EXPECT_EQ(file(L"C:\\a").attributes, Hidden);
}
