#include "windows/encryption_password/terminal/encryption_password_view.h"

#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "windows/encryption_password/encryption_password_window.h"
#include "windows/framework/terminal/key_file_prompt.h"
#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace JobRunner;

namespace
{

constexpr const char* Question = "Password (p) / Key file (k) / Change origin (o) / More >> (m) / Cancel (c): ";
constexpr const char* ExistingFile = "/dev/null";

/// The views of a terminal whose user types this.
class PipedViews : public Fakes::FakeViewFactory
{
public:
    explicit PipedViews(const std::string& typed) : piped(typed) { setViewFactory(this); }
    ~PipedViews() override { setViewFactory(nullptr); }

    std::unique_ptr<IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) override
    {
        return std::make_unique<EncryptionPasswordView>(selfExtracting, piped.terminal());
    }
    std::wstring pickKeyFile(bool) override { return askForKeyFile(piped.terminal()); }

    PipedTerminal piped;
};

/// A whole window on such a terminal.
struct Session
{
    explicit Session(const std::string& typed, bool selfExtracting = false)
        : views(typed), window(selfExtracting, std::make_shared<Fakes::RecordingTracker>())
    {
    }

    bool run()
    {
        const bool confirmed = window.doModal();
        shown = views.piped.shown();
        return confirmed;
    }
    bool showed(const std::string& text) const { return shown.find(text) != std::string::npos; }

    PipedViews views;
    EncryptionPasswordWindow window;
    std::string shown;
};

} // namespace

TEST(EncryptionPasswordInTerminal, opensWithHeaderOriginAndChoices)
{
    Session session("c\n");
    EXPECT_FALSE(session.run());
    EXPECT_EQ(session.shown,
              "Enter Password\nPlease enter password or provide key file to encrypt selected files on your computer.\n"
              "Origin: Delete original files after encryption.\n" +
                  std::string(Question) + "\n");
}

TEST(EncryptionPasswordInTerminal, aPasswordIsTypedTwice)
{
    Session session("p\nsecret\nsecret\n");
    EXPECT_TRUE(session.run());
    EXPECT_TRUE(session.window.isPasswordMode());
    EXPECT_EQ(session.window.getPassword(), L"secret");
    EXPECT_EQ(session.window.getDestiny(), 1);
    EXPECT_EQ(session.window.getAlgorithm(), 3);
    EXPECT_TRUE(session.showed("Password: \nRepeat: \n"));
}

TEST(EncryptionPasswordInTerminal, anEmptyLineChoosesThePassword)
{
    Session session("\nsecret\nsecret\n");
    EXPECT_TRUE(session.run());
    EXPECT_EQ(session.window.getPassword(), L"secret");
}

TEST(EncryptionPasswordInTerminal, eachRefusalIsToldAndAskedAgain)
{
    Session session("p\n\n\np\nsecret\n\np\nsecret\nSecret\np\nok\nok\n");
    EXPECT_TRUE(session.run());
    EXPECT_TRUE(session.showed("Correct your password: Please type password here.\n" + std::string(Question)));
    EXPECT_TRUE(session.showed("Correct your password: Please repeat password here.\n"));
    EXPECT_TRUE(session.showed("Correct your password: Your second password must match the first password.\n"));
    EXPECT_EQ(session.window.getPassword(), L"ok");
}

TEST(EncryptionPasswordInTerminal, theEndOfTheInputCancelsWhereverItComes)
{
    for (const char* const typed : {"", "x\n", "p\n", "p\nsecret\n", "p\nsecret\nother\n", "k\n", "m\n", "m\na\n",
                                    "m\nr\n", "m\ns\n", "m\ns\ntext\n\n"})
        EXPECT_FALSE(Session(typed, true).run()) << typed;
}

TEST(EncryptionPasswordInTerminal, aKeyFileIsPickedOnAnotherThread)
{
    Session session("k\n/dev/null/none\n" + std::string(ExistingFile) + "\n");
    EXPECT_TRUE(session.run());
    EXPECT_FALSE(session.window.isPasswordMode());
    EXPECT_EQ(session.window.getKeyFile(), L"/dev/null");
    EXPECT_TRUE(session.showed("There is no such file: /dev/null/none\n"));
}

TEST(EncryptionPasswordInTerminal, withoutAKeyFileItGoesOnWithoutAWord)
{
    Session session("k\n\n\n\nc\n");
    EXPECT_FALSE(session.run());
    const std::string asked = "Path of the key file (Enter for none): \n" + std::string(Question) + "\n";
    EXPECT_TRUE(session.shown.ends_with(asked + asked));
    EXPECT_FALSE(session.window.isPasswordMode());
}

TEST(EncryptionPasswordInTerminal, aKeyFileThatWasPickedInVainKeepsWhatWasTyped)
{
    Session session("p\none\ntwo\nk\n\nc\n");
    EXPECT_FALSE(session.run());
    EXPECT_EQ(session.window.getPassword(), L"one");
}

TEST(EncryptionPasswordInTerminal, theOriginSteps)
{
    Session session("o\no\no\no\no\np\na\na\n");
    EXPECT_TRUE(session.run());
    EXPECT_TRUE(session.showed("Origin: Wipe original files after encryption.\n"));
    EXPECT_EQ(session.window.getDestiny(), 0);
}

TEST(EncryptionPasswordInTerminal, startsWithTheDestinyItIsGiven)
{
    Session session("p\na\na\n");
    session.window.setDestiny(0);
    EXPECT_TRUE(session.run());
    EXPECT_TRUE(session.showed("Origin: Keep original files (do not delete).\n"));
    EXPECT_EQ(session.window.getDestiny(), 0);
}

TEST(EncryptionPasswordInTerminal, moreIsClosedAtFirst)
{
    Session session("a\nr\ns\nc\n", true);
    EXPECT_FALSE(session.run());
    EXPECT_FALSE(session.showed("Algorithm"));
}

TEST(EncryptionPasswordInTerminal, moreShowsAlgorithmAndRiddle)
{
    Session session("m\nm\nc\n");
    EXPECT_FALSE(session.run());
    EXPECT_TRUE(session.showed("Algorithm: AES-256\nRiddle: none\n"
                               "Password (p) / Key file (k) / Change origin (o) / Algorithm (a) / Riddle (r) / "
                               "<< Less (m) / Cancel (c): \n" +
                               std::string(Question)));
}

TEST(EncryptionPasswordInTerminal, anAlgorithmIsChosenByNumberOrName)
{
    Session byNumber("m\na\n17\n14\np\na\na\n");
    EXPECT_TRUE(byNumber.run());
    EXPECT_EQ(byNumber.window.getAlgorithm(), 14);
    EXPECT_TRUE(byNumber.showed(" 0 DESX              1 BLOWFISH-448      2 3-DES\n"));
    EXPECT_TRUE(byNumber.showed("15 MARS-448         16 SERPENT\nAlgorithm (number or name, Enter for AES-256): "));
    EXPECT_TRUE(byNumber.showed("There is no such algorithm: 17\n"));
    EXPECT_TRUE(byNumber.showed("Algorithm: TWOFISH\n"));
}

TEST(EncryptionPasswordInTerminal, anAlgorithmsNameMayBeTypedInSmallLetters)
{
    Session session("m\na\n3-des\np\na\na\n");
    EXPECT_TRUE(session.run());
    EXPECT_EQ(session.window.getAlgorithm(), 2);
}

TEST(EncryptionPasswordInTerminal, anEmptyLineKeepsTheAlgorithm)
{
    Session session("m\na\n\np\na\na\n");
    EXPECT_TRUE(session.run());
    EXPECT_EQ(session.window.getAlgorithm(), 3);
}

TEST(EncryptionPasswordInTerminal, aClosedSectionStillYieldsItsChoices)
{
    Session session("m\na\n0\nr\nmy <cat>\nm\np\na\na\n");
    EXPECT_TRUE(session.run());
    EXPECT_EQ(session.window.getAlgorithm(), 0);
    EXPECT_EQ(session.window.getRiddle(), L"my <cat>");
    EXPECT_TRUE(session.showed("Riddle: my <cat>\n"));
}

TEST(EncryptionPasswordInTerminal, onlyASelfExtractingJobHasAComment)
{
    Session plain("m\ns\nc\n");
    EXPECT_FALSE(plain.run());
    EXPECT_FALSE(plain.showed("Sfx"));
}

TEST(EncryptionPasswordInTerminal, theCommentIsEditedWithItsDefault)
{
    Session session("m\ns\nnew\n\ny\np\na\na\n", true);
    session.window.setSfxComment(L"old comment");
    EXPECT_TRUE(session.run());
    EXPECT_TRUE(session.showed("Riddle (r) / Sfx Comment (s) / << Less (m)"));
    EXPECT_TRUE(session.showed("old comment\n"));
    EXPECT_EQ(session.window.getSfxComment(), L"new");
    EXPECT_TRUE(session.window.isSfxCommentDefault());
}

TEST(EncryptionPasswordInTerminal, anUntouchedCommentComesBack)
{
    Session session("p\na\na\n", true);
    session.window.setSfxComment(L"old comment");
    EXPECT_TRUE(session.run());
    EXPECT_EQ(session.window.getSfxComment(), L"old comment");
    EXPECT_FALSE(session.window.isSfxCommentDefault());
}

TEST(EncryptionPasswordInTerminal, whatIsTypedAsPasswordIsNotShown)
{
    int user = -1;
    fflush(nullptr); // else the child shows it once more
    const pid_t child = forkpty(&user, nullptr, nullptr, nullptr);
    ASSERT_GE(child, 0);
    if (child == 0)
    {
        Platform::Terminal terminal(STDIN_FILENO, STDOUT_FILENO);
        EncryptionPasswordView view(false, terminal);
        _exit(view.doModal() && view.getPassword() == L"secret" ? 0 : 1);
    }
    // Each line is typed only when it is asked for, as a person does.
    const std::pair<std::string, std::string> steps[] = {
        {Question, "p\n"}, {"Password: ", "secret\n"}, {"Repeat: ", "secret\n"}};
    std::string shown;
    const auto readSome = [&]
    {
        char bytes[256];
        const ssize_t length = read(user, bytes, sizeof bytes);
        if (length > 0)
            shown.append(bytes, static_cast<std::size_t>(length));
        return length > 0;
    };
    for (const auto& [asked, typed] : steps)
    {
        while (!shown.ends_with(asked) && readSome())
        {
        }
        ASSERT_EQ(write(user, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    }
    while (readSome())
    {
    }
    int status = -1;
    waitpid(child, &status, 0);
    close(user);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(shown.ends_with("Password: \r\nRepeat: \r\n"));
}

TEST(EncryptionPasswordInTerminal, theEndOfTheInputAsksForNothingMore)
{
    Session session("");
    EXPECT_FALSE(session.run());
    EXPECT_FALSE(session.showed("Password: "));
}

TEST(EncryptionPasswordInTerminal, tellsOfTypedPasswords)
{
    PipedTerminal piped("p\nsecret\nsecret\n");
    EncryptionPasswordView view(false, piped.terminal());
    int changes = 0;
    view.onPasswordsChanged = {[](void* count) { ++*static_cast<int*>(count); }, &changes};
    EXPECT_TRUE(view.doModal());
    EXPECT_EQ(changes, 1);
}
