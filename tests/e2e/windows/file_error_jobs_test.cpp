#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

// Jobs whose result has the name of a file that is there already.

class FileErrorJob : public DialogJob
{
protected:
    void startEncryption()
    {
        folder.addFile(encrypted(files[0]).filename(), "in the way");
        startUpToDialog(folder.addEncryptJob(files, DeleteFiles));
        proceedWithKeyFile(key);
        error = program->window(L"File Error Occured");
        ASSERT_TRUE(error);
        EXPECT_TRUE(shows(L"A file with the name of the result exists already; it is not replaced."));
    }

    void startDecryption()
    {
        startUpToDialog(folder.addEncryptJob(files, DeleteFiles));
        proceedWithKeyFile(key);
        expectEnd();
        folder.addFile(L"first.txt", "in the way");
        startUpToDialog(folder.addDecryptJob({encrypted(files[0]), encrypted(files[1])}, true));
        proceedWithKeyFile(key);
        error = program->window(L"File Problem");
        ASSERT_TRUE(error);
    }

    bool shows(const std::wstring& text)
    {
        return waitUntil([&] { return error.allTexts().find(text) != std::wstring::npos; });
    }

    const std::vector<Path> files = {folder.addFile(L"first.txt", "dear reader"),
                                     folder.addFile(L"second.txt", "dear writer")};
    const SampleFolder keys; // elsewhere, so that the folder holds the files alone
    const Path key = makeKey(keys.path() / L"my.zelkey");
    Window error;
};

TEST_F(FileErrorJob, skipsTheFileAndEncryptsTheNext)
{
    startEncryption();
    error.click(SkipFileButton);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.zel", L"second.txt.zel"}));
    EXPECT_EQ(contentOf(encrypted(files[0])), "in the way");
    EXPECT_EQ(contentOf(files[0]), "dear reader");
}

TEST_F(FileErrorJob, leavesTheRestWhenTheEncryptionIsAborted)
{
    startEncryption();
    error.click(AbortButton);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.zel", L"second.txt"}));
    EXPECT_EQ(contentOf(encrypted(files[0])), "in the way");
}

TEST_F(FileErrorJob, asksUntilTheEncryptedNameIsFree)
{
    startEncryption();
    const Window first = error;
    error.click(TryAgainButton);
    ASSERT_TRUE(waitUntil([&] { return !first.exists(); }));
    error = program->window(L"File Error Occured");
    ASSERT_TRUE(error);
    ASSERT_TRUE(fs::remove(encrypted(files[0])));
    error.click(TryAgainButton);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt.zel", L"second.txt.zel"}));
}

TEST_F(FileErrorJob, skipsTheFileAndDecryptsTheNext)
{
    startDecryption();
    error.click(SkipFileButton);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.zel", L"second.txt"}));
    EXPECT_EQ(contentOf(files[0]), "in the way");
    EXPECT_EQ(contentOf(files[1]), "dear writer");
}

TEST_F(FileErrorJob, leavesTheRestWhenTheDecryptionIsAborted)
{
    startDecryption();
    error.press(VK_ESCAPE);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.zel", L"second.txt.zel"}));
    EXPECT_EQ(contentOf(files[0]), "in the way");
}

TEST_F(FileErrorJob, decryptsOnceTheNameIsFree)
{
    startDecryption();
    ASSERT_TRUE(fs::remove(files[0]));
    error.press(VK_RETURN);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"second.txt"}));
    EXPECT_EQ(contentOf(files[0]), "dear reader");
}

TEST_F(FileErrorJob, skipsAPackageThatIsThereAlready)
{
    folder.addFile(L"first.txt.exe", "in the way");
    startUpToDialog(folder.addJob("encrypt-sfx", files, R"("destiny": 1)"));
    proceedWithKeyFile(key);
    error = program->window(L"File Error Occured");
    ASSERT_TRUE(error);
    error.click(SkipFileButton);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.exe", L"second.txt"}));
    EXPECT_EQ(contentOf(folder.path() / L"first.txt.exe"), "in the way");
}
