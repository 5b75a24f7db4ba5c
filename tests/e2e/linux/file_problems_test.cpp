#include <filesystem>
#include <unistd.h>

#include "linux/password_jobs.h"

// What an encryption and a decryption ask about a single file.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Exists = "A file with the name of the result exists already; it is not replaced.";
const std::string Missing = "The file does not exist.";
const std::string IsLink = "This is a link and not a file with content of its own; links are not followed.";

/// Root reads whatever it wants, unless it leaves that right behind.
PasswordTerminal::Command withoutRootsRights()
{
    if (geteuid() != 0)
        return {};
    return {"/usr/bin/setpriv", "--bounding-set=-dac_override,-dac_read_search",
            "--inh-caps=-dac_override,-dac_read_search"};
}

} // namespace

/// Between the files of a list is one with a problem.
class FileProblems : public PasswordJobs
{
protected:
    void startEncryption(PasswordTerminal& terminal)
    {
        ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
        terminal.newPassword(Password);
    }

    void startDecryption(PasswordTerminal& terminal)
    {
        ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
        terminal.password(Password);
    }

    const Path before = folder.addFile("1.txt", "one");
    const Path middle = folder.addFile("2.txt", "two");
    const Path after = folder.addFile("3.txt", "three");
    const std::vector<Path> all{before, middle, after};
};

/// A result stands in the way of the middle file.
class ExistingTarget : public FileProblems
{
protected:
    /// Up to the question about it.
    std::unique_ptr<PasswordTerminal> encryptUpToIt()
    {
        folder.addFile("2.txt.zel", "somebody's file");
        auto terminal = std::make_unique<PasswordTerminal>(folder.addEncryptJob(all, Delete));
        startEncryption(*terminal);
        EXPECT_TRUE(terminal->expect("File Error Occured\nPlease choose what to do with file.\n")) << terminal->shown();
        EXPECT_TRUE(terminal->expect("Source: " + middle.string() + "\nTarget: " + encrypted(middle).string() + "\n" +
                                     Exists + "\nTry Again (t) / Skip File (s) / Abort (a): "))
            << terminal->shown();
        EXPECT_FALSE(fs::exists(before));
        EXPECT_EQ(contentOf(middle), "two");
        return terminal;
    }

    void expectAllToComeBack()
    {
        decrypt(encrypted(all));
        EXPECT_EQ(contentOf(before), "one");
        EXPECT_EQ(contentOf(middle), "two");
        EXPECT_EQ(contentOf(after), "three");
    }
};

TEST_F(ExistingTarget, isSkipped)
{
    const auto terminal = encryptUpToIt();
    terminal->skip();
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt.zel", "2.txt", "2.txt.zel", "3.txt.zel"}));
    EXPECT_EQ(contentOf(encrypted(middle)), "somebody's file");
    EXPECT_EQ(contentOf(middle), "two");
}

TEST_F(ExistingTarget, isAborted)
{
    const auto terminal = encryptUpToIt();
    terminal->abort();
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt.zel", "2.txt", "2.txt.zel", "3.txt"}));
    EXPECT_EQ(contentOf(encrypted(middle)), "somebody's file");
}

TEST_F(ExistingTarget, isAbortedByTheEndOfInput)
{
    const auto terminal = encryptUpToIt();
    terminal->sendEnd();
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(contentOf(middle), "two");
    EXPECT_EQ(contentOf(after), "three");
}

TEST_F(ExistingTarget, isTriedAgainAsOftenAsTheUserLikes)
{
    const auto terminal = encryptUpToIt();
    terminal->tryAgain();
    ASSERT_TRUE(terminal->tells(middle, Exists)) << "it is still there\n" << terminal->shown();
    fs::remove(encrypted(middle));
    terminal->tryAgain();
    EXPECT_EQ(terminal->exitCode(), 0) << terminal->shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt.zel", "2.txt.zel", "3.txt.zel"}));
    expectAllToComeBack();
}

TEST_F(ExistingTarget, isNotReplacedByADecryption)
{
    encrypt(all, Keep);
    fs::remove(after);
    PasswordTerminal terminal(folder.addDecryptJob(encrypted(all), true));
    startDecryption(terminal);
    EXPECT_TRUE(terminal.expect("File Problem\nPlease choose what to do with this problem. Repeat or abort operation, "
                                "skip file.\n"))
        << terminal.shown();
    EXPECT_TRUE(terminal.expect("Source: " + encrypted(before).string() + "\nTarget: " + before.string() + "\n" +
                                Exists + "\n"))
        << terminal.shown();
    terminal.skip();
    ASSERT_TRUE(terminal.tells(encrypted(middle), Exists)) << terminal.shown();
    fs::remove(middle);
    terminal.tryAgain();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt", "1.txt.zel", "2.txt", "3.txt"}));
    EXPECT_EQ(contentOf(middle), "two");
    EXPECT_EQ(contentOf(after), "three");
}

TEST_F(FileProblems, areToldOfAMissingSourceWhichMayComeBack)
{
    fs::remove(middle);
    PasswordTerminal terminal(folder.addEncryptJob(all, Delete));
    startEncryption(terminal);
    ASSERT_TRUE(terminal.tells(middle, Missing)) << terminal.shown();
    folder.addFile("2.txt", "two again");
    terminal.tryAgain();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    decrypt(encrypted(all));
    EXPECT_EQ(contentOf(middle), "two again");
}

TEST_F(FileProblems, areToldOfASourceThatMayNotBeRead)
{
    fs::permissions(middle, fs::perms::none);
    PasswordTerminal terminal(folder.addEncryptJob(all, Wipe), withoutRootsRights());
    startEncryption(terminal);
    ASSERT_TRUE(terminal.tells(middle, "Access is denied.")) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt.zel", "2.txt", "3.txt.zel"}));
    fs::permissions(middle, fs::perms::owner_read);
    EXPECT_EQ(contentOf(middle), "two");
}

TEST_F(FileProblems, areToldOfAFolderThatMayNotBeWrittenIn)
{
    const Path file = folder.addFile("closed/letter.txt", "dear reader");
    fs::permissions(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe), withoutRootsRights());
    startEncryption(terminal);
    ASSERT_TRUE(terminal.tells(file, "Access is denied.")) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(file), "dear reader");
    fs::permissions(file.parent_path(), fs::perms::owner_all);
}

TEST_F(FileProblems, areToldOfALinkWhichIsNotFollowed)
{
    const Path link = folder.path() / "link.txt";
    fs::create_symlink(middle, link);
    PasswordTerminal terminal(folder.addEncryptJob({link}, Wipe));
    startEncryption(terminal);
    ASSERT_TRUE(terminal.tells(link, IsLink)) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentOf(middle), "two");
    EXPECT_FALSE(fs::exists(encrypted(link)));
}

TEST_F(FileProblems, areToldOfAFileThatWasNeverEncrypted)
{
    PasswordTerminal terminal(folder.addDecryptJob({middle}, true));
    ASSERT_TRUE(terminal.tells(middle, "The file is no encrypted file of this program.")) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(middle), "two");
}

TEST_F(FileProblems, areToldOfAResultFolderThatIsNotThereBeforeAnyPassword)
{
    encrypt({middle});
    PasswordTerminal terminal(
        folder.addJob("decrypt", {encrypted(middle)}, "\"path\": " + jsonText(folder.path() / "none")));
    ASSERT_TRUE(terminal.tells(encrypted(middle), "The folder for the decrypted files does not exist."))
        << terminal.shown();
    EXPECT_EQ(terminal.shown().find("Password"), std::string::npos);
    fs::create_directory(folder.path() / "none");
    terminal.tryAgain();
    startDecryption(terminal);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(folder.path() / "none" / "2.txt"), "two");
}
