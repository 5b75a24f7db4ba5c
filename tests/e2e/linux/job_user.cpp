#include "recorded/job_user.h"

#include "linux/password_jobs.h"

namespace EndToEnd
{

namespace
{

void end(PasswordTerminal& terminal, int code = 0)
{
    EXPECT_EQ(terminal.exitCode(), code) << terminal.shown();
}

void agree(PasswordTerminal& terminal, bool agrees)
{
    EXPECT_TRUE(terminal.expect("[y/n] ")) << terminal.shown();
    terminal.answer(agrees ? "y" : "n");
}

} // namespace

void encryptByPassword(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addEncryptJob(files, Delete));
    EXPECT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(UserPassword);
    end(terminal);
}

void cancelEncryption(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addEncryptJob(files, Delete));
    EXPECT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.cancel();
    end(terminal);
}

void makePackage(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addJob("encrypt-sfx", files, "\"destiny\": 1"));
    EXPECT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(UserPassword);
    end(terminal);
}

void decryptByPassword(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addDecryptJob(files));
    EXPECT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(UserPassword);
    end(terminal);
}

void cancelDecryption(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addDecryptJob(files));
    EXPECT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.cancel();
    end(terminal);
}

void remove(const SampleFolder& folder, const std::vector<Path>& files, std::uint32_t method)
{
    PasswordTerminal terminal(folder.addDeleteJob(files, method));
    agree(terminal, true);
    end(terminal);
}

void declineRemoval(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addDeleteJob(files));
    agree(terminal, false);
    end(terminal);
}

void removeWithoutTheFirst(const SampleFolder& folder, const std::vector<Path>& files)
{
    PasswordTerminal terminal(folder.addDeleteJob(files));
    agree(terminal, true);
    EXPECT_TRUE(terminal.expect("Abort (a): ")) << terminal.shown();
    terminal.tryAgain();
    EXPECT_TRUE(terminal.expect("Abort (a): ")) << terminal.shown();
    terminal.skip();
    end(terminal);
}

void doubleClick(const SampleFolder& folder, const Path& file)
{
    PasswordTerminal terminal(folder.addJob("double-click", {file}));
    EXPECT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    terminal.password(UserPassword);
    end(terminal);
}

void startWithoutAJob(const SampleFolder& folder)
{
    PasswordTerminal terminal(folder.path() / "none.json");
    EXPECT_TRUE(terminal.expect("Press Enter to continue")) << terminal.shown();
    terminal.answer("");
    end(terminal, 1);
}

} // namespace EndToEnd
