#include <csignal>
#include <filesystem>
#include <fstream>

#include "linux/key_files.h"
#include "linux/password_jobs.h"

// The user changes their mind, at each place where they can: nothing is lost, and nothing is left behind.

namespace fs = std::filesystem;
using namespace EndToEnd;

/// A way to leave, from the moment when the program asks a window's question.
struct WayOut
{
    const char* name;
    void (*go)(PasswordTerminal&);
    int exitCode = 0;
};

namespace
{

constexpr int Interrupted = 128 + SIGINT;

void toPassword(PasswordTerminal& terminal)
{
    terminal.choose('p');
    EXPECT_TRUE(terminal.expect("Password: ")) << terminal.shown();
}

void toKeyFile(PasswordTerminal& terminal)
{
    terminal.choose('k');
    EXPECT_TRUE(terminal.expect("Path of the key file")) << terminal.shown();
}

void toRepeat(PasswordTerminal& terminal)
{
    toPassword(terminal);
    terminal.answer("typed once");
    EXPECT_TRUE(terminal.expect("Repeat: ")) << terminal.shown();
}

const WayOut WaysOutOfBoth[] = {
    {"cancel", [](PasswordTerminal& terminal) { terminal.cancel(); }},
    {"end", [](PasswordTerminal& terminal) { terminal.sendEnd(); }},
    {"ctrlC", [](PasswordTerminal& terminal) { terminal.control('C'); }, Interrupted},
    {"endAtThePassword",
     [](PasswordTerminal& terminal)
     {
         toPassword(terminal);
         terminal.sendEnd();
     }},
    {"ctrlCAtThePassword",
     [](PasswordTerminal& terminal)
     {
         toPassword(terminal);
         terminal.control('C');
     },
     Interrupted},
    {"endAtTheKeyFileAndThenCancel",
     [](PasswordTerminal& terminal)
     {
         toKeyFile(terminal);
         terminal.sendEnd();
         EXPECT_TRUE(terminal.expect("Cancel (c): ")) << terminal.shown();
         terminal.cancel();
     }},
};

const WayOut WaysOutOfEncryption[] = {
    {"endAtTheRepeat",
     [](PasswordTerminal& terminal)
     {
         toRepeat(terminal);
         terminal.sendEnd();
     }},
    {"ctrlCAtTheRepeat",
     [](PasswordTerminal& terminal)
     {
         toRepeat(terminal);
         terminal.control('C');
     },
     Interrupted},
    {"cancelAfterTwoPasswordsThatDiffer",
     [](PasswordTerminal& terminal)
     {
         toRepeat(terminal);
         terminal.answer("typed otherwise");
         EXPECT_TRUE(terminal.expect("Cancel (c): ")) << terminal.shown();
         terminal.cancel();
     }},
    {"endAtTheRiddleLeavesOnlyTheRiddle",
     [](PasswordTerminal& terminal)
     {
         terminal.more();
         terminal.choose('r');
         EXPECT_TRUE(terminal.expect("New riddle")) << terminal.shown();
         terminal.sendEnd();
         EXPECT_TRUE(terminal.expect("Cancel (c): ")) << terminal.shown();
         terminal.cancel();
     }},
};

std::string nameOf(const testing::TestParamInfo<WayOut>& test)
{
    return test.param.name;
}

} // namespace

class CancelledJobs : public PasswordJobs, public testing::WithParamInterface<WayOut>
{
protected:
    void leave(PasswordTerminal& terminal)
    {
        GetParam().go(terminal);
        EXPECT_EQ(terminal.exitCode(), GetParam().exitCode) << terminal.shown();
    }

    const Path& key = KeyFiles::shared().symmetric;
    const Path file = folder.addFile("letter.txt", "dear reader");
    const std::vector<std::string> namesOfResult{"letter.txt.zel"};
};

class CancelledEncryption : public CancelledJobs
{
};

INSTANTIATE_TEST_SUITE_P(WaysOut, CancelledEncryption, testing::ValuesIn(WaysOutOfBoth), nameOf);
INSTANTIATE_TEST_SUITE_P(WaysOutOfItsOwn, CancelledEncryption, testing::ValuesIn(WaysOutOfEncryption), nameOf);

TEST_P(CancelledEncryption, leavesTheSources)
{
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    leave(terminal);
    EXPECT_EQ(names(), std::vector<std::string>{"letter.txt"});
    EXPECT_EQ(contentOf(file), "dear reader");
}

class CancelledDecryption : public CancelledJobs
{
};

INSTANTIATE_TEST_SUITE_P(WaysOut, CancelledDecryption, testing::ValuesIn(WaysOutOfBoth), nameOf);

TEST_P(CancelledDecryption, leavesTheEncryptedFilesAtTheFirstQuestion)
{
    encryptByKey({file}, key);
    const std::string content = contentOf(encrypted(file));
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(file)}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    leave(terminal);
    EXPECT_EQ(names(), namesOfResult);
    EXPECT_EQ(contentOf(encrypted(file)), content);
}

TEST_P(CancelledDecryption, leavesTheEncryptedFilesAtALaterQuestionAndKeepsWhatIsDone)
{
    const Path done = folder.addFile("done.txt", "done before");
    encryptByKey({file}, key);
    encryptByKey({done}, KeyFiles::shared().otherSymmetric);
    const std::string content = contentOf(encrypted(file));
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({done, file}), true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.keyFile(KeyFiles::shared().otherSymmetric);
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(file))) << terminal.shown();
    leave(terminal);
    EXPECT_EQ(names(), (std::vector<std::string>{"done.txt", "letter.txt.zel"}));
    EXPECT_EQ(contentOf(done), "done before");
    EXPECT_EQ(contentOf(encrypted(file)), content);
}

/// While the engine works on a file that takes seconds.
class CancelledRun : public PasswordJobs
{
protected:
    CancelledRun() { fs::resize_file(file, Size); }

    /// An encryption with the slowest algorithm, on its way.
    void startEncryption(PasswordTerminal& terminal)
    {
        ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
        terminal.more();
        terminal.algorithm("GOST-256");
        terminal.newPassword(Password);
        ASSERT_TRUE(terminal.expect("[c] Cancel  [p] Pause")) << terminal.shown();
    }

    void expectTheSourceAlone()
    {
        EXPECT_EQ(names(), std::vector<std::string>{"large.bin"});
        EXPECT_EQ(fs::file_size(file), Size);
        std::string start(6, '?');
        std::ifstream(file, std::ios::binary).read(start.data(), 6);
        EXPECT_EQ(start, std::string("start\0", 6));
    }

    static constexpr std::uintmax_t Size = 150000000;
    const Path file = folder.addFile("large.bin", "start");
};

TEST_F(CancelledRun, leavesTheSourceAndNoHalfResult)
{
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    startEncryption(terminal);
    terminal.key('c');
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    expectTheSourceAlone();
}

TEST_F(CancelledRun, waitsWhileItIsPaused)
{
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    startEncryption(terminal);
    terminal.key('p');
    ASSERT_TRUE(terminal.expect("[p] Resume")) << terminal.shown();
    terminal.key('c'); // is not there for now
    EXPECT_EQ(terminal.exitCode(std::chrono::milliseconds(500)), -1) << terminal.shown();
    EXPECT_TRUE(fs::exists(file));
    terminal.key('p');
    ASSERT_TRUE(terminal.expect("[c] Cancel  [p] Pause")) << terminal.shown();
    terminal.key('c');
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    expectTheSourceAlone();
}

TEST_F(CancelledRun, byCtrlCLeavesTheSourceAndThePartIsGoneAfterTheNextJob)
{
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    startEncryption(terminal);
    terminal.control('C');
    EXPECT_EQ(terminal.exitCode(), Interrupted) << terminal.shown();
    EXPECT_FALSE(fs::exists(encrypted(file)));
    ASSERT_EQ(fs::file_size(file), Size);
    fs::resize_file(file, 5);
    encrypt({file}, Keep);
    EXPECT_EQ(names(), (std::vector<std::string>{"large.bin", "large.bin.zel"}));
}

TEST_F(CancelledRun, ofADecryptionLeavesTheEncryptedFile)
{
    PasswordTerminal encryption(folder.addEncryptJob({file}, Keep));
    startEncryption(encryption);
    ASSERT_EQ(encryption.exitCode(), 0) << encryption.shown();
    fs::remove(file);
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(file)}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_TRUE(terminal.expect("[c] Cancel  [p] Pause")) << terminal.shown();
    terminal.key('c');
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), std::vector<std::string>{"large.bin.zel"});
    EXPECT_GT(fs::file_size(encrypted(file)), Size);
}
