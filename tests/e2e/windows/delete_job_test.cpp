#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

#include "scenarios/sample_folder.h"
#include "windows/running_program.h"
#include "windows/screenshot.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr int TryAgain = 1;
constexpr int SkipFile = 5;
constexpr int Abort = 2;
constexpr int FileLine = 1046;
constexpr int PauseButton = 1090;
constexpr int CancelButton = 1226;
constexpr int ElapsedBytes = 1230;
constexpr int TotalBytes = 1233;

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
    void start(const std::vector<Path>& listed, std::uint32_t method)
    {
        job = folder.addDeleteJob(listed, method);
        program = std::make_unique<RunningProgram>(programUnderTest(), quoted(job));
        question = program->window(L"Securely Delete Items");
        ASSERT_TRUE(question);
    }

    void start(const std::vector<Path>& listed) { start(listed, GetParam()); }

    void startAndConfirm(const std::vector<Path>& listed)
    {
        start(listed);
        question.click(IDYES);
    }

    /// The same up to the error of its one missing file, which stands between two that exist.
    void startWithAMissingFile()
    {
        missing = folder.path() / L"missing.txt";
        files = {folder.addFile(L"first.txt"), missing, folder.addFile(L"last.txt")};
        startAndConfirm(files);
        error = program->window(L"File Error Occured");
        ASSERT_TRUE(error);
    }

    SampleFolder folder;
    Path job;
    Path missing;
    std::vector<Path> files;
    std::unique_ptr<RunningProgram> program;
    Window question;
    Window error;
};

INSTANTIATE_TEST_SUITE_P(Methods, DeleteJob, testing::Values(SampleFolder::Delete, SampleFolder::Wipe));

TEST_P(DeleteJob, asksInAMessageBoxWithYesAndNo)
{
    start(folder.addFiles(1));
    EXPECT_TRUE(question.shows(L"Are you sure you want to securely delete items?")) << Path(question.allTexts());
    EXPECT_TRUE(question.hasItem(IDYES));
    EXPECT_TRUE(question.hasItem(IDNO));
    EXPECT_FALSE(question.hasItem(IDCANCEL));
    EXPECT_TRUE(takeScreenshot(question, L"question"));
}

TEST_P(DeleteJob, removesItsFilesAfterYes)
{
    const auto listed = folder.addFiles(20, std::string(10000, 'x'));
    const Path other = folder.addFile(L"other.txt");
    startAndConfirm(listed);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 0);
    EXPECT_TRUE(fs::exists(other));
    EXPECT_FALSE(fs::exists(job));
}

TEST_P(DeleteJob, takesYesFromTheMouse)
{
    const auto listed = folder.addFiles(1);
    start(listed);
    question.clickWithMouse(IDYES);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 0);
}

TEST_P(DeleteJob, touchesNothingAfterNo)
{
    const auto listed = folder.addFiles(3);
    start(listed);
    question.click(IDNO);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 3);
    EXPECT_FALSE(fs::exists(job)) << "the job file is gone once it has been read";
}

TEST_P(DeleteJob, asksEvenWithAnEmptyList)
{
    startAndConfirm({});
    EXPECT_EQ(program->exitCode(), 0);
}

TEST_P(DeleteJob, removesFilesWithNamesOfOtherScripts)
{
    const std::vector<Path> listed = {folder.addFile(u8"\u00fcber \u65e5\u672c.txt"), folder.addFile(L"empty.txt", "")};
    startAndConfirm(listed);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(listed), 0);
}

TEST_P(DeleteJob, readsAListOfAHundredThousandFiles)
{
    const std::vector<Path> listed(100000, folder.addFile(L"one.txt"));
    start(listed);
    question.click(IDNO);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf({listed.front()}), 1);
}

TEST_P(DeleteJob, showsTheFileOfAnErrorWithThreeAnswers)
{
    startWithAMissingFile();
    EXPECT_EQ(error.text(TryAgain), L"Try Again");
    EXPECT_EQ(error.text(SkipFile), L"Skip File");
    EXPECT_EQ(error.text(Abort), L"Abort");
    EXPECT_TRUE(takeScreenshot(error, L"file-error"));
    error.click(SkipFile);
    EXPECT_EQ(program->exitCode(), 0);
}

TEST_P(DeleteJob, goesOnAfterASkippedFile)
{
    startWithAMissingFile();
    error.clickWithMouse(SkipFile);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(files), 0);
}

TEST_P(DeleteJob, leavesTheRestWhenItIsAborted)
{
    startWithAMissingFile();
    error.click(Abort);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_FALSE(fs::exists(files.front()));
    EXPECT_TRUE(fs::exists(files.back()));
}

TEST_P(DeleteJob, takesTheCloseBoxOfAnErrorAsAbort)
{
    startWithAMissingFile();
    error.close();
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_TRUE(fs::exists(files.back()));
}

TEST_P(DeleteJob, triesAFileAgainThatHasComeBack)
{
    startWithAMissingFile();
    folder.addFile(L"missing.txt");
    error.press(VK_RETURN);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(files), 0);
}

TEST_P(DeleteJob, asksAgainAsLongAsAFileStaysMissing)
{
    startWithAMissingFile();
    const HWND before = error.handle();
    error.click(TryAgain);
    ASSERT_TRUE(waitUntil([before] { return IsWindow(before) == FALSE; }));
    error = program->window(L"File Error Occured");
    ASSERT_TRUE(error);
    error.click(SkipFile);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(countOf(files), 0);
}

/// A wipe of files that are large enough to look at its progress window.
class WipeProgress : public DeleteJob
{
protected:
    void startLongWipe()
    {
        files = folder.addFiles(Count, std::string(Size, 'x'));
        start(files, SampleFolder::Wipe);
        question.click(IDYES);
        progress = program->windowLike(L"Quick Wipe (");
        ASSERT_TRUE(progress);
    }

    static constexpr int Count = 60;
    static constexpr std::size_t Size = 2 << 20;
    Window progress;
};

INSTANTIATE_TEST_SUITE_P(Method, WipeProgress, testing::Values(SampleFolder::Wipe));

TEST_P(WipeProgress, pausesAndResumes)
{
    startLongWipe();
    progress.click(PauseButton);
    ASSERT_TRUE(waitUntil([this] { return progress.text(PauseButton) == L"Resume"; }));
    EXPECT_FALSE(progress.isEnabled(CancelButton));
    EXPECT_TRUE(takeScreenshot(progress, L"progress-paused"));
    const int left = countOf(files);
    EXPECT_GT(left, 0);
    EXPECT_EQ(program->exitCode(BriefLimit), -1);
    EXPECT_GE(countOf(files), left - 1) << "at most the file under work ends during a pause";

    progress.click(PauseButton);
    EXPECT_TRUE(waitUntil([this] { return progress.text(PauseButton) == L"Pause" || !progress.exists(); }));
    EXPECT_EQ(program->exitCode(milliseconds(60000)), 0);
    EXPECT_EQ(countOf(files), 0);
}

TEST_P(WipeProgress, isCancelled)
{
    startLongWipe();
    EXPECT_TRUE(takeScreenshot(progress, L"progress"));
    progress.click(CancelButton);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_GT(countOf(files), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST_P(WipeProgress, showsFileAndSizes)
{
    startLongWipe();
    progress.click(PauseButton);
    ASSERT_TRUE(waitUntil([this] { return progress.text(PauseButton) == L"Resume"; }));
    EXPECT_TRUE(progress.text(FileLine).find(L"file ") != std::wstring::npos) << Path(progress.text(FileLine));
    EXPECT_EQ(progress.text(TotalBytes), L"120 MB");
    EXPECT_NE(progress.text(ElapsedBytes), L"");
}
