#include "recorded/job_user.h"
#include "recorded/user_account.h"
#include "scenarios/expected_calls.h"
#include "scenarios/job_events.h"

#include <gtest/gtest.h>

#include <filesystem>

// What the statistics client is told by the real program, job by job.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

class RecordedJobs : public testing::Test
{
protected:
    explicit RecordedJobs(std::optional<Component> component = Component::Shipped) : account(component) {}

    Lines told() const { return account.told(); }

    /// Four jobs that leave nothing behind, each of which has to do what it is for.
    void doJobs()
    {
        encryptByPassword(folder, files);
        EXPECT_FALSE(fs::exists(files[0]));
        decryptByPassword(folder, {encrypted(files[0])});
        EXPECT_EQ(contentOf(files[0]), "dear reader");
        fs::remove(files[0]);
        doubleClick(folder, encrypted(files[0]));
        EXPECT_EQ(contentOf(files[0]), "dear reader");
        remove(folder, files, SampleFolder::Wipe);
        EXPECT_FALSE(fs::exists(files[0]));
    }

    static Path encrypted(Path file) { return file += ".zel"; }

    const UserAccount account;
    const SampleFolder folder;
    const std::vector<Path> files{folder.addFile("letter.txt", "dear reader")};
};

std::string textOf(const Path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace

TEST_F(RecordedJobs, tellOfAnEncryption)
{
    encryptByPassword(folder, files);
    EXPECT_EQ(told(), expectedCalls(Encryption + EncryptionByPassword +
                                    "TrackEvent(winzel encryption usage statistics, use_destiny_delete, , none)\n" +
                                    results("encryption", 1, 0, 0)));
    EXPECT_TRUE(fs::exists(encrypted(files[0])));
}

TEST_F(RecordedJobs, tellOfAnEncryptionThatTheUserCancels)
{
    cancelEncryption(folder, files);
    EXPECT_EQ(told(), expectedCalls(Encryption + EncryptionCancelled));
}

TEST_F(RecordedJobs, tellOfASelfExtractingEncryption)
{
    makePackage(folder, files);
    EXPECT_EQ(told(), expectedCalls(SfxEncryptionByPassword + results("encryption sfx", 1, 0, 0)));
}

TEST_F(RecordedJobs, tellOfADecryption)
{
    encryptByPassword(folder, files);
    told();
    decryptByPassword(folder, {encrypted(files[0])});
    EXPECT_EQ(told(), expectedCalls(Decryption + results("decryption", 1, 0, 0)));
    EXPECT_EQ(contentOf(files[0]), "dear reader");
}

TEST_F(RecordedJobs, tellOfADecryptionWithoutAPassword)
{
    encryptByPassword(folder, files);
    told();
    cancelDecryption(folder, {encrypted(files[0])});
    EXPECT_EQ(told(), expectedCalls(Decryption + results("decryption", 0, 1, 0)));
}

TEST_F(RecordedJobs, tellOfADeletionOrAWipe)
{
    for (const std::uint32_t method : {SampleFolder::Delete, SampleFolder::Wipe})
    {
        const Path large = folder.addFile("large.bin", std::string((2U << 20) + 1, 'x'));
        remove(folder, {large, folder.addFile("empty.txt", "")}, method);
        const std::string operation = method == SampleFolder::Wipe ? "use_op_wipe" : "use_op_delete";
        EXPECT_EQ(told(), expectedCalls(Deletion + "TrackEvent(winzel wipe usage statistics, " + operation +
                                        ", , none)\n" + results("wipe", 2, 0, 2)));
        EXPECT_FALSE(fs::exists(large));
    }
}

TEST_F(RecordedJobs, tellOfADeletionThatTheUserDeclines)
{
    declineRemoval(folder, files);
    EXPECT_EQ(told(), expectedCalls(Deletion + "TrackViewEvent(user_cancelled, , none)\n"));
    EXPECT_TRUE(fs::exists(files[0]));
}

TEST_F(RecordedJobs, tellOfAFileThatFailsAndOfTheUsersAnswers)
{
    removeWithoutTheFirst(folder, {folder.path() / "missing.txt", files[0]});
    EXPECT_EQ(told(), expectedCalls(Deletion + R"(
TrackViewEvent(err_file_error, The file does not exist., none)
TrackViewEvent(set_user_action_try, , none)
TrackViewEvent(err_file_error, The file does not exist., none)
TrackViewEvent(set_user_action_skip, , none)
TrackEvent(winzel wipe usage statistics, use_op_delete, , none)
)" + results("wipe", 1, 1, 0)));
}

TEST_F(RecordedJobs, tellOfADoubleClick)
{
    encryptByPassword(folder, files);
    told();
    doubleClick(folder, encrypted(files[0]));
    EXPECT_EQ(told(),
              expectedCalls(DoubleClick + results("decryption", 1, 0, 0) + "TrackViewEvent(not_succeeded, , none)\n"));
}

TEST_F(RecordedJobs, tellOfAStartWithoutAJob)
{
    startWithoutAJob(folder);
    EXPECT_EQ(told(), expectedCalls(Start + "TrackViewEvent(error, Cannot load configuration file: " +
                                    textOf(folder.path() / "none.json") + ", none)\n"));
}

TEST_F(RecordedJobs, tellWhoTheUserIsWhenTheSuiteHasStoredIt)
{
    account.storeText(L"uid", L"some user");
    account.storeText(L"cid", L"some client");
    declineRemoval(folder, files);
    const Lines lines = told();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[1], "SetUserId(some user)");
    EXPECT_EQ(lines[2], "SetClientId(some client)");
}

TEST_F(RecordedJobs, tellNothingWithUsageStatisticsOff)
{
    account.storeNumber(L"SendUsageStat", 0);
    doJobs();
    // The client is made all the same, for a crash.
    EXPECT_EQ(told(), Lines(4, expectedCalls("").front()));
}

TEST_F(RecordedJobs, tellEverythingWithCrashReportsOff)
{
    account.storeNumber(L"SendCrashReports", 0);
    declineRemoval(folder, files);
    EXPECT_EQ(told(), expectedCalls(Deletion + "TrackViewEvent(user_cancelled, , none)\n"));
}

// A client that is not there, or that does not do what it should, makes no difference to a job.

class JobsWithoutAClient : public RecordedJobs
{
protected:
    JobsWithoutAClient() : RecordedJobs(std::nullopt) {}
};

TEST_F(JobsWithoutAClient, areDone)
{
    doJobs();
    EXPECT_EQ(told(), Lines{});
}

class JobsWithABadClient : public RecordedJobs, public testing::WithParamInterface<Component>
{
protected:
    JobsWithABadClient() : RecordedJobs(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Clients, JobsWithABadClient,
                         testing::Values(Component::Refusing, Component::Failing, Component::Vanished));

TEST_P(JobsWithABadClient, areDone)
{
    doJobs();
    for (const std::string& call : told())
        EXPECT_FALSE(call.starts_with("Send")) << call;
}

class JobsWithAHangingClient : public RecordedJobs
{
protected:
    JobsWithAHangingClient() : RecordedJobs(Component::Hanging) {}
};

TEST_F(JobsWithAHangingClient, areDoneInTheirTimeAndTellEverything)
{
    remove(folder, files, SampleFolder::Wipe);
    EXPECT_EQ(told(), expectedCalls(Deletion + "TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)\n" +
                                    results("wipe", 1, 0, 0)));
    EXPECT_FALSE(fs::exists(files[0]));
}
