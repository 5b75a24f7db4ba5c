#include <filesystem>

#include "linux/key_files.h"
#include "linux/password_jobs.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

class KeyFileJobs : public PasswordJobs
{
protected:
    const Path letter = folder.addFile("letter.txt", "dear reader");
};

TEST_F(KeyFileJobs, decryptWithTheKeyThatBelongsToTheOneTheyEncryptWith)
{
    const KeyFiles& keys = KeyFiles::shared();
    const std::vector<std::pair<Path, Path>> fitting = {{keys.symmetric, keys.symmetric},
                                                        {keys.publicRsa, keys.privateRsa},
                                                        {keys.publicRsa, keys.pair},
                                                        {keys.pair, keys.privateRsa}};
    for (const auto& [encrypting, decrypting] : fitting)
    {
        encryptByKey({letter}, encrypting);
        PasswordTerminal terminal(folder.addDecryptJob({encrypted(letter)}, true));
        ASSERT_TRUE(terminal.asksForPassword());
        terminal.keyFile(decrypting);
        EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(contentOf(letter), "dear reader") << encrypting << " and " << decrypting;
        EXPECT_FALSE(fs::exists(encrypted(letter)));
    }
}

TEST_F(KeyFileJobs, askAgainAfterAKeyThatDoesNotFit)
{
    const KeyFiles& keys = KeyFiles::shared();
    encryptByKey({letter}, keys.symmetric);
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(letter)}));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.keyFile(keys.otherSymmetric);
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(letter))) << terminal.shown();
    terminal.keyFile(keys.pair);
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(letter))) << terminal.shown();
    EXPECT_NE(terminal.shown().find("Key file: " + keys.pair.string() + "\n"), std::string::npos)
        << "what was tried is shown: " << terminal.shown();
    terminal.keyFile(keys.symmetric);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(letter), "dear reader");
}

TEST_F(KeyFileJobs, askForTheKeyFileOfAFileAndThePasswordOfAnother)
{
    const Path other = folder.addFile("other.txt", "by password");
    encryptByKey({letter}, KeyFiles::shared().publicRsa);
    encrypt({other});
    PasswordTerminal terminal(folder.addDecryptJob(encrypted({letter, other})));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.keyFile(KeyFiles::shared().privateRsa);
    ASSERT_TRUE(terminal.asksForPasswordOf(encrypted(other))) << terminal.shown();
    terminal.choose('k');
    ASSERT_TRUE(terminal.expect("Path of the key file (Enter for none): "));
    terminal.answer("");
    ASSERT_TRUE(terminal.expect("Your Key File: Provide key file path, please.\n")) << terminal.shown();
    ASSERT_TRUE(terminal.expect("Cancel (c): "));
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(letter), "dear reader");
    EXPECT_EQ(contentOf(other), "by password");
}

TEST_F(KeyFileJobs, doNotDecryptWithAPublicKey)
{
    const KeyFiles& keys = KeyFiles::shared();
    encryptByKey({letter}, keys.publicRsa);
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(letter)}));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.keyFile(keys.publicRsa);
    ASSERT_TRUE(terminal.expect("Your Key File: Incompatible key type for decryption.\n")) << terminal.shown();
    ASSERT_TRUE(terminal.expect("Cancel (c): "));
    EXPECT_FALSE(fs::exists(letter));
    terminal.keyFile(keys.privateRsa);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(letter), "dear reader");
}

TEST_F(KeyFileJobs, doNotEncryptWithAPrivateKey)
{
    PasswordTerminal terminal(folder.addEncryptJob({letter}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.keyFile(KeyFiles::shared().privateRsa);
    EXPECT_TRUE(terminal.refusesKeyFile("A private key only decrypts; encrypting needs the public one."))
        << terminal.shown();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(letter), "dear reader");
    EXPECT_FALSE(fs::exists(encrypted(letter)));
}

TEST_F(KeyFileJobs, takeTheNameWithoutItsEndingAndAskAgainForOneThatIsNoFile)
{
    Path key = KeyFiles::shared().symmetric;
    PasswordTerminal terminal(folder.addEncryptJob({letter}, Delete));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.choose('k');
    for (const Path& none : {folder.path() / "none.zelkey", folder.path()})
    {
        ASSERT_TRUE(terminal.expect("Path of the key file (Enter for none): ")) << terminal.shown();
        terminal.answer(none);
        EXPECT_TRUE(terminal.expect("There is no such file: " + none.string() + "\n")) << terminal.shown();
    }
    ASSERT_TRUE(terminal.expect("Path of the key file (Enter for none): "));
    terminal.answer(key.replace_extension());
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(letter));
    EXPECT_TRUE(fs::exists(encrypted(letter)));
}

/// A key file that cannot be used, and what is told about it.
struct BadKeyFile
{
    const char* name;
    Path (*make)(const SampleFolder& folder);
    std::string message;
};

class BadKeyFiles : public KeyFileJobs, public testing::WithParamInterface<BadKeyFile>
{
};

TEST_P(BadKeyFiles, endAnEncryptionBeforeItTouchesAnything)
{
    PasswordTerminal terminal(folder.addEncryptJob({letter}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.keyFile(GetParam().make(folder));
    EXPECT_TRUE(terminal.refusesKeyFile(GetParam().message)) << terminal.shown();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(letter), "dear reader");
    EXPECT_FALSE(fs::exists(encrypted(letter)));
}

TEST_P(BadKeyFiles, areRefusedByADecryptionWhichAsksAgain)
{
    encryptByKey({letter}, KeyFiles::shared().symmetric);
    PasswordTerminal terminal(folder.addDecryptJob({encrypted(letter)}, true));
    ASSERT_TRUE(terminal.asksForPassword());
    terminal.keyFile(GetParam().make(folder));
    EXPECT_TRUE(terminal.expect("Your Key File: " + GetParam().message + "\n")) << terminal.shown();
    EXPECT_TRUE(terminal.expect("Cancel (c): "));
    terminal.cancel();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_FALSE(fs::exists(letter));
    EXPECT_TRUE(fs::exists(encrypted(letter)));
}

const BadKeyFile BadOnes[] = {
    {"empty", [](const SampleFolder& folder) { return folder.addFile("k.zelkey", ""); }, "The key file is empty."},
    {"otherFile", [](const SampleFolder& folder) { return folder.addFile("k.zelkey", "my key is under the mat"); },
     "The file is no key file."},
    {"device", [](const SampleFolder&) { return Path("/dev/null"); }, "The file is no key file."},
    {"large", [](const SampleFolder& folder) { return folder.addFile("k.zelkey", manyBytes(9000)); },
     "The file is too large for a key file."},
    {"cutOff",
     [](const SampleFolder& folder)
     { return folder.addFile("k.zelkey", contentOf(KeyFiles::shared().symmetric).substr(0, 79)); },
     "The key file is incomplete."},
    {"changed",
     [](const SampleFolder& folder)
     {
         std::string bytes = contentOf(KeyFiles::shared().symmetric);
         bytes[20] ^= 1;
         return folder.addFile("k.zelkey", bytes);
     },
     "The key file is damaged."},
    {"laterVersion",
     [](const SampleFolder& folder)
     {
         std::string bytes = contentOf(KeyFiles::shared().symmetric);
         bytes[8] = 2;
         return folder.addFile("k.zelkey", bytes);
     },
     "The key file has the version 2, which this engine does not know."},
};

INSTANTIATE_TEST_SUITE_P(Files, BadKeyFiles, testing::ValuesIn(BadOnes),
                         [](const auto& test) { return std::string(test.param.name); });
