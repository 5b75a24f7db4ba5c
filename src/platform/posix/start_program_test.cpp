#include "platform/posix/start_program.h"

#include "platform/testing_folder.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>
#include <thread>

using namespace Platform;

namespace
{

std::string shellOutput(const std::string& line)
{
    return outputOf("/bin/sh", {"sh", "-c", line});
}

} // namespace

TEST(AProgramThatIsStarted, getsItsArgumentsAsTheyAre)
{
    EXPECT_EQ(outputOf("/bin/sh", {"sh", "-c", "printf '%s|' \"$0\" \"$@\"", "-a b", "", "\"'\\$(x)\n", "\xFF"}),
              "-a b||\"'\\$(x)\n|\xFF|");
}

TEST(AProgramThatIsStarted, isReadToItsEndAcrossSignals)
{
    struct sigaction interrupting
    {
    };
    struct sigaction before
    {
    };
    interrupting.sa_handler = [](int) {};
    sigaction(SIGUSR1, &interrupting, &before);
    // Each signal finds this process in the midst of reading, where it has nothing else to do.
    const std::string line =
        "for i in 1 2 3; do sleep 0.02; kill -USR1 " + std::to_string(getpid()) + "; sleep 0.02; printf $i; done";
    EXPECT_EQ(shellOutput(line), "123");
    sigaction(SIGUSR1, &before, nullptr);
}

TEST(AProgramThatIsStarted, getsNoDescriptorOfThisProcess)
{
    // Even one that was not marked to be kept from others.
    const int kept = open("/dev/null", O_RDONLY);
    ASSERT_GE(kept, 3);
    EXPECT_EQ(shellOutput("test -e /proc/self/fd/" + std::to_string(kept) + " && echo there"), "");
    close(kept);
}

TEST(AProgramThatIsStarted, hasNoSignalBlockedOrIgnored)
{
    std::string seen;
    std::thread(
        [&]
        {
            sigset_t all;
            sigfillset(&all);
            pthread_sigmask(SIG_SETMASK, &all, nullptr);
            struct sigaction ignored
            {
            };
            struct sigaction before
            {
            };
            ignored.sa_handler = SIG_IGN;
            sigaction(SIGIO, &ignored, &before);
            seen = shellOutput("sed -n 's/Sig[BI][lg][kn]:[ \\t]*//p' /proc/self/status");
            sigaction(SIGIO, &before, nullptr);
        })
        .join();
    // The C library has two signals to itself, which it leaves ignored.
    constexpr unsigned long OfLibrary = 3UL << 31;
    std::istringstream sets(seen);
    unsigned long blocked = 1;
    unsigned long ignored = 1;
    sets >> std::hex >> blocked >> ignored;
    EXPECT_EQ(blocked, 0u) << seen;
    EXPECT_EQ(ignored & ~OfLibrary, 0u) << seen;
}

TEST(AProgramThatIsStarted, worksInTheFolderThatItIsGiven)
{
    const TestingFolder folder;
    const std::string name = toUtf8(folder.path());
    StartSettings settings;
    settings.folder = name;
    const pid_t process = startProgram("/bin/sh", {"sh", "-c", "pwd > here"}, settings);
    ASSERT_GT(process, 0);
    ASSERT_EQ(waitpid(process, nullptr, 0), process);
    EXPECT_TRUE(std::filesystem::exists(name + "/here"));
}

TEST(AProgramThatIsNotThere, isNotStarted)
{
    EXPECT_EQ(startProgram("/no such program", {"x"}), -1);
    EXPECT_EQ(outputOf("/no such program", {"x"}), "");
    StartSettings settings;
    settings.folder = "/no such folder";
    EXPECT_EQ(startProgram("/bin/sh", {"sh", "-c", "true"}, settings), -1);
}

TEST(FindProgram, looksForANameInTheFoldersOfThePath)
{
    EXPECT_TRUE(findProgram("sh").ends_with("/sh"));
    EXPECT_EQ(findProgram("/bin/sh"), "/bin/sh");
    EXPECT_EQ(findProgram("no such program"), "");
    EXPECT_EQ(findProgram(""), "");
    EXPECT_EQ(findProgram("bin/sh"), "");
    EXPECT_EQ(findProgram("/bin"), "") << "a folder";
    EXPECT_EQ(findProgram("/etc/passwd"), "") << "no program";
}
