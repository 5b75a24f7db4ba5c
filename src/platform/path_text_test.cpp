#include "platform/path_text.h"

#include "platform/each_system.h"
#include "platform/files.h"

#include <array>

namespace
{

/// What is done with paths as texts, in the form of the system.
class PathText : public EachSystem
{
protected:
    Platform::Files& files() { return system().files; }
    std::wstring folderOf(const std::wstring& text) { return files().removeFileSpec(path(text)); }
    std::wstring nameOf(const std::wstring& text) { return files().fileName(path(text)); }
    std::wstring appended(const std::wstring& text, const std::wstring& more)
    {
        return files().append(path(text), more);
    }
};

struct Match
{
    const wchar_t* name;
    const wchar_t* pattern;
    bool expected;
};

constexpr std::array Matches = {
    Match{L"letter.tmp", L"*.tmp", true},
    Match{L"LETTER.Tmp", L"*.tmp", true},
    Match{L".tmp", L"*.tmp", true},
    Match{L"two.dots.tmp", L"*.tmp", true},
    Match{L"with a space [1].tmp", L"*.tmp", true},
    Match{L"tmp", L"*.tmp", false},
    Match{L"letter.tmpx", L"*.tmp", false},
    Match{L"letter.tmp.txt", L"*.tmp", false},
    Match{L"", L"*.tmp", false},
    Match{L"letter.bak", L"*.bak", true},
    Match{L"letter.BAK", L"*.bak", true},
    Match{L"letter.bak2", L"*.bak", false},
    Match{L"~letter.doc", L"~*.*", true},
    Match{L"~$letter.docx", L"~*.*", true},
    Match{L"~.doc", L"~*.*", true},
    Match{L"~letter.", L"~*.*", true},
    Match{L"~letter", L"~*.*", false},
    Match{L"~", L"~*.*", false},
    Match{L"letter~.doc", L"~*.*", false},
    Match{L" ~letter.doc", L"~*.*", false},
    Match{L"letter.txt", L"*.*", true},
    Match{L"letter", L"*.*", true},
    Match{L"letter", L"*", true},
    Match{L"", L"*", true},
    Match{L"letter.txt", L"l?tter.*", true},
    Match{L"ltter.txt", L"l?tter.*", false},
    Match{L"letter.txt", L"letter.txt?", false},
    Match{L"a[1].txt", L"a[1].txt", true},
    Match{L"a1.txt", L"a[1].txt", false},
    Match{L"letter.bak", L"*.tmp;*.bak", true},
    Match{L"letter.bak", L"*.tmp; *.bak", true},
    Match{L"letter.txt", L"*.tmp;*.bak", false},
};

TEST_P(PathText, namesMatchPatternsWhateverTheCase)
{
    for (const auto& [name, pattern, expected] : Matches)
        EXPECT_EQ(files().matches(name, pattern), expected)
            << testing::PrintToString(name) << ' ' << testing::PrintToString(pattern);
}

TEST_P(PathText, theNameIsTheLastPart)
{
    EXPECT_EQ(nameOf(L"/folder/letter.txt"), L"letter.txt");
    EXPECT_EQ(nameOf(L"/letter.txt"), L"letter.txt");
    EXPECT_EQ(nameOf(L"letter.txt"), L"letter.txt");
    EXPECT_EQ(nameOf(L"folder/~letter"), L"~letter");
    EXPECT_EQ(nameOf(L""), L"");
}

TEST_P(PathText, theNameOfAFolderKeepsItsSeparator)
{
    EXPECT_EQ(nameOf(L"/folder/below/"), path(L"below/"));
    EXPECT_EQ(nameOf(L"/"), path(L"/"));
}

TEST_P(PathText, theFolderIsThereWithoutItsSeparator)
{
    EXPECT_EQ(folderOf(L"/folder/letter.txt"), path(L"/folder"));
    EXPECT_EQ(folderOf(L"/folder/below/letter.txt"), path(L"/folder/below"));
    EXPECT_EQ(folderOf(L"/folder/"), path(L"/folder"));
    EXPECT_EQ(folderOf(L"folder/letter.txt"), L"folder");
    EXPECT_EQ(folderOf(L"letter.txt"), L"");
    EXPECT_EQ(folderOf(L""), L"");
}

TEST_P(PathText, theRootStays)
{
    EXPECT_EQ(folderOf(L"/letter.txt"), path(L"/"));
    EXPECT_EQ(folderOf(L"/"), path(L"/"));
}

TEST_P(PathText, whatIsAppendedStandsBehindOneSeparator)
{
    EXPECT_EQ(appended(L"/folder", L"*"), path(L"/folder/*"));
    EXPECT_EQ(appended(L"/folder/", L"*"), path(L"/folder/*"));
    EXPECT_EQ(appended(L"/", L"*"), path(L"/*"));
    EXPECT_EQ(appended(L"folder", L"*"), path(L"folder/*"));
    EXPECT_EQ(appended(L"/folder", system().separator + std::wstring(L"*")), path(L"/folder/*"));
    EXPECT_EQ(appended(L"", L"*"), L"*");
}

INSTANTIATE_EACH_SYSTEM(PathText);

TEST(PathsOfWindows, drivesAndSharesAreRootsToo)
{
    EXPECT_EQ(Platform::removeFileSpecText(L"C:letter.txt", L'\\'), L"C:");
    EXPECT_EQ(Platform::removeFileSpecText(L"\\letter.txt", L'\\'), L"\\");
    EXPECT_EQ(Platform::removeFileSpecText(L"\\\\server\\share\\letter.txt", L'\\'), L"\\\\server\\share");
    EXPECT_EQ(Platform::fileNameText(L"C:letter.txt", L'\\'), L"letter.txt");
    EXPECT_EQ(Platform::fileNameText(L"C:\\folder/letter.txt", L'\\'), L"letter.txt");
    EXPECT_EQ(Platform::fileNameText(L"\\\\server\\share\\letter.txt", L'\\'), L"letter.txt");
}

TEST(PathsOfLinux, aColonOrABackslashIsACharacterLikeAnyOther)
{
    EXPECT_EQ(Platform::removeFileSpecText(L"/a:b\\c", L'/'), L"/");
    EXPECT_EQ(Platform::fileNameText(L"/folder/a:b\\c", L'/'), L"a:b\\c");
}

} // namespace
