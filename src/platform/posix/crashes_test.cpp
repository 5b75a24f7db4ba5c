#include "platform/crashes.h"

#include "platform/testing_crashes.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdlib>

std::uint32_t runToEnding(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                          const std::filesystem::path& said)
{
    const rlimit noCore{};
    setrlimit(RLIMIT_CORE, &noCore);
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, said.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t process = 0;
    const int failure = posix_spawn(&process, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failure != 0 || waitpid(process, &status, 0) != process)
        return 0;
    return static_cast<std::uint32_t>(WIFSIGNALED(status) ? WTERMSIG(status) : 1000 + WEXITSTATUS(status));
}

std::uint32_t endingBy(std::uint32_t code)
{
    switch (code)
    {
    case Platform::ExceptionOfTheLanguage:
        return SIGABRT;
    case 0xC0000094:
        return SIGFPE;
    case 0xC000001D:
        return SIGILL;
    case 0x80000003:
        return SIGTRAP;
    default:
        return SIGSEGV;
    }
}

namespace
{

using Codes = std::vector<std::uint32_t>;

const std::string LastWords = "\njobrunner\nApplication has crashed!\n";

void expectReported(const std::string& way, std::uint32_t code, std::uint32_t signal)
{
    const CrashResult result = runCrashing(way);
    EXPECT_EQ(result.codes, Codes{code}) << way;
    EXPECT_EQ(result.ending, signal) << way;
}

TEST(CrashesOnLinux, areReportedForEachKindOfSignal)
{
    expectReported("float-division", 0xC000008E, SIGFPE);
    expectReported("lost-page", 0xC0000006, SIGBUS);
    expectReported("sent-signal", Platform::ExceptionAccessViolation, SIGSEGV);
    expectReported("pure-virtual", Platform::ExceptionOfTheLanguage, SIGABRT);
}

TEST(CrashesOnLinux, areLeftToTheSystemInAChildThatHasNoReporter)
{
    const CrashResult result = runCrashing("child");
    EXPECT_EQ(result.codes, Codes{});
    EXPECT_EQ(result.ending, 1000u + SIGSEGV);
}

/// Kept: a thread that was not started by us has no second stack, and then the system ends the process at once.
TEST(CrashesOnLinux, areNotReportedWhenAPlainThreadHasUsedUpItsStack)
{
    EXPECT_EQ(runCrashing("stack-overflow-on-plain-thread").ending, static_cast<std::uint32_t>(SIGSEGV));
}

TEST(CrashesOnLinux, tellTheUserWhenTheFilterFails)
{
    EXPECT_EQ(runCrashing("null-write", "throw").said, LastWords);
    EXPECT_EQ(runCrashing("null-write", "fault").said, LastWords);
}

TEST(CrashesOnLinux, tellTheUserWhenTheFilterDoesNotComeBack)
{
    const CrashResult result = runCrashing("exception", "stuck");
    EXPECT_EQ(result.codes, Codes{Platform::ExceptionOfTheLanguage});
    EXPECT_EQ(result.said, LastWords);
    EXPECT_EQ(result.ending, static_cast<std::uint32_t>(SIGABRT));
}

TEST(CrashesOnLinux, tellTheUserNothingTwice)
{
    const CrashResult result = runCrashing("null-write", "box");
    EXPECT_EQ(result.codes, Codes{Platform::ExceptionAccessViolation});
    EXPECT_EQ(result.said, "");
    EXPECT_EQ(result.ending, static_cast<std::uint32_t>(SIGSEGV));
}

class ACrashInTheHeap : public testing::Test
{
protected:
    void SetUp() override
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        GTEST_SKIP() << "a sanitizer has a heap of its own, which does not take such damage";
#endif
    }
};

TEST_F(ACrashInTheHeap, isReportedByAThreadWithAHeapOfItsOwn)
{
    expectReported("heap", Platform::ExceptionAccessViolation, SIGSEGV);
}

TEST_F(ACrashInTheHeap, isToldToTheUserWhenThereIsOneHeapOnly)
{
    setenv("MALLOC_ARENA_MAX", "1", 1);
    const CrashResult result = runCrashing("heap");
    unsetenv("MALLOC_ARENA_MAX");
    EXPECT_EQ(result.said, LastWords);
    EXPECT_EQ(result.ending, static_cast<std::uint32_t>(SIGSEGV));
}

} // namespace
