#include "windows/decryption_password/terminal/decryption_password_view.h"

#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "windows/decryption_password/decryption_password_window.h"
#include "windows/framework/terminal/key_file_prompt.h"
#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{

const std::string Question = "Password (p) / Key file (k) / Ignore (i) / Cancel (c): ";
const std::string PasswordAgain = "Same password (Enter) / " + Question;
const std::string KeyFileAgain = "Same key file (Enter) / " + Question;
const std::wstring ExistingFile = L"/dev/null";

ReleasePtr<VaultCore::IFactory> makeFactory()
{
    return ReleasePtr<VaultCore::IFactory>(Fakes::FakeEngine::createFactory());
}

/// A whole window on a terminal whose user types this.
class Session : public Fakes::FakeViewFactory
{
public:
    explicit Session(const std::string& typed)
        : piped_(typed), window(std::make_unique<DecryptionPasswordView>(piped_.terminal()), makeFactory)
    {
        setViewFactory(this);
        engine.keyFiles[ExistingFile] = {};
    }
    ~Session() override { setViewFactory(nullptr); }

    std::wstring pickKeyFile(bool) override { return askForKeyFile(piped_.terminal()); }

    int run()
    {
        const int answer = window.doModal();
        shown = piped_.shown();
        return answer;
    }
    bool showed(const std::string& text) const { return shown.find(text) != std::string::npos; }

private:
    Fakes::CallLog log_;
    PipedTerminal piped_;

public:
    Fakes::FakeEngine engine{log_};
    DecryptionPasswordWindow window;
    std::string shown;
};

} // namespace

TEST(DecryptionPasswordInTerminal, opensWithHeaderOriginAndChoices)
{
    Session session("c\n");
    session.window.setDecryptionMode(0);
    EXPECT_EQ(session.run(), DecryptionCancelled);
    EXPECT_EQ(session.shown, "Enter Password\nPlease enter password or provide key file to decrypt selected files on "
                             "your computer.\nOrigin: Keep original files (do not delete).\n" +
                                 Question + "\n");
}

TEST(DecryptionPasswordInTerminal, aRepeatedRequestNamesTheFileInShort)
{
    const Fakes::FakePlatform platform(L'/');
    Session session("c\n");
    session.window.setFileName(L"/" + std::wstring(50, L'd') + L"/a.zel");
    session.run();
    EXPECT_TRUE(session.showed("Provide Key for /dddd"));
    EXPECT_TRUE(session.showed(".../a.zel\nOrigin: Delete original files after decryption.\n"));
}

TEST(DecryptionPasswordInTerminal, aFileNameStaysOnItsLine)
{
    const Fakes::FakePlatform platform(L'/');
    Session session("c\n");
    session.window.setFileName(L"a\nb");
    session.run();
    EXPECT_TRUE(session.showed("Provide Key for a?b\n"));
}

TEST(DecryptionPasswordInTerminal, aPasswordIsTyped)
{
    Session session("p\nsecret\n");
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_EQ(session.window.getPassword(), L"secret");
    EXPECT_EQ(session.window.getKeyFile(), L"");
}

TEST(DecryptionPasswordInTerminal, anEmptyLineAsksForThePassword)
{
    Session session("\nsecret\n");
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_EQ(session.window.getPassword(), L"secret");
}

TEST(DecryptionPasswordInTerminal, anEmptyPasswordIsRefused)
{
    Session session("p\n\np\nsecret\n");
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_TRUE(session.showed("Your Password: Enter your password, please.\n" + Question));
}

TEST(DecryptionPasswordInTerminal, aFileCanBeIgnored)
{
    EXPECT_EQ(Session("i\n").run(), DecryptionIgnored);
}

TEST(DecryptionPasswordInTerminal, aDocumentCannotBeIgnored)
{
    Session session("i\nc\n");
    session.window.setDecryptionMode(2);
    EXPECT_EQ(session.run(), DecryptionCancelled);
    const std::string question = "Password (p) / Key file (k) / Cancel (c): \n";
    EXPECT_TRUE(
        session.shown.ends_with("Origin: Decrypt, Open, Encrypt again (automatically).\n" + question + question));
    EXPECT_TRUE(session.showed("Please enter password to open the document in the associated application.\n"));
}

TEST(DecryptionPasswordInTerminal, theEndOfTheInputCancelsWhereverItComes)
{
    for (const char* const typed : {"", "x\n", "p\n", "k\n", "k\n/dev/null/none\n"})
        EXPECT_EQ(Session(typed).run(), DecryptionCancelled) << typed;
}

TEST(DecryptionPasswordInTerminal, aKeyFileIsPicked)
{
    Session session("k\n/dev/null\n");
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_EQ(session.window.getKeyFile(), ExistingFile);
}

TEST(DecryptionPasswordInTerminal, withoutAKeyFileTheMessageSaysSo)
{
    Session session("k\n\nc\n");
    EXPECT_EQ(session.run(), DecryptionCancelled);
    EXPECT_TRUE(session.showed("Your Key File: Provide key file path, please.\n"));
}

TEST(DecryptionPasswordInTerminal, aKeyOfAWrongTypeIsRefusedUnderItsTitle)
{
    Session session("k\n/dev/null\nc\n");
    session.engine.keyFiles[ExistingFile].type = 2;
    EXPECT_EQ(session.run(), DecryptionCancelled);
    EXPECT_TRUE(session.showed("Your Key File: Incompatible key type for decryption.\n" + KeyFileAgain));
}

TEST(DecryptionPasswordInTerminal, aStaleKeyFileBehindAPasswordIsToldUnderThePasswordsTitle)
{
    Session session("k\n/dev/null\np\nsecret\nk\n\np\nsecret\n");
    session.engine.keyFiles.clear();
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_TRUE(session.showed("Your Password: No key file: /dev/null\n"));
    EXPECT_EQ(session.window.getKeyFile(), L""); // the picker that gave none has emptied it
}

TEST(DecryptionPasswordInTerminal, anEmptyLineProceedsWithAFilledInPassword)
{
    Session session("\n");
    session.window.setPassword(L"secret");
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_EQ(session.window.getPassword(), L"secret");
    EXPECT_TRUE(session.showed(PasswordAgain));
    EXPECT_FALSE(session.showed("secret"));
}

TEST(DecryptionPasswordInTerminal, aFilledInKeyFileIsShownAndAskedForFirst)
{
    Session session("\n");
    session.window.setPassword(L"secret");
    session.window.setKeyFile(ExistingFile);
    EXPECT_EQ(session.run(), DecryptionKeyGiven);
    EXPECT_TRUE(session.showed("Key file: /dev/null\n" + KeyFileAgain));
    EXPECT_EQ(session.window.getKeyFile(), ExistingFile);
}

TEST(DecryptionPasswordInTerminal, theLastOfPasswordAndKeyFileDecidesWhatIsAskedFor)
{
    PipedTerminal piped("");
    DecryptionPasswordView view(piped.terminal());
    view.setKeyFile(L"k.zelkey");
    EXPECT_FALSE(view.isPasswordMode());
    view.setPassword(L"secret");
    EXPECT_TRUE(view.isPasswordMode());
}

TEST(DecryptionPasswordInTerminal, enterAsksForTheKeyFileOnceMoreAfterNoneWasGiven)
{
    Session session("k\n\n\n\nc\n");
    EXPECT_EQ(session.run(), DecryptionCancelled);
    const std::string prompt = "Path of the key file (Enter for none): ";
    const std::size_t first = session.shown.find(prompt);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(session.shown.find(prompt, first + 1), std::string::npos);
    EXPECT_FALSE(session.showed("Password: "));
}

TEST(DecryptionPasswordInTerminal, theChoiceOfAKeyFileCountsWhateverComesOfIt)
{
    PipedTerminal piped("k\n");
    DecryptionPasswordView view(piped.terminal());
    view.doModal();
    EXPECT_FALSE(view.isPasswordMode());
}

TEST(DecryptionPasswordInTerminal, theEndOfTheInputIsToldAsACancel)
{
    PipedTerminal piped("");
    DecryptionPasswordView view(piped.terminal());
    int cancels = 0;
    view.onCancel = {[](void* count) { ++*static_cast<int*>(count); }, &cancels};
    view.doModal();
    EXPECT_EQ(cancels, 1);
}
