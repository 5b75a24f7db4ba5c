#include <cstdlib>
#include <filesystem>

#include "linux/password_jobs.h"

// A double click on an encrypted file, in the terminal.

namespace fs = std::filesystem;
using namespace EndToEnd;

class DoubleClickJob : public PasswordJobs
{
protected:
    Path job(const std::vector<Path>& files) { return folder.addJob("double-click", files); }

    void lockDocument() { encrypt({document}); }

    const Path document = folder.addFile("a [letter] of mine.txt", "dear reader");
};

TEST_F(DoubleClickJob, asksForThePasswordAndEndsBehindTheDecryption)
{
    lockDocument();
    PasswordTerminal terminal(job({encrypted(document)}));
    ASSERT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(document), "dear reader");
    EXPECT_TRUE(fs::exists(encrypted(document)));
    EXPECT_EQ(names().size(), 2U);
}

TEST_F(DoubleClickJob, leavesTheEncryptedFileAloneWhenItIsCancelled)
{
    lockDocument();
    PasswordTerminal terminal(job({encrypted(document)}));
    ASSERT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    terminal.cancel();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(document));
    EXPECT_TRUE(fs::exists(encrypted(document)));
}

TEST_F(DoubleClickJob, asksAgainBehindAWrongPassword)
{
    lockDocument();
    PasswordTerminal terminal(job({encrypted(document)}));
    ASSERT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    terminal.password("open barley");
    ASSERT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    EXPECT_FALSE(fs::exists(document));
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(document), "dear reader");
}

TEST_F(DoubleClickJob, isRefusedForAnyNumberOfFilesButOne)
{
    for (const std::vector<Path>& files : {std::vector<Path>{}, {document, document}})
    {
        PasswordTerminal terminal(job(files));
        EXPECT_TRUE(terminal.expect("Job Runner\nCannot decrypt file, there is no file in the pattern list\n"));
        terminal.answer("");
        EXPECT_EQ(terminal.exitCode(), 1) << terminal.shown();
    }
    EXPECT_EQ(contentOf(document), "dear reader");
}

TEST_F(DoubleClickJob, withAnEngineThatTellsNoPathSaysThatNothingCanBeOpenedAndHarmsNothing)
{
    lockDocument();
    const SampleFolder elsewhere;
    setenv("JOBRUNNER_PROGRAM", copyProgramWithWordlessEngine(elsewhere.path() / "bin").c_str(), 1);
    PasswordTerminal terminal(job({encrypted(document)}));
    unsetenv("JOBRUNNER_PROGRAM");
    ASSERT_TRUE(terminal.asksToOpenDocument()) << terminal.shown();
    terminal.password(Password);
    EXPECT_TRUE(terminal.expect("Cannot open decrypted file\nCannot open . Possibly there is no known application "
                                "associated with this type of file?\n"))
        << terminal.shown();
    terminal.answer("");
    // Now an entry without a name is to be wiped, which the engine asks about.
    EXPECT_TRUE(terminal.expect("Abort (a): ")) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(document), "dear reader");
    EXPECT_TRUE(fs::exists(encrypted(document)));
    EXPECT_EQ(names().size(), 2U);
}
