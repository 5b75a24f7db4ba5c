#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

class SeveralPasswords : public DialogJob
{
protected:
    const std::vector<Path> files = {folder.addFile(L"first.txt", "dear reader"),
                                     folder.addFile(L"second.txt", "dear writer")};
    const std::vector<Path> locked = {encrypted(files[0]), encrypted(files[1])};
};

TEST_F(SeveralPasswords, areAskedForOnceEach)
{
    lock({files[0]}, L"one");
    lock({files[1]}, L"two");
    startUpToDialog(folder.addDecryptJob(locked));
    proceedWithPassword(L"one");
    expectDialog(L"Provide Key for ");
    EXPECT_NE(dialog.header().find(L"second.txt.zel"), std::wstring::npos) << Path(dialog.header());
    EXPECT_EQ(contentOf(files[0]), "dear reader");
    dialog.replacePassword(L"two");
    dialog.click(PasswordDialog::Proceed);
    expectEnd();
    EXPECT_EQ(contentOf(files[1]), "dear writer");
}

TEST_F(SeveralPasswords, areOneQuestionWhenTheyAreTheSame)
{
    // Of two jobs: the files do not share a salt.
    lock({files[0]}, L"one");
    lock({files[1]}, L"one");
    startUpToDialog(folder.addDecryptJob(locked));
    proceedWithPassword(L"one");
    expectEnd();
    EXPECT_EQ(contentOf(files[0]), "dear reader");
    EXPECT_EQ(contentOf(files[1]), "dear writer");
}

TEST_F(SeveralPasswords, leaveAnIgnoredFileAndGoOn)
{
    lock({files[0]}, L"one");
    lock({files[1]}, L"two");
    startUpToDialog(folder.addDecryptJob(locked, true));
    dialog.click(PasswordDialog::Ignore);
    ASSERT_TRUE(waitUntil([this] { return !dialog.window().exists(); }));
    expectDialog(L"Provide Key for ");
    proceedWithPassword(L"two");
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt.zel", L"second.txt"}));
}
