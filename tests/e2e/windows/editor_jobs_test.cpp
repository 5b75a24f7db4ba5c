#include "scenarios/kept_comment.h"
#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

// Jobs with the two small editors behind the links of the encryption dialog.

class EditorJob : public DialogJob
{
protected:
    TextEditor openRiddle()
    {
        dialog.followRiddle();
        return TextEditor::of(*program);
    }
    TextEditor openComment()
    {
        dialog.followComment();
        return TextEditor::of(*program);
    }
    void startSelfExtracting(const std::string& fields = R"("destiny": 0)")
    {
        startUpToDialog(folder.addJob("encrypt-sfx", {file}, fields));
        dialog.openSection();
    }
    void makePackage(const std::wstring& comment, bool isDefault)
    {
        startSelfExtracting();
        const TextEditor editor = openComment();
        ASSERT_TRUE(editor);
        editor.write(comment);
        if (isDefault)
            editor.checkDefault();
        editor.ok();
        proceedWithNewPassword(L"secret");
        expectEnd();
        EXPECT_NE(contentOf(package).find(Path(comment).string()), std::string::npos);
        EXPECT_TRUE(fs::remove(package));
    }

    const Path file = folder.addFile(L"letter.txt", "dear reader");
    const Path package = folder.path() / L"letter.txt.exe";
    const KeptComment kept;
};

TEST_F(EditorJob, keepsTheRiddleInTheEncryptedFile)
{
    startUpToDialog(folder.addEncryptJob({file}, DeleteFiles));
    dialog.openSection();
    EXPECT_EQ(dialog.riddle(), L"Set Riddle");
    const TextEditor editor = openRiddle();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor.text(), L"");
    EXPECT_FALSE(editor.hasDefaultBox());
    editor.write(L"my first pet");
    editor.ok();
    EXPECT_TRUE(waitUntil([this] { return dialog.riddle() == L"my first pet"; }));
    proceedWithNewPassword(L"Rex");
    expectEnd();
    EXPECT_EQ(names(), Names{L"letter.txt.zel"});
    EXPECT_NE(contentOf(encrypted(file)).find("my first pet"), std::string::npos);

    startUpToDialog(folder.addDecryptJob({encrypted(file)}));
    // Intended: this dialog has no place for the riddle.
    EXPECT_EQ(dialog.window().allTexts().find(L"my first pet"), std::wstring::npos);
    proceedWithPassword(L"Rex");
    expectEnd();
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(EditorJob, forgetsWhatWasWrittenInACancelledRiddle)
{
    startUpToDialog(folder.addEncryptJob({file}, KeepFiles));
    dialog.openSection();
    const TextEditor first = openRiddle();
    ASSERT_TRUE(first);
    first.write(L"of no account");
    first.cancel();
    EXPECT_EQ(dialog.riddle(), L"Set Riddle");
    const TextEditor second = openRiddle();
    ASSERT_TRUE(second);
    EXPECT_EQ(second.text(), L"");
    second.write(L"my first pet");
    second.ok();
    const TextEditor third = openRiddle();
    ASSERT_TRUE(third);
    EXPECT_EQ(third.text(), L"my first pet");
    third.write(L"of no account");
    third.cancel();
    proceedWithNewPassword(L"Rex");
    expectEnd();
    const std::string content = contentOf(encrypted(file));
    EXPECT_NE(content.find("my first pet"), std::string::npos);
    EXPECT_EQ(content.find("of no account"), std::string::npos);
}

TEST_F(EditorJob, takesTheEnterKeyAsOkInTheRiddleAndAsALineInTheComment)
{
    startSelfExtracting();
    const TextEditor riddle = openRiddle();
    ASSERT_TRUE(riddle);
    riddle.write(L"my first pet");
    riddle.window().press(VK_RETURN);
    ASSERT_TRUE(waitUntil([&] { return !riddle.window().exists(); }));
    EXPECT_TRUE(waitUntil([this] { return dialog.riddle() == L"my first pet"; }));
    const TextEditor editor = openComment();
    ASSERT_TRUE(editor);
    editor.write(L"one");
    ASSERT_TRUE(waitUntil([&] { return editor.text() == L"one"; }));
    editor.window().press(VK_RETURN);
    EXPECT_TRUE(waitUntil([&] { return editor.text() == L"one\r\n"; })) << Path(editor.text());
    editor.window().press(VK_ESCAPE);
    ASSERT_TRUE(waitUntil([&] { return !editor.window().exists(); }));
    dialog.click(PasswordDialog::Cancel);
    expectEnd();
    EXPECT_EQ(names(), Names{L"letter.txt"});
}

TEST_F(EditorJob, beginsWithTheCommentThatWasSavedBefore)
{
    startSelfExtracting();
    const TextEditor before = openComment();
    ASSERT_TRUE(before);
    EXPECT_NE(before.text().find(L"www.halden.example"), std::wstring::npos) << Path(before.text());
    before.cancel();
    dialog.click(PasswordDialog::Cancel);
    expectEnd();

    makePackage(L"tax papers", true);
    EXPECT_EQ(kept.saved(), "tax papers");
    startSelfExtracting();
    const TextEditor after = openComment();
    ASSERT_TRUE(after);
    EXPECT_EQ(after.text(), L"tax papers");
    EXPECT_FALSE(after.isDefaultChecked()) << "the box never remembers";
    after.cancel();
    dialog.click(PasswordDialog::Cancel);
    expectEnd();
}

TEST_F(EditorJob, savesNoCommentWithoutTheBoxOrWithACancelledEditor)
{
    makePackage(L"holiday pictures", false);
    EXPECT_EQ(kept.saved(), std::nullopt);
    startSelfExtracting();
    const TextEditor editor = openComment();
    ASSERT_TRUE(editor);
    editor.checkDefault();
    editor.write(L"of no account");
    editor.cancel();
    proceedWithNewPassword(L"secret");
    expectEnd();
    EXPECT_EQ(kept.saved(), std::nullopt);
    const std::string content = contentOf(package);
    EXPECT_EQ(content.find("of no account"), std::string::npos);
    EXPECT_NE(content.find("www.halden.example"), std::string::npos);
}
