#include "platform/path_text.h"

#include "platform/files.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <array>

namespace Platform
{

namespace
{

constexpr std::array Paths = {
    L"",
    L"letter.txt",
    L"letter",
    L".",
    L"..",
    L"folder\\letter.txt",
    L"folder\\",
    L"C:",
    L"C:\\",
    L"C:letter.txt",
    L"C:folder\\letter.txt",
    L"C:\\letter.txt",
    L"C:\\folder",
    L"C:\\folder\\",
    L"C:\\folder\\letter.txt",
    L"C:\\folder\\a letter [1].txt",
    L"C:\\folder\\below\\",
    L"C:\\folder\\below\\letter.txt",
    L"C:\\folder\\\\letter.txt",
    L"C:\\folder/letter.txt",
    L"C:/folder/letter.txt",
    L"\\letter.txt",
    L"\\folder\\letter.txt",
    L"\\",
    L"\\\\server\\share\\letter.txt",
    L"\\\\server\\share\\folder\\letter.txt",
    L"\\\\?\\C:\\folder\\letter.txt",
    L"C:\\folder\\letter.txt:stream",
};

constexpr std::array Names = {L"",          L"letter.tmp", L"LETTER.TMP", L"letter.bak", L"~letter.doc", L"~letter",
                              L"~.",        L"~",          L".tmp",       L"tmp",        L"a.b.c",       L"letter.",
                              L"a [1].txt", L"abc",        L"a;b",        L"letter.tmp "};

constexpr std::array Patterns = {L"",     L"*",    L"*.*",         L"*.tmp",        L"*.bak",   L"~*.*",   L"?*",
                                 L"a*c",  L"a?c",  L"*.tmp;*.bak", L"*.tmp; *.bak", L"*.",      L"**.tmp", L"*b*",
                                 L"a*.*", L"*.*c", L"[ab]*",       L"abc",          L"letter.*"};

Files& shellFiles()
{
    return nativeSystem().files;
}

// What stands for the shell's functions where there are none, and in the fakes, gives the shell's own answers.

TEST(PathTextAndTheShell, agreeAboutTheLastPart)
{
    for (const std::wstring path : Paths)
        EXPECT_EQ(fileNameText(path, L'\\'), shellFiles().fileName(path)) << testing::PrintToString(path);
}

TEST(PathTextAndTheShell, agreeAboutTheFolder)
{
    for (const std::wstring path : Paths)
        EXPECT_EQ(removeFileSpecText(path, L'\\'), shellFiles().removeFileSpec(path)) << testing::PrintToString(path);
}

TEST(PathTextAndTheShell, agreeAboutPatterns)
{
    for (const std::wstring name : Names)
        for (const std::wstring pattern : Patterns)
            EXPECT_EQ(matchesPatternText(name, pattern), shellFiles().matches(name, pattern))
                << testing::PrintToString(name) << ' ' << testing::PrintToString(pattern);
}

} // namespace

} // namespace Platform
