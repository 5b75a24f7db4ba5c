#include "vaultcore/testing_support.h"

// How a wipe treats the content.

namespace VaultCore
{
namespace
{

using Steps = std::vector<std::string>;

class WiperTest : public JobTest
{
protected:
    void wipe(const std::vector<fs::path>& entries) { removeAll(files, recorder, entries, true); }

    WatchedFileSystem files;
    Recorder recorder;
};

TEST_F(WiperTest, overwritesFlushesTruncatesRenamesAndRemoves)
{
    static_assert(WipePasses >= 1);
    wipe({put(inside / "a", "text")});
    Steps expected;
    for (std::uint64_t pass = 0; pass < WipePasses; ++pass)
        expected.insert(expected.end(), {"write", "flush"});
    expected.insert(expected.end(), {"truncate", "rename", "remove"});
    EXPECT_EQ(files.trace, expected);
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_F(WiperTest, hasOverwrittenTheFileItselfBeforeItIsTruncated)
{
    const std::string secret(100000, 's');
    const fs::path file = put(inside / "a", secret);
    // The content is read under the file's own name, at the moment between the last flush and the cut. Where an open
    // file cannot be read by others, what was written stands for it.
    std::string left;
    files.beforeTruncate = [&] { left = content(file); };
    wipe({file});
    if (!left.empty())
    {
        ASSERT_GE(left.size(), secret.size());
        EXPECT_EQ(left.find("ssss"), std::string::npos);
    }
    EXPECT_GE(files.bytesWritten, secret.size());
    EXPECT_EQ(std::count(files.written.begin(), files.written.end(), 's') > 2000, false);
}

TEST_F(WiperTest, givesTheFileAMeaninglessNameBeforeItGoes)
{
    const fs::path file = put(inside / "telling.txt", "text");
    files.failures["remove"] = {FailureCause::Device, 1};
    wipe({file});
    EXPECT_FALSE(fs::exists(file));
    ASSERT_EQ(countIn(inside), 1U);
    const std::string name = fs::directory_iterator(inside)->path().filename().string();
    EXPECT_EQ(name.size(), MeaninglessNameLength);
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), std::string::npos);
}

TEST_F(WiperTest, removesARenamedFileAtTheRepeat)
{
    const fs::path file = put(inside / "a", "text");
    files.failures["remove"] = {FailureCause::Device, 1};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    wipe({file});
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_F(WiperTest, looksForAnotherNameWhenOneIsTaken)
{
    files.failures["rename"] = {FailureCause::NameTaken, 3};
    wipe({put(inside / "a", "text")});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_F(WiperTest, reportsAFailureOfEachStepWithItsCause)
{
    for (const std::string step : {"open a", "write", "flush", "truncate", "rename"})
    {
        const fs::path file = put(inside / "a", "text");
        files.failures.clear();
        files.failures[step] = {FailureCause::Device, 1};
        recorder.messages.clear();
        wipe({file});
        EXPECT_EQ(recorder.messages, std::vector<std::wstring>{L"The device reported a read or write error."}) << step;
        EXPECT_TRUE(fs::exists(file)) << step;
    }
    EXPECT_EQ(recorder.succeeded, 0);
}

TEST_F(WiperTest, refusesAFileThatHasAnotherNameOutsideTheList)
{
    const fs::path file = put(inside / "a", "text");
    std::error_code error;
    fs::create_hard_link(file, outside / "second", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    wipe({file});
    EXPECT_EQ(recorder.messages.at(0),
              L"The file has other names (hard links) outside the list; wiping it would destroy their content too.");
    EXPECT_EQ(content(file), "text");
    EXPECT_EQ(content(outside / "second"), "text");
    EXPECT_TRUE(files.trace.empty());
}

TEST_F(WiperTest, ofAMerelyDeletedFileLeavesItsOtherNameAlone)
{
    const fs::path file = put(inside / "a", "text");
    std::error_code error;
    fs::create_hard_link(file, outside / "second", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    removeAll(files, recorder, {file});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(content(outside / "second"), "text");
}

TEST_F(WiperTest, leavesAFolderThatStaysItsName)
{
    put(inside / "a", "x");
    // A file that comes in while the folder goes.
    files.beforeRemove = [&](const Place& place)
    {
        if (countIn(base) == 2 && !fs::exists(inside))
            put(fs::path(place.root) / place.below / "new", "x");
    };
    wipe({inside});
    EXPECT_EQ(recorder.messages, std::vector<std::wstring>{L"The folder is not empty."});
    EXPECT_TRUE(fs::exists(inside / "new"));
}

} // namespace
} // namespace VaultCore
