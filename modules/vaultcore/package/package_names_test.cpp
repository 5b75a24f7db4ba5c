#include "vaultcore/package/package_names.h"

#include "platform/utf8.h"

#include <chrono>
#include <gtest/gtest.h>

namespace VaultCore
{
namespace
{

TEST(PackageNames, goodNamesAreTaken)
{
    for (const char* name : {"a", "a.txt", "folder/a.txt", "a b/c d", ".hidden", "..a", "a..b", "\xc3\xa4/\xe6\x97\xa5",
                             "\xf0\x9f\x94\x91.txt", "console", "com", "com10", "nul_", " a"})
        EXPECT_FALSE(faultOfName(name)) << name;
}

TEST(PackageNames, namesThatLeadElsewhereAreRefused)
{
    for (const char* name : {"", "/a", "a/", "a//b", ".", "..", "../a", "a/..", "a/../b", "a/./b", "\\a", "a\\b",
                             "..\\a", "c:a", "C:/a", "a:stream", "//server/share/a", "\\\\?\\C:\\a"})
        EXPECT_TRUE(faultOfName(name)) << name;
}

TEST(PackageNames, namesThatASystemChangesOrForbidsAreRefused)
{
    for (const char* name : {"a.", "a ", "a./b", "a /b", "a<", "a>", "a\"", "a|", "a?", "a*", "a\nb", "a\x7f",
                             "a\xc2\x85", "\x01", "exe\xe2\x80\xaetxt.pdf", "a\xe2\x81\xa6"})
        EXPECT_TRUE(faultOfName(name)) << name;
    EXPECT_TRUE(faultOfName(std::string("a\0b", 3)));
}

TEST(PackageNames, devicesAreRefusedWhateverTheirFolderLettersAndEndings)
{
    for (const char* name : {"con", "CON", "Nul.txt", "aux .txt", "prn.tar.gz", "com1", "LPT9.a", "com0", "com\xc2\xb9",
                             "conin$", "CONOUT$", "folder/nul", "nul/a"})
        EXPECT_TRUE(faultOfName(name)) << name;
}

TEST(PackageNames, whatIsNoUtf8IsRefused)
{
    for (const char* name : {"\xff", "a\xc3", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80"})
        EXPECT_TRUE(faultOfName(name));
}

TEST(PackageNames, lengthsAreLimited)
{
    EXPECT_FALSE(faultOfName(std::string(255, 'a')));
    EXPECT_TRUE(faultOfName(std::string(256, 'a')));
    std::string deep(LongestPackageName, 'a');
    for (std::size_t index = 100; index < deep.size(); index += 100)
        deep[index] = '/';
    EXPECT_FALSE(faultOfName(deep));
    EXPECT_TRUE(faultOfName(deep + "a"));
    // A character beyond the first 65,536 counts twice.
    std::string keys;
    for (int count = 0; count < 127; ++count)
        keys += "\xf0\x9f\x94\x91";
    EXPECT_FALSE(faultOfName(keys + "a"));
    EXPECT_TRUE(faultOfName(keys + "ab"));
}

TEST(PackageNames, aPartMadeOfAnyNameIsGood)
{
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"a.txt", L"a.txt"},  {L"a:b", L"a_b"},    {L"a.", L"a_"},
        {L"a ", L"a_"},        {L"con", L"_con"},   {L"..", L"._"},
        {L".", L"_"},          {L"a\\b", L"a_b"},   {L"a\x01", L"a_"},
        {L"", L"_"},           {L"x/y", L"x_y"},    {L"?", L"_"},
        {L"Nul.t", L"_Nul.t"}, {L"a\xDCFF", L"a_"}, {L"exe\u202Etxt.pdf", L"exe_txt.pdf"},
    };
    for (const auto& [name, part] : cases)
    {
        EXPECT_EQ(packageNamePart(name), part);
        EXPECT_FALSE(faultOfName(Platform::toUtf8(part)));
    }
}

TEST(PackageNames, foldingMakesCapitalLettersSmall)
{
    EXPECT_EQ(foldedName(L"A-Z \u00C4\u0178\u0410\u0391\u0106\u1EA4"), L"a-z \u00E4\u00FF\u0430\u03B1\u0107\u1EA5");
    EXPECT_EQ(foldedName(L"a\u00D7\u00DF\u0107@[`{"), L"a\u00D7\u00DF\u0107@[`{");
    EXPECT_EQ(foldedName(foldedName(L"\u0178\u0386\u0388\u038C\u038E")), foldedName(L"\u0178\u0386\u0388\u038C\u038E"));
}

TEST(PackageNames, twoFilesOfOneNameDoNotStandTogether)
{
    PackageNames names;
    EXPECT_TRUE(names.addFile(L"a/b"));
    EXPECT_FALSE(names.addFile(L"a/b"));
    EXPECT_FALSE(names.addFile(L"A/B"));
    EXPECT_TRUE(names.addFile(L"a/bc"));
    EXPECT_TRUE(names.hasFile(L"A/b"));
    EXPECT_TRUE(names.hasFolder(L"A"));
}

TEST(PackageNames, aFileIsNoFolderOfAnother)
{
    PackageNames names;
    EXPECT_TRUE(names.addFile(L"a/b/c"));
    EXPECT_FALSE(names.addFile(L"a"));
    EXPECT_FALSE(names.addFile(L"A/B"));
    EXPECT_FALSE(names.addFile(L"a/b/c/d"));
    EXPECT_TRUE(names.addFile(L"a/d"));
}

TEST(PackageNames, aFolderStandsForThoseOnTheWayToIt)
{
    PackageNames names;
    names.addFolder(L"a/b");
    EXPECT_TRUE(names.hasFolder(L"A/B"));
    EXPECT_TRUE(names.hasFolder(L"a"));
    EXPECT_FALSE(names.hasFile(L"a"));
    EXPECT_FALSE(names.hasFolder(L"b"));
    EXPECT_FALSE(names.addFile(L"a/b"));
    EXPECT_TRUE(names.addFile(L"a/b/c"));
    EXPECT_FALSE(names.hasFolder(L"a/b/c"));
}

template <class Work> std::chrono::steady_clock::duration timeOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}

/// A package may hold thousands of them. With each way kept by itself they would take minutes and gigabytes.
TEST(PackageNames, deepNamesTakeNoMoreThanFlatOnesOfAsManyParts)
{
    constexpr int Names = 20, Depth = 2000;
    std::wstring deep;
    for (int level = 0; level < Depth; ++level)
        deep += L"/a";
    const auto flatTime = timeOf(
        []
        {
            PackageNames names;
            for (int number = 0; number < Names * Depth; ++number)
                ASSERT_TRUE(names.addFile(std::to_wstring(number) + L"/a"));
        });
    const auto deepTime = timeOf(
        [&]
        {
            PackageNames names;
            for (int number = 0; number < Names; ++number)
                ASSERT_TRUE(names.addFile(std::to_wstring(number) + deep));
        });
    EXPECT_LT(deepTime, flatTime);
}

} // namespace
} // namespace VaultCore
