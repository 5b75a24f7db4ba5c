#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/job_testing.h"

#include <atomic>
#include <stdexcept>

// Jobs of many small files: nobody can see from what is told that they are worked on together and before their turn.

namespace VaultCore
{
namespace
{

class JobsAheadTest : public ContentJobTest
{
protected:
    JobsAheadTest() { provider.give("k"); }

    /// Files called "a", "b" and so on, with as many letters as their place in the list.
    std::vector<fs::path> someFiles(int count)
    {
        std::vector<fs::path> paths;
        for (int i = 0; i < count; ++i)
            paths.push_back(put(inside / std::string(1, static_cast<char>('a' + i)),
                                std::string(static_cast<std::size_t>(i) + 1, 'x')));
        return paths;
    }

    /// The same, encrypted and all of one size.
    std::vector<fs::path> someEncrypted(int count)
    {
        std::vector<fs::path> paths;
        for (const fs::path& path : someFiles(count))
            paths.push_back(made(put(path, path.filename().string() + " has this")));
        return paths;
    }

    /// Of the work, without the making of the list.
    Log workLog() const
    {
        const auto isBuilt = [](const std::wstring& line) { return line.starts_with(L"built"); };
        return {std::find_if(recorder.log.begin(), recorder.log.end(), isBuilt) + 1, recorder.log.end()};
    }

    std::string namesInside() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(inside))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string& name : names)
            all += name + ' ';
        return all;
    }

    /// What an encryption tells of files from `someFiles`.
    static Log turnsOf(const std::string& names)
    {
        Log log;
        for (const char name : names)
        {
            const auto size = static_cast<std::uint64_t>(name - 'a') + 1;
            log.push_back(std::wstring(L"started ") + static_cast<wchar_t>(name));
            log.push_back(report(L"progress", 0, size));
            log.push_back(report(L"progress", size, size));
            log.push_back(L"finished");
        }
        log.push_back(L"operation finished");
        return log;
    }

    /// What was told of the encrypted file "a.zel", told of others.
    static Log sameFor(const std::string& names, const Log& alone)
    {
        Log log;
        for (const char name : names)
            for (const std::wstring& line : alone)
            {
                const std::wstring own = std::wstring(L"started ") + static_cast<wchar_t>(name) + L".zel";
                if (line != L"operation finished")
                    log.push_back(line == L"started a.zel" ? own : line);
            }
        log.push_back(L"operation finished");
        return log;
    }

    /// With the keys that fitted before.
    void decryptAgain(const std::vector<fs::path>& entries, bool deletes)
    {
        recorder.log.clear();
        recorder.texts.clear();
        decrypt(entries, deletes);
    }

    /// Answers a report of this name's progress with a stop.
    void stopAt(std::uint64_t done, std::uint64_t total)
    {
        recorder.progressAnswer = [=](std::uint64_t nowDone, std::uint64_t nowTotal)
        { return nowDone == done && nowTotal == total ? 0 : 1; };
    }
};

TEST_F(JobsAheadTest, anEncryptionTellsEachFileInItsTurn)
{
    encrypt(someFiles(7));
    EXPECT_EQ(workLog(), turnsOf("abcdefg"));
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c c.zel d d.zel e e.zel f f.zel g g.zel ");
}

TEST_F(JobsAheadTest, anEncryptionThatDeletesTellsEachFileInItsTurn)
{
    order.destiny = DestinyDelete;
    encrypt(someFiles(7));
    EXPECT_EQ(workLog(), turnsOf("abcdefg"));
    EXPECT_EQ(namesInside(), "a.zel b.zel c.zel d.zel e.zel f.zel g.zel ");
    EXPECT_EQ(files.forgotten.size(), 7U);
}

TEST_F(JobsAheadTest, aDecryptionTellsEachFileInItsTurnAndAsksOnce)
{
    const auto encrypted = someEncrypted(7);
    decrypt({encrypted[0]});
    const Log alone = workLog();
    const std::vector<fs::path> others(encrypted.begin() + 1, encrypted.end());
    decryptAgain(others, false);
    EXPECT_EQ(provider.asked.size(), 1U);
    EXPECT_EQ(workLog(), sameFor("bcdefg", alone));
    EXPECT_EQ(content(inside / "g"), "g has this");
    EXPECT_EQ(recorder.texts.front(), wide(inside / "b"));
    EXPECT_EQ(recorder.texts.back(), wide(inside / "g"));
}

TEST_F(JobsAheadTest, aDecryptionThatDeletesTellsBothHalvesOfEachFile)
{
    const auto encrypted = someEncrypted(7);
    decrypt({encrypted[0]}, true);
    const Log alone = workLog();
    EXPECT_EQ(alone.size(), 6U);
    decryptAgain({encrypted.begin() + 1, encrypted.end()}, true);
    EXPECT_EQ(workLog(), sameFor("bcdefg", alone));
    EXPECT_EQ(namesInside(), "a b c d e f g ");
}

TEST_F(JobsAheadTest, aStopLeavesNoResultOfLaterFiles)
{
    stopAt(0, 3);
    encrypt(someFiles(7));
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c d e f g ");
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.failed, 1);
}

TEST_F(JobsAheadTest, aStopAtTheEndOfAFileKeepsThatFile)
{
    stopAt(3, 3);
    encrypt(someFiles(7));
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c c.zel d e f g ");
}

TEST_F(JobsAheadTest, aStopBeforeASourceGoesKeepsTheSources)
{
    order.destiny = DestinyWipe;
    stopAt(3, 3);
    encrypt(someFiles(7));
    EXPECT_EQ(namesInside(), "a.zel b.zel c d e f g ");
}

TEST_F(JobsAheadTest, aStopOfADecryptionLeavesNoResultOfLaterFiles)
{
    const auto encrypted = someEncrypted(7);
    int reports = 0;
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t) { return done != 0 || ++reports < 3 ? 1 : 0; };
    decrypt(encrypted);
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c.zel d.zel e.zel f.zel g.zel ");
}

TEST_F(JobsAheadTest, aReceiverThatThrowsLeavesNoResultOfLaterFiles)
{
    recorder.progressAnswer = [](std::uint64_t, std::uint64_t total) -> int
    {
        if (total == 3)
            throw std::runtime_error("of the receiver");
        return 1;
    };
    EXPECT_THROW(encrypt(someFiles(7)), std::runtime_error);
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c d e f g ");
}

TEST_F(JobsAheadTest, anAbortLeavesNoResultOfLaterFiles)
{
    const auto list = someFiles(7);
    put(inside / "d.zel", "mine");
    recorder.errorAnswer = [] { return FileErrorAbort; };
    encrypt(list);
    EXPECT_EQ(namesInside(), "a a.zel b b.zel c c.zel d d.zel e f g ");
    EXPECT_EQ(content(inside / "d.zel"), "mine");
}

TEST_F(JobsAheadTest, aFailureIsAskedAboutWhenTheTurnComes)
{
    const auto list = someFiles(7);
    put(inside / "d.zel", "mine");
    encrypt(list);
    Log expected = turnsOf("abcdefg");
    const auto turn = std::find(expected.begin(), expected.end(), L"started d");
    *(turn + 1) = L"error d";
    *(turn + 2) = L"failed";
    expected.erase(turn + 3);
    EXPECT_EQ(workLog(), expected);
}

TEST_F(JobsAheadTest, aFailureOfTheFlushIsAskedAboutForEachFileByItself)
{
    files.failures["flush files"] = {FailureCause::Full, 1};
    encrypt(someFiles(7));
    EXPECT_EQ(recorder.succeeded, 7);
    EXPECT_LE(files.failures["flush files"].times, 0);
    EXPECT_EQ(recorder.messages.size(), 0U);
    EXPECT_EQ(temporariesIn(inside), 0U);
}

TEST_F(JobsAheadTest, aResultThatIsNotRightKeepsItsSource)
{
    order.destiny = DestinyDelete;
    const auto list = someFiles(7);
    // From the third file on, the first bytes of which are long written.
    std::atomic<int> writes = 0;
    files.changeWritten = [&](std::span<std::uint8_t> bytes)
    {
        if (++writes > 6 && !bytes.empty())
            bytes.back() ^= 1;
    };
    encrypt(list);
    EXPECT_GT(recorder.failed, 0);
    for (const fs::path& path : list)
    {
        fs::path result = withEnding(path);
        EXPECT_NE(fs::exists(path), fs::exists(result)) << path;
    }
    EXPECT_EQ(temporariesIn(inside), 0U);
}

TEST_F(JobsAheadTest, aSourceThatChangesBeforeItsTurnStays)
{
    order.destiny = DestinyDelete;
    const auto list = someFiles(7);
    recorder.progressAnswer = [&](std::uint64_t, std::uint64_t total)
    {
        if (total == 2)
            put(list[3], "changed by another");
        return 1;
    };
    encrypt(list);
    EXPECT_EQ(content(list[3]), "changed by another");
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(recorder.messages, Log{L"The file was changed by another program during the work; it stays as it is."});
}

TEST_F(JobsAheadTest, eachFileOfAnotherKeyIsAskedAboutInItsTurn)
{
    const auto first = someEncrypted(7);
    order.key = testKey('l');
    const fs::path other = made(put(inside / "other", "o"));
    provider.give("kl");
    decrypt({first[0], first[1], other, first[2], first[3], first[4], first[5], first[6]});
    EXPECT_EQ(provider.asked, (Log{wide(first[0]), wide(other)}));
    EXPECT_EQ(recorder.succeeded, 8);
}

TEST_F(JobsAheadTest, aDamagedFileIsAskedAboutInItsTurn)
{
    const auto encrypted = someEncrypted(7);
    std::string bytes = content(encrypted[2]);
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    put(encrypted[2], bytes);
    decrypt(encrypted, true);
    EXPECT_EQ(namesInside(), "a b c.zel d e f g ");
    EXPECT_EQ(countOf(L"error c.zel"), 1U);
    EXPECT_EQ(recorder.succeeded, 6);
}

TEST_F(JobsAheadTest, aDamagedFileIsNotMetByTheResultOfALaterOne)
{
    auto encrypted = someEncrypted(6);
    const fs::path sound = made(put(inside / "letter", "dear reader"));
    const std::string bytes = content(sound);
    encrypted.insert(encrypted.begin() + 1, put(inside / "damaged.zel", bytes.substr(0, bytes.size() - 1)));
    encrypted.push_back(sound);
    decrypt(encrypted);
    EXPECT_EQ(recorder.messages, Log{L"The encrypted file is damaged or incomplete."});
    EXPECT_EQ(recorder.succeeded, 7);
    EXPECT_EQ(content(inside / "letter"), "dear reader");
}

TEST_F(JobsAheadTest, twoFilesOfOneNameAreNotMixedUp)
{
    fs::create_directory(inside / "one");
    fs::create_directory(inside / "two");
    auto encrypted = someEncrypted(5);
    encrypted.push_back(made(put(inside / "one" / "same", "of one")));
    encrypted.push_back(made(put(inside / "two" / "same", "of two")));
    const fs::path folder = inside / "results";
    fs::create_directory(folder);
    decrypt(encrypted, false, folder);
    EXPECT_EQ(content(folder / "same"), "of one");
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(recorder.targets, Log{L"same"});
    EXPECT_EQ(countIn(folder), 6U);
}

TEST_F(JobsAheadTest, hardLinksAreEncryptedUnderEachName)
{
    order.destiny = DestinyWipe;
    auto list = someFiles(5);
    list.push_back(inside / "f");
    fs::create_hard_link(list[1], list.back());
    encrypt(list);
    EXPECT_EQ(recorder.succeeded, 6);
    EXPECT_EQ(namesInside(), "a.zel b.zel c.zel d.zel e.zel f.zel ");
}

TEST_F(JobsAheadTest, manyFilesComeBackAsTheyWere)
{
    for (int i = 0; i < 600; ++i)
        put(inside / ("file " + std::to_string(i)), std::string(static_cast<std::size_t>(i) * 7, 'y'));
    order.destiny = DestinyDelete;
    encrypt({inside});
    EXPECT_EQ(recorder.succeeded, 600);
    EXPECT_EQ(countIn(inside), 600U);
    decrypt({inside}, true);
    EXPECT_EQ(recorder.succeeded, 1200);
    EXPECT_EQ(countIn(inside), 600U);
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(content(inside / ("file " + std::to_string(i))), std::string(static_cast<std::size_t>(i) * 7, 'y'));
}

} // namespace
} // namespace VaultCore
