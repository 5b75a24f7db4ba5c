#include "vaultcore/result_names.h"

#include "vaultcore/file_system.h"

#include <gtest/gtest.h>

namespace VaultCore
{
namespace
{

NativeText native(const std::string& text)
{
    return NativeText(text.begin(), text.end());
}

TEST(ResultNames, putZelBehindTheWholeName)
{
    EXPECT_EQ(encryptedName(native("a.txt")), native("a.txt.zel"));
}

TEST(ResultNames, takeZelAwayInWhateverLetters)
{
    EXPECT_EQ(plainName(native("a.txt.zel")), native("a.txt"));
    EXPECT_EQ(plainName(native("a.ZeL")), native("a"));
}

TEST(ResultNames, neverGiveAnEncryptedFilesOwnNameToItsContent)
{
    EXPECT_EQ(plainName(native("a.txt")), native("a.txt.decrypted"));
    EXPECT_EQ(plainName(native(".zel")), native(".zel.decrypted"));
}

TEST(ResultNames, recogniseTemporaryNamesAndTheirSource)
{
    const NativeText stem = temporaryStem(native("a.txt"));
    const NativeText name = temporaryName(stem, "abcdefgh");
    EXPECT_EQ(name, native(".~a.txt.abcdefgh.zel-part"));
    EXPECT_EQ(stemOf(name), stem);
}

TEST(ResultNames, takeNoOtherNameForATemporaryOne)
{
    for (const char* name :
         {"", ".~", ".~.abcdefgh.zel-part", "a.abcdefgh.zel-part", ".~a.abcdefg.zel-part", ".~a.ABCDEFGH.zel-part",
          ".~a.abcdefgh.zel", ".~aabcdefgh.zel-part", ".~a.abcdefg1.zel-part"})
        EXPECT_FALSE(isTemporaryName(native(name))) << name;
}

TEST(ResultNames, keepTemporaryNamesBelowTheLimitAndApart)
{
    const NativeText first = temporaryStem(native(std::string(250, 'x') + "1"));
    const NativeText second = temporaryStem(native(std::string(250, 'x') + "2"));
    EXPECT_LT(temporaryName(first, "abcdefgh").size(), 100U);
    EXPECT_NE(first, second);
    EXPECT_LE(temporaryName(temporaryStem(native(std::string(200, 'x'))), "abcdefgh").size(), 255U);
}

TEST(ResultNames, areReducedToOneSafeSegment)
{
    const auto files = createFileSystem();
    EXPECT_EQ(files->leafName(L"a.txt"), native("a.txt"));
    EXPECT_EQ(files->leafName(L"/etc/passwd"), native("passwd"));
    EXPECT_EQ(files->leafName(L"../../a"), native("a"));
    EXPECT_EQ(files->leafName(std::wstring(L"a\0b", 3)), native("a_b"));
    EXPECT_EQ(files->leafName(L"a\x1b[2Jb"), native("a_[2Jb"));
    EXPECT_EQ(files->leafName(L"exe\u202Etxt.pdf\u2069"), native("exe_txt.pdf_"));
    for (const wchar_t* nothing : {L"", L".", L"..", L"/", L"a/", L"a/.."})
        EXPECT_TRUE(files->leafName(nothing).empty());
}

} // namespace
} // namespace VaultCore
