#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

class KeyFileJob : public DialogJob
{
protected:
    /// Runs an encryption by a key file that does not load, up to its end.
    void expectRefusal(const Path& key, const std::wstring& text)
    {
        const Names before = names();
        startUpToDialog(folder.addEncryptJob({file}, DeleteFiles));
        proceedWithKeyFile(key);
        const Window box = program->window(L"Cannot load key file");
        ASSERT_TRUE(box);
        EXPECT_TRUE(waitUntil([&] { return box.shows(L"Cannot load key file: " + text); })) << Path(box.allTexts());
        box.press(VK_RETURN);
        expectEnd();
        EXPECT_EQ(names(), before);
        EXPECT_EQ(contentOf(file), "dear reader");
    }

    /// The balloon of the dialog; its text is its caption.
    void expectBalloon(const std::wstring& text)
    {
        EXPECT_TRUE(program->window(text)) << Path(text);
        EXPECT_TRUE(dialog.window().exists());
    }

    const Path file = folder.addFile(L"letter.txt", "dear reader");
};

TEST_F(KeyFileJob, encryptsForAPublicKeyWhatOnlyItsPrivateKeyOpens)
{
    const Path pub = folder.path() / L"public.zelkey";
    const Path priv = folder.path() / L"private.zelkey";
    const Path pair = folder.path() / L"pair.zelkey";
    {
        const RunningProgram maker(programUnderTest().parent_path() / L"make_key.exe",
                                   L"rsa " + quoted(pub) + L' ' + quoted(priv) + L' ' + quoted(pair));
        ASSERT_EQ(maker.exitCode(LongLimit), 0);
    }
    expectRefusal(priv, L"A private key only decrypts; encrypting needs the public one.");
    startUpToDialog(folder.addEncryptJob({file}, DeleteFiles));
    proceedWithKeyFile(pub);
    expectEnd();
    EXPECT_FALSE(fs::exists(file));

    startUpToDialog(folder.addDecryptJob({encrypted(file)}));
    proceedWithKeyFile(pub);
    expectBalloon(L"Incompatible key type for decryption.");
    dialog.replaceKeyFile(priv.wstring());
    dialog.click(PasswordDialog::Proceed);
    expectEnd();
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(KeyFileJob, asksAgainAfterAWrongKeyFileAndShowsIt)
{
    const Path right = makeKey(L"right.zelkey");
    const Path wrong = makeKey(L"wrong.zelkey");
    startUpToDialog(folder.addEncryptJob({file}, DeleteFiles));
    proceedWithKeyFile(right);
    expectEnd();

    startUpToDialog(folder.addDecryptJob({encrypted(file)}, true));
    proceedWithKeyFile(wrong);
    expectDialog(L"Provide Key for ");
    EXPECT_EQ(dialog.keyFile(), wrong.wstring());
    EXPECT_FALSE(fs::exists(file));
    dialog.replaceKeyFile(right.wstring());
    dialog.click(PasswordDialog::Proceed);
    expectEnd();
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_FALSE(fs::exists(encrypted(file)));
}

TEST_F(KeyFileJob, refusesKeyFilesThatDoNotLoadAndTouchesNothing)
{
    const Path key = makeKey(L"my.zelkey");
    const std::string whole = contentOf(key);
    expectRefusal(folder.path() / L"missing.zelkey", L"The file does not exist.");
    expectRefusal(folder.path(), L"The key file is a folder.");
    expectRefusal(folder.addFile(L"empty.zelkey", ""), L"The key file is empty.");
    expectRefusal(folder.addFile(L"note.zelkey", "dear reader"), L"The file is no key file.");
    expectRefusal(folder.addFile(L"cut.zelkey", whole.substr(0, whole.size() / 2)), L"The key file is incomplete.");
    std::string damaged = whole;
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    expectRefusal(folder.addFile(L"damaged.zelkey", damaged), L"The key file is damaged.");
}

TEST_F(KeyFileJob, tellsInABalloonWhatDoesNotLoadForADecryption)
{
    const Path key = makeKey(L"my.zelkey");
    startUpToDialog(folder.addEncryptJob({file}, DeleteFiles));
    proceedWithKeyFile(key);
    expectEnd();

    startUpToDialog(folder.addDecryptJob({encrypted(file)}));
    proceedWithKeyFile(folder.path() / L"missing.zelkey");
    expectBalloon(L"The file does not exist.");
    const std::pair<Path, const wchar_t*> keys[] = {
        {folder.path(), L"The key file is a folder."},
        {folder.addFile(L"empty.zelkey", ""), L"The key file is empty."},
        {folder.addFile(L"note.zelkey", "dear reader"), L"The file is no key file."}};
    for (const auto& [path, text] : keys)
    {
        dialog.replaceKeyFile(path.wstring());
        dialog.click(PasswordDialog::Proceed);
        expectBalloon(text);
    }
    dialog.click(PasswordDialog::Cancel);
    expectEnd();
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(encrypted(file)));
}
