#include "recorded/job_user.h"
#include "recorded/user_account.h"

#include <gtest/gtest.h>

#include <filesystem>

// What no record may hold: passwords, contents, and the names of the user's files.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Mark = "MarkedForTheSearch";

std::string wideBytes(const std::string& text)
{
    std::string bytes;
    for (const char letter : text)
        bytes += {letter, '\0'};
    return bytes;
}

bool holds(const std::string& record, const std::string& text)
{
    return record.find(text) != std::string::npos || record.find(wideBytes(text)) != std::string::npos;
}

class SecretsInRecords : public testing::Test
{
protected:
    static std::string record() { return contentOf(StatisticsTesting::RecordedStatistics::file()); }

    const UserAccount account;
    const SampleFolder folder;
    const Path file = folder.addFile(Mark + " folder/" + Mark + ".txt", Mark);
};

} // namespace

TEST_F(SecretsInRecords, areNotLeftByJobsThatSucceedFailOrAreCancelled)
{
    const Path encrypted = fs::path(file) += ".zel";
    encryptByPassword(folder, {file});
    cancelDecryption(folder, {encrypted});
    decryptByPassword(folder, {encrypted});
    cancelEncryption(folder, {file});
    fs::remove(file);
    doubleClick(folder, encrypted);
    removeWithoutTheFirst(folder, {folder.path() / (Mark + " missing"), encrypted});
    makePackage(folder, {file});
    const std::string told = record();
    EXPECT_TRUE(holds(told, "jobrunner/dblclk")) << "nothing was recorded";
    EXPECT_FALSE(holds(told, Mark)) << told;
    EXPECT_FALSE(holds(told, UserPassword)) << told;
    EXPECT_FALSE(holds(told, folder.path().string())) << told;
}

TEST_F(SecretsInRecords, areFoundWhereOneIsKept)
{
    // The path of a job file that cannot be read is told, intended.
    startWithoutAJob(folder);
    EXPECT_TRUE(holds(record(), "none.json"));
}
