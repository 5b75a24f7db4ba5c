#include "vaultcore/job_testing.h"

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <utility>

// Names that somebody who may write to a folder exchanges while a job works in it. Whatever comes of the job, nothing
// outside of what was listed may change: JobTest sees to it that "outside" stays as it is.

namespace VaultCore
{
namespace
{

const std::wstring LinkFound = L"A link was found where a file or folder was expected; links are not followed.";
const std::wstring OtherFolder = L"The way to the file leads to another folder than when the work began.";

void exchange(const fs::path& one, const fs::path& other)
{
    ASSERT_EQ(::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE), 0) << one << other;
}

/// Exchanges two names as fast as it can until its end.
class Exchanger
{
public:
    Exchanger(const fs::path& one, const fs::path& other)
        : thread_(
              [one, other, this]
              {
                  while (!ended_)
                      exchanged_ += ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
              })
    {
        // The work is to begin amid the exchanges.
        while (exchanged_ < 2)
            std::this_thread::yield();
    }
    ~Exchanger()
    {
        ended_ = true;
        thread_.join();
    }
    Exchanger(const Exchanger&) = delete;
    Exchanger& operator=(const Exchanger&) = delete;
    int exchanged() const { return exchanged_; }

private:
    std::atomic<bool> ended_ = false;
    std::atomic<int> exchanged_ = 0;
    std::thread thread_;
};

class ExchangeTest : public ContentJobTest
{
protected:
    ExchangeTest() { put(outside / "deep.txt", "deep"); }

    void TearDown() override
    {
        ContentJobTest::TearDown();
        EXPECT_EQ(content(outside / "deep.txt"), "deep");
        EXPECT_EQ(countIn(outside), 2U);
    }

    /// A folder with the names of the files outside, and a link to outside that stands beside it.
    void makeDecoys()
    {
        fs::remove_all(inside);
        fs::create_directories(folder);
        put(folder / "kept.txt", "decoy");
        put(folder / "deep.txt", "decoy");
        fs::create_directory_symlink(outside, decoy);
    }

    /// For the hooks: does its work at the first call.
    template <class Work> static auto once(Work work)
    {
        return [work, done = false](const auto&...) mutable
        {
            if (!std::exchange(done, true))
                work();
            return 1;
        };
    }

    /// Runs `work` many times while `one` and `other` are exchanged.
    template <class Prepare, class Work>
    void whileExchanging(const fs::path& one, const fs::path& other, Prepare prepare, Work work)
    {
        int exchanged = 0;
        for (int round = 0; round < Rounds; ++round)
        {
            makeDecoys();
            prepare();
            const Exchanger exchanger(one, other);
            work();
            exchanged += exchanger.exchanged();
        }
        EXPECT_GT(exchanged, 2 * Rounds) << "nothing was exchanged during the work";
    }

    static constexpr int Rounds = 20;
    const fs::path folder = inside / "way" / "sub";
    const fs::path decoy = inside / "decoy";
};

} // namespace

class ExchangedDuringARemoval : public ExchangeTest, public testing::WithParamInterface<bool>
{
protected:
    void run(const fs::path& entry) { removeAll(files, recorder, {entry}, GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(DeleteAndWipe, ExchangedDuringARemoval, testing::Bool(), &methodName);

TEST_P(ExchangedDuringARemoval, aFolderBelowTheEntryIsNotFollowed)
{
    whileExchanging(
        folder, decoy, [] {}, [&] { run(inside / "way"); });
}

TEST_P(ExchangedDuringARemoval, theEntryItselfIsNotFollowed)
{
    whileExchanging(
        folder, decoy, [] {}, [&] { run(folder); });
}

TEST_P(ExchangedDuringARemoval, theWayToTheEntryStaysThatOfTheListing)
{
    makeDecoys();
    int listed = 0;
    const auto behindTheListing = [&](std::uint32_t)
    {
        if (++listed == 2)
            exchange(folder, decoy);
        return 1;
    };
    recorder.entryAnswer = behindTheListing;
    removeAll(files, recorder, {folder / "kept.txt", folder / "deep.txt"}, GetParam());
    EXPECT_EQ(recorder.messages, Log(2, OtherFolder));
}

TEST_P(ExchangedDuringARemoval, aFolderOnTheWayStaysThatOfTheListing)
{
    makeDecoys();
    fs::create_directory(inside / "way" / "sub" / "tree");
    fs::rename(folder / "kept.txt", folder / "tree" / "kept.txt");
    fs::create_directory(base / "tree");
    put(base / "tree" / "kept.txt", "another one of that name");
    fs::remove(decoy);
    fs::create_directory_symlink(base, decoy);
    recorder.entryAnswer = once([&] { exchange(folder, decoy); });
    run(folder / "tree");
    EXPECT_EQ(recorder.messages.at(0), OtherFolder);
    EXPECT_EQ(content(base / "tree" / "kept.txt"), "another one of that name");
}

TEST_P(ExchangedDuringARemoval, aFileIsNotFollowed)
{
    whileExchanging(
        folder / "kept.txt", folder / "link", [&] { fs::create_symlink(outside / "kept.txt", folder / "link"); },
        [&] { run(folder / "kept.txt"); });
}

class ExchangedDuringAnEncryption : public ExchangeTest, public testing::WithParamInterface<std::uint32_t>
{
protected:
    ExchangedDuringAnEncryption() { order.destiny = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Destinies, ExchangedDuringAnEncryption, testing::Values(0U, 1U, 2U));

TEST_P(ExchangedDuringAnEncryption, aFolderBelowTheEntryIsNotFollowed)
{
    whileExchanging(
        folder, decoy, [] {}, [&] { encrypt({inside / "way"}); });
}

TEST_P(ExchangedDuringAnEncryption, theWayToTheEntryStaysThatOfTheListing)
{
    makeDecoys();
    recorder.entryAnswer = once([&] { exchange(folder, decoy); });
    encrypt({folder / "kept.txt"});
    EXPECT_EQ(recorder.messages, Log{OtherFolder});
}

TEST_P(ExchangedDuringAnEncryption, aSourceThatBecomesALinkIsNotRead)
{
    makeDecoys();
    fs::create_symlink(outside / "kept.txt", folder / "link");
    files.beforeOpen = once([&] { exchange(folder / "kept.txt", folder / "link"); });
    encrypt({folder / "kept.txt"});
    EXPECT_EQ(recorder.messages, Log{LinkFound});
    EXPECT_FALSE(fs::exists(folder / "kept.txt.zel"));
}

TEST_P(ExchangedDuringAnEncryption, aSourceThatBecomesALinkBeforeItGoesStays)
{
    makeDecoys();
    fs::create_symlink(outside / "kept.txt", folder / "link");
    files.beforePublish = [&] { exchange(folder / "kept.txt", folder / "link"); };
    encrypt({folder / "kept.txt"});
    if (GetParam() == 0)
        EXPECT_EQ(recorder.succeeded, 1);
    else
        EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::is_symlink(folder / "kept.txt"));
    EXPECT_EQ(content(folder / "link"), "decoy");
}

TEST_P(ExchangedDuringAnEncryption, aLinkUnderTheNameOfTheResultIsNotWrittenThrough)
{
    makeDecoys();
    files.beforePublish = [&] { fs::create_symlink(outside / "new.txt", folder / "kept.txt.zel"); };
    encrypt({folder / "kept.txt"});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(folder / "kept.txt"), "decoy");
}

TEST_P(ExchangedDuringAnEncryption, aTemporaryFileThatBecomesALinkIsNotPublished)
{
    makeDecoys();
    files.beforePublish = [&]
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        {
            if (!isTemporaryName(entry.path().filename().native()))
                continue;
            fs::create_symlink(outside / "kept.txt", folder / "link");
            exchange(entry.path(), folder / "link");
            return;
        }
        FAIL() << "no temporary file";
    };
    encrypt({folder / "kept.txt"});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(folder / "kept.txt"), "decoy");
    EXPECT_FALSE(fs::is_symlink(folder / "kept.txt.zel"));
}

TEST_P(ExchangedDuringAnEncryption, aFileIsNeverAnothersThatTookItsName)
{
    for (int round = 0; round < Rounds; ++round)
    {
        makeDecoys();
        fs::create_symlink(outside / "kept.txt", folder / "link");
        const Exchanger exchanger(folder / "kept.txt", folder / "link");
        encrypt({folder});
    }
}

namespace
{

class ExchangedDuringADecryption : public ExchangeTest
{
};

TEST_F(ExchangedDuringADecryption, theFolderOfTheResultStaysThatOfTheStart)
{
    makeDecoys();
    provider.give("k");
    const fs::path encrypted = made(put(folder / "plain.txt", "secret"));
    files.beforeRead = once([&] { exchange(folder, decoy); });
    decrypt({encrypted});
    EXPECT_EQ(recorder.messages, Log{OtherFolder});
    EXPECT_EQ(temporariesIn(inside), 0U);
}

TEST_F(ExchangedDuringADecryption, aFolderBelowTheEntryIsNotFollowed)
{
    const fs::path encrypted = made(put(base / "plain.txt", "secret"));
    whileExchanging(
        folder, decoy,
        [&]
        {
            provider.give(std::string(8, 'k'));
            fs::copy_file(encrypted, folder / "plain.txt.zel");
        },
        [&] { decrypt({inside / "way"}, true); });
}

} // namespace
} // namespace VaultCore
