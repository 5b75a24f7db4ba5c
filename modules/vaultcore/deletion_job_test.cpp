#include "vaultcore/testing_support.h"

#include <chrono>

// Order of events, and what repeat, skip, abort and cancel do.

namespace VaultCore
{
namespace
{

using Log = std::vector<std::wstring>;

class DeletionJobTest : public JobTest
{
protected:
    void run(const std::vector<fs::path>& entries, bool wipe = false) { removeAll(files, recorder, entries, wipe); }

    WatchedFileSystem files;
    Recorder recorder;
};

TEST_F(DeletionJobTest, tellsItsStepsInOrder)
{
    run({put(inside / "a", "abc"), put(inside / "b", "")});
    const Log expected{L"operation started", L"entry 0",      L"entry 1",           L"built 2 3",
                       L"started a",         L"progress 3/3", L"finished",          L"started b",
                       L"progress 0/0",      L"finished",     L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
    EXPECT_EQ(recorder.texts, (Log{L"", L""}));
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_F(DeletionJobTest, tellsAWipeChunkByChunkAndItsEndOnce)
{
    const std::uint64_t size = 2 * WipeChunk + 5;
    run({put(inside / "a", std::string(size, 'x'))}, true);
    const std::wstring total = std::to_wstring(size);
    const auto progress = [&](std::uint64_t done) { return L"progress " + std::to_wstring(done) + L"/" + total; };
    const Log expected{L"operation started", L"entry 0",           L"built 1 " + total,     L"started a",
                       progress(0),          progress(WipeChunk),  progress(2 * WipeChunk), progress(size),
                       L"finished",          L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
}

TEST_F(DeletionJobTest, reportsAMissingFileWithItsCauseAndGoesOn)
{
    const fs::path there = put(inside / "there", "x");
    run({inside / "missing", there});
    EXPECT_EQ(recorder.messages, Log{L"The file does not exist."});
    EXPECT_EQ(recorder.texts, (Log{L"The file does not exist.", L""}));
    EXPECT_FALSE(fs::exists(there));
}

TEST_F(DeletionJobTest, triesTheSameFileAgainForEveryRepeat)
{
    const fs::path file = put(inside / "a", "x");
    files.failures["remove a"] = {FailureCause::InUse, 5};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    run({file});
    EXPECT_EQ(recorder.messages, Log(5, L"The file is in use by another program."));
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(DeletionJobTest, findsAMissingFileThatIsThereAtTheRepeat)
{
    recorder.errorAnswer = [&]
    {
        put(inside / "late", "x");
        return FileErrorRepeat;
    };
    run({inside / "late"});
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside / "late"));
}

TEST_F(DeletionJobTest, skipsAFileAndGoesOnWithTheNext)
{
    files.failures["remove a"] = {FailureCause::ReadOnlyPlace, 100};
    run({put(inside / "a", "x"), put(inside / "b", "x")});
    const Log expected{L"operation started", L"entry 0", L"entry 1",   L"built 2 2",    L"started a",
                       L"error a",           L"failed",  L"started b", L"progress 1/1", L"finished",
                       L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
    EXPECT_EQ(recorder.messages, Log{L"The file is on a read-only place."});
    EXPECT_TRUE(fs::exists(inside / "a"));
}

TEST_F(DeletionJobTest, endsAtAnAbort)
{
    files.failures["remove a"] = {FailureCause::Denied, 100};
    recorder.errorAnswer = [] { return FileErrorAbort; };
    run({put(inside / "a", "x"), put(inside / "b", "x")});
    const Log expected{L"operation started", L"entry 0", L"entry 1", L"built 2 2",
                       L"started a",         L"error a", L"failed",  L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
    EXPECT_TRUE(fs::exists(inside / "b"));
}

TEST_F(DeletionJobTest, endsAtACancelAfterTheFileThatIsGone)
{
    recorder.progressAnswer = [](std::uint64_t, std::uint64_t) { return 0; };
    run({put(inside / "a", "x"), put(inside / "b", "x")});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_FALSE(fs::exists(inside / "a"));
    EXPECT_TRUE(fs::exists(inside / "b"));
    EXPECT_EQ(recorder.log.back(), L"operation finished");
}

TEST_F(DeletionJobTest, cancelledBetweenChunksReportsTheFileAsPartlyOverwritten)
{
    const std::string text(3 * WipeChunk, 'x');
    const fs::path file = put(inside / "a", text);
    recorder.progressAnswer = [](std::uint64_t done, std::uint64_t) { return done >= WipeChunk ? 0 : 1; };
    run({file, put(inside / "b", "x")}, true);
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is partly overwritten."});
    EXPECT_TRUE(recorder.messages.empty());
    EXPECT_EQ(content(inside / "b"), "x");
    const std::string left = content(file);
    ASSERT_EQ(left.size(), text.size());
    EXPECT_NE(left.substr(0, WipeChunk), text.substr(0, WipeChunk));
    EXPECT_EQ(left.substr(WipeChunk), text.substr(WipeChunk));
}

TEST_F(DeletionJobTest, cancelledBeforeTheFirstByteLeavesTheFileUntouched)
{
    const fs::path file = put(inside / "a", "abc");
    recorder.progressAnswer = [](std::uint64_t, std::uint64_t) { return 0; };
    run({file}, true);
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."});
    EXPECT_EQ(content(file), "abc");
}

TEST_F(DeletionJobTest, endsWhenAListEntryIsRefused)
{
    recorder.entryAnswer = [](std::uint32_t index) { return index == 1 ? 0 : 1; };
    run({put(inside / "a", "x"), put(inside / "b", "x"), put(inside / "c", "x")});
    const Log expected{L"operation started", L"entry 0", L"entry 1", L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
    EXPECT_EQ(countIn(inside), 3U);
}

TEST_F(DeletionJobTest, handlesOneFileUnderTwoEntriesOnce)
{
    const fs::path file = put(inside / "a", "abc");
    run({file, inside / "." / "a", inside / "*", inside, file});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_EQ(recorder.totalSize, 3U);
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(DeletionJobTest, keepsTheFoldersOfASkippedFileWithoutAnotherQuestion)
{
    fs::create_directories(inside / "one" / "two");
    put(inside / "one" / "two" / "locked", "x");
    put(inside / "one" / "free", "x");
    files.failures["remove locked"] = {FailureCause::InUse, 100};
    run({inside});
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_TRUE(fs::exists(inside / "one" / "two" / "locked"));
    EXPECT_FALSE(fs::exists(inside / "one" / "free"));
}

TEST_F(DeletionJobTest, reportsAFolderThatGotANewFileMeanwhile)
{
    put(inside / "a", "x");
    files.beforeRemove = [&](const Place& place)
    {
        if (files.displayName(nameOf(place)) == L"a")
            put(inside / "new", "x");
    };
    run({inside});
    EXPECT_EQ(recorder.messages, Log{L"The folder is not empty."});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(inside / "new"));
}

TEST_F(DeletionJobTest, asksAboutAFolderThatCannotBeListedAndRepeatsIt)
{
    fs::create_directory(inside / "sub");
    put(inside / "sub" / "a", "x");
    files.failures["list sub"] = {FailureCause::Denied, 2};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    run({inside});
    EXPECT_EQ(recorder.messages, Log{L"Access is denied."});
    EXPECT_FALSE(fs::exists(inside));
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(DeletionJobTest, leavesAFolderThatCannotBeListedWhenItIsSkipped)
{
    fs::create_directory(inside / "sub");
    put(inside / "sub" / "a", "x");
    put(inside / "b", "x");
    files.failures["list sub"] = {FailureCause::Denied, 100};
    run({inside});
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(inside / "sub" / "a"));
    EXPECT_FALSE(fs::exists(inside / "b"));
}

TEST_F(DeletionJobTest, removesTenThousandSmallFilesQuickly)
{
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    for (int i = 0; i < 10000; ++i)
        put(inside / std::to_string(i), "x");
    const auto made = Clock::now();
    run({inside});
    EXPECT_EQ(recorder.succeeded, 10000);
    // Measured against the making of the files, so that a busy machine counts on both sides.
    EXPECT_LT(Clock::now() - made, 5 * (made - begin) + std::chrono::seconds(10));
}

TEST_F(DeletionJobTest, asksOnceAboutANameThatCannotBeLookedAt)
{
    put(inside / "a", "x");
    put(inside / "b", "x");
    files.failures["inspect a"] = {FailureCause::Denied, 100};
    run({inside});
    EXPECT_EQ(recorder.messages, Log{L"Access is denied."});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(inside / "a"));
    EXPECT_FALSE(fs::exists(inside / "b"));
}

TEST_F(DeletionJobTest, takesANameThatCanBeLookedAtAtTheRepeat)
{
    put(inside / "a", "x");
    files.failures["inspect a"] = {FailureCause::Denied, 3};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    run({inside});
    EXPECT_EQ(recorder.messages.size(), 2U);
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(DeletionJobTest, asksAboutAnEntryThatCannotBeListed)
{
    put(inside / "a", "x");
    files.failures["list inside"] = {FailureCause::Denied, 100};
    run({inside});
    EXPECT_EQ(recorder.messages, Log{L"Access is denied."});
    EXPECT_TRUE(fs::exists(inside / "a"));
}

} // namespace
} // namespace VaultCore
