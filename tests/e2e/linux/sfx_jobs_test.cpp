#include <filesystem>

#include "linux/key_files.h"
#include "linux/password_jobs.h"

// Self-extracting packages: made here, opened by the decrypt job.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string BuiltInComment = "This file was encrypted with the Halden suite.";
const std::string CommentQuestion = "New Sfx Comment (an empty line ends it, Ctrl+D leaves it as it was):";

} // namespace

class SfxJobs : public PasswordJobs
{
protected:
    /// A terminal whose user keeps their settings in the test's folder.
    PasswordTerminal start(const std::vector<Path>& files, const std::string& fields = "\"destiny\": 1")
    {
        return PasswordTerminal(folder.addJob("encrypt-sfx", files, fields),
                                {"/usr/bin/env", "XDG_CONFIG_HOME=" + settings.string()});
    }

    void makePackage(const std::vector<Path>& files, const std::string& fields = "\"destiny\": 1")
    {
        PasswordTerminal terminal = start(files, fields);
        ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
        terminal.newPassword(Password);
        ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    }

    /// Types a new comment of two lines in the comment's editor, which has to show the former one first.
    void changeComment(PasswordTerminal& terminal, const std::string& former, char setDefault)
    {
        terminal.choose('s');
        EXPECT_TRUE(terminal.expect(former)) << terminal.shown();
        EXPECT_TRUE(terminal.expect(CommentQuestion)) << terminal.shown();
        terminal.answer("First line, \u65e5\u672c");
        terminal.answer("and the \"second\".");
        terminal.answer("");
        EXPECT_TRUE(terminal.expect("Set Default? [y/n] ")) << terminal.shown();
        terminal.choose(setDefault);
        EXPECT_TRUE(terminal.expect("Cancel (c): ")) << terminal.shown();
    }

    bool packageHolds(const std::string& text) const { return contentOf(package).find(text) != std::string::npos; }

    const Path settings = folder.path() / "settings";
    const Path savedComment = settings / "jobrunner" / "sfx-comment.txt";
    const Path file = folder.addFile("letter.txt", "dear reader");
    const Path package = folder.path() / "letter.txt.exe";
    const std::string newComment = "First line, \u65e5\u672c\nand the \"second\".";
};

TEST_F(SfxJobs, makeOnePackageThatTheDecryptJobOpens)
{
    const Path empty = folder.addFile("empty.txt", "");
    const Path deep = folder.addFile("tree/sub/\u00fcber.bin", manyBytes(600000));
    const auto before = contentBelow(folder.path());
    makePackage({file, empty, folder.path() / "tree"});
    EXPECT_TRUE(contentOf(package).starts_with("MZ")) << "a package is a Windows program";
    EXPECT_FALSE(packageHolds("dear reader"));
    for (const Path& source : {file, empty, deep})
        EXPECT_FALSE(fs::exists(source)) << source;

    PasswordTerminal terminal(folder.addDecryptJob({package}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password("wrong at first");
    ASSERT_TRUE(terminal.asksForPasswordOf(package)) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentBelow(folder.path()), before);
}

TEST_F(SfxJobs, dealWithTheSourcesAsTheJobSays)
{
    for (const int destiny : {Keep, Delete, Wipe})
    {
        const Path source = folder.addFile("letter.txt", "dear reader");
        PasswordTerminal terminal = start({source}, "\"destiny\": " + std::to_string(destiny));
        ASSERT_TRUE(terminal.asksForNewPassword());
        terminal.keyFile(KeyFiles::shared().symmetric);
        ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(fs::exists(source), destiny == Keep) << destiny;
        fs::remove(source);
        decryptByKey({package}, KeyFiles::shared().symmetric);
        EXPECT_EQ(contentOf(source), "dear reader") << destiny;
        fs::remove(package);
    }
}

TEST_F(SfxJobs, carryTheCommentAndTheRiddleReadably)
{
    PasswordTerminal terminal = start({file}, "\"comment\": \"The letter that I promised.\"");
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.more();
    terminal.riddle("Where did we meet?");
    changeComment(terminal, "The letter that I promised.", 'n');
    terminal.newPassword(Password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_TRUE(packageHolds(newComment));
    EXPECT_TRUE(packageHolds("Where did we meet?"));
    EXPECT_FALSE(packageHolds("The letter that I promised."));
    EXPECT_FALSE(fs::exists(savedComment)) << "it was not made the default";
    fs::remove(file);
    decrypt({package});
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(SfxJobs, keepACommentForTheNextJobWhenTheUserSaysSo)
{
    PasswordTerminal terminal = start({file});
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.more();
    changeComment(terminal, BuiltInComment, 'y');
    EXPECT_FALSE(fs::exists(savedComment)) << "the job is not confirmed yet";
    terminal.newPassword(Password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(savedComment), newComment);
    fs::remove(package);

    const Path other = folder.addFile("other.txt", "of the next job");
    makePackage({other});
    EXPECT_NE(contentOf(folder.path() / "other.txt.exe").find(newComment), std::string::npos);
}

TEST_F(SfxJobs, leaveTheDefaultCommentOfACancelledJob)
{
    PasswordTerminal terminal = start({file});
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.more();
    changeComment(terminal, BuiltInComment, 'y');
    terminal.cancel();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(savedComment));
    EXPECT_FALSE(fs::exists(package));
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(SfxJobs, leaveTheCommentWhenItsEditorIsLeft)
{
    PasswordTerminal terminal = start({file});
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.more();
    terminal.choose('s');
    ASSERT_TRUE(terminal.expect(CommentQuestion)) << terminal.shown();
    terminal.answer("half a comment");
    ASSERT_TRUE(terminal.expect("> "));
    terminal.sendEnd();
    ASSERT_TRUE(terminal.expect("Cancel (c): ")) << terminal.shown();
    terminal.newPassword(Password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_TRUE(packageHolds(BuiltInComment));
    EXPECT_FALSE(packageHolds("half a comment"));
}

TEST_F(SfxJobs, takeAPublicKeyAndOpenWithThePrivateOne)
{
    PasswordTerminal terminal = start({file}, "\"destiny\": 2");
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.keyFile(KeyFiles::shared().publicRsa);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(file));
    PasswordTerminal decryption(folder.addDecryptJob({package}));
    ASSERT_TRUE(decryption.asksForPassword());
    decryption.keyFile(KeyFiles::shared().privateRsa);
    EXPECT_EQ(decryption.exitCode(), 0) << decryption.shown();
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(SfxJobs, refuseAKeyThatOnlyDecrypts)
{
    PasswordTerminal terminal = start({file}, "\"destiny\": 2");
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.keyFile(KeyFiles::shared().privateRsa);
    EXPECT_TRUE(terminal.refusesKeyFile("A private key only decrypts; encrypting needs the public one."))
        << terminal.shown();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_FALSE(fs::exists(package));
}

TEST_F(SfxJobs, leaveEverythingWhenTheQuestionIsCancelled)
{
    for (const bool byEnd : {false, true})
    {
        PasswordTerminal terminal = start({file}, "\"destiny\": 2");
        ASSERT_TRUE(terminal.asksForNewPassword());
        byEnd ? terminal.sendEnd() : terminal.cancel();
        EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(names(), std::vector<std::string>{"letter.txt"});
    }
}

TEST_F(SfxJobs, doNotReplaceAFileOfThePackagesName)
{
    folder.addFile("letter.txt.exe", "somebody's file");
    PasswordTerminal terminal = start({file}, "\"destiny\": 2");
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword(Password);
    ASSERT_TRUE(terminal.tells(file, "A file with the name of the result exists already; it is not replaced."))
        << terminal.shown();
    fs::remove(package);
    terminal.tryAgain();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(file));
    decrypt({package});
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(SfxJobs, tellOfADamagedPackageAndLeaveIt)
{
    makePackage({file}, "\"destiny\": 1, \"comment\": \"For you.\"");
    const std::string sound = contentOf(package);
    std::string changed = sound;
    changed.replace(changed.rfind("For you."), 3, "Foe");
    const std::vector<std::pair<std::string, std::string>> damaged = {
        {sound.substr(0, sound.size() - 1), "The file is no encrypted file of this program."},
        {sound.substr(0, 1000), "The file is no encrypted file of this program."},
        {changed, "The package is damaged or incomplete: its comment was changed."}};
    for (const auto& [bytes, message] : damaged)
    {
        folder.addFile("letter.txt.exe", bytes);
        PasswordTerminal terminal(folder.addDecryptJob({package}, true));
        if (bytes == changed)
        {
            ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
            terminal.password(Password);
        }
        EXPECT_TRUE(terminal.tells(package, message)) << terminal.shown();
        terminal.skip();
        EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(names(), std::vector<std::string>{"letter.txt.exe"});
        EXPECT_EQ(contentOf(package), bytes);
    }
}
