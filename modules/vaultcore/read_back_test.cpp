#include "vaultcore/job_testing.h"

// A decryption that deletes the encrypted file reads its result back before.

namespace VaultCore
{
namespace
{

const std::wstring Differs = L"The new file could not be read back as it was written; the source file is untouched.";

class ReadBackTest : public ContentJobTest
{
protected:
    ReadBackTest() { provider.give(std::string(50, 'k')); }

    std::vector<std::uint64_t> reportsOf(const fs::path& encrypted)
    {
        std::vector<std::uint64_t> reported;
        recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t)
        {
            reported.push_back(done);
            return 1;
        };
        decrypt({encrypted}, true);
        return reported;
    }
};

TEST_F(ReadBackTest, keepsTheEncryptedFileWhenTheResultReadsBackDifferently)
{
    const fs::path encrypted = made(put(inside / "a", std::string(5000, 'x')));
    const std::string whole = content(encrypted);
    for (const std::size_t at : {std::size_t{0}, std::size_t{4999}})
    {
        files.changeWritten = [&](std::span<std::uint8_t> bytes) { bytes[at] ^= 1; };
        recorder.messages.clear();
        decrypt({encrypted}, true);
        EXPECT_EQ(recorder.messages, Log{Differs});
        EXPECT_EQ(content(encrypted), whole);
        EXPECT_EQ(countIn(inside), 1U);
    }
}

TEST_F(ReadBackTest, happensOnlyWhenTheEncryptedFileGoes)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.failures["read a"] = {FailureCause::Device, 1};
    files.forgotten.clear();
    decrypt({encrypted});
    EXPECT_TRUE(recorder.messages.empty());
    EXPECT_TRUE(files.forgotten.empty());
    fs::remove(inside / "a");
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log{L"The device reported a read or write error."});
    EXPECT_TRUE(fs::exists(encrypted));
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(ReadBackTest, asksTheDeviceForTheResult)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.forgotten.clear();
    decrypt({encrypted}, true);
    EXPECT_FALSE(fs::exists(encrypted));
    ASSERT_EQ(files.forgotten.size(), 1U);
    EXPECT_EQ(fs::path(nameOf(files.forgotten.front())), "a");
}

TEST_F(ReadBackTest, refusesAnotherFileUnderTheNameOfTheResult)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.beforeOpen = [&](const Place& place)
    {
        if (place.below.ends_with(fs::path("a").native()))
        {
            fs::remove(inside / "a");
            put(inside / "a", "abc");
        }
    };
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log{Differs});
    EXPECT_TRUE(fs::exists(encrypted));
    // It is not the job's own, so it stays.
    EXPECT_EQ(content(inside / "a"), "abc");
}

TEST_F(ReadBackTest, countsAsTheSecondHalf)
{
    const fs::path encrypted = made(put(inside / "a", std::string(3 * ContentChunkForTests + 1, 'x')));
    const std::uint64_t size = fs::file_size(encrypted);
    const std::vector<std::uint64_t> reported = reportsOf(encrypted);
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_EQ(reported.front(), 0U);
    EXPECT_EQ(std::count(reported.begin(), reported.end(), size), 1);
    EXPECT_EQ(reported.back(), size);
    for (std::uint64_t part = 1; part <= 3; ++part)
        EXPECT_EQ(std::count(reported.begin(), reported.end(), size / 2 + part * ContentChunkForTests / 2), 1) << part;
    EXPECT_FALSE(fs::exists(encrypted));
}

TEST_F(ReadBackTest, stopsAtEveryReportWithTheEncryptedFileWholeAndNothingLeft)
{
    const fs::path encrypted = made(put(inside / "a", std::string(2 * ContentChunkForTests + 7, 'x')));
    const std::string whole = content(encrypted);
    const std::size_t total = reportsOf(encrypted).size();
    fs::remove(inside / "a");
    ASSERT_GE(total, 5U);
    for (std::size_t stopAt = 1; stopAt <= total; ++stopAt)
    {
        put(encrypted, whole);
        std::size_t reports = 0;
        recorder.texts.clear();
        recorder.progressAnswer = [&](std::uint64_t, std::uint64_t) { return ++reports == stopAt ? 0 : 1; };
        decrypt({encrypted, inside / "missing"}, true);
        EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."}) << stopAt;
        EXPECT_EQ(content(encrypted), whole);
        EXPECT_EQ(countIn(inside), 1U) << stopAt;
    }
}

TEST_F(ReadBackTest, keepsTheEncryptedFileWhenTheResultWentWhileAQuestionStood)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.failures["remove a.zel"] = {FailureCause::InUse, 1};
    recorder.errorAnswer = [&]
    {
        fs::remove(inside / "a");
        return recorder.messages.size() == 1 ? FileErrorRepeat : FileErrorSkip;
    };
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, (Log{L"The file is in use by another program.", Differs}));
    EXPECT_TRUE(fs::exists(encrypted));
}

} // namespace
} // namespace VaultCore
