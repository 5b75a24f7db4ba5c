#include "vaultcore/job_testing.h"

#include "vaultcore/file_streams.h"

// What a decryption reads, writes and leaves alone.

namespace VaultCore
{
namespace
{

const std::wstring NoContainer = L"The file is no encrypted file of this program.";

class DecryptionJobTest : public ContentJobTest
{
protected:
    DecryptionJobTest() { provider.give(std::string(50, 'k')); }

    /// An encrypted file with any name inside.
    fs::path madeWithName(const fs::path& path, const std::string& name, const std::string& text)
    {
        const auto file = files.createNew(files.locate(wide(path.parent_path() / "in the making")));
        FileSink sink(*file, nullptr);
        ContainerDetails details;
        details.name = name;
        details.size = text.size();
        const auto writer = startEncryption(*order.key, order.algorithm)->begin(sink, "", details);
        writer->write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        writer->finish();
        file->publish(path.filename().native());
        return path;
    }
};

TEST_F(DecryptionJobTest, givesContentNameAndTimeBack)
{
    const std::string text(3 * ContentChunkForTests + 1, 'x');
    const fs::path source = put(inside / "a file.txt", text);
    const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    fs::last_write_time(source, past);
    const auto time = fs::last_write_time(source);
    const fs::path encrypted = made(source);
    fs::last_write_time(encrypted, past - std::chrono::hours(1));
    decrypt({encrypted});
    EXPECT_EQ(content(source), text);
    // The engine's times have steps of 100 ns.
    EXPECT_LT(time - fs::last_write_time(source), std::chrono::microseconds(1));
    EXPECT_GE(time, fs::last_write_time(source));
    EXPECT_TRUE(fs::exists(encrypted));
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(DecryptionJobTest, takesOddNamesAndEmptyFilesThereAndBack)
{
    for (const char8_t* name : {u8"a b", u8"ä€字.txt", u8".hidden", u8"x.zel", u8"100%", u8"[a](b)", u8"-rf"})
    {
        const fs::path source = put(inside / fs::path(name), "text");
        decrypt({made(source)}, true);
        EXPECT_EQ(content(source), "text") << source;
        fs::remove(source);
    }
    const fs::path empty = put(inside / "empty", "");
    decrypt({made(empty)}, true);
    EXPECT_TRUE(fs::exists(empty));
    EXPECT_EQ(countIn(inside), 1U);
    EXPECT_EQ(recorder.failed, 0);
}

TEST_F(DecryptionJobTest, countsTheBytesOfTheEncryptedFile)
{
    const fs::path encrypted = made(put(inside / "a", std::string(3 * ContentChunkForTests, 'x')));
    const std::uint64_t size = fs::file_size(encrypted);
    std::vector<std::uint64_t> reported;
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t total)
    {
        EXPECT_EQ(total, size);
        reported.push_back(done);
        return 1;
    };
    decrypt({encrypted});
    EXPECT_EQ(recorder.totalSize, size);
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_EQ(reported.front(), 0U);
    EXPECT_EQ(std::count(reported.begin(), reported.end(), size), 1);
}

TEST_F(DecryptionJobTest, doesNotDeleteAnEncryptedFileThatChangedMeanwhile)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.beforeRemove = [&](const Place&) { put(encrypted, "another one"); };
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log{L"The file was changed by another program during the work; it stays as it is."});
    EXPECT_EQ(content(encrypted), "another one");
    EXPECT_EQ(content(inside / "a"), "abc");
}

TEST_F(DecryptionJobTest, findsANameThatIsTakenBeforeTheWork)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    put(inside / "a", "mine");
    files.beforePublish = [] { ADD_FAILURE() << "found out after the work"; };
    decrypt({encrypted});
    EXPECT_EQ(recorder.messages, Log{L"A file with the name of the result exists already; it is not replaced."});
}

TEST_F(DecryptionJobTest, tellsThePathOfItsResultAtTheEndOfTheFile)
{
    const fs::path encrypted = made(put(inside / "a file.txt", "abc"));
    const fs::path folder = base / "out";
    fs::create_directory(folder);
    decrypt({encrypted}, false, folder);
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.texts, (Log{wide(folder / "a file.txt"), wide(inside / "a file.txt")}));
    EXPECT_EQ(recorder.succeeded, 2);
}

TEST_F(DecryptionJobTest, tellsTheNameInsideTheFileAndNotTheOneBesideIt)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    fs::rename(encrypted, inside / "renamed.zel");
    decrypt({inside / "renamed.zel"});
    EXPECT_EQ(recorder.texts, Log{wide(inside / "a")});
}

TEST_F(DecryptionJobTest, tellsAPathThatIsNeverEmptyForAnEntryInTheCurrentFolder)
{
    made(put(inside / "a", "abc"));
    const CurrentFolder current(inside);
    decrypt({"a.zel"});
    ASSERT_EQ(recorder.texts.size(), 1U);
    EXPECT_NE(recorder.texts[0], L"");
    EXPECT_EQ(content(fs::path(recorder.texts[0])), "abc");
}

TEST_F(DecryptionJobTest, tellsTheCauseWhenTheResultStandsButTheEncryptedFileCannotGo)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.failures["remove a.zel"] = {FailureCause::Denied, 1};
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.texts, Log{L"Access is denied."});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(inside / "a"), "abc");
}

TEST_F(DecryptionJobTest, deletesTheEncryptedFileInThatModeAlone)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    decrypt({encrypted}, true);
    EXPECT_EQ(content(inside / "a"), "abc");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(DecryptionJobTest, repeatsTheDeletionAloneAndKeepsBothWhenItIsSkipped)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.failures["remove a.zel"] = {FailureCause::Denied, 2};
    int asked = 0;
    recorder.errorAnswer = [&] { return ++asked == 1 ? FileErrorRepeat : FileErrorSkip; };
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log(2, L"Access is denied."));
    EXPECT_EQ(recorder.targets, Log(2, L"a"));
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(inside / "a"), "abc");
    EXPECT_TRUE(fs::exists(encrypted));
}

TEST_F(DecryptionJobTest, reportsFilesThatAreNotEncryptedWithoutAskingForAKey)
{
    decrypt({put(inside / "a.zel", "plain text, and not little of it"), put(inside / "b", "")}, true);
    EXPECT_EQ(recorder.messages, Log(2, NoContainer));
    EXPECT_TRUE(provider.asked.empty());
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(DecryptionJobTest, takesFromAFolderWhatEndsInZel)
{
    fs::create_directory(inside / "sub");
    made(put(inside / "sub" / "a", "1"));
    put(inside / "sub" / "plain.txt", "2");
    decrypt({inside}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_EQ(content(inside / "sub" / "a"), "1");
}

TEST_F(DecryptionJobTest, takesFromAPatternWhatMatches)
{
    made(put(inside / "a", "1"));
    put(inside / "plain.txt", "2");
    decrypt({inside / "*.zel"});
    EXPECT_EQ(recorder.succeeded, 1);
    decrypt({inside / "p*"});
    EXPECT_EQ(recorder.messages, Log{NoContainer});
}

TEST_F(DecryptionJobTest, neverReplacesAFileThatIsThereOrComesMeanwhile)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    put(inside / "a", "mine");
    decrypt({encrypted}, true);
    fs::remove(inside / "a");
    files.beforePublish = [&] { put(inside / "a", "mine"); };
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log(2, L"A file with the name of the result exists already; it is not replaced."));
    EXPECT_EQ(recorder.targets, Log(2, L"a"));
    EXPECT_EQ(content(inside / "a"), "mine");
    EXPECT_TRUE(fs::exists(encrypted));
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(DecryptionJobTest, writesIntoTheFolderOfTheOptions)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    const fs::path folder = base / "out";
    fs::create_directory(folder);
    decrypt({encrypted}, false, folder);
    EXPECT_EQ(content(folder / "a"), "abc");
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(DecryptionJobTest, reportsAMissingFolderBeforeItAsksForAKey)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    decrypt({encrypted}, true, base / "out");
    EXPECT_EQ(recorder.messages, Log{L"The folder for the decrypted files does not exist."});
    EXPECT_TRUE(provider.asked.empty());
    EXPECT_TRUE(fs::exists(encrypted));
}

TEST_F(DecryptionJobTest, reportsAFileInThePlaceOfTheFolder)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    decrypt({encrypted}, false, put(base / "file", "text"));
    EXPECT_EQ(recorder.messages, Log{L"The folder for the decrypted files does not exist."});
}

TEST_F(DecryptionJobTest, keepsEveryResultInsideItsFolder)
{
    for (const char* name : {"../outside/evil", "..", ".", "", "/", "a/..", "..//", "\x01", "a\nb"})
    {
        const fs::path folder = base / "out";
        fs::create_directory(folder);
        fs::remove(inside / "e.zel");
        decrypt({madeWithName(inside / "e.zel", name, "text")}, false, folder);
        EXPECT_EQ(recorder.failed, 0) << name;
        ASSERT_EQ(countIn(folder), 1U) << name;
        EXPECT_EQ(content(fs::directory_iterator(folder)->path()), "text") << name;
        fs::remove_all(folder);
    }
    EXPECT_EQ(countIn(outside), 1U);
    EXPECT_EQ(countIn(base), 2U);
}

TEST_F(DecryptionJobTest, reportsADamagedFileAndGivesNothingOfItOut)
{
    const fs::path encrypted = made(put(inside / "a", std::string(300000, 'x')));
    const std::string whole = content(encrypted);
    for (const std::size_t at : {whole.size() / 2, whole.size() - 1})
    {
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 1);
        put(encrypted, changed);
        decrypt({encrypted}, true);
    }
    put(encrypted, whole.substr(0, whole.size() - 1));
    decrypt({encrypted}, true);
    put(encrypted, whole + "x");
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.failed, 4);
    EXPECT_EQ(recorder.messages.size(), 4U);
    // The key fitted: nobody was asked for another one.
    EXPECT_EQ(provider.asked.size(), 1U);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(DecryptionJobTest, stopsAtEveryReportWithTheEncryptedFileWholeAndNothingLeft)
{
    const fs::path encrypted = made(put(inside / "a", std::string(400000, 'x')));
    const std::string whole = content(encrypted);
    int total = 0;
    recorder.progressAnswer = [&](std::uint64_t, std::uint64_t)
    {
        ++total;
        return 1;
    };
    decrypt({encrypted});
    fs::remove(inside / "a");
    ASSERT_GE(total, 2);
    for (int stopAt = 1; stopAt <= total; ++stopAt)
    {
        int reports = 0;
        recorder.texts.clear();
        recorder.progressAnswer = [&](std::uint64_t, std::uint64_t) { return ++reports == stopAt ? 0 : 1; };
        decrypt({encrypted, inside / "missing"}, true);
        EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."}) << stopAt;
        EXPECT_EQ(content(encrypted), whole);
        EXPECT_EQ(countIn(inside), 1U) << stopAt;
    }
}

TEST_F(DecryptionJobTest, leavesNothingBehindOnAFullDisk)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    files.failures["new write"] = {FailureCause::Full, 1};
    decrypt({encrypted}, true);
    EXPECT_EQ(recorder.messages, Log{L"There is no space left on the disk."});
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(DecryptionJobTest, removesLeftOversOfTheSameNameInTheTargetFolder)
{
    const fs::path encrypted = made(put(inside / "a", "abc"));
    put(inside / ".~a.zel.abcdefgh.zel-part", "left over");
    decrypt({encrypted});
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(DecryptionJobTest, givesPermissionsBack)
{
    const fs::path source = put(inside / "a", "abc");
    fs::permissions(source, fs::perms::owner_read);
    const auto permissions = fs::status(source).permissions();
    const fs::path encrypted = made(source);
    decrypt({encrypted}, true);
    EXPECT_EQ(fs::status(source).permissions(), permissions);
    fs::permissions(source, fs::perms::owner_all);
}

} // namespace
} // namespace VaultCore
