#include "systemutilities/path_names.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Halden::SystemUtilities;

namespace
{

struct PathNamesTest : testing::Test
{
    Fakes::FakePlatform platform;
};

struct SlashPathNamesTest : testing::Test
{
    Fakes::FakePlatform platform{L'/'};
};

std::wstring withSeparator(std::wstring path)
{
    AddTrailingBackslash(path);
    return path;
}

} // namespace

TEST_F(PathNamesTest, aTrailingBackslashIsAddedOnce)
{
    EXPECT_EQ(withSeparator(L"C:\\a"), L"C:\\a\\");
    EXPECT_EQ(withSeparator(L"C:\\a\\"), L"C:\\a\\");
    EXPECT_EQ(withSeparator(L"C:\\a\\\\"), L"C:\\a\\\\");
    EXPECT_EQ(withSeparator(L"a"), L"a\\");
    EXPECT_EQ(withSeparator(L"a/"), L"a/\\");
    EXPECT_EQ(withSeparator(L"\\"), L"\\");
    EXPECT_EQ(withSeparator(L""), L"");
}

TEST_F(PathNamesTest, theDirectoryEndsBeforeTheLastBackslash)
{
    EXPECT_EQ(GetDirectory(L"C:\\a\\b.txt"), L"C:\\a");
    EXPECT_EQ(GetDirectory(L"C:\\a\\"), L"C:\\a");
    EXPECT_EQ(GetDirectory(L"C:\\b.txt"), L"C:");
    EXPECT_EQ(GetDirectory(L"\\b.txt"), L"");
    EXPECT_EQ(GetDirectory(L"b.txt"), L"");
    EXPECT_EQ(GetDirectory(L"a/b.txt"), L"");
    EXPECT_EQ(GetDirectory(L""), L"");
}

TEST_F(PathNamesTest, theFileNameStartsBehindTheLastBackslash)
{
    EXPECT_EQ(GetFileName(L"C:\\a\\b.txt"), L"b.txt");
    EXPECT_EQ(GetFileName(L"C:\\a\\"), L"");
    EXPECT_EQ(GetFileName(L"b.txt"), L"b.txt");
    EXPECT_EQ(GetFileName(L"a/b.txt"), L"a/b.txt");
    EXPECT_EQ(GetFileName(L""), L"");
}

TEST_F(PathNamesTest, theExtensionIsThatOfTheFileName)
{
    EXPECT_EQ(GetExtension(L"C:\\a\\b.txt"), L".txt");
    EXPECT_EQ(GetExtension(L"C:\\a.b\\c.tar.gz"), L".gz");
    EXPECT_EQ(GetExtension(L"C:\\a.b\\c"), L"");
    EXPECT_EQ(GetExtension(L"C:\\a.b\\"), L"");
    EXPECT_EQ(GetExtension(L"C:\\a\\.b"), L".b");
    EXPECT_EQ(GetExtension(L"c."), L".");
    EXPECT_EQ(GetExtension(L"c"), L"");
    EXPECT_EQ(GetExtension(L"a.b/c"), L".b/c");
    EXPECT_EQ(GetExtension(L""), L"");
}

TEST_F(PathNamesTest, withoutItsExtensionThePathIsTheRest)
{
    EXPECT_EQ(RemoveExtension(L"C:\\a\\b.txt"), L"C:\\a\\b");
    EXPECT_EQ(RemoveExtension(L"C:\\a.b\\c"), L"C:\\a.b\\c");
    EXPECT_EQ(RemoveExtension(L"C:\\a\\.b"), L"C:\\a\\");
    EXPECT_EQ(RemoveExtension(L"c.tar.gz"), L"c.tar");
    EXPECT_EQ(RemoveExtension(L"c."), L"c");
    EXPECT_EQ(RemoveExtension(L""), L"");
}

TEST_F(PathNamesTest, aTextIsInsertedBeforeTheExtension)
{
    EXPECT_EQ(InsertBeforeExtension(L"C:\\a\\b.txt", L'-', L"copy"), L"C:\\a\\b-copy.txt");
    EXPECT_EQ(InsertBeforeExtension(L"C:\\a.b\\c", L'-', L"copy"), L"C:\\a.b\\c-copy");
    EXPECT_EQ(InsertBeforeExtension(L"b.txt", L' ', L""), L"b .txt");
    EXPECT_EQ(InsertBeforeExtension(L"", L'_', L"x"), L"_x");
}

TEST_F(PathNamesTest, aNumberIsInsertedBeforeTheExtension)
{
    EXPECT_EQ(InsertNumberBeforeExtension(L"a.txt", L'_', -1), L"a_-1.txt");
    EXPECT_EQ(InsertNumberBeforeExtension(L"a.txt", L'_', 0), L"a_0.txt");
    EXPECT_EQ(InsertNumberBeforeExtension(L"C:\\a.b\\c", L'#', 12), L"C:\\a.b\\c#12");
    EXPECT_EQ(InsertNumberBeforeExtension(L"a", L'_', std::numeric_limits<int>::min()), L"a_-2147483648");
}

TEST_F(PathNamesTest, anAbsolutePathStartsWithADriveOrAShare)
{
    EXPECT_TRUE(IsAbsolutePath(L"C:\\"));
    EXPECT_TRUE(IsAbsolutePath(L"C:\\x"));
    EXPECT_TRUE(IsAbsolutePath(L"\\\\s"));
    EXPECT_TRUE(IsAbsolutePath(L"\\\\server\\share"));
    EXPECT_TRUE(IsAbsolutePath(L"\\\\\\"));
    for (const wchar_t* relative :
         {L"", L"C", L"C:", L"\\\\", L"\\x\\", L"x", L"x\\y", L"C:x", L"C:/x", L"//s/x", L"x\\\\y"})
        EXPECT_FALSE(IsAbsolutePath(relative)) << relative;
}

TEST_F(PathNamesTest, aDriveRootIsADriveWithOrWithoutABackslash)
{
    EXPECT_TRUE(IsDriveRoot(L"C:"));
    EXPECT_TRUE(IsDriveRoot(L"C:\\"));
    EXPECT_TRUE(IsDriveRoot(L"1:"));
    for (const wchar_t* other : {L"", L"C", L":", L"CC", L"CC:", L"C:x", L"C:/", L"C:\\x", L"C:\\\\", L"\\\\"})
        EXPECT_FALSE(IsDriveRoot(other)) << other;
}

TEST_F(PathNamesTest, aShareRootIsAServerAndAShare)
{
    EXPECT_TRUE(IsUncShareRoot(L"\\\\server\\share"));
    EXPECT_TRUE(IsUncShareRoot(L"\\\\server\\share\\"));
    EXPECT_TRUE(IsUncShareRoot(L"\\\\s\\x"));
    for (const wchar_t* other :
         {L"\\\\server", L"\\\\server\\share\\x", L"\\\\server\\share\\x\\", L"\\\\server\\share\\\\",
          L"\\server\\share", L"\\\\\\server\\share", L"\\\\\\xy", L"C:\\a\\b", L"x\\\\s\\s"})
        EXPECT_FALSE(IsUncShareRoot(other)) << other;
}

TEST_F(PathNamesTest, aShareRootIsTakenByItsBackslashesAlone)
{
    EXPECT_TRUE(IsUncShareRoot(L"\\\\server\\"));
    EXPECT_TRUE(IsUncShareRoot(L"\\\\server\\\\"));
    EXPECT_TRUE(IsUncShareRoot(L"\\\\ab\\"));
    EXPECT_FALSE(IsUncShareRoot(L"\\\\a\\"));
}

TEST_F(PathNamesTest, aRootIsOneOfBoth)
{
    EXPECT_TRUE(IsRootPath(L"C:"));
    EXPECT_TRUE(IsRootPath(L"C:\\"));
    EXPECT_TRUE(IsRootPath(L"\\\\server\\share\\"));
    for (const wchar_t* other : {L"", L"/", L"\\", L"C:\\x", L"\\\\server", L"\\\\server\\share\\x"})
        EXPECT_FALSE(IsRootPath(other)) << other;
}

TEST_F(PathNamesTest, thePrefixOfALongPathIsTakenFromADrive)
{
    EXPECT_EQ(StripLongPathPrefix(L"\\\\?\\C:\\x"), L"C:\\x");
    EXPECT_EQ(StripLongPathPrefix(L"\\\\?\\C:"), L"C:");
    EXPECT_EQ(StripLongPathPrefix(L"\\\\?\\\\\\?\\C:"), L"\\\\?\\\\\\?\\C:");
    for (const wchar_t* other : {L"", L"C:\\x", L"\\\\?\\", L"\\\\?\\C", L"\\\\?\\:C", L"\\\\?\\UNC\\server\\share",
                                 L"\\\\.\\C:\\x", L"\\?\\C:\\x"})
        EXPECT_EQ(StripLongPathPrefix(other), other);
}

TEST_F(PathNamesTest, nothingElseThanSeparatorsIsTakenAsWell)
{
    for (const std::size_t count : {1u, 2u, 3u, 4u, 5u, 260u})
    {
        const std::wstring path(count, L'\\');
        EXPECT_EQ(withSeparator(path), path);
        EXPECT_EQ(GetDirectory(path), path.substr(1));
        EXPECT_EQ(GetFileName(path), L"");
        EXPECT_EQ(GetExtension(path), L"");
        EXPECT_EQ(RemoveExtension(path), path);
        EXPECT_EQ(IsAbsolutePath(path), count >= 3);
        EXPECT_FALSE(IsRootPath(path));
        EXPECT_EQ(StripLongPathPrefix(path), path);
    }
}

TEST_F(PathNamesTest, aPathMayHaveAnyLength)
{
    for (const std::size_t length : {259u, 260u, 261u, 32767u})
    {
        const std::wstring folder = L"\\\\?\\C:\\" + std::wstring(length - 13, L'f');
        const std::wstring path = folder + L"\\a.txt";
        ASSERT_EQ(path.size(), length);
        EXPECT_EQ(GetDirectory(path), folder);
        EXPECT_EQ(GetFileName(path), L"a.txt");
        EXPECT_EQ(GetExtension(path), L".txt");
        EXPECT_EQ(RemoveExtension(path), folder + L"\\a");
        EXPECT_EQ(InsertNumberBeforeExtension(path, L'_', 7), folder + L"\\a_7.txt");
        EXPECT_EQ(StripLongPathPrefix(path), path.substr(4));
        EXPECT_TRUE(IsAbsolutePath(path));
    }
}

TEST_F(SlashPathNamesTest, namesArePartedByTheSystemsSeparator)
{
    EXPECT_EQ(withSeparator(L"/a"), L"/a/");
    EXPECT_EQ(withSeparator(L"/a/"), L"/a/");
    EXPECT_EQ(GetDirectory(L"/a/b.txt"), L"/a");
    EXPECT_EQ(GetFileName(L"/a/b\\c.txt"), L"b\\c.txt");
    EXPECT_EQ(GetExtension(L"/a.b/c"), L"");
    EXPECT_EQ(InsertNumberBeforeExtension(L"/a.b/c.txt", L'_', 2), L"/a.b/c_2.txt");
}

TEST_F(SlashPathNamesTest, thereAreNeitherDrivesNorShares)
{
    EXPECT_TRUE(IsAbsolutePath(L"/"));
    EXPECT_TRUE(IsAbsolutePath(L"/a"));
    EXPECT_FALSE(IsAbsolutePath(L"C:\\x"));
    EXPECT_FALSE(IsAbsolutePath(L"\\\\server"));
    EXPECT_FALSE(IsAbsolutePath(L""));
    EXPECT_TRUE(IsRootPath(L"/"));
    EXPECT_FALSE(IsRootPath(L""));
    EXPECT_FALSE(IsRootPath(L"//"));
    EXPECT_FALSE(IsRootPath(L"C:"));
    EXPECT_FALSE(IsDriveRoot(L"C:\\"));
    EXPECT_FALSE(IsUncShareRoot(L"\\\\server\\share"));
    EXPECT_EQ(StripLongPathPrefix(L"\\\\?\\C:\\x"), L"\\\\?\\C:\\x");
}
