#include "vaultcore/testing_support.h"

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace VaultCore
{
namespace
{

class PosixFileSystemTest : public JobTest
{
protected:
    WatchedFileSystem files;
    Recorder recorder;
};

TEST_F(PosixFileSystemTest, wipesASparseFileOfAGigabyteQuickly)
{
    const fs::path file = put(inside / "sparse", "start");
    fs::resize_file(file, std::uint64_t{1} << 30);
    struct stat status = {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    if (status.st_blocks > 2048)
        GTEST_SKIP() << "no sparse files here";
    const auto begin = std::chrono::steady_clock::now();
    removeAll(files, recorder, {file}, true);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_GE(files.bytesWritten, 5U);
    EXPECT_LE(files.bytesWritten, 2 * WipeChunk);
    EXPECT_LT(passed.count(), 5.0);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(PosixFileSystemTest, overwritesTheRestOfTheLastBlockToo)
{
    const fs::path file = put(inside / "a", "text");
    struct stat status = {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    removeAll(files, recorder, {file}, true);
    EXPECT_EQ(files.bytesWritten, status.st_blksize <= 65536 ? static_cast<std::uint64_t>(status.st_blksize) : 4U);
}

TEST_F(PosixFileSystemTest, takesAnEntryThatExistsForItselfAndNotForAPattern)
{
    put(inside / "*", "text");
    put(inside / "other", "text");
    removeAll(files, recorder, {inside / "*"});
    EXPECT_FALSE(fs::exists(inside / "*"));
    EXPECT_TRUE(fs::exists(inside / "other"));
}

TEST_F(PosixFileSystemTest, tellsSmallFromCapitalLetters)
{
    put(inside / "a.TXT", "text");
    put(inside / "b.txt", "text");
    removeAll(files, recorder, {inside / "*.txt"});
    EXPECT_TRUE(fs::exists(inside / "a.TXT"));
    EXPECT_FALSE(fs::exists(inside / "b.txt"));
}

TEST_F(PosixFileSystemTest, removesNamesThatAreNoValidText)
{
    put(inside / "a\xFF\xFE", "text");
    removeAll(files, recorder, {inside}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(PosixFileSystemTest, removesAPipeWithoutOpeningIt)
{
    ASSERT_EQ(::mkfifo((inside / "pipe").c_str(), 0600), 0);
    removeAll(files, recorder, {inside}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(PosixFileSystemTest, removesALinkThatLeadsNowhere)
{
    fs::create_symlink("nowhere", inside / "link");
    removeAll(files, recorder, {inside / "link"}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::is_symlink(inside / "link"));
}

TEST_F(PosixFileSystemTest, followsLinksOnTheWayToAnEntry)
{
    put(inside / "a", "text");
    fs::create_directory_symlink(inside, base / "way");
    removeAll(files, recorder, {base / "way" / "a"}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside / "a"));
}

TEST_F(PosixFileSystemTest, doesNotWipeALinkThatTookAFilesPlace)
{
    const fs::path file = put(inside / "a", "text");
    recorder.entryAnswer = [&](std::uint32_t)
    {
        fs::remove(file);
        fs::create_symlink(outside / "kept.txt", file);
        return 1;
    };
    removeAll(files, recorder, {file}, true);
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(content(outside / "kept.txt"), "kept");
}

TEST_F(PosixFileSystemTest, takesATreeDeeperThanThePathLimit)
{
    int folder = ::open(inside.c_str(), O_PATH | O_DIRECTORY);
    const std::string name(200, 'd');
    for (int depth = 0; depth < 40; ++depth)
    {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int next = ::openat(folder, name.c_str(), O_PATH | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    ::close(::openat(folder, "file", O_CREAT | O_WRONLY, 0600));
    ::close(folder);
    removeAll(files, recorder, {inside}, true);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(PosixFileSystemTest, reportsAFileThatAnotherProgramHoldsOpen)
{
    const fs::path file = put(inside / "a", "text");
    int ready[2] = {};
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0)
    {
        ::open(file.c_str(), O_RDONLY);
        if (::write(ready[1], "x", 1) != 1)
            ::_exit(1);
        for (;;)
            ::pause();
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    removeAll(files, recorder, {file}, true);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    if (recorder.failed == 0)
        GTEST_SKIP() << "no leases on this file system";
    EXPECT_EQ(recorder.messages.at(0), L"The file is in use by another program.");
    EXPECT_EQ(content(file), "text");
    removeAll(files, recorder, {file}, true);
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(PosixFileSystemTest, wipesAFileWhoseOwnPermissionsForbidIt)
{
    const fs::path file = put(inside / "a", "text");
    fs::permissions(file, fs::perms::none);
    // As a user for whom permissions count.
    fs::permissions(base, fs::perms::all);
    fs::permissions(inside, fs::perms::all);
    ASSERT_EQ(::geteuid() == 0 ? ::chown(file.c_str(), 65534, 65534) : 0, 0);
    const pid_t child = ::fork();
    if (child == 0)
    {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(2);
        removeAll(files, recorder, {file}, true);
        ::_exit(recorder.succeeded == 1 ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(PosixFileSystemTest, reportsAFolderWithoutTheRightToWriteInIt)
{
    const fs::path file = put(inside / "a", "text");
    fs::permissions(base, fs::perms::all);
    fs::permissions(inside,
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    const pid_t child = ::fork();
    if (child == 0)
    {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(2);
        removeAll(files, recorder, {file});
        ::_exit(recorder.messages == std::vector<std::wstring>{L"Access is denied."} ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(file), "text");
    fs::permissions(inside, fs::perms::all);
}

} // namespace
} // namespace VaultCore
