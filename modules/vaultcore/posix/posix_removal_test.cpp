#include "vaultcore/container/small_file.h"
#include "vaultcore/job_testing.h"
#include "vaultcore/posix/posix_files.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// Sources that others have open, limits and groups: what is particular to this system.

namespace VaultCore
{
namespace
{

class PosixRemovalTest : public ContentJobTest
{
protected:
    Place placeOf(const fs::path& path) { return files.locate(wide(path)); }

    /// Does the system tell who else has a file open?
    bool knowsLeases()
    {
        const Descriptor file(::open(put(base / "probe", "").c_str(), O_RDONLY | O_CLOEXEC));
        const bool granted = ::fcntl(file.get(), F_SETLEASE, F_RDLCK) == 0;
        fs::remove(base / "probe");
        return granted;
    }

    template <class Work> static bool inAnotherProcess(const Work& work)
    {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(work() ? 0 : 1);
        int status = 0;
        ::waitpid(child, &status, 0);
        return status == 0;
    }
};

TEST_F(PosixRemovalTest, keepsASourceThatAnotherProgramMayWriteTo)
{
    if (!knowsLeases())
        GTEST_SKIP() << "no leases here";
    order.destiny = 1;
    const fs::path source = put(inside / "a", "abc");
    Descriptor writer(::open(source.c_str(), O_WRONLY | O_CLOEXEC));
    recorder.errorAnswer = [&]
    {
        if (recorder.messages.size() == 1)
            return FileErrorRepeat;
        writer = Descriptor();
        EXPECT_EQ(content(source), "abc");
        return FileErrorRepeat;
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log(2, L"The file is in use by another program."));
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(source));
}

TEST_F(PosixRemovalTest, takesASourceThatAnotherProgramReads)
{
    order.destiny = 1;
    const fs::path source = put(inside / "a", "abc");
    const Descriptor reader(::open(source.c_str(), O_RDONLY | O_CLOEXEC));
    encrypt({source});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(source));
}

/// One job makes its temporary file while another, which takes it for a left-over, does all to remove it.
TEST_F(PosixRemovalTest, aTemporaryFileThatWasMadeIsThere)
{
    const Place place = placeOf(inside / ".~a.abcdefgh.zel-part");
    std::atomic<bool> ends = false;
    std::thread remover(
        [&]
        {
            while (!ends)
                removeAbandonedFile(place);
        });
    int made = 0;
    for (int attempt = 0; attempt < 500; ++attempt)
    {
        try
        {
            const auto file = createNewFile(place);
            ++made;
            ASSERT_NO_THROW(files.inspect(place)) << attempt;
        }
        catch (const FileFailure& failure)
        {
            ASSERT_EQ(failure.cause(), FailureCause::NameTaken);
        }
    }
    ends = true;
    remover.join();
    EXPECT_GT(made, 0);
}

/// Whoever has locked it first is about to remove it by its name, and would then remove a newer file of that name.
TEST_F(PosixRemovalTest, aTemporaryFileThatAnotherJobHoldsIsLeftToThatJob)
{
    const fs::path path = inside / ".~a.abcdefgh.zel-part";
    std::atomic<bool> ends = false;
    std::atomic<int> round = 0;
    std::thread holder(
        [&]
        {
            while (!ends)
            {
                const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
                if (file.get() < 0 || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
                    continue;
                for (const int now = round; round == now && !ends;)
                    std::this_thread::yield();
            }
        });
    int refused = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (refused < 3 && std::chrono::steady_clock::now() < end)
    {
        try
        {
            createNewFile(placeOf(path));
        }
        catch (const FileFailure&)
        {
            EXPECT_TRUE(fs::exists(path));
            ++refused;
        }
        fs::remove(path);
        ++round; // the other one lets go
    }
    ends = true;
    holder.join();
    EXPECT_EQ(refused, 3);
}

TEST_F(PosixRemovalTest, aLimitOnTheSizeOfFilesIsAFailureAndNotTheEnd)
{
    const std::string text(3 * ContentChunkForTests, 'x');
    const fs::path source = put(inside / "a", text);
    order.destiny = 2;
    EXPECT_TRUE(inAnotherProcess(
        [&]
        {
            ::signal(SIGXFSZ, SIG_DFL);
            struct rlimit limit = {};
            ::getrlimit(RLIMIT_FSIZE, &limit);
            limit.rlim_cur = 2 * ContentChunkForTests;
            ::setrlimit(RLIMIT_FSIZE, &limit);
            encrypt({source});
            return recorder.messages ==
                   Log{L"The disk, or a limit of the system, allows no file as large as this one."};
        }));
    EXPECT_EQ(content(source), text);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixRemovalTest, aKeyFileIsForItsOwnerAlone)
{
    const mode_t before = ::umask(0);
    writeSecretFile(wide(inside / "key"), Bytes(10));
    ::umask(before);
    EXPECT_EQ(fs::status(inside / "key").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(PosixRemovalTest, nothingIsLeftOfAKeyFileThatCannotBeWritten)
{
    EXPECT_TRUE(inAnotherProcess(
        [&]
        {
            ::signal(SIGXFSZ, SIG_IGN);
            const struct rlimit limit = {5, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            try
            {
                writeSecretFile(wide(inside / "key"), Bytes(10));
            }
            catch (const FileFailure& failure)
            {
                return failure.cause() == FailureCause::TooLarge;
            }
            return false;
        }));
    EXPECT_EQ(countIn(inside), 0U);
}

constexpr gid_t SomeGroup = 54321;

TEST_F(PosixRemovalTest, aResultBelongsToTheGroupOfItsSource)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give a file to any group";
    const fs::path source = put(inside / "a", "abc");
    ASSERT_EQ(::chown(source.c_str(), static_cast<uid_t>(-1), SomeGroup), 0);
    ASSERT_EQ(::chmod(source.c_str(), 0640), 0);
    provider.give("k");
    decrypt({made(source)}, true);
    struct stat status = {};
    ASSERT_EQ(::stat(source.c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, SomeGroup);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

/// What a group may read must not become what another group may read.
TEST_F(PosixRemovalTest, aGroupThatCannotBeKeptGetsNoRights)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can play another user";
    const uid_t user = 65534;
    const fs::path source = put(inside / "a", "abc");
    ASSERT_EQ(::chown(source.c_str(), user, SomeGroup), 0);
    ASSERT_EQ(::chmod(source.c_str(), 0664), 0);
    fs::permissions(base, fs::perms::all);
    fs::permissions(inside, fs::perms::all);
    EXPECT_TRUE(inAnotherProcess(
        [&]
        {
            if (::setgroups(0, nullptr) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0)
                return false;
            encrypt({source});
            return recorder.succeeded == 1;
        }));
    struct stat status = {};
    ASSERT_EQ(::stat((inside / "a.zel").c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, user);
    EXPECT_EQ(status.st_mode & 0777, 0604U);
}

} // namespace
} // namespace VaultCore
