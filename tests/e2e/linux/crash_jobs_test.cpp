#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "linux/terminal.h"
#include "recorded/crashed_job.h"
#include "scenarios/sample_folder.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Crashed = "jobrunner\nApplication has crashed!\n";
const std::string Question = "Are you sure you want to securely delete items?";

constexpr std::chrono::milliseconds Brief{300};

/// A delete job of the program with modules that crash, up to its crash.
class CrashedJob : public ReportedCrash
{
protected:
    CrashedJob()
    {
        const rlimit noCore{};
        setrlimit(RLIMIT_CORE, &noCore);
        const std::string crash = std::string(GetParam().thread) + ' ' + GetParam().way;
        setenv("JOBRUNNER_CRASH", crash.c_str(), 1);
        program = copyProgramWithCrashingModules(folder.path() / "program");
    }
    ~CrashedJob() override { unsetenv("JOBRUNNER_CRASH"); }

    /// Answers its question, where it comes to one.
    void runUpToTheCrash(Terminal& terminal)
    {
        if (GetParam().isOnTheFirstThread())
            return;
        ASSERT_TRUE(terminal.expect(Question)) << terminal.shown();
        terminal.send("y\n");
    }

    void runToTheEnd()
    {
        Terminal terminal({program, job});
        runUpToTheCrash(terminal);
        EXPECT_TRUE(terminal.expect(Crashed)) << terminal.shown();
        terminal.send("\n");
        EXPECT_EQ(terminal.exitCode(), 128 + static_cast<int>(GetParam().ending)) << terminal.shown();
    }

    Path program;
};

} // namespace

TEST_P(CrashedJob, isReportedTellsItsUserAndEndsByTheCrashWhenThatIsRead)
{
    Terminal terminal({program, job});
    runUpToTheCrash(terminal);
    EXPECT_TRUE(terminal.expect(Crashed)) << terminal.shown();
    EXPECT_EQ(terminal.exitCode(Brief), -1) << "the box stands until the user closes it";
    terminal.send("\n");
    EXPECT_EQ(terminal.exitCode(), 128 + static_cast<int>(GetParam().ending)) << terminal.shown();
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

INSTANTIATE_TEST_SUITE_P(Threads, CrashedJob,
                         testing::Values(Crash{"first", "fault", SIGSEGV}, Crash{"first", "exception", SIGABRT},
                                         Crash{"job", "fault", SIGSEGV}, Crash{"job", "exception", SIGABRT},
                                         Crash{"engine", "fault", SIGSEGV}, Crash{"engine", "exception", SIGABRT}),
                         nameOfCrash);

TEST(CrashingModules, doTheJobWhereNoCrashIsWanted)
{
    const SampleFolder folder;
    const Path file = folder.addFile("a file.txt");
    Terminal terminal({copyProgramWithCrashingModules(folder.path() / "program"), folder.addDeleteJob({file})});
    ASSERT_TRUE(terminal.expect(Question)) << terminal.shown();
    terminal.send("y\n");
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(file));
}
