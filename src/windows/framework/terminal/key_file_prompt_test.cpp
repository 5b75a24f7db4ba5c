#include "windows/framework/terminal/key_file_prompt.h"

#include "windows/framework/terminal/piped_terminal.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace JobRunner;
namespace fs = std::filesystem;

namespace
{

class KeyFilePromptTest : public testing::Test
{
protected:
    KeyFilePromptTest()
    {
        std::string name = (fs::temp_directory_path() / "key_file_prompt_XXXXXX").string();
        folder_ = mkdtemp(name.data());
        make("my.zelkey");
        make("plain");
        make("other.key");
        fs::create_directory(folder_ / "sub");
    }
    ~KeyFilePromptTest() override { fs::remove_all(folder_); }

    void make(const std::string& name) { std::ofstream(folder_ / name) << "key"; }
    std::string path(const std::string& name) { return (folder_ / name).string(); }

    /// What is given for these lines, behind the folder.
    std::string answerTo(const std::string& typed)
    {
        PipedTerminal piped(typed);
        const std::wstring answer = askForKeyFile(piped.terminal());
        shown_ = piped.shown();
        return fs::path(answer).string();
    }

    fs::path folder_;
    std::string shown_;
};

} // namespace

TEST_F(KeyFilePromptTest, givesTheFileThatWasNamed)
{
    EXPECT_EQ(answerTo(path("my.zelkey") + "\n"), path("my.zelkey"));
    EXPECT_EQ(answerTo(path("other.key") + "\n"), path("other.key"));
    EXPECT_EQ(answerTo(path("plain") + "\n"), path("plain"));
}

TEST_F(KeyFilePromptTest, theExtensionMayBeLeftOut)
{
    EXPECT_EQ(answerTo(path("my") + "\n"), path("my.zelkey"));
}

TEST_F(KeyFilePromptTest, aNameWithAnExtensionGetsNoSecondOne)
{
    make("old.key.zelkey");
    EXPECT_EQ(answerTo(path("old.key") + "\n"), "");
}

TEST_F(KeyFilePromptTest, asksAgainUntilTheFileExists)
{
    EXPECT_EQ(answerTo(path("none") + "\n" + path("sub") + "\n" + path("my.zelkey") + "\n"), path("my.zelkey"));
    EXPECT_NE(shown_.find("There is no such file: " + path("none") + "\n"), std::string::npos);
    EXPECT_NE(shown_.find("There is no such file: " + path("sub") + "\n"), std::string::npos);
}

TEST_F(KeyFilePromptTest, anEmptyLineOrTheEndGivesNone)
{
    EXPECT_EQ(answerTo("\n" + path("my.zelkey") + "\n"), "");
    EXPECT_EQ(answerTo(""), "");
    EXPECT_EQ(answerTo(path("none") + "\n"), "");
}

TEST_F(KeyFilePromptTest, aRelativePathIsCompleted)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder_);
    EXPECT_EQ(answerTo("my\n"), path("my.zelkey"));
    fs::current_path(before);
}

TEST_F(KeyFilePromptTest, aNameThatIsNoTextIsFound)
{
    make("\xff.zelkey");
    PipedTerminal piped(path("\xff") + "\n");
    EXPECT_TRUE(askForKeyFile(piped.terminal()).ends_with(std::wstring{L'/', wchar_t(0xDCFF)} + L".zelkey"));
}
