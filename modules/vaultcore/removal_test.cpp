#include "vaultcore/testing_support.h"

#include <chrono>

// What is removed and what is not: folders, patterns, links, long and odd names.

namespace VaultCore
{
namespace
{

class RemovalTest : public JobTest, public testing::WithParamInterface<bool>
{
protected:
    void run(const std::vector<fs::path>& entries) { removeAll(files, recorder, entries, GetParam()); }

    WatchedFileSystem files;
    Recorder recorder;
};

INSTANTIATE_TEST_SUITE_P(DeleteAndWipe, RemovalTest, testing::Bool(), &methodName);

TEST_P(RemovalTest, takesAFolderWithAllThatIsInIt)
{
    fs::create_directories(inside / "a" / "b" / "c");
    fs::create_directories(inside / "empty");
    put(inside / "a" / "b" / "c" / "file", "text");
    put(inside / "a" / "file", "");
    run({inside});
    EXPECT_FALSE(fs::exists(inside));
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.failed, 0);
}

TEST_P(RemovalTest, ofAnEmptyEntryTouchesNothingAndIsAFailedFile)
{
    put(inside / "a", "text");
    fs::create_directory(inside / "sub");
    put(inside / "sub" / "b", "text");
    {
        const CurrentFolder current(inside);
        run({""});
        recorder.errorAnswer = [] { return FileErrorAbort; };
        run({"", inside / "a"});
    }
    EXPECT_EQ(recorder.messages,
              std::vector<std::wstring>(2, L"The entry does not name a file or folder that can be removed."));
    EXPECT_EQ(recorder.succeeded, 0);
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(content(inside / "a"), "text");
    EXPECT_EQ(content(inside / "sub" / "b"), "text");
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_P(RemovalTest, takesAFolderWithATrailingSeparator)
{
    put(inside / "file", "text");
    run({inside / ""});
    EXPECT_FALSE(fs::exists(inside));
}

TEST_P(RemovalTest, takesTheFilesOfAPatternButNoFolders)
{
    fs::create_directory(inside / "c.txt");
    put(inside / "c.txt" / "file", "text");
    put(inside / "a.txt", "text");
    put(inside / "b.txt", "text");
    put(inside / "a.dat", "text");
    run({inside / "*.txt"});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_FALSE(fs::exists(inside / "a.txt"));
    EXPECT_TRUE(fs::exists(inside / "a.dat"));
    EXPECT_TRUE(fs::exists(inside / "c.txt" / "file"));
}

TEST_P(RemovalTest, takesEveryFileForStarDotStar)
{
    put(inside / "a", "text");
    put(inside / ".b", "text");
    put(inside / "c.txt", "text");
    run({inside / "*.*"});
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_P(RemovalTest, reportsAPatternThatMatchesNothing)
{
    put(inside / "a.txt", "text");
    run({inside / "*.dat"});
    EXPECT_EQ(recorder.messages, std::vector<std::wstring>{L"No file matches the pattern."});
    EXPECT_EQ(recorder.failed, 1);
}

TEST_P(RemovalTest, refusesEntriesThatNameNoFile)
{
    removeAll(files, recorder, {fs::path()}, GetParam());
    removeAll(files, recorder, {base.root_path()}, GetParam());
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(recorder.messages.at(1), L"The entry does not name a file or folder that can be removed.");
}

TEST_P(RemovalTest, takesAReadOnlyFile)
{
    const fs::path file = put(inside / "a", "text");
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    run({file});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(file));
}

TEST_P(RemovalTest, takesAFileWithoutContent)
{
    const fs::path file = put(inside / "a", "");
    run({file});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(std::count(recorder.log.begin(), recorder.log.end(), L"progress 0/0"), 1);
    EXPECT_FALSE(fs::exists(file));
}

TEST_P(RemovalTest, removesALinkToAFolderAndNotItsTarget)
{
    std::error_code error;
    fs::create_directory_symlink(outside, inside / "link", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    run({inside});
    EXPECT_FALSE(fs::exists(inside));
    EXPECT_EQ(content(outside / "kept.txt"), "kept");
}

TEST_P(RemovalTest, removesALinkToAFileAndNotItsTarget)
{
    std::error_code error;
    fs::create_symlink(outside / "kept.txt", inside / "link", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    run({inside / "link"});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::is_symlink(inside / "link"));
}

TEST_P(RemovalTest, refusesAFolderThatBecameALinkDuringTheJob)
{
    std::error_code error;
    fs::create_directory_symlink(outside, inside / "probe", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    fs::remove(inside / "probe");
    fs::create_directory(inside / "sub");
    put(inside / "sub" / "kept.txt", "same name as outside");
    // The listing is over when the list is built; then the folder is exchanged.
    const auto exchange = [&](std::uint32_t)
    {
        fs::rename(inside / "sub", inside / "moved");
        fs::create_directory_symlink(outside, inside / "sub");
        return 1;
    };
    recorder.entryAnswer = exchange;
    run({inside});
    EXPECT_EQ(content(outside / "kept.txt"), "kept");
    EXPECT_GE(recorder.failed, 1);
    EXPECT_EQ(recorder.messages.at(0),
              L"A link was found where a file or folder was expected; links are not followed.");
}

TEST_P(RemovalTest, takesEveryNameOfAFileWhenAllAreListed)
{
    std::error_code error;
    put(inside / "one", "text");
    fs::create_hard_link(inside / "one", inside / "two", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    run({inside});
    EXPECT_FALSE(fs::exists(inside));
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.failed, 0);
}

} // namespace
} // namespace VaultCore
