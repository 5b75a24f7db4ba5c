#include <filesystem>
#include <sys/stat.h>

#include "linux/memory_disk.h"
#include "linux/password_jobs.h"

// Disks: full ones, and more than one of them.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr std::size_t Size = 3000000;

const std::string TooLarge = "The disk, or a limit of the system, allows no file as large as this one.";

/// Runs the program with no file growing beyond one megabyte or, by another shell's count, two. The signal about it,
/// which ends a program by default, is the program's own business.
const PasswordTerminal::Command WithSmallFiles = {"/bin/sh", "-c", "ulimit -f 2048; exec \"$0\" \"$@\""};

/// Runs the program with an empty disk of a megabyte in the place of a folder, and tells what is left on it at the end.
PasswordTerminal::Command withSmallDiskAt(const Path& folder)
{
    return {"/usr/bin/unshare", "-rm", "/bin/sh", "-c",
            "mount -t tmpfs -o size=1m small '" + folder.string() +
                "' && \"$0\" \"$@\"; code=$?; echo \"Left: [$(ls -A '" + folder.string() + "')]\"; exit $code"};
}

bool mountsInItsOwnNamespace(const Path& folder)
{
    Terminal attempt({"/usr/bin/unshare", "-rm", "/bin/mount", "-t", "tmpfs", "small", folder});
    return attempt.exitCode() == 0;
}

dev_t volumeOf(const Path& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_dev : 0;
}

} // namespace

class Disks : public PasswordJobs
{
protected:
    const Path file = folder.addFile("large.bin", manyBytes(Size));
    const Path small = folder.addFile("small.txt", "fits");
};

TEST_F(Disks, thatTakeNoMoreLeaveTheSourceAndNoHalfResult)
{
    PasswordTerminal terminal(folder.addEncryptJob({file, small}, Wipe), WithSmallFiles);
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(Password);
    ASSERT_TRUE(terminal.tells(file, TooLarge)) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"large.bin", "small.txt"})) << "no half result stands at the question";
    terminal.tryAgain();
    ASSERT_TRUE(terminal.tells(file, TooLarge)) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"large.bin", "small.txt.zel"}));
    EXPECT_EQ(contentOf(file), manyBytes(Size));
}

TEST_F(Disks, thatTakeNoMoreLeaveTheEncryptedFile)
{
    encrypt({file});
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(file)}, true), WithSmallFiles);
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_TRUE(terminal.tells(encrypted(file), TooLarge)) << terminal.shown();
    terminal.abort();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"large.bin.zel", "small.txt"}));
    decrypt({encrypted(file)});
    EXPECT_EQ(contentOf(file), manyBytes(Size));
}

TEST_F(Disks, thatTakeNoMoreLeaveTheSourcesOfAPackage)
{
    PasswordTerminal terminal(folder.addJob("encrypt-sfx", {file, small}, "\"destiny\": 2, \"comment\": \"\""),
                              WithSmallFiles);
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(Password);
    ASSERT_TRUE(terminal.tells(file, TooLarge)) << terminal.shown();
    terminal.abort();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"large.bin", "small.txt"}));
    EXPECT_EQ(contentOf(file), manyBytes(Size));
}

TEST_F(Disks, thatAreFullAreNamedAndGetTheirSpaceBack)
{
    const Path disk = folder.path() / "disk";
    fs::create_directory(disk);
    if (!mountsInItsOwnNamespace(disk))
        GTEST_SKIP() << "no disk can be mounted here";
    encrypt({file, small});
    PasswordTerminal terminal(
        folder.addJob("decrypt", encrypted({file, small}), "\"mode\": 1, \"path\": " + jsonText(disk)),
        withSmallDiskAt(disk));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_TRUE(terminal.tells(encrypted(file), "There is no space left on the disk.")) << terminal.shown();
    terminal.skip();
    EXPECT_TRUE(terminal.expect("Left: [small.txt]\n")) << "the small one fits after all\n" << terminal.shown();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    decrypt({encrypted(file)});
    EXPECT_EQ(contentOf(file), manyBytes(Size));
}

TEST_F(Disks, mayBeTwo)
{
    const MemoryDisk disk;
    if (!disk.isThere() || volumeOf(disk.path()) == volumeOf(folder.path()))
        GTEST_SKIP() << "there is no second disk";
    const Path there = disk.path() / "there.txt";
    fs::copy_file(small, there);
    encrypt({file, there}, Wipe);
    PasswordTerminal terminal(
        folder.addJob("decrypt", encrypted({file, there}), "\"mode\": 1, \"path\": " + jsonText(disk.path())));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentBelow(disk.path()),
              (std::map<std::string, std::string>{{"large.bin", manyBytes(Size)}, {"there.txt", "fits"}}));
    EXPECT_EQ(names(), std::vector<std::string>{"small.txt"});
}
