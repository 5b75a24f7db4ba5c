#include "vaultcore/job_testing.h"

// What a list holds, and what it does not hold a second time.

namespace VaultCore
{
namespace
{

class JobFilesTest : public ContentJobTest
{
protected:
    JobFiles list{files, {}, [](const JobItem&) { return true; }};

    std::vector<fs::path> namesOf(const fs::path& entry)
    {
        std::vector<fs::path> names;
        for (const JobItem& item : list.expandEntry(wide(entry)))
            if (item.kind == JobItem::Kind::File)
                names.emplace_back(nameOf(item.place));
        return names;
    }
};

TEST_F(JobFilesTest, findsAFileOnce)
{
    const fs::path file = put(inside / "a", "abc");
    EXPECT_EQ(namesOf(file).size(), 1U);
    EXPECT_TRUE(namesOf(file).empty());
    EXPECT_TRUE(namesOf(inside).empty());
    EXPECT_TRUE(namesOf(inside / "." / "a").empty());
    EXPECT_EQ(list.totalSize(), 3U);
}

TEST_F(JobFilesTest, findsAnotherFileWithTheIdentityOfOneThatIsGone)
{
    const fs::path file = put(inside / "a", "abc");
    namesOf(file);
    list.forgetName(files.inspect(files.locate(wide(file))).identity);
    EXPECT_EQ(namesOf(file).size(), 1U);
}

TEST_F(JobFilesTest, findsAFileThatStaysNoSecondTime)
{
    const fs::path file = put(inside / "a", "abc");
    namesOf(file);
    list.forgetName(files.inspect(files.locate(wide(file))).identity, false);
    EXPECT_TRUE(namesOf(file).empty());
}

TEST_F(JobFilesTest, doesNotLeaveTheVolumeOfAFolder)
{
    fs::create_directory(inside / "mounted");
    put(inside / "mounted" / "a", "abc");
    put(inside / "b", "abc");
    files.changeInfo = [](const Place& place, FileInfo& info)
    {
        if (place.below.find(fs::path("mounted").native()) != NativeText::npos)
            ++info.identity.volume;
    };
    EXPECT_EQ(namesOf(inside), std::vector<fs::path>{"b"});
}

TEST_F(JobFilesTest, takesAFolderThatCouldNotBeListedAgainWithoutWhatIsDone)
{
    fs::create_directory(inside / "sub");
    const fs::path done = put(inside / "sub" / "a", "abc");
    put(inside / "sub" / "b", "abc");
    files.failures["list sub"] = {FailureCause::Denied, 2};
    recorder.errorAnswer = [] { return FileErrorRepeat; };
    encrypt({done, inside / "sub"});
    EXPECT_EQ(recorder.messages, Log{L"Access is denied."});
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_EQ(countIn(inside / "sub"), 4U);
}

} // namespace
} // namespace VaultCore
