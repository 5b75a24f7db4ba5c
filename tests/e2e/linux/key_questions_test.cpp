#include <filesystem>

#include "linux/password_jobs.h"

// Which questions a decryption asks, and in which order.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Other = "another Password";

} // namespace

class KeyQuestions : public PasswordJobs
{
protected:
    KeyQuestions()
    {
        first = folder.addFile("1.txt", "first");
        second = folder.addFile("2.txt", "second");
        third = folder.addFile("3.txt", "third");
    }

    /// Leaves the encrypted files alone. The sources are kept first, since that saves reading back what was written.
    void lock(const std::vector<Path>& files, const std::string& password = Password)
    {
        encrypt(files, Keep, password);
        for (const Path& file : files)
            fs::remove(file);
    }

    int count(const PasswordTerminal& terminal, const std::string& text) const
    {
        int found = 0;
        for (auto at = terminal.shown().find(text); at != std::string::npos; at = terminal.shown().find(text, at + 1))
            ++found;
        return found;
    }

    Path first;
    Path second;
    Path third;
};

TEST_F(KeyQuestions, comeOnceForFilesOfOneKey)
{
    lock({first, second, third});
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({first, second, third})));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(count(terminal, "Cancel (c): "), 1) << terminal.shown();
    EXPECT_EQ(contentOf(third), "third");
}

TEST_F(KeyQuestions, comeOnceForFilesOfOnePasswordFromTwoJobs)
{
    lock({first});
    lock({second});
    decrypt(encrypted({first, second}));
    EXPECT_EQ(contentOf(first), "first");
    EXPECT_EQ(contentOf(second), "second");
}

TEST_F(KeyQuestions, comeOnceForEachOfTwoPasswords)
{
    lock({first, third});
    lock({second}, Other);
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({first, second, third})));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(second))) << terminal.shown();
    EXPECT_EQ(contentOf(first), "first") << "the file before is there by then";
    terminal.password(Other);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(count(terminal, "Cancel (c): "), 2) << "the third file opens with the first password";
    EXPECT_EQ(contentOf(second), "second");
    EXPECT_EQ(contentOf(third), "third");
}

TEST_F(KeyQuestions, nameNoFileAtFirstAndTheFileFromThenOn)
{
    lock({first});
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(first)}));
    ASSERT_TRUE(terminal.asksForPassword());
    EXPECT_EQ(terminal.shown().find("1.txt"), std::string::npos) << terminal.shown();
    terminal.password("wrong at first");
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(first))) << terminal.shown();
    EXPECT_FALSE(fs::exists(first));
    terminal.password("wrong again");
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(first))) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(first), "first");
}

TEST_F(KeyQuestions, takeEnterForThePasswordOfBefore)
{
    lock({first});
    lock({second}, Other);
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({first, second})));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.password("wrong at first");
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(first)));
    terminal.answer("");
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(first))) << "it is as wrong as before";
    terminal.ignore();
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(second)));
    terminal.password(Other);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(first));
    EXPECT_EQ(contentOf(second), "second");
}

TEST_F(KeyQuestions, skipAnIgnoredFileAndGoOn)
{
    lock({first});
    lock({second}, Other);
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({first, second}), true));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.ignore();
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(second))) << terminal.shown();
    terminal.password(Other);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt.zel", "2.txt", "3.txt"}));
}

TEST_F(KeyQuestions, tellWhatBecomesOfTheEncryptedFiles)
{
    lock({first});
    for (const bool deletes : {false, true})
    {
        PasswordTerminal terminal(folder.addDecryptJob({encrypted(first)}, deletes));
        EXPECT_TRUE(terminal.expect(deletes ? "Origin: Delete original files after decryption."
                                            : "Origin: Keep original files (do not delete)."))
            << terminal.shown();
        EXPECT_TRUE(terminal.expect("Cancel (c): "));
        terminal.password(Password);
        EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(contentOf(first), "first");
        EXPECT_EQ(fs::exists(encrypted(first)), !deletes);
        fs::remove(first);
    }
}

TEST_F(KeyQuestions, refuseAnEmptyPasswordAndOneThatIsRepeatedDifferently)
{
    PasswordTerminal terminal(folder.addEncryptJob({first}, Delete));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword("", "");
    EXPECT_TRUE(terminal.expect("Correct your password: Please type password here.\n")) << terminal.shown();
    terminal.newPassword("a secret", "");
    EXPECT_TRUE(terminal.expect("Correct your password: Please repeat password here.\n")) << terminal.shown();
    terminal.newPassword("a secret", "a Secret");
    EXPECT_TRUE(terminal.expect("Correct your password: Your second password must match the first password.\n"))
        << terminal.shown();
    EXPECT_FALSE(fs::exists(encrypted(first)));
    terminal.newPassword(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    decrypt({encrypted(first)});
    EXPECT_EQ(contentOf(first), "first");
}

TEST_F(KeyQuestions, takePasswordsOfAnyCharacters)
{
    const std::vector<std::string> passwords = {" \u65e5\u672c\u8a9e \U0001F600 %s\\\"'` ",
                                                "\xff\xfe" + std::string(4000, 'x')};
    std::vector<Path> files;
    for (std::size_t i = 0; i < passwords.size(); ++i)
    {
        files.push_back(folder.addFile(std::to_string(i) + ".dat", passwords[i]));
        lock({files.back()}, passwords[i]);
    }
    PasswordTerminal terminal(folder.addDecryptJob(encrypted(files)));
    for (std::size_t i = 0; i < passwords.size(); ++i)
    {
        ASSERT_TRUE(i == 0 ? terminal.asksForPassword() : terminal.asksForPasswordOf(encrypted(files[i]))) << i;
        terminal.password(passwords[i]);
    }
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    for (std::size_t i = 0; i < passwords.size(); ++i)
        EXPECT_EQ(contentOf(files[i]), passwords[i]) << i;
}
