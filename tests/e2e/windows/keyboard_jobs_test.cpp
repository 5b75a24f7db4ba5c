#include "windows/dialog_job.h"

#include <filesystem>
#include <functional>

namespace fs = std::filesystem;
using namespace EndToEnd;

// Jobs that are done with the keys of the keyboard alone.

namespace
{

/// The window that gets the keys of the dialog's thread.
HWND focusIn(const Window& window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window.handle(), nullptr), &info);
    return info.hwndFocus;
}

bool isOfClass(HWND window, const wchar_t* name)
{
    wchar_t found[100] = {};
    GetClassNameW(window, found, 100);
    return _wcsicmp(found, name) == 0;
}

} // namespace

class KeyboardJob : public DialogJob
{
protected:
    void startAtEdit(const Path& job)
    {
        startUpToDialog(job);
        dialog.window().press(VK_SHIFT); // brings the dialog to the front
        ASSERT_TRUE(waitUntil([this] { return isOfClass(focusIn(dialog.window()), L"Edit"); }));
    }

    /// Small letters alone.
    void typeLetters(const std::wstring& text) const
    {
        for (const wchar_t letter : text)
            dialog.window().press(static_cast<WORD>(letter - L'a' + L'A'));
    }

    void press(WORD key, int times = 1) const
    {
        for (int i = 0; i < times; ++i)
            dialog.window().press(key);
    }

    void tabUntil(const Window& window, const std::function<bool(HWND)>& reached) const
    {
        for (int i = 0; i < 20 && !reached(focusIn(window)); ++i)
        {
            const HWND before = focusIn(window);
            window.press(VK_TAB);
            ASSERT_TRUE(waitUntil([&] { return focusIn(window) != before; }));
        }
        ASSERT_TRUE(reached(focusIn(window)));
    }

    void tabTo(const Window& window, int item) const
    {
        tabUntil(window, [&](HWND focus) { return focus == GetDlgItem(window.handle(), item); });
    }

    const Path file = folder.addFile(L"letter.txt", "dear reader");
};

TEST_F(KeyboardJob, encryptsAndDecryptsWithTabAndEnter)
{
    startAtEdit(folder.addEncryptJob({file}, DeleteFiles));
    typeLetters(L"secret");
    press(VK_TAB, 2); // past the eye
    typeLetters(L"secret");
    press(VK_RETURN);
    expectEnd();
    EXPECT_EQ(names(), Names{L"letter.txt.zel"});

    startAtEdit(folder.addDecryptJob({encrypted(file)}, true));
    typeLetters(L"secret");
    press(VK_RETURN);
    expectEnd();
    EXPECT_EQ(names(), Names{L"letter.txt"});
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(KeyboardJob, changesTheDestinyAndProceedsWithTheSpaceKey)
{
    startAtEdit(folder.addEncryptJob({file}, DeleteFiles));
    typeLetters(L"secret");
    press(VK_TAB, 2);
    typeLetters(L"secret");
    ASSERT_NO_FATAL_FAILURE(
        tabUntil(dialog.window(), [](HWND focus) { return isOfClass(focus, L"panewin7::text::textwithlinks"); }));
    press(VK_SPACE);
    EXPECT_TRUE(waitUntil([this] { return dialog.origin().starts_with(L"Wipe"); }));
    press(VK_SPACE);
    EXPECT_TRUE(waitUntil([this] { return dialog.origin().starts_with(L"Keep"); }));
    ASSERT_NO_FATAL_FAILURE(tabTo(dialog.window(), PasswordDialog::Proceed));
    press(VK_SPACE);
    expectEnd();
    EXPECT_EQ(names(), (Names{L"letter.txt", L"letter.txt.zel"}));
}

TEST_F(KeyboardJob, writesARiddleInTheSectionThatItOpens)
{
    startAtEdit(folder.addEncryptJob({file}, DeleteFiles));
    typeLetters(L"secret");
    press(VK_TAB, 2);
    typeLetters(L"secret");
    ASSERT_NO_FATAL_FAILURE(tabTo(dialog.window(), PasswordDialog::Section));
    press(VK_SPACE);
    ASSERT_TRUE(waitUntil([this] { return dialog.window().text(PasswordDialog::Section) == L"<< Less"; }));
    ASSERT_NO_FATAL_FAILURE(
        tabUntil(dialog.window(), [](HWND focus) { return Window(focus).caption() == L"Set Riddle"; }));
    press(VK_SPACE);
    const TextEditor editor = TextEditor::of(*program);
    ASSERT_TRUE(editor);
    for (const WORD key : {L'P', L'E', L'T'})
        editor.window().press(key);
    editor.window().press(VK_RETURN);
    ASSERT_TRUE(waitUntil([this] { return dialog.riddle() == L"pet"; }));
    ASSERT_NO_FATAL_FAILURE(tabTo(dialog.window(), PasswordDialog::Proceed));
    press(VK_RETURN);
    expectEnd();
    EXPECT_NE(contentOf(encrypted(file)).find("pet"), std::string::npos);
}

TEST_F(KeyboardJob, isCancelledWithSpaceOnTheButtonAndWithEscape)
{
    lock({file}, L"secret");
    startAtEdit(folder.addDecryptJob({encrypted(file)}));
    ASSERT_NO_FATAL_FAILURE(tabTo(dialog.window(), PasswordDialog::Cancel));
    press(VK_SPACE);
    expectEnd();
    startAtEdit(folder.addDecryptJob({encrypted(file)}));
    typeLetters(L"secret");
    press(VK_ESCAPE);
    expectEnd();
    EXPECT_EQ(names(), Names{L"letter.txt.zel"});
}

TEST_F(KeyboardJob, skipsAFileOfAnError)
{
    lock({file}, L"secret");
    folder.addFile(L"letter.txt", "in the way");
    startAtEdit(folder.addDecryptJob({encrypted(file)}, true));
    typeLetters(L"secret");
    press(VK_RETURN);
    const Window error = program->window(L"File Problem");
    ASSERT_TRUE(error);
    error.press(VK_SHIFT); // brings it to the front
    ASSERT_TRUE(waitUntil([&] { return focusIn(error) != nullptr; }));
    ASSERT_NO_FATAL_FAILURE(tabTo(error, SkipFileButton));
    error.press(VK_SPACE);
    expectEnd();
    EXPECT_EQ(contentOf(file), "in the way");
    EXPECT_TRUE(fs::exists(encrypted(file)));
}

TEST_F(KeyboardJob, pausesAndCancelsARun)
{
    const std::string content(std::size_t{8} << 20, 'x');
    const std::vector<Path> files = folder.addFiles(30, content);
    startAtEdit(folder.addEncryptJob(files, DeleteFiles));
    typeLetters(L"secret");
    press(VK_TAB, 2);
    typeLetters(L"secret");
    press(VK_RETURN);
    const Window progress = windowWith(*program, CancelJobButton);
    ASSERT_TRUE(progress);
    ASSERT_NO_FATAL_FAILURE(tabTo(progress, PauseJobButton));
    progress.press(VK_SPACE);
    ASSERT_TRUE(waitUntil([&] { return progress.text(PauseJobButton) == L"Resume"; }));
    EXPECT_FALSE(progress.isEnabled(CancelJobButton));
    progress.press(VK_SPACE);
    ASSERT_TRUE(waitUntil([&] { return progress.isEnabled(CancelJobButton); }));
    ASSERT_NO_FATAL_FAILURE(tabTo(progress, CancelJobButton));
    progress.press(VK_SPACE);
    expectEnd();
    int left = 0;
    for (const Path& source : files)
    {
        left += fs::exists(source) ? 1 : 0;
        EXPECT_NE(fs::exists(source), fs::exists(encrypted(source))) << source;
        EXPECT_TRUE(!fs::exists(source) || contentOf(source) == content) << source;
    }
    EXPECT_GT(left, 0);
    EXPECT_FALSE(hasTemporary());
}
