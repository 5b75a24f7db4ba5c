#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

#include "linux/terminal.h"
#include "scenarios/sample_folder.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Question = "Are you sure you want to securely delete items?";
const std::string QuestionCaption = "Securely Delete Items";
const std::string ErrorTitle = "File Error Occured";
const std::string ErrorHeader = "Please choose what to do with file.";

int countOf(const std::vector<Path>& files)
{
    int count = 0;
    for (const Path& file : files)
        count += fs::exists(file) ? 1 : 0;
    return count;
}

} // namespace

/// A delete job, run up to its question.
class DeleteJob : public testing::TestWithParam<std::uint32_t>
{
protected:
    std::unique_ptr<Terminal> start(const std::vector<Path>& listed)
    {
        job = folder.addDeleteJob(listed, GetParam());
        auto terminal = std::make_unique<Terminal>(std::vector<std::string>{programUnderTest(), job});
        EXPECT_TRUE(terminal->expect(QuestionCaption)) << terminal->shown();
        EXPECT_TRUE(terminal->expect(Question)) << terminal->shown();
        return terminal;
    }

    std::unique_ptr<Terminal> startAndConfirm(const std::vector<Path>& listed)
    {
        auto terminal = start(listed);
        terminal->send("y\n");
        return terminal;
    }

    /// The same up to the error of its one missing file, which stands between two that exist.
    std::unique_ptr<Terminal> startWithAMissingFile()
    {
        missing = folder.path() / "missing.txt";
        files = {folder.addFile("first.txt"), missing, folder.addFile("last.txt")};
        auto terminal = startAndConfirm(files);
        EXPECT_TRUE(terminal->expect(ErrorTitle)) << terminal->shown();
        EXPECT_TRUE(terminal->expect(ErrorHeader)) << terminal->shown();
        EXPECT_TRUE(terminal->expect(missing)) << terminal->shown();
        EXPECT_TRUE(terminal->expect("Abort")) << terminal->shown();
        return terminal;
    }

    SampleFolder folder;
    Path job;
    Path missing;
    std::vector<Path> files;
};

INSTANTIATE_TEST_SUITE_P(Methods, DeleteJob, testing::Values(SampleFolder::Delete, SampleFolder::Wipe));

TEST_P(DeleteJob, removesItsFilesAfterYes)
{
    const auto listed = folder.addFiles(20, std::string(10000, 'x'));
    const Path other = folder.addFile("other.txt");
    const auto terminal = startAndConfirm(listed);
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(countOf(listed), 0);
    EXPECT_TRUE(fs::exists(other));
    EXPECT_FALSE(fs::exists(job));
}

TEST_P(DeleteJob, touchesNothingAfterNo)
{
    const auto listed = folder.addFiles(3);
    const auto terminal = start(listed);
    terminal->send("n\n");
    EXPECT_EQ(terminal->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 3);
    EXPECT_FALSE(fs::exists(job)) << "the job file is gone once it has been read";
}

TEST_P(DeleteJob, takesTheEndOfInputAsNo)
{
    const auto listed = folder.addFiles(3);
    const auto terminal = start(listed);
    terminal->sendEnd();
    EXPECT_EQ(terminal->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 3);
}

TEST_P(DeleteJob, asksEvenWithAnEmptyList)
{
    const auto terminal = startAndConfirm({});
    EXPECT_EQ(terminal->exitCode(), 0);
}

TEST_P(DeleteJob, removesEmptyFiles)
{
    const std::vector<Path> listed = {folder.addFile("empty.txt", "")};
    const auto terminal = startAndConfirm(listed);
    EXPECT_EQ(terminal->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 0);
}

TEST_P(DeleteJob, removesFilesWithNamesOfOtherScripts)
{
    const std::vector<Path> listed = {folder.addFile(u8"\u00fcber \u65e5\u672c.txt"), folder.addFile("a\"quote.txt")};
    const auto terminal = startAndConfirm(listed);
    EXPECT_EQ(terminal->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 0);
}

TEST_P(DeleteJob, readsAListOfAHundredThousandFiles)
{
    const std::vector<Path> listed(100000, folder.addFile("one.txt"));
    const auto terminal = start(listed);
    terminal->send("n\n");
    EXPECT_EQ(terminal->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 100000);
}

TEST_P(DeleteJob, goesOnAfterASkippedFile)
{
    const auto terminal = startWithAMissingFile();
    terminal->send("s\n");
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(countOf(files), 0);
}

TEST_P(DeleteJob, leavesTheRestWhenItIsAborted)
{
    const auto terminal = startWithAMissingFile();
    terminal->send("a\n");
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_FALSE(fs::exists(files.front()));
    EXPECT_TRUE(fs::exists(files.back()));
}

TEST_P(DeleteJob, takesTheEndOfInputAsAbort)
{
    const auto terminal = startWithAMissingFile();
    terminal->sendEnd();
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_TRUE(fs::exists(files.back()));
}

TEST_P(DeleteJob, triesAFileAgainThatHasComeBack)
{
    const auto terminal = startWithAMissingFile();
    folder.addFile("missing.txt");
    terminal->send("t\n");
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(countOf(files), 0);
}

TEST_P(DeleteJob, asksAgainAsLongAsAFileStaysMissing)
{
    const auto terminal = startWithAMissingFile();
    terminal->send("t\n");
    ASSERT_TRUE(terminal->expect(ErrorHeader)) << terminal->shown();
    ASSERT_TRUE(terminal->expect("Abort"));
    terminal->send("s\n");
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(countOf(files), 0);
}
