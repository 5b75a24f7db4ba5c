#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr std::size_t LargeSize = std::size_t{96} << 20;

std::string largeContent()
{
    std::string content(LargeSize, 'x');
    for (std::size_t i = 0; i < content.size(); i += 4096)
        content[i] = static_cast<char>(i >> 12);
    return content;
}

} // namespace

class CancelledJob : public DialogJob
{
protected:
    Path addLarge() const { return folder.addFile(L"large.bin", content); }

    /// Cancels in the progress window while the content is on its way, which a temporary file tells.
    void cancelInTheMiddle()
    {
        const Window progress = windowWith(*program, CancelJobButton);
        ASSERT_TRUE(progress);
        progress.click(PauseJobButton);
        ASSERT_TRUE(waitUntil([&] { return progress.text(PauseJobButton) == L"Resume"; }));
        ASSERT_TRUE(waitUntil([this] { return hasTemporary(); }));
        progress.press(VK_ESCAPE); // does nothing
        EXPECT_FALSE(progress.isEnabled(CancelJobButton));
        progress.click(PauseJobButton);
        ASSERT_TRUE(waitUntil([&] { return progress.isEnabled(CancelJobButton); }));
        progress.click(CancelJobButton);
        expectEnd();
    }

    const std::string content = largeContent();
};

TEST_F(CancelledJob, leavesTheFilesOfAnEncryptionWhole)
{
    const Path large = addLarge();
    const Path small = folder.addFile(L"small.txt", "dear reader");
    startUpToDialog(folder.addEncryptJob({large, small}, DeleteFiles));
    proceedWithNewPassword(L"secret");
    cancelInTheMiddle();
    EXPECT_EQ(names(), (Names{L"large.bin", L"small.txt"}));
    EXPECT_TRUE(contentOf(large) == content);
    EXPECT_EQ(contentOf(small), "dear reader");
}

TEST_F(CancelledJob, leavesTheFilesOfASelfExtractingEncryptionWhole)
{
    const Path large = addLarge();
    startUpToDialog(folder.addJob("encrypt-sfx", {large}, R"("destiny": 2)"));
    proceedWithNewPassword(L"secret");
    cancelInTheMiddle();
    EXPECT_EQ(names(), Names{L"large.bin"});
    EXPECT_TRUE(contentOf(large) == content);
}

TEST_F(CancelledJob, leavesTheFilesOfADecryptionWhole)
{
    const Path large = addLarge();
    const Path small = folder.addFile(L"small.txt", "dear reader");
    lock({large, small}, L"secret");
    const std::string before = contentOf(encrypted(large));
    startUpToDialog(folder.addDecryptJob({encrypted(large), encrypted(small)}, true));
    proceedWithPassword(L"secret");
    cancelInTheMiddle();
    EXPECT_EQ(names(), (Names{L"large.bin.zel", L"small.txt.zel"}));
    EXPECT_TRUE(contentOf(encrypted(large)) == before);
}

TEST_F(CancelledJob, isCancelledInTheFirstDialogByTheEscapeKey)
{
    const Path file = folder.addFile(L"small.txt", "dear reader");
    for (const char* const kind : {"encrypt", "encrypt-sfx"})
    {
        startUpToDialog(folder.addJob(kind, {file}, R"("destiny": 2)"));
        dialog.typeNewPassword(L"secret");
        dialog.window().press(VK_ESCAPE);
        expectEnd();
        EXPECT_EQ(names(), Names{L"small.txt"}) << kind;
    }
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(CancelledJob, keepsWhatWasDoneBeforeTheSecondQuestion)
{
    const Path first = folder.addFile(L"first.txt", "dear reader");
    const Path second = folder.addFile(L"second.txt", "dear writer");
    const Path third = folder.addFile(L"third.txt", "dear editor");
    lock({first, third}, L"one");
    lock({second}, L"two");
    startUpToDialog(folder.addDecryptJob({encrypted(first), encrypted(second), encrypted(third)}, true));
    proceedWithPassword(L"one");
    expectDialog(L"Provide Key for ");
    EXPECT_NE(dialog.header().find(L"second.txt.zel"), std::wstring::npos) << Path(dialog.header());
    dialog.click(PasswordDialog::Cancel);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"second.txt.zel", L"third.txt.zel"}));
    EXPECT_EQ(contentOf(first), "dear reader");
}
