#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/job_testing.h"

#include <algorithm>
#include <chrono>

// What an encryption reads, writes and leaves alone.

namespace VaultCore
{
namespace
{

const std::wstring Exists = L"A file with the name of the result exists already; it is not replaced.";
const std::wstring Changed = L"The file was changed by another program during the work; it stays as it is.";

class EncryptionJobTest : public ContentJobTest
{
};

TEST_F(EncryptionJobTest, tellsItsStepsInOrderAndKeepsTheSource)
{
    encrypt({put(inside / "a", "abc"), put(inside / "b", "")});
    const Log expected{L"operation started", L"entry 0",      L"entry 1",      L"built 2 3",
                       L"started a",         L"progress 0/3", L"progress 3/3", L"finished",
                       L"started b",         L"progress 0/0", L"finished",     L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
    EXPECT_EQ(recorder.texts, (Log{L"", L""}));
    EXPECT_EQ(content(inside / "a"), "abc");
    EXPECT_TRUE(fs::exists(inside / "a.zel"));
    EXPECT_TRUE(fs::exists(inside / "b.zel"));
    EXPECT_EQ(countIn(inside), 4U);
}

TEST_F(EncryptionJobTest, ofAnEmptyEntryTouchesNothingAndIsAFailedFile)
{
    put(inside / "a", "abc");
    order.destiny = DestinyWipe;
    const CurrentFolder current(inside);
    encrypt({""});
    EXPECT_EQ(recorder.texts, Log{L"The entry does not name a file or folder that can be removed."});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(inside / "a"), "abc");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(EncryptionJobTest, tellsALongFileChunkByChunk)
{
    const std::uint64_t size = 2 * ContentChunkForTests + 5;
    encrypt({put(inside / "a", std::string(size, 'x'))});
    for (const std::uint64_t done : {std::uint64_t{0}, ContentChunkForTests, 2 * ContentChunkForTests, size})
        EXPECT_EQ(countOf(report(L"progress", done, size)), 1U) << done;
}

TEST_F(EncryptionJobTest, tellsTheWritingAndTheReadingBackAsAHalfEach)
{
    const std::uint64_t chunk = ContentChunkForTests;
    const std::uint64_t size = 2 * chunk + 6;
    order.destiny = DestinyDelete;
    std::vector<std::uint64_t> reported;
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t total)
    {
        EXPECT_EQ(total, size);
        reported.push_back(done);
        return 1;
    };
    encrypt({put(inside / "a", std::string(size, 'x'))});
    const std::uint64_t half = size / 2;
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    const auto readBack = std::upper_bound(reported.begin(), reported.end(), half);
    EXPECT_EQ(std::vector(reported.begin(), readBack), (std::vector<std::uint64_t>{0, chunk / 2, chunk}));
    EXPECT_EQ(std::count(readBack, reported.end(), half + chunk / 2), 1);
    EXPECT_EQ(reported.back(), size);
}

TEST_F(EncryptionJobTest, asksTheDeviceForTheResultBeforeTheSourceGoes)
{
    const fs::path source = put(inside / "a", "abc");
    encrypt({source});
    EXPECT_TRUE(files.forgotten.empty());
    fs::remove(inside / "a.zel");
    order.destiny = 1;
    encrypt({source});
    ASSERT_EQ(files.forgotten.size(), 1U);
    EXPECT_EQ(fs::path(nameOf(files.forgotten.front())), "a.zel");
}

TEST_F(EncryptionJobTest, writesWhatIsNotTheContent)
{
    const std::string text = "a text that is easy to find again";
    encrypt({put(inside / "a.txt", text)});
    const std::string written = content(inside / "a.txt.zel");
    EXPECT_GT(written.size(), text.size());
    EXPECT_EQ(written.find("easy to find"), std::string::npos);
}

TEST_F(EncryptionJobTest, neverReplacesAFileThatHasTheNameAlready)
{
    const fs::path source = put(inside / "a", "abc");
    put(inside / "a.zel", "mine");
    files.beforePublish = [] { ADD_FAILURE() << "found out after the work"; };
    order.destiny = 1;
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Exists});
    EXPECT_EQ(recorder.targets, Log{L"a.zel"});
    EXPECT_EQ(content(inside / "a.zel"), "mine");
    EXPECT_EQ(content(source), "abc");
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(EncryptionJobTest, neverReplacesAFileThatTakesTheNameMeanwhile)
{
    const fs::path source = put(inside / "a", "abc");
    files.beforePublish = [&] { put(inside / "a.zel", "mine"); };
    order.destiny = 2;
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Exists});
    EXPECT_EQ(content(inside / "a.zel"), "mine");
    EXPECT_EQ(content(source), "abc");
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(EncryptionJobTest, takesFoldersInPlaceAndPatterns)
{
    fs::create_directories(inside / "one" / "two");
    put(inside / "one" / "two" / "deep", "1");
    put(inside / "one" / "flat", "22");
    put(inside / "x.txt", "333");
    put(inside / "y.dat", "4444");
    encrypt({inside / "one", inside / "*.txt", inside / "x.txt"});
    EXPECT_EQ(recorder.succeeded, 3);
    EXPECT_EQ(recorder.totalSize, 6U);
    EXPECT_TRUE(fs::exists(inside / "one" / "two" / "deep.zel"));
    EXPECT_TRUE(fs::exists(inside / "one" / "flat.zel"));
    EXPECT_TRUE(fs::exists(inside / "x.txt.zel"));
    EXPECT_FALSE(fs::exists(inside / "y.dat.zel"));
}

TEST_F(EncryptionJobTest, encryptsAnEncryptedFileAgain)
{
    const fs::path once = made(put(inside / "a", "abc"));
    encrypt({once});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_TRUE(fs::exists(inside / "a.zel.zel"));
}

TEST_F(EncryptionJobTest, refusesAnEntryThatIsALinkAndLeavesLinksInFoldersOut)
{
    std::error_code error;
    fs::create_symlink(outside / "kept.txt", inside / "link", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    fs::create_directory_symlink(outside, inside / "way");
    put(inside / "a", "abc");
    order.destiny = 2;
    encrypt({inside / "link"});
    EXPECT_EQ(recorder.messages,
              Log{L"This is a link and not a file with content of its own; links are not followed."});
    encrypt({inside});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::is_symlink(inside / "link"));
    EXPECT_TRUE(fs::is_symlink(inside / "way"));
    EXPECT_EQ(countIn(outside), 1U);
}

TEST_F(EncryptionJobTest, reportsAMissingFileAndGoesOn)
{
    const fs::path there = put(inside / "there", "x");
    encrypt({inside / "missing", there});
    EXPECT_EQ(recorder.messages, Log{L"The file does not exist."});
    EXPECT_TRUE(fs::exists(inside / "there.zel"));
}

TEST_F(EncryptionJobTest, triesAgainSkipsAndAborts)
{
    const fs::path first = put(inside / "a", "x");
    const fs::path second = put(inside / "b", "x");
    files.failures["read a"] = {FailureCause::InUse, 5};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    encrypt({first});
    EXPECT_EQ(recorder.messages, Log(5, L"The file is in use by another program."));
    EXPECT_EQ(recorder.succeeded, 1);
    files.failures["read b"] = {FailureCause::InUse, 100};
    recorder.errorAnswer = [] { return FileErrorSkip; };
    encrypt({second, put(inside / "c", "x")});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_FALSE(fs::exists(inside / "b.zel"));
    recorder.errorAnswer = [] { return FileErrorAbort; };
    encrypt({second, put(inside / "d", "x")});
    EXPECT_EQ(recorder.log.back(), L"operation finished");
    EXPECT_FALSE(fs::exists(inside / "d.zel"));
}

TEST_F(EncryptionJobTest, doesNotRemoveASourceThatChangedBehindTheReading)
{
    for (const std::uint32_t destiny : {DestinyDelete, DestinyWipe})
    {
        const fs::path source = put(inside / (destiny == DestinyDelete ? "deleted" : "wiped"), "abc");
        order.destiny = destiny;
        recorder.messages.clear();
        recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t size)
        {
            if (done == size)
                put(source, "other text");
            return 1;
        };
        encrypt({source});
        EXPECT_EQ(recorder.messages, Log{Changed});
        EXPECT_EQ(content(source), "other text");
        // What was read is kept beside what is there now.
        EXPECT_TRUE(fs::exists(withEnding(source)));
    }
}

TEST_F(EncryptionJobTest, namesAnAlgorithmThatItLacksBeforeAnythingIsWritten)
{
    order.algorithm = 0;
    order.destiny = 2;
    encrypt({put(inside / "a", "abc"), put(inside / "b", "abc")});
    ASSERT_EQ(recorder.messages.size(), 2U);
    EXPECT_NE(recorder.messages.at(0).find(L"DESX"), std::wstring::npos);
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(EncryptionJobTest, carriesTheTimeAndThePermissionsOfTheSource)
{
    const fs::path source = put(inside / "a", "abc");
    const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    fs::last_write_time(source, past);
    fs::permissions(source, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    encrypt({source});
    const auto apart = fs::last_write_time(source) - fs::last_write_time(inside / "a.zel");
    EXPECT_LT(std::chrono::abs(apart), std::chrono::microseconds(1)); // the engine's times have steps of 100 ns
    EXPECT_EQ(fs::status(inside / "a.zel").permissions(), fs::status(source).permissions());
    fs::permissions(source, fs::perms::owner_all);
    fs::permissions(inside / "a.zel", fs::perms::owner_all);
}

TEST_F(EncryptionJobTest, stopsAtEveryReportWithTheSourceWholeAndNothingLeft)
{
    const std::string text(2 * ContentChunkForTests + 7, 'x');
    const fs::path source = put(inside / "a", text);
    const fs::path next = put(inside / "b", "next");
    for (const std::uint32_t destiny : {0U, 1U, 2U})
    {
        order.destiny = destiny;
        // Writing gives three reports, reading back one for each chunk but the last, and one tells that the result
        // stands; when nothing is to follow that one, the result is kept.
        for (int stopAt = 1; stopAt <= (destiny == 0 ? 3 : 3 + 8 + 1); ++stopAt)
        {
            int reports = 0;
            recorder.texts.clear();
            recorder.progressAnswer = [&](std::uint64_t, std::uint64_t) { return ++reports == stopAt ? 0 : 1; };
            encrypt({source, next});
            EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."}) << stopAt;
            EXPECT_EQ(content(source), text) << destiny << " " << stopAt;
            EXPECT_EQ(countIn(inside), 2U) << destiny << " " << stopAt;
            EXPECT_EQ(reports, stopAt);
        }
    }
    EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(EncryptionJobTest, keepsAResultThatStandsWhenTheJobIsStopped)
{
    recorder.progressAnswer = [](std::uint64_t done, std::uint64_t size) { return done == size ? 0 : 1; };
    encrypt({put(inside / "a", "abc"), put(inside / "b", "abc")});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_TRUE(fs::exists(inside / "a.zel"));
    EXPECT_FALSE(fs::exists(inside / "b.zel"));
}

TEST_F(EncryptionJobTest, endsWhenAListEntryIsRefused)
{
    recorder.entryAnswer = [](std::uint32_t) { return 0; };
    encrypt({put(inside / "a", "x"), put(inside / "b", "x")});
    EXPECT_EQ(recorder.log, (Log{L"operation started", L"entry 0", L"operation finished"}));
    EXPECT_EQ(countIn(inside), 2U);
}

} // namespace
} // namespace VaultCore
