#include "vaultcore/package/testing_sfx.h"

namespace VaultCore
{
namespace
{

class SfxJobTest : public SfxTest
{
};

TEST_F(SfxJobTest, packsFilesAndFoldersIntoOneProgramBesideTheFirst)
{
    fs::create_directories(inside / "docs" / "deep");
    put(inside / "docs" / "deep" / "one.txt", "1");
    put(inside / "docs" / "two.txt", std::string(3'000'000, 'x'));
    put(inside / "three.txt", "");
    pack({inside / "docs", inside / "three.txt"});
    EXPECT_EQ(recorder.succeeded, 3);
    EXPECT_EQ(recorder.failed, 0);
    const fs::path package = inside / "docs.exe";
    EXPECT_TRUE(content(package).starts_with("MZ the program"));
    EXPECT_NE(content(package).find("About \xc3\xa4"), std::string::npos);
    EXPECT_EQ(countIn(inside), 3U);
    unpack(package);
    EXPECT_EQ(content(into / "docs" / "deep" / "one.txt"), "1");
    EXPECT_EQ(content(into / "docs" / "two.txt"), std::string(3'000'000, 'x'));
    EXPECT_EQ(content(into / "three.txt"), "");
    EXPECT_EQ(provider.asked.size(), 1U);
    EXPECT_EQ(temporariesIn(base), 0U);
}

TEST_F(SfxJobTest, countsAllFilesAsOneAndFinishesThemWithThePackage)
{
    pack({put(inside / "a", "abc"), put(inside / "b", "defgh")});
    EXPECT_EQ(recorder.log,
              (Log{L"operation started", L"entry 0", L"entry 1", L"built 2 8", L"started a", L"progress 0/8",
                   L"progress 3/8", L"started b", L"progress 8/8", L"finished", L"finished", L"operation finished"}));
    EXPECT_EQ(recorder.texts, (Log{L"", L""}));
}

TEST_F(SfxJobTest, countsReadingBackAndWipingAsWell)
{
    pack({put(inside / "a", "abcd"), put(inside / "b", "efgh")}, DestinyWipe);
    EXPECT_EQ(recorder.log,
              (Log{L"operation started", L"entry 0", L"entry 1", L"built 2 8", L"started a", L"progress 0/8",
                   L"progress 2/8", L"started b", L"progress 4/8", L"progress 6/8", L"progress 8/8", L"destiny 0/8",
                   L"destiny 4/8", L"destiny 4/8", L"destiny 8/8", L"finished", L"finished", L"operation finished"}));
    EXPECT_EQ(countIn(inside), 1U);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "b"), "efgh");
}

TEST_F(SfxJobTest, deletesTheSourcesOnceThePackageWasReadBack)
{
    pack({put(inside / "a", "abcd"), put(inside / "b", "")}, DestinyDelete);
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(files.forgotten.size(), 1U);
    EXPECT_EQ(countIn(inside), 1U);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "a"), "abcd");
    EXPECT_TRUE(fs::exists(into / "b"));
}

TEST_F(SfxJobTest, aPackageThatReadsBackDifferentlyGoesAndTheSourcesStay)
{
    for (const bool publicKey : {false, true})
    {
        if (publicKey)
            order.key = rsaKey(KeyTypePublicRsa);
        const fs::path source = put(inside / "a", "abcd");
        files.changeWritten = [](std::span<std::uint8_t> bytes)
        {
            if (bytes.size() == 20) // the content with its tag
                bytes[0] ^= 1;
        };
        pack({source}, DestinyWipe);
        EXPECT_EQ(content(source), "abcd");
        EXPECT_EQ(countIn(inside), 1U);
    }
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(recorder.succeeded, 0);
}

TEST_F(SfxJobTest, aPublicKeyPacksAndWipes)
{
    order.key = rsaKey(KeyTypePublicRsa);
    pack({put(inside / "a", "abcd"), put(inside / "b", "")}, DestinyWipe);
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(countIn(inside), 1U);
    provider.answer = [](IKey** key)
    {
        *key = rsaKey(KeyTypePrivateRsa).release();
        return KeyProvided;
    };
    fs::create_directory(into);
    decrypt({inside / "a.exe"}, false, into);
    EXPECT_EQ(content(into / "a"), "abcd");
}

TEST_F(SfxJobTest, leavesAFileThatFailsOutOfThePackage)
{
    const fs::path bad = put(inside / "b", std::string(2'500'000, 'x'));
    put(inside / "a", "abc");
    put(inside / "c", "ghi");
    int reads = 0;
    files.beforeRead = [&](const Place& place)
    {
        if (place.below.ends_with(fs::path("b").native()) && ++reads == 3)
            throw FileFailure(FailureCause::Device, 0);
    };
    pack({inside / "a", bad, inside / "c"}, DestinyDelete);
    EXPECT_EQ(recorder.messages, Log{L"The device reported a read or write error."});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(bad));
    EXPECT_FALSE(fs::exists(inside / "a"));
    EXPECT_LT(fs::file_size(inside / "a.exe"), 20'000U);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "c"), "ghi");
    EXPECT_EQ(countIn(into), 2U);
}

TEST_F(SfxJobTest, aRepeatedFileIsPackedOnce)
{
    files.failures["content a"] = {FailureCause::InUse, 2};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    pack({put(inside / "a", "abc"), put(inside / "b", "x")});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.messages.size(), 2U);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "a"), "abc");
    EXPECT_EQ(countIn(into), 2U);
}

TEST_F(SfxJobTest, anAbortLeavesNoPackage)
{
    files.failures["read b"] = {FailureCause::InUse, 9};
    recorder.errorAnswer = [] { return FileErrorAbort; };
    pack({put(inside / "a", "abc"), put(inside / "b", "x"), put(inside / "c", "x")}, DestinyWipe);
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(recorder.succeeded, 0);
    EXPECT_EQ(countIn(inside), 3U);
}

TEST_F(SfxJobTest, aStopAtAnyReportLeavesEitherThePackageOrTheSources)
{
    for (int stopAt = 1; stopAt < 12; ++stopAt)
    {
        int reports = 0;
        recorder.progressAnswer = [&](std::uint64_t, std::uint64_t) { return ++reports == stopAt ? 0 : 1; };
        recorder.destinyAnswer = recorder.progressAnswer;
        const fs::path folder = inside / std::to_string(stopAt);
        fs::create_directory(folder);
        pack({put(folder / "a", "abcd"), put(folder / "b", "efgh")}, DestinyWipe);
        const bool packed = fs::exists(folder / "a.exe");
        EXPECT_TRUE(packed || (content(folder / "a") == "abcd" && content(folder / "b") == "efgh")) << stopAt;
        EXPECT_EQ(temporariesIn(base), 0U);
        if (packed)
        {
            recorder.progressAnswer = [](std::uint64_t, std::uint64_t) { return 1; };
            fs::remove_all(into);
            unpack(folder / "a.exe");
            EXPECT_EQ(content(into / "b"), "efgh");
        }
    }
}

TEST_F(SfxJobTest, theSourcesStayWhenThePackageWentWhileAQuestionStood)
{
    for (const std::uint32_t destiny : {DestinyDelete, DestinyWipe})
    {
        const fs::path source = put(inside / "a", "abc");
        files.failures[destiny == DestinyWipe ? "open a" : "remove a"] = {FailureCause::InUse, 1};
        recorder.messages.clear();
        recorder.errorAnswer = [&]
        {
            fs::remove(inside / "a.exe");
            return recorder.messages.size() == 1 ? FileErrorRepeat : FileErrorSkip;
        };
        pack({source}, destiny);
        EXPECT_EQ(recorder.messages.size(), 2U);
        EXPECT_EQ(content(source), "abc");
    }
    EXPECT_EQ(recorder.succeeded, 0);
}

TEST_F(SfxJobTest, neverReplacesAFile)
{
    const fs::path source = put(inside / "a", "abc");
    put(inside / "a.exe", "mine");
    pack({source}, DestinyWipe);
    EXPECT_EQ(recorder.messages, Log{L"A file with the name of the result exists already; it is not replaced."});
    EXPECT_EQ(content(inside / "a.exe"), "mine");
    EXPECT_EQ(content(source), "abc");
}

TEST_F(SfxJobTest, neverReplacesAFileThatTakesTheNameMeanwhileAndCanTryAgain)
{
    const fs::path source = put(inside / "a", "abc");
    files.beforePublish = [&]
    {
        if (recorder.messages.empty())
            put(inside / "a.exe", "mine");
    };
    recorder.errorAnswer = [&]
    {
        EXPECT_EQ(content(inside / "a.exe"), "mine");
        fs::remove(inside / "a.exe");
        return FileErrorRepeat;
    };
    pack({source}, DestinyDelete);
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_EQ(recorder.succeeded, 1);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "a"), "abc");
}

TEST_F(SfxJobTest, aSourceThatChangedStays)
{
    const fs::path source = put(inside / "a", "abc");
    files.beforePublish = [&] { put(inside / "a", "changed since"); };
    pack({source}, DestinyWipe);
    EXPECT_EQ(content(source), "changed since");
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_TRUE(fs::exists(inside / "a.exe"));
}

TEST_F(SfxJobTest, saysWhenTheProgramIsMissingOrIsNone)
{
    const fs::path source = put(inside / "a", "abc");
    fs::remove(program);
    pack({source, put(inside / "b", "x")}, DestinyWipe);
    ASSERT_EQ(recorder.messages.size(), 1U);
    EXPECT_NE(recorder.messages[0].find(L"package.stub, cannot be used. The file does not exist."), std::wstring::npos);
    put(program, "");
    pack({source}, DestinyWipe);
    ASSERT_EQ(recorder.messages.size(), 2U);
    EXPECT_NE(recorder.messages[1].find(L"is no program"), std::wstring::npos);
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(SfxJobTest, makesNoPackageOfNothing)
{
    pack({});
    EXPECT_EQ(recorder.log, (Log{L"operation started", L"built 0 0", L"operation finished"}));
    files.failures["read a"] = {FailureCause::InUse, 9};
    pack({put(inside / "a", "abc")}, DestinyWipe);
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(SfxJobTest, filesOfTheSameNameGetNumbers)
{
    fs::create_directory(inside / "one");
    fs::create_directory(inside / "two");
    put(inside / "one" / "a.txt", "1");
    put(inside / "two" / "a.txt", "2");
    put(inside / "a.txt", "3");
    pack({inside / "one" / "a.txt", inside / "two" / "a.txt", inside / "a.txt"});
    EXPECT_TRUE(fs::exists(inside / "one" / "a.txt.exe"));
    unpack(inside / "one" / "a.txt.exe");
    EXPECT_EQ(content(into / "a.txt"), "1");
    EXPECT_EQ(content(into / "a (2).txt"), "2");
    EXPECT_EQ(content(into / "a (3).txt"), "3");
}

TEST_F(SfxJobTest, foldersOfTheSameNameStayApart)
{
    for (const char* folder : {"one", "two"})
    {
        fs::create_directories(inside / folder / "docs");
        put(inside / folder / "docs" / "a", folder);
    }
    pack({inside / "one" / "docs", inside / "two" / "docs"});
    unpack(inside / "one" / "docs.exe");
    EXPECT_EQ(content(into / "docs" / "a"), "one");
    EXPECT_EQ(content(into / "docs (2)" / "a"), "two");
}

TEST_F(SfxJobTest, hardLinksArePackedAndWipedTogether)
{
    put(inside / "a", "abc");
    fs::create_hard_link(inside / "a", inside / "b");
    pack({inside / "a", inside / "b"}, DestinyWipe);
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(countIn(inside), 1U);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "b"), "abc");
}

} // namespace
} // namespace VaultCore
