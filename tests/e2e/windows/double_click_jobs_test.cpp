#include "windows/dialog_job.h"
#include "windows/screenshot.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

// A double click on an encrypted file, in the program's own windows.

class DoubleClickJob : public DialogJob
{
protected:
    void lockDocument() { lock({document}, L"open sesame"); }
    Path job(const std::vector<Path>& files) { return folder.addJob("double-click", files); }
    void startDoubleClick() { startUpToDialog(job({encrypted(document)})); }

    /// The one window of the program with this caption shows this text.
    Window expectBox(const std::wstring& caption, const std::wstring& text)
    {
        const Window box = program->window(caption);
        EXPECT_TRUE(box);
        EXPECT_TRUE(waitUntil([&] { return box.shows(text); })) << Path(box.allTexts());
        return box;
    }

    const Path document = folder.addFile(L"a [letter] of mine.txt", "dear reader");
};

TEST_F(DoubleClickJob, asksForThePasswordAndEndsBehindTheDecryption)
{
    lockDocument();
    startDoubleClick();
    EXPECT_TRUE(takeScreenshot(dialog.window(), L"double-click"));
    proceedWithPassword(L"open sesame");
    expectEnd();
    fs::remove(folder.path() / L"job.json");
    EXPECT_EQ(names(), (Names{L"a [letter] of mine.txt", L"a [letter] of mine.txt.zel"}));
    EXPECT_EQ(contentOf(document), "dear reader");
}

TEST_F(DoubleClickJob, leavesTheEncryptedFileAloneWhenItIsCancelled)
{
    lockDocument();
    startDoubleClick();
    dialog.click(PasswordDialog::Cancel);
    expectEnd();
    EXPECT_FALSE(fs::exists(document));
    EXPECT_TRUE(fs::exists(encrypted(document)));
}

TEST_F(DoubleClickJob, asksAgainBehindAWrongPassword)
{
    lockDocument();
    startDoubleClick();
    const Window first = dialog.window();
    proceedWithPassword(L"open barley");
    ASSERT_TRUE(waitUntil([&] { return !first.exists(); }));
    expectDialog();
    EXPECT_FALSE(fs::exists(document));
    dialog.replacePassword(L"open sesame");
    dialog.click(PasswordDialog::Proceed);
    expectEnd();
    EXPECT_EQ(contentOf(document), "dear reader");
}

TEST_F(DoubleClickJob, isRefusedForAnyNumberOfFilesButOne)
{
    const Path other = folder.addFile(L"other.zel", "no container");
    for (const std::vector<Path>& files : {std::vector<Path>{}, {other, document}})
    {
        start(job(files));
        expectBox(L"Job Runner", L"Cannot decrypt file, there is no file in the pattern list").press(VK_RETURN);
        EXPECT_EQ(program->exitCode(), 1);
    }
    EXPECT_EQ(contentOf(other), "no container");
    EXPECT_EQ(contentOf(document), "dear reader");
}

TEST_F(DoubleClickJob, tellsAboutAFileInTheWayOfTheDocument)
{
    lockDocument();
    folder.addFile(document.filename(), "in the way");
    startDoubleClick();
    proceedWithPassword(L"open sesame");
    const Window error = program->window(L"File Problem");
    ASSERT_TRUE(error);
    error.click(AbortButton);
    expectEnd();
    EXPECT_EQ(contentOf(document), "in the way");
    EXPECT_TRUE(fs::exists(encrypted(document)));
}

TEST_F(DoubleClickJob, withAnEngineThatTellsNoPathSaysThatNothingCanBeOpenedAndHarmsNothing)
{
    lockDocument();
    const SampleFolder elsewhere;
    const Path wordless = copyProgramWithWordlessEngine(elsewhere.path() / L"bin");
    const Path jobFile = job({encrypted(document)});
    program = std::make_unique<RunningProgram>(wordless, quoted(jobFile));
    expectDialog();
    proceedWithPassword(L"open sesame");
    const Window box = expectBox(L"Cannot open decrypted file",
                                 L"Cannot open . Possibly there is no known application associated with this type of "
                                 L"file?");
    EXPECT_TRUE(takeScreenshot(box, L"cannot-open"));
    box.press(VK_RETURN);
    // Now an entry without a name is to be wiped, which the engine asks about.
    const Window error = program->window(L"File Error Occured");
    ASSERT_TRUE(error);
    EXPECT_TRUE(takeScreenshot(error, L"wipe-of-nothing"));
    error.click(SkipFileButton);
    expectEnd();
    fs::remove(jobFile);
    EXPECT_EQ(names(), (Names{L"a [letter] of mine.txt", L"a [letter] of mine.txt.zel"}));
    EXPECT_EQ(contentOf(document), "dear reader");
}
