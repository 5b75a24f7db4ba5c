#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

#include "linux/key_files.h"
#include "linux/password_jobs.h"

// What becomes of the source files of an encryption.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string Content = manyBytes(600000);

std::string sentenceOf(int destiny)
{
    if (destiny == Keep)
        return "Origin: Keep original files (do not delete).";
    return destiny == Delete ? "Origin: Delete original files after encryption."
                             : "Origin: Wipe original files after encryption.";
}

/// Leads to the content of a file when its name is gone, without having the file open.
class Handle
{
public:
    explicit Handle(const Path& file) : descriptor_(open(file.c_str(), O_PATH | O_CLOEXEC)) {}
    ~Handle() { close(descriptor_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    std::string content() const { return contentOf("/proc/self/fd/" + std::to_string(descriptor_)); }

private:
    int descriptor_;
};

} // namespace

/// By what becomes of the sources in the end, and how often the user changes that first.
class DestinyJobs : public PasswordJobs, public testing::WithParamInterface<std::tuple<int, int>>
{
protected:
    int destiny() const { return std::get<0>(GetParam()); }
    int changes() const { return std::get<1>(GetParam()); }
    int destinyOfJob() const { return (destiny() + 3 - changes()) % 3; }
};

INSTANTIATE_TEST_SUITE_P(Destinies, DestinyJobs,
                         testing::Combine(testing::Values(Keep, Delete, Wipe), testing::Values(0, 1)));

TEST_P(DestinyJobs, dealWithTheSourcesAsTheLastAnswerSays)
{
    const Path file = folder.addFile("letter.txt", Content);
    const Handle handle(file);

    PasswordTerminal terminal(folder.addEncryptJob({file}, destinyOfJob()));
    ASSERT_TRUE(terminal.expect(sentenceOf(destinyOfJob()))) << terminal.shown();
    for (int change = 1; change <= changes(); ++change)
    {
        ASSERT_TRUE(terminal.expect("Cancel (c): "));
        terminal.choose('o');
        ASSERT_TRUE(terminal.expect(sentenceOf((destinyOfJob() + change) % 3))) << terminal.shown();
    }
    ASSERT_TRUE(terminal.expect("Cancel (c): "));
    terminal.keyFile(KeyFiles::shared().symmetric);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();

    EXPECT_EQ(fs::exists(file), destiny() == Keep);
    EXPECT_EQ(handle.content() == Content, destiny() != Wipe)
        << "a deleted file keeps its content, a wiped one does not";
    fs::remove(file);
    decryptByKey({encrypted(file)}, KeyFiles::shared().symmetric);
    EXPECT_EQ(contentOf(file), Content);
}

class SourcesOfJobs : public PasswordJobs
{
};

TEST_F(SourcesOfJobs, areWipedWhenTheJobNamesAnUnknownDestinyOnceTheUserHasSeenIt)
{
    const Path file = folder.addFile("letter.txt");
    PasswordTerminal terminal(folder.addEncryptJob({file}, 7));
    ASSERT_TRUE(terminal.expect(sentenceOf(Wipe))) << terminal.shown();
    ASSERT_TRUE(terminal.expect("Cancel (c): "));
    terminal.newPassword(Password);
    EXPECT_EQ(terminal.exitCode(), 0);
    EXPECT_EQ(names(), std::vector<std::string>{"letter.txt.zel"});
}

TEST_F(SourcesOfJobs, stayWhenAnotherNameOfAWipedFileIsNotInTheList)
{
    const Path file = folder.addFile("letter.txt", "dear reader");
    fs::create_hard_link(file, folder.path() / "other name.txt");
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword(Password);
    EXPECT_TRUE(terminal.tells(file, "The file has other names (hard links) outside the list; wiping it would destroy "
                                     "their content too."))
        << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0);
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_EQ(contentOf(folder.path() / "other name.txt"), "dear reader");
}

TEST_F(SourcesOfJobs, areNotWipedWhileAnotherProgramHasThemOpen)
{
    const Path file = folder.addFile("letter.txt", "dear reader");
    const int other = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    PasswordTerminal terminal(folder.addEncryptJob({file}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword(Password);
    EXPECT_TRUE(terminal.tells(file, "The file is in use by another program.")) << terminal.shown();
    EXPECT_EQ(contentOf(file), "dear reader");
    close(other);
    terminal.tryAgain();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), std::vector<std::string>{"letter.txt.zel"});
}

TEST_F(SourcesOfJobs, mayHaveTwoNamesInTheList)
{
    const Path& key = KeyFiles::shared().symmetric;
    for (const int destiny : {Delete, Wipe})
    {
        const Path file = folder.addFile("letter.txt", "dear reader");
        const Path other = folder.path() / "other name.txt";
        fs::create_hard_link(file, other);
        encryptByKey({file, other}, key, destiny);
        EXPECT_EQ(names(), (std::vector<std::string>{"letter.txt.zel", "other name.txt.zel"}));
        decryptByKey(encrypted({file, other}), key);
        EXPECT_EQ(contentOf(file), "dear reader");
        EXPECT_EQ(contentOf(other), "dear reader");
        for (const Path& name : {file, other, encrypted(file), encrypted(other)})
            fs::remove(name);
    }
}

TEST_F(SourcesOfJobs, areTakenOnceWhenTheListNamesThemTwice)
{
    const Path file = folder.addFile("sub/letter.txt", "dear reader");
    encrypt({file, file, folder.path() / "sub", folder.path() / "sub" / "*.txt"}, Wipe);
    EXPECT_EQ(names(), std::vector<std::string>{"sub/letter.txt.zel"});
    decrypt({encrypted(file), folder.path() / "sub", encrypted(file)});
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(SourcesOfJobs, areNotWipedForAnEncryptedFileThatWasThereBefore)
{
    const Path empty = folder.addFile("empty.txt", "");
    const Path former = folder.addFile("empty.txt.zel", "somebody's file");
    PasswordTerminal terminal(folder.addEncryptJob({empty}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword(Password);
    EXPECT_TRUE(terminal.tells(empty, "A file with the name of the result exists already; it is not replaced."))
        << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0);
    EXPECT_TRUE(fs::exists(empty));
    EXPECT_EQ(contentOf(former), "somebody's file");
}
