#include "vaultcore/job_testing.h"

#include "vaultcore/container/rsa.h"

// What becomes of the source once its encrypted file is there.

namespace VaultCore
{
namespace
{

const std::wstring Differs = L"The new file could not be read back as it was written; the source file is untouched.";

class SourceRemovalTest : public ContentJobTest, public testing::WithParamInterface<std::uint32_t>
{
protected:
    SourceRemovalTest() { order.destiny = GetParam(); }

    void expectContent(const fs::path& encrypted, const std::string& text)
    {
        provider.give("kkkk");
        Recorder silent;
        const fs::path folder = base / std::to_string(outputs_++);
        fs::create_directory(folder);
        DecryptionJob(files, silent.receivers(), {wide(folder), false, &provider}).run(texts({encrypted}));
        ASSERT_EQ(countIn(folder), 1U);
        EXPECT_EQ(content(fs::directory_iterator(folder)->path()), text);
    }

private:
    int outputs_ = 0;
};

INSTANTIATE_TEST_SUITE_P(DeleteAndWipe, SourceRemovalTest, testing::Values(1U, 2U));

TEST_P(SourceRemovalTest, leavesOnlyTheEncryptedFile)
{
    const std::string text(3 * ContentChunkForTests + 1, 'x');
    encrypt({put(inside / "a", text), put(inside / "b", "")});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(countIn(inside), 2U);
    expectContent(inside / "a.zel", text);
    expectContent(inside / "b.zel", "");
}

TEST_P(SourceRemovalTest, reportsWithoutGoingBackAndEndsOnce)
{
    const std::uint64_t size = 3 * ContentChunkForTests + 1;
    std::vector<std::uint64_t> reported;
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t total)
    {
        EXPECT_EQ(total, size);
        reported.push_back(done);
        return 1;
    };
    encrypt({put(inside / "a", std::string(size, 'x'))});
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_EQ(reported.front(), 0U);
    EXPECT_EQ(std::count(reported.begin(), reported.end(), size), 1);
    EXPECT_EQ(reported.back(), size);
    EXPECT_EQ(countOf(report(L"destiny", 0, size)), GetParam() == 2 ? 1U : 0U);
    EXPECT_EQ(countOf(report(L"destiny", ContentChunkForTests, size)), GetParam() == 2 ? 1U : 0U);
    EXPECT_EQ(countOf(report(L"destiny", size, size)), GetParam() == 2 ? 1U : 0U);
}

TEST_P(SourceRemovalTest, keepsTheSourceWhenTheResultReadsBackDifferently)
{
    const fs::path source = put(inside / "a", std::string(5000, 'x'));
    files.changeWritten = [](std::span<std::uint8_t> bytes)
    {
        if (bytes.size() > 3000)
            bytes[2000] ^= 1;
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Differs});
    EXPECT_EQ(content(source), std::string(5000, 'x'));
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_P(SourceRemovalTest, readsTheBytesBackForAKeyThatDoesNotDecrypt)
{
    KeyMaterial material;
    material.type = KeyTypePublicRsa;
    // Nobody has the private half, which is the point.
    material.rsa.modulus = Bytes(RsaSmallModulus, std::uint8_t{0xC5});
    material.rsa.exponent = RsaExponent;
    order.key = createKey(std::move(material));
    encrypt({put(inside / "a", std::string(5000, 'x'))});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside / "a"));
    const fs::path second = put(inside / "b", std::string(5000, 'x'));
    files.failures["read b.zel"] = {FailureCause::Device, 1};
    encrypt({second});
    EXPECT_EQ(recorder.messages, Log{L"The device reported a read or write error."});
    EXPECT_TRUE(fs::exists(second));
    EXPECT_FALSE(fs::exists(inside / "b.zel"));
}

TEST_P(SourceRemovalTest, comparesTheBytesForAKeyThatDoesNotDecrypt)
{
    KeyMaterial material;
    material.type = KeyTypePublicRsa;
    material.rsa.modulus = Bytes(RsaSmallModulus, std::uint8_t{0xC5});
    material.rsa.exponent = RsaExponent;
    order.key = createKey(std::move(material));
    const fs::path source = put(inside / "a", std::string(5000, 'x'));
    files.changeWritten = [](std::span<std::uint8_t> bytes)
    {
        if (bytes.size() > 3000)
            bytes[2000] ^= 1;
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Differs});
    EXPECT_EQ(content(source), std::string(5000, 'x'));
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_P(SourceRemovalTest, refusesAnotherFileUnderTheNameOfTheResult)
{
    const fs::path source = put(inside / "a", "abc");
    files.beforeOpen = [&](const Place& place)
    {
        if (!place.below.ends_with(fs::path("a.zel").native()) || fs::exists(base / "first"))
            return;
        fs::rename(inside / "a.zel", base / "first");
        fs::copy_file(base / "first", inside / "a.zel");
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Differs});
    EXPECT_EQ(content(source), "abc");
    EXPECT_TRUE(fs::exists(inside / "a.zel"));
}

TEST_P(SourceRemovalTest, keepsTheResultOfAStoppedJobWhoseSourceIsNoLongerWhatWasRead)
{
    const fs::path source = put(inside / "a", "abc");
    recorder.progressAnswer = [&](std::uint64_t done, std::uint64_t size)
    {
        if (done == size)
            put(source, "other text");
        return done == size ? 0 : 1;
    };
    encrypt({source});
    EXPECT_EQ(content(source), "other text");
    recorder.progressAnswer = [](std::uint64_t, std::uint64_t) { return 1; };
    expectContent(inside / "a.zel", "abc");
}

TEST_P(SourceRemovalTest, asksAboutASourceThatCannotGoAndRepeatsOnlyThat)
{
    const fs::path source = put(inside / "a", "abc");
    files.failures[GetParam() == 2 ? "open a" : "remove a"] = {FailureCause::InUse, 2};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log(2, L"The file is in use by another program."));
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countOf(L"progress 3/3"), 1U);
    EXPECT_FALSE(fs::exists(source));
}

TEST_P(SourceRemovalTest, keepsBothWhenASourceThatCannotGoIsSkipped)
{
    const fs::path source = put(inside / "a", "abc");
    files.failures[GetParam() == 2 ? "open a" : "remove a"] = {FailureCause::InUse, 2};
    encrypt({source});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(source), "abc");
    expectContent(inside / "a.zel", "abc");
}

TEST_P(SourceRemovalTest, keepsTheSourceWhenTheResultWentWhileAQuestionStood)
{
    for (const bool exchanged : {false, true})
    {
        const fs::path source = put(inside / "a", "abc");
        files.failures[GetParam() == 2 ? "open a" : "remove a"] = {FailureCause::InUse, 1};
        recorder.messages.clear();
        recorder.errorAnswer = [&]
        {
            fs::remove(inside / "a.zel");
            if (exchanged)
                put(inside / "a.zel", "something else");
            return recorder.messages.size() == 1 ? FileErrorRepeat : FileErrorSkip;
        };
        encrypt({source});
        EXPECT_EQ(recorder.messages, (Log{L"The file is in use by another program.", Differs}));
        EXPECT_EQ(content(source), "abc");
        fs::remove(inside / "a.zel");
    }
}

TEST_P(SourceRemovalTest, keepsAnEmptySourceWhoseResultHasItsNameTaken)
{
    const fs::path source = put(inside / "a", "");
    put(inside / "a.zel", "mine");
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{L"A file with the name of the result exists already; it is not replaced."});
    EXPECT_TRUE(fs::exists(source));
    EXPECT_EQ(content(inside / "a.zel"), "mine");
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_P(SourceRemovalTest, takesEveryNameOfAFileAfterEachWasRead)
{
    std::error_code error;
    put(inside / "one", "text");
    fs::create_hard_link(inside / "one", inside / "two", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    encrypt({inside});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(countIn(inside), 2U);
    expectContent(inside / "one.zel", "text");
    expectContent(inside / "two.zel", "text");
}

TEST_P(SourceRemovalTest, neverOverwritesAFileThatAnotherNameOfTheListStillNeeds)
{
    std::error_code error;
    put(inside / "one", "text");
    fs::create_hard_link(inside / "one", inside / "two", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    files.failures["read one"] = {FailureCause::InUse, 100};
    encrypt({inside / "one", inside / "two"});
    EXPECT_EQ(content(inside / "one"), "text");
    // A wipe that would leave the content is none.
    EXPECT_EQ(fs::exists(inside / "two"), GetParam() == 2);
    EXPECT_EQ(recorder.failed, GetParam() == 2 ? 2 : 1);
}

TEST_P(SourceRemovalTest, neverOverwritesAFileWithANameOutsideTheList)
{
    std::error_code error;
    put(inside / "one", "text");
    fs::create_hard_link(inside / "one", outside / "two", error);
    if (error)
        GTEST_SKIP() << "no hard links here: " << error.message();
    encrypt({inside / "one"});
    EXPECT_EQ(content(outside / "two"), "text");
    EXPECT_EQ(recorder.failed, GetParam() == 2 ? 1 : 0);
    fs::remove(outside / "two");
}

using SourceWipeTest = ContentJobTest;

TEST_F(SourceWipeTest, stoppedBeforeTheFirstByteTakesTheResultBack)
{
    order.destiny = 2;
    recorder.destinyAnswer = [](std::uint64_t, std::uint64_t) { return 0; };
    encrypt({put(inside / "a", "abc"), put(inside / "b", "abc")});
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is untouched."});
    EXPECT_EQ(content(inside / "a"), "abc");
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(SourceWipeTest, stoppedOnTheWayKeepsTheResult)
{
    order.destiny = 2;
    const std::string text(3 * ContentChunkForTests, 'x');
    const fs::path source = put(inside / "a", text);
    recorder.destinyAnswer = [](std::uint64_t done, std::uint64_t) { return done > 0 ? 0 : 1; };
    encrypt({source, put(inside / "b", "abc")});
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is partly overwritten."});
    EXPECT_NE(content(source), text);
    provider.give("k");
    const fs::path out = base / "out";
    fs::create_directory(out);
    decrypt({inside / "a.zel"}, false, out);
    EXPECT_EQ(content(out / "a"), text);
    EXPECT_FALSE(fs::exists(inside / "b.zel"));
}

TEST_F(SourceWipeTest, goesOnWithAFileThatAFailedAttemptHasOverwritten)
{
    order.destiny = 2;
    const fs::path source = put(inside / "a", "abc");
    files.failures["truncate"] = {FailureCause::Device, 1};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    encrypt({source});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countIn(inside), 1U);
    EXPECT_TRUE(fs::exists(inside / "a.zel"));
}

TEST_F(SourceWipeTest, stoppedBeforeASecondAttemptKeepsTheResultOfWhatIsOverwritten)
{
    order.destiny = 2;
    files.failures["truncate"] = {FailureCause::Device, 1};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    int attempts = 0;
    recorder.destinyAnswer = [&](std::uint64_t done, std::uint64_t) { return done == 0 && ++attempts == 2 ? 0 : 1; };
    encrypt({put(inside / "a", "abc")});
    EXPECT_EQ(attempts, 2);
    EXPECT_EQ(recorder.texts, Log{L"The operation was cancelled; the file is partly overwritten."});
    EXPECT_TRUE(fs::exists(inside / "a.zel"));
}

TEST_F(SourceWipeTest, overwritesTheContentItself)
{
    order.destiny = 2;
    encrypt({put(inside / "a", "abc")});
    const std::vector<std::string> steps{"write", "flush", "truncate", "rename", "remove"};
    EXPECT_EQ(files.trace, steps);
}

} // namespace
} // namespace VaultCore
