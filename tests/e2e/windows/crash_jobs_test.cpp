#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "recorded/crashed_job.h"
#include "scenarios/sample_folder.h"
#include "windows/running_program.h"
#include "windows/screenshot.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr std::uint32_t AccessViolation = 0xC0000005;
constexpr std::uint32_t UncaughtException = 0xE06D7363;

const std::wstring Caption = L"jobrunner";
const std::wstring Crashed = L"Application has crashed!";
const std::wstring Question = L"Securely Delete Items";

void wantCrash(const std::string& crash)
{
    _putenv(("JOBRUNNER_CRASH=" + crash).c_str());
}

/// A delete job of the program with modules that crash.
class CrashedJob : public ReportedCrash
{
protected:
    CrashedJob() { wantCrash(std::string(GetParam().thread) + ' ' + GetParam().way); }
    ~CrashedJob() override { wantCrash(""); }

    /// Answers the question of the job, where it comes to one.
    void runUpToTheCrash(const RunningProgram& running)
    {
        if (GetParam().isOnTheFirstThread())
            return;
        const Window question = running.window(Question);
        ASSERT_TRUE(question);
        question.click(IDYES);
    }

    void runToTheEnd()
    {
        const RunningProgram running(program, quoted(job));
        runUpToTheCrash(running);
        const Window box = running.window(Caption);
        ASSERT_TRUE(box) << std::hex << running.exitCode();
        box.press(VK_RETURN);
        EXPECT_EQ(static_cast<std::uint32_t>(running.exitCode()), GetParam().ending);
    }

    const Path program = copyProgramWithCrashingModules(folder.path() / L"program");
};

} // namespace

TEST_P(CrashedJob, isReportedTellsItsUserAndEndsWithTheCodeWhenThatIsRead)
{
    const RunningProgram running(program, quoted(job));
    runUpToTheCrash(running);
    const Window box = running.window(Caption);
    ASSERT_TRUE(box) << std::hex << running.exitCode();
    EXPECT_TRUE(waitUntil([&] { return box.shows(Crashed); })) << Path(box.allTexts());
    EXPECT_TRUE(takeScreenshot(box, L"crash"));
    EXPECT_TRUE(box.hasItem(IDOK) || box.hasItem(IDCANCEL));
    EXPECT_TRUE(running.isRunning()) << "the box stands until the user closes it";
    box.press(VK_RETURN);
    EXPECT_EQ(static_cast<std::uint32_t>(running.exitCode()), GetParam().ending);
    EXPECT_TRUE(fs::exists(file));
    EXPECT_EQ(told(), expected(ofTheCrash()));
}

TEST_P(CrashedJob, isTheOnlyThingReportedWithUsageStatisticsOff)
{
    account.storeNumber(L"SendUsageStat", 0);
    runToTheEnd();
    Lines calls = ofTheCrash();
    calls.insert(calls.begin(), expectedCalls("").front());
    EXPECT_EQ(told(), calls);
}

TEST_P(CrashedJob, isNotReportedWithCrashReportsOffButToldAllTheSame)
{
    account.storeNumber(L"SendCrashReports", 0);
    runToTheEnd();
    EXPECT_EQ(told(), expected({}));
}

INSTANTIATE_TEST_SUITE_P(
    Threads, CrashedJob,
    testing::Values(Crash{"first", "fault", AccessViolation}, Crash{"first", "exception", UncaughtException},
                    Crash{"job", "fault", AccessViolation}, Crash{"job", "exception", UncaughtException},
                    Crash{"engine", "fault", AccessViolation}, Crash{"engine", "exception", UncaughtException},
                    Crash{"dialog", "fault", AccessViolation}, Crash{"dialog", "exception", UncaughtException}),
    nameOfCrash);

TEST(CrashingModules, doTheJobWhereNoCrashIsWanted)
{
    const SampleFolder folder;
    const Path file = folder.addFile(L"a file.txt");
    const RunningProgram running(copyProgramWithCrashingModules(folder.path() / L"program"),
                                 quoted(folder.addDeleteJob({file})));
    const Window question = running.window(Question);
    ASSERT_TRUE(question);
    question.click(IDYES);
    EXPECT_EQ(running.exitCode(), 0);
    EXPECT_FALSE(fs::exists(file));
}
