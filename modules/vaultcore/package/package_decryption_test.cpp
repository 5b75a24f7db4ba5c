#include "vaultcore/package/testing_package.h"
#include "vaultcore/package/testing_sfx.h"

namespace VaultCore
{
namespace
{

class PackageDecryptionTest : public SfxTest
{
protected:
    PackageDecryptionTest() { fs::create_directory(into); }

    fs::path packageOfTwo()
    {
        fs::create_directory(inside / "docs");
        put(inside / "docs" / "a", "abc");
        put(inside / "docs" / "b", "def");
        SfxJob(files, {}, {order, "", wide(program)}).run(texts({inside / "docs"}));
        return inside / "docs.exe";
    }

    fs::path write(const MemoryPackage& package)
    {
        return put(inside / "bad.exe", std::string(package.bytes.begin(), package.bytes.end()));
    }

    void decryptWithKit(const fs::path& package)
    {
        provider.answer = [](IKey** key)
        {
            *key = symmetricKey().release();
            return KeyProvided;
        };
        decrypt({package}, true, into);
    }
};

TEST_F(PackageDecryptionTest, asksAgainForAnotherKey)
{
    unpack(packageOfTwo(), "xyk");
    EXPECT_EQ(provider.asked.size(), 3U);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(content(into / "docs" / "b"), "def");
}

TEST_F(PackageDecryptionTest, deletesThePackageOnceAllIsUnpacked)
{
    const fs::path package = packageOfTwo();
    provider.give("k");
    decrypt({package}, true, into);
    EXPECT_FALSE(fs::exists(package));
    EXPECT_EQ(content(into / "docs" / "a"), "abc");
    EXPECT_EQ(recorder.log.back(), L"operation finished");
}

TEST_F(PackageDecryptionTest, tellsTheFolderOfItsFilesAtItsEnd)
{
    const fs::path package = packageOfTwo();
    provider.give("k");
    decrypt({package}, false, into);
    ASSERT_EQ(recorder.texts.size(), 1U);
    EXPECT_TRUE(fs::path(recorder.texts[0]).is_absolute());
    EXPECT_EQ(content(fs::path(recorder.texts[0]) / "docs" / "a"), "abc");
    EXPECT_EQ(recorder.texts[0], wide(into / ""));
}

TEST_F(PackageDecryptionTest, tellsAFolderThatIsNeverEmptyForAnEntryInTheCurrentFolder)
{
    fs::rename(packageOfTwo(), into / "docs.exe");
    const CurrentFolder current(into);
    provider.give("k");
    decrypt({"docs.exe"});
    ASSERT_EQ(recorder.texts.size(), 1U);
    EXPECT_NE(recorder.texts[0], L"");
    EXPECT_EQ(content(fs::path(recorder.texts[0]) / "docs" / "a"), "abc");
}

TEST_F(PackageDecryptionTest, tellsTheCauseWhenOneOfItsFilesIsGivenUp)
{
    const fs::path package = packageOfTwo();
    fs::create_directory(into / "docs");
    put(into / "docs" / "a", "mine");
    provider.give("k");
    decrypt({package}, false, into);
    EXPECT_EQ(recorder.texts, Log{L"The file was skipped."});
}

TEST_F(PackageDecryptionTest, aFileThatReadsBackDifferentlyGoesAndThePackageStays)
{
    const fs::path package = packageOfTwo();
    int writes = 0;
    files.changeWritten = [&](std::span<std::uint8_t> bytes)
    {
        if (++writes == 1)
            bytes[0] ^= 1;
    };
    provider.give("k");
    decrypt({package}, true, into);
    EXPECT_EQ(recorder.messages,
              Log{L"The new file could not be read back as it was written; the source file is untouched."});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(package));
    EXPECT_EQ(countIn(into / "docs"), 1U);
}

TEST_F(PackageDecryptionTest, countsReadingBackWithoutGoingBack)
{
    put(inside / "long", std::string(5'000'000, 'x'));
    put(inside / "short", "abc");
    SfxJob(files, {}, {order, "", wide(program)}).run(texts({inside / "long", inside / "short"}));
    std::vector<std::uint64_t> reported;
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t)
    {
        reported.push_back(done);
        return 1;
    };
    const std::uint64_t size = fs::file_size(inside / "long.exe");
    provider.give("k");
    decrypt({inside / "long.exe"}, true, into);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_EQ(std::count(reported.begin(), reported.end(), size), 1);
    EXPECT_EQ(content(into / "short"), "abc");
}

TEST_F(PackageDecryptionTest, anExistingFileIsNotReplacedAndThePackageStays)
{
    const fs::path package = packageOfTwo();
    fs::create_directory(into / "docs");
    put(into / "docs" / "a", "mine");
    provider.give("k");
    decrypt({package}, true, into);
    EXPECT_EQ(content(into / "docs" / "a"), "mine");
    EXPECT_EQ(content(into / "docs" / "b"), "def");
    EXPECT_EQ(recorder.targets, Log{L"a"});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(package));
}

TEST_F(PackageDecryptionTest, aRepeatedFileIsUnpackedOnceItsNameIsFree)
{
    const fs::path package = packageOfTwo();
    fs::create_directory(into / "docs");
    put(into / "docs" / "b", "mine");
    recorder.errorAnswer = [&]
    {
        fs::remove(into / "docs" / "b");
        return FileErrorRepeat;
    };
    unpack(package);
    EXPECT_EQ(content(into / "docs" / "b"), "def");
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(PackageDecryptionTest, aStopLeavesWholeFilesOnly)
{
    const fs::path package = packageOfTwo();
    recorder.progressAnswer = [calls = 0](std::uint64_t, std::uint64_t) mutable { return ++calls == 4 ? 0 : 1; };
    provider.give("k");
    decrypt({package}, true, into);
    EXPECT_EQ(content(into / "docs" / "a").size() + content(into / "docs" / "b").size(), 3U);
    EXPECT_EQ(temporariesIn(base), 0U);
    EXPECT_TRUE(fs::exists(package));
}

TEST_F(PackageDecryptionTest, aLinkInTheFolderIsNotFollowed)
{
    const fs::path package = packageOfTwo();
    std::error_code error;
    fs::create_directory_symlink(outside, into / "docs", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    unpack(package);
    EXPECT_EQ(recorder.messages,
              Log(2, L"A link was found where a file or folder was expected; links are not followed."));
    EXPECT_EQ(countIn(outside), 1U);
}

TEST_F(PackageDecryptionTest, aFileInAFoldersPlaceStays)
{
    const fs::path package = packageOfTwo();
    put(into / "docs", "mine");
    unpack(package);
    EXPECT_EQ(content(into / "docs"), "mine");
    EXPECT_EQ(recorder.failed, 1);
}

TEST_F(PackageDecryptionTest, badNamesWriteNothing)
{
    for (const char* name : {"../a", "/tmp/a", "a/../../b", "nul", "a:b", "a\\b"})
    {
        BadPackage kit;
        kit.add("good");
        kit.add(name);
        const fs::path package = write(kit.finish());
        decryptWithKit(package);
        EXPECT_TRUE(fs::exists(package));
        EXPECT_EQ(countIn(into), 0U);
    }
    EXPECT_EQ(recorder.failed, 6);
    EXPECT_EQ(countIn(base), 4U);
}

TEST_F(PackageDecryptionTest, aDamagedFileLeavesNothingAndTheOthersAreUnpacked)
{
    BadPackage kit;
    kit.add("a");
    const PackageEntry bad = kit.add("b");
    kit.add("c");
    MemoryPackage package = kit.finish();
    package.bytes[static_cast<std::size_t>(bad.offset + bad.startSize)] ^= 1;
    const fs::path path = write(package);
    decryptWithKit(path);
    EXPECT_EQ(content(into / "a"), "content of a");
    EXPECT_EQ(content(into / "c"), "content of c");
    EXPECT_EQ(countIn(into), 2U);
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(recorder.messages, Log{L"The encrypted file is damaged or incomplete."});
}

TEST_F(PackageDecryptionTest, aProgramThatIsNoPackageIsNoEncryptedFile)
{
    decrypt({program}, false, into);
    EXPECT_EQ(recorder.messages, Log{L"The file is no encrypted file of this program."});
}

} // namespace
} // namespace VaultCore
