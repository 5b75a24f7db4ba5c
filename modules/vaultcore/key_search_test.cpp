#include "interfaces/vaultcore/exception.h"
#include "vaultcore/job_testing.h"

#include <stdexcept>

// How the key of an encrypted file is found.

namespace VaultCore
{
namespace
{

using KeySearchTest = ContentJobTest;

TEST_F(KeySearchTest, asksUntilAKeyFitsAndKeepsThatOne)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    provider.give("xyk");
    decrypt({encrypted});
    EXPECT_EQ(provider.asked, Log(3, wide(encrypted)));
    EXPECT_EQ(provider.stored.size(), 1U);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(KeySearchTest, triesTheKeysThatFittedBeforeItAsks)
{
    const fs::path first = made(put(inside / "a", "1"));
    const fs::path second = made(put(inside / "b", "2"));
    order.key = testKey('o');
    const fs::path other = made(put(inside / "c", "3"));
    const fs::path last = made(put(inside / "d", "4"));
    provider.give("ko");
    decrypt({first, second, other, last});
    EXPECT_EQ(provider.asked, (Log{wide(first), wide(other)}));
    EXPECT_EQ(recorder.succeeded, 4);
    EXPECT_EQ(content(inside / "d"), "4");
}

TEST_F(KeySearchTest, keepsAKeyThatShowsItsFileToBeDamaged)
{
    const fs::path first = made(put(inside / "a", "1"));
    const fs::path second = made(put(inside / "b", "2"));
    constexpr std::size_t Details = 200;
    std::string bytes = content(first);
    bytes.at(Details) ^= 1;
    put(first, bytes);
    provider.give("k");
    decrypt({first, second});
    EXPECT_EQ(recorder.messages, Log{L"The encrypted file is damaged or incomplete."});
    EXPECT_EQ(provider.asked, Log{wide(first)});
    EXPECT_EQ(content(inside / "b"), "2");
}

TEST_F(KeySearchTest, skipsAFileThatTheUserIgnores)
{
    const fs::path first = made(put(inside / "a", "1"));
    const fs::path second = made(put(inside / "b", "2"));
    provider.answer = [&](IKey** key)
    {
        if (provider.asked.size() == 1)
            return KeyIgnoreFile;
        *key = testKey('k').release();
        return KeyProvided;
    };
    decrypt({first, second});
    EXPECT_EQ(recorder.texts, (Log{L"The file was skipped.", wide(inside / "b")}));
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(recorder.messages.empty());
    EXPECT_FALSE(fs::exists(inside / "a"));
    EXPECT_EQ(content(inside / "b"), "2");
}

TEST_F(KeySearchTest, endsWhenTheUserCancelsTheQuestion)
{
    const fs::path first = made(put(inside / "a", "1"));
    const fs::path second = made(put(inside / "b", "2"));
    provider.answer = [](IKey**) { return KeyCancelJob; };
    decrypt({first, second}, true);
    EXPECT_EQ(provider.asked.size(), 1U);
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."});
    EXPECT_EQ(recorder.log.back(), L"operation finished");
    EXPECT_TRUE(recorder.messages.empty());
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(KeySearchTest, reportsWhatTheProviderThrowsAndAsksAgainAtTheRepeat)
{
    const fs::path encrypted = made(put(inside / "a", "1"));
    provider.answer = [&](IKey** key)
    {
        if (provider.asked.size() == 1)
            throw Exception(L"The key file is damaged.");
        if (provider.asked.size() == 2)
            throw std::runtime_error("something else");
        *key = testKey('k').release();
        return KeyProvided;
    };
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    decrypt({encrypted});
    EXPECT_EQ(recorder.messages,
              (Log{L"The key file is damaged.", L"The file needs a password or a key file, and none was given."}));
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(KeySearchTest, reportsAProviderThatGivesNothingAndNoProviderAtAll)
{
    const fs::path encrypted = made(put(inside / "a", "1"));
    provider.answer = [](IKey**) { return KeyProvided; };
    decrypt({encrypted});
    DecryptionJob(files, recorder.receivers(), {}).run(texts({encrypted}));
    EXPECT_EQ(recorder.messages, Log(2, L"The file needs a password or a key file, and none was given."));
}

TEST_F(KeySearchTest, releasesAKeyOfAnotherEngine)
{
    struct Foreign final : IKey
    {
        explicit Foreign(int& count) : released(count) {}
        void Release() override { ++released; }
        void notCalled1() override {}
        int GetKeyType() override { return KeyTypeSymmetric; }
        int& released;
    };
    int released = 0;
    Foreign foreign(released);
    provider.answer = [&](IKey** key)
    {
        *key = &foreign;
        return KeyProvided;
    };
    decrypt({made(put(inside / "a", "1"))});
    EXPECT_EQ(recorder.messages, Log{L"The key does not belong to this engine."});
    EXPECT_EQ(released, 1);
}

} // namespace
} // namespace VaultCore
