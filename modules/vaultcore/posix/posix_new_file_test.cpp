#include "vaultcore/job_testing.h"
#include "vaultcore/posix/posix_files.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// New files, reading and the jobs on what is particular to this system.

namespace VaultCore
{
namespace
{

const std::wstring Changed = L"The file was changed by another program during the work; it stays as it is.";

class PosixNewFileTest : public ContentJobTest
{
protected:
    Place placeOf(const fs::path& path) { return files.locate(wide(path)); }

    /// Runs `work` as a user for whom permissions count, and answers what it answers.
    template <class Work> static bool asPlainUser(Work work)
    {
        const pid_t child = ::fork();
        if (child == 0)
        {
            if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
                ::_exit(2);
            ::_exit(work() ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return status == 0;
    }
};

TEST_F(PosixNewFileTest, isReadableForItsMakerAlone)
{
    const auto file = files.createNew(placeOf(inside / "a"));
    EXPECT_EQ(fs::status(inside / "a").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(PosixNewFileTest, keepsItsOwnTimeWhenNoneIsKnown)
{
    const auto file = files.createNew(placeOf(inside / "a"));
    FileInfo like;
    like.attributes = 0600;
    file->takeOver(like);
    file->publish("b");
    EXPECT_LT(fs::file_time_type::clock::now() - fs::last_write_time(inside / "b"), std::chrono::hours(1));
}

TEST_F(PosixNewFileTest, linksWhereTheSystemCannotRenameWithoutReplacing)
{
    put(inside / "a", "new");
    put(inside / "taken", "mine");
    const Descriptor folder = openParent(placeOf(inside / "a"));
    EXPECT_THROW(linkIn(folder.get(), "a", "taken"), FileFailure);
    EXPECT_EQ(content(inside / "taken"), "mine");
    linkIn(folder.get(), "a", "b");
    EXPECT_EQ(content(inside / "b"), "new");
    EXPECT_FALSE(fs::exists(inside / "a"));
}

TEST_F(PosixNewFileTest, doesNotTakeAFileAwayThatHasItsNameByNow)
{
    auto file = files.createNew(placeOf(inside / "a"));
    fs::remove(inside / "a");
    put(inside / "a", "mine");
    EXPECT_THROW(file->publish("b"), FileFailure);
    file.reset();
    EXPECT_EQ(content(inside / "a"), "mine");
}

TEST_F(PosixNewFileTest, ofAKilledProcessIsALeftOver)
{
    const fs::path left = inside / ".~a.abcdefgh.zel-part";
    const pid_t child = ::fork();
    if (child == 0)
    {
        const auto file = files.createNew(placeOf(left));
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(fs::exists(left));
    encrypt({put(inside / "a", "abc")});
    EXPECT_FALSE(fs::exists(left));
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(PosixNewFileTest, cannotBeMadeInAFolderWithoutTheRightToWriteInIt)
{
    const fs::path source = put(inside / "a", "text");
    fs::permissions(base, fs::perms::all);
    fs::permissions(inside,
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    order.destiny = 1;
    const bool refused = asPlainUser(
        [&]
        {
            encrypt({source});
            return recorder.messages == Log{L"Access is denied."} && recorder.failed == 1;
        });
    fs::permissions(inside, fs::perms::all);
    EXPECT_TRUE(refused);
    EXPECT_EQ(content(source), "text");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, refusesAPipe)
{
    ASSERT_EQ(::mkfifo((inside / "pipe").c_str(), 0600), 0);
    encrypt({inside / "pipe"});
    EXPECT_EQ(recorder.failed, 1);
    encrypt({inside});
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, refusesALinkThatTookAFilesPlace)
{
    const fs::path file = put(inside / "a", "text");
    recorder.entryAnswer = [&](std::uint32_t)
    {
        fs::remove(file);
        fs::create_symlink(outside / "kept.txt", file);
        return 1;
    };
    order.destiny = 2;
    encrypt({file});
    EXPECT_EQ(recorder.messages, Log{L"A link was found where a file or folder was expected; links are not followed."});
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, isNotPublishedWhenItsSourceGrowsOrShrinks)
{
    order.destiny = 1;
    for (const std::uint64_t size : {std::uint64_t{100}, std::uint64_t{1}})
    {
        const fs::path source = put(inside / "a", "abc");
        recorder.messages.clear();
        recorder.progressAnswer = [&](std::uint64_t, std::uint64_t)
        {
            fs::resize_file(source, size);
            return 1;
        };
        encrypt({source});
        EXPECT_EQ(recorder.messages, Log{Changed});
        EXPECT_EQ(fs::file_size(source), size);
        EXPECT_EQ(countIn(inside), 1U);
    }
}

TEST_F(PosixNewFileTest, isNotPublishedWhenItsSourceGotOtherContentOfTheSameSize)
{
    const fs::path source = put(inside / "a", "abc");
    fs::last_write_time(source, fs::file_time_type::clock::now() - std::chrono::hours(1));
    order.destiny = 1;
    int reads = 0;
    files.beforeRead = [&](const Place&)
    {
        if (++reads == 2)
            put(source, "xyz");
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Changed});
    EXPECT_EQ(content(source), "xyz");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, isNotPublishedWhenAnotherFileTookItsSourcesName)
{
    const fs::path source = put(inside / "a", "abc");
    put(inside / "b", "xyz");
    order.destiny = 2;
    files.beforeRead = [&](const Place&)
    {
        if (fs::exists(inside / "b"))
            fs::rename(inside / "b", source);
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{Changed});
    EXPECT_EQ(content(source), "xyz");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, carriesNamesThatAreNoValidTextThereAndBack)
{
    const fs::path source = put(inside / "a\xFF\xFE", "text");
    provider.give("k");
    decrypt({made(source)}, true);
    EXPECT_EQ(content(source), "text");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(PosixNewFileTest, encryptsAFileBeyondFourGibibytes)
{
    if (std::getenv("JOBRUNNER_LARGE_FILES") == nullptr)
        GTEST_SKIP() << "takes minutes and 10 GB; set JOBRUNNER_LARGE_FILES to run it";
    const fs::path source = put(inside / "large", "start");
    const std::uint64_t size = (std::uint64_t{1} << 32) + 5;
    fs::resize_file(source, size);
    order.destiny = 1;
    encrypt({source});
    ASSERT_EQ(recorder.succeeded, 1);
    EXPECT_GT(fs::file_size(inside / "large.zel"), size);
    provider.give("k");
    decrypt({inside / "large.zel"}, true);
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(fs::file_size(source), size);
}

} // namespace
} // namespace VaultCore
