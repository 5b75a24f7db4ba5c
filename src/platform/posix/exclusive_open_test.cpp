#include "platform/posix/exclusive_open.h"

#include "platform/handles.h"
#include "platform/posix/start_program.h"
#include "platform/testing_folder.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <atomic>
#include <thread>

using namespace Platform;

namespace
{

class ExclusiveOpen : public testing::Test
{
protected:
    ExclusiveOpen() { TestingFolder::write(folder_.path() + L"/letter.txt", "text"); }

    std::string at(const std::string& name) const { return toUtf8(folder_.path()) + '/' + name; }
    std::uint32_t error() const { return openAlone(letter_).error; }

    TestingFolder folder_;
    const std::string letter_ = at("letter.txt");
};

/// Runs on a thread of its own that has no privilege over files of others.
template <class Action> void withoutPrivileges(const Action& action)
{
    std::thread(
        [&]
        {
            __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
            __user_cap_data_struct none[2]{};
            ASSERT_EQ(syscall(SYS_capset, &header, none), 0);
            action();
        })
        .join();
}

bool giveAway(const std::string& file)
{
    constexpr uid_t Somebody = 12345;
    return chown(file.c_str(), Somebody, Somebody) == 0;
}

} // namespace

TEST_F(ExclusiveOpen, aFileThatNobodyHasOpenIsOpened)
{
    const OpenResult result = openAlone(letter_);
    EXPECT_EQ(result.error, 0u);
    EXPECT_TRUE(result.descriptor);
}

TEST_F(ExclusiveOpen, aFileThatSomebodyReadsOrWritesIsASharingViolation)
{
    for (const int mode : {O_RDONLY, O_WRONLY, O_RDWR})
    {
        const Descriptor holder(open(letter_.c_str(), mode | O_CLOEXEC));
        EXPECT_EQ(error(), ErrorSharingViolation) << mode;
    }
    EXPECT_EQ(error(), 0u);
}

TEST_F(ExclusiveOpen, aFileThatAnotherProcessHasOpenIsASharingViolation)
{
    const pid_t holder = startProgram("/bin/sh", {"sh", "-c", "exec sleep 1000 < \"$0\"", letter_});
    ASSERT_GT(holder, 0);
    while (error() == 0)
        std::this_thread::yield();
    EXPECT_EQ(error(), ErrorSharingViolation);
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    EXPECT_EQ(error(), 0u);
}

TEST_F(ExclusiveOpen, aFileThatIsOnlyMappedIsASharingViolation)
{
    Descriptor file(open(letter_.c_str(), O_RDONLY | O_CLOEXEC));
    void* const mapped = mmap(nullptr, 1, PROT_READ, MAP_SHARED, file.get(), 0);
    file = Descriptor();
    EXPECT_EQ(error(), ErrorSharingViolation);
    munmap(mapped, 1);
    EXPECT_EQ(error(), 0u);
}

TEST_F(ExclusiveOpen, missingFilesAndFoldersAreToldApart)
{
    EXPECT_EQ(openAlone(at("other.txt")).error, ErrorFileNotFound);
    EXPECT_EQ(openAlone(at("no folder/letter.txt")).error, 3u);
    EXPECT_EQ(openAlone(at("letter.txt/letter.txt")).error, 3u);
    EXPECT_EQ(openAlone("").error, ErrorFileNotFound);
    std::filesystem::create_symlink(at("other.txt"), at("link"));
    EXPECT_EQ(openAlone(at("link")).error, ErrorFileNotFound);
}

TEST_F(ExclusiveOpen, aFolderIsDenied)
{
    EXPECT_EQ(openAlone(at("")).error, ErrorAccessDenied);
    EXPECT_EQ(openAlone(at(".")).error, ErrorAccessDenied);
}

TEST_F(ExclusiveOpen, aFileThatMayNotBeReadIsDenied)
{
    ASSERT_EQ(chmod(letter_.c_str(), 0), 0);
    withoutPrivileges([&] { EXPECT_EQ(error(), ErrorAccessDenied); });
}

TEST_F(ExclusiveOpen, aPipeDoesNotStopTheThread)
{
    ASSERT_EQ(mkfifo(at("pipe").c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(openAlone(at("pipe")).error, 0u);
    const Descriptor reader(open(at("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_EQ(openAlone(at("pipe")).error, ErrorSharingViolation);
}

TEST_F(ExclusiveOpen, theFileOfAnotherUserIsLookedUpInTheListOfOpenFiles)
{
    if (!giveAway(letter_))
        GTEST_SKIP() << "only the administrator can give a file away";
    withoutPrivileges(
        [&]
        {
            const Descriptor lease(open(letter_.c_str(), O_RDONLY | O_CLOEXEC));
            ASSERT_EQ(fcntl(lease.get(), F_SETLEASE, F_RDLCK), -1);
            ASSERT_EQ(errno, EACCES);
            EXPECT_EQ(error(), ErrorSharingViolation);
        });
    withoutPrivileges([&] { EXPECT_EQ(error(), 0u); });
}

TEST_F(ExclusiveOpen, theListOfOpenFilesKnowsTheSameFileByOtherNames)
{
    const Descriptor probe(open(letter_.c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_FALSE(isListedAsOpen(probe.get()));
    std::filesystem::create_hard_link(letter_, at("other name"));
    const Descriptor holder(open(at("other name").c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_TRUE(isListedAsOpen(probe.get()));
}

TEST_F(ExclusiveOpen, othersMayOpenTheFileAtAnyTimeAndNobodyIsHarmed)
{
    // A lease that another opener meets brings a signal, whose usual action would end this process.
    std::atomic<bool> isOver{false};
    std::atomic<int> opened{0};
    std::thread other(
        [&]
        {
            while (!isOver)
            {
                const Descriptor file(open(letter_.c_str(), O_RDWR | O_CLOEXEC));
                opened += file ? 1 : 0;
            }
        });
    int alone = 0;
    for (int probe = 0; probe < 20000 || (alone == 0 && probe < 1000000); ++probe)
        alone += error() == 0 ? 1 : 0;
    isOver = true;
    other.join();
    EXPECT_GT(alone, 0);
    EXPECT_GT(opened, 0);
}
