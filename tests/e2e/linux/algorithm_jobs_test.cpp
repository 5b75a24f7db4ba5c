#include <filesystem>

#include "linux/key_files.h"
#include "linux/password_jobs.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

struct Algorithm
{
    int number;
    std::string name;
    bool available;
};

const std::vector<Algorithm> Algorithms = {
    {0, "DESX", false},    {1, "BLOWFISH-448", true}, {2, "3-DES", true},    {3, "AES-256", true},
    {4, "RC2", true},      {5, "DIAMOND2", false},    {6, "TEA-128", false}, {7, "SAFER-128", false},
    {8, "3-WAY", false},   {9, "GOST-256", true},     {10, "SHARK", false},  {11, "CAST256E", false},
    {12, "SQUARE", false}, {13, "SKIPJACK80", false}, {14, "TWOFISH", true}, {15, "MARS-448", false},
    {16, "SERPENT", true},
};

/// Where an encrypted file tells its algorithm.
constexpr std::size_t PlaceOfAlgorithm = 10;

std::string fileOf(const Algorithm& algorithm)
{
    return algorithm.name + ".txt";
}

} // namespace

class AlgorithmJobs : public PasswordJobs
{
protected:
    PasswordTerminal& start(const Path& file)
    {
        // The job's own algorithm is not what the window starts with, intended.
        terminal_.emplace(folder.addJob("encrypt", {file}, "\"destiny\": 1, \"algorithm\": 14"));
        EXPECT_TRUE(terminal_->asksForNewPassword()) << terminal_->shown();
        terminal_->more();
        return *terminal_;
    }

    const Path& key = KeyFiles::shared().symmetric;

private:
    std::optional<PasswordTerminal> terminal_;
};

TEST_F(AlgorithmJobs, bringBackTheSameBytesWithEachThatIsAvailable)
{
    std::vector<Path> files;
    for (const Algorithm& algorithm : Algorithms)
    {
        if (!algorithm.available)
            continue;
        files.push_back(folder.addFile(fileOf(algorithm), manyBytes(300000) + algorithm.name));
        PasswordTerminal& terminal = start(files.back());
        terminal.algorithm(algorithm.name);
        terminal.keyFile(key);
        ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(contentOf(encrypted(files.back())).at(PlaceOfAlgorithm), algorithm.number);
        EXPECT_FALSE(fs::exists(files.back()));
    }
    decryptByKey(encrypted(files), key);
    for (const Path& file : files)
        EXPECT_EQ(contentOf(file), manyBytes(300000) + file.stem().string()) << file;
}

TEST_F(AlgorithmJobs, refuseAMissingOneBeforeAnythingIsWritten)
{
    for (const Algorithm& algorithm : Algorithms)
    {
        if (algorithm.available)
            continue;
        const Path file = folder.addFile(fileOf(algorithm), "dear reader");
        PasswordTerminal& terminal = start(file);
        terminal.algorithm(std::to_string(algorithm.number));
        terminal.keyFile(key);
        EXPECT_TRUE(
            terminal.tells(file, "The encryption algorithm " + algorithm.name + " is not available in this engine."))
            << terminal.shown();
        EXPECT_FALSE(fs::exists(encrypted(file)));
        terminal.skip();
        EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
        EXPECT_EQ(names(), std::vector<std::string>{fileOf(algorithm)});
        EXPECT_EQ(contentOf(file), "dear reader");
        fs::remove(file);
    }
}

TEST_F(AlgorithmJobs, startWithAesWhateverTheJobSaysAndTakeNumbersAndNamesInAnyLetters)
{
    const Path file = folder.addFile("letter.txt");
    PasswordTerminal& terminal = start(file);
    EXPECT_NE(terminal.shown().find("Algorithm: AES-256\n"), std::string::npos) << terminal.shown();
    terminal.choose('a');
    for (const std::string unknown : {"17", "-1", "AES", "rot13"})
    {
        ASSERT_TRUE(terminal.expect("Algorithm (number or name, Enter for AES-256): ")) << terminal.shown();
        terminal.answer(unknown);
        EXPECT_TRUE(terminal.expect("There is no such algorithm: " + unknown + "\n")) << terminal.shown();
    }
    ASSERT_TRUE(terminal.expect("Enter for AES-256): ")) << terminal.shown();
    terminal.answer("serpent");
    ASSERT_TRUE(terminal.expect("Algorithm: SERPENT\n")) << terminal.shown();
    ASSERT_TRUE(terminal.expect("Cancel (c): "));
    terminal.newPassword(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(encrypted(file)).at(PlaceOfAlgorithm), 16);
}
