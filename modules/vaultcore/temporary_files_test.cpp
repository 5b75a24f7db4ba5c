#include "vaultcore/job_testing.h"

// Temporary files of this job and of earlier ones.

namespace VaultCore
{
namespace
{

using TemporaryFilesTest = ContentJobTest;

TEST_F(TemporaryFilesTest, removesLeftOversOfTheSameNameAndOfNoOther)
{
    const fs::path source = put(inside / "a", "abc");
    put(inside / ".~a.abcdefgh.zel-part", "left over");
    put(inside / ".~a.zyxwvuts.zel-part", "left over");
    put(inside / ".~other.abcdefgh.zel-part", "not its own");
    put(inside / ".~a.12345678.zel-part", "no name of ours");
    encrypt({inside / "a"});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside / ".~a.abcdefgh.zel-part"));
    EXPECT_FALSE(fs::exists(inside / ".~a.zyxwvuts.zel-part"));
    EXPECT_TRUE(fs::exists(inside / ".~other.abcdefgh.zel-part"));
    EXPECT_TRUE(fs::exists(inside / ".~a.12345678.zel-part"));
}

TEST_F(TemporaryFilesTest, removesLeftOversThoughTheResultIsThereAlready)
{
    provider.give("k");
    const fs::path encrypted = made(put(inside / "a", "abc"));
    const fs::path source = put(inside / "a", "abc");
    put(inside / ".~a.abcdefgh.zel-part", "left over");
    put(inside / ".~a.zel.abcdefgh.zel-part", "left over with plain text in it");
    encrypt({source});
    decrypt({encrypted});
    EXPECT_EQ(recorder.failed, 2);
    EXPECT_EQ(countIn(inside), 2U);
}

TEST_F(TemporaryFilesTest, leavesATemporaryFileThatSomebodyIsMaking)
{
    const fs::path source = put(inside / "a", "abc");
    const fs::path used = inside / ".~a.abcdefgh.zel-part";
    const auto held = files.createNew(files.locate(wide(used)));
    encrypt({source});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_TRUE(fs::exists(used));
}

TEST_F(TemporaryFilesTest, triesOtherNamesWhenOneIsTaken)
{
    files.failures["create"] = {FailureCause::NameTaken, 7};
    encrypt({put(inside / "a", "abc")});
    EXPECT_EQ(recorder.succeeded, 1);
    files.failures["create"] = {FailureCause::NameTaken, 8};
    encrypt({put(inside / "b", "abc")});
    EXPECT_EQ(recorder.messages, Log{L"No free name was found for the file."});
}

TEST_F(TemporaryFilesTest, leavesTemporaryFilesInFoldersOut)
{
    put(inside / ".~a.abcdefgh.zel-part", "left over");
    put(inside / "b", "abc");
    encrypt({inside});
    encrypt({inside / "*"});
    EXPECT_FALSE(fs::exists(inside / ".~a.abcdefgh.zel-part.zel"));
    EXPECT_EQ(countOf(L"built 1 3"), 1U);
}

TEST_F(TemporaryFilesTest, takesNamesUpToTheLimitAndReportsLongerOnes)
{
    int published = 0;
    files.beforePublish = [&] { ++published; };
    encrypt({put(inside / std::string(251, 'n'), "abc"), put(inside / std::string(252, 'm'), "abc")});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.messages, Log{L"The name is too long for the system."});
    EXPECT_EQ(published, 1) << "found out after the work";
    EXPECT_EQ(temporariesIn(inside), 0U);
}

TEST_F(TemporaryFilesTest, leavesNothingBehindOnAFullDisk)
{
    const fs::path source = put(inside / "a", "abc");
    files.failures["new write"] = {FailureCause::Full, 1};
    order.destiny = 2;
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{L"There is no space left on the disk."});
    EXPECT_EQ(content(source), "abc");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(TemporaryFilesTest, leavesNothingBehindWhenTheSourceCannotBeRead)
{
    const fs::path source = put(inside / "a", "abc");
    files.failures["content a"] = {FailureCause::Device, 1};
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{L"The device reported a read or write error."});
    EXPECT_EQ(countIn(inside), 1U);
}

} // namespace
} // namespace VaultCore
