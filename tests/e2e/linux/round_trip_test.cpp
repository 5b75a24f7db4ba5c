#include <filesystem>
#include <fstream>

#include "linux/password_jobs.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

using Contents = std::map<std::string, std::string>;

const std::string LongestEncryptable = std::string(248, 'n') + "\u65e5"; // 251 bytes, 255 with the ending

/// No two of one size, so that contents under exchanged names are told apart.
const Contents OddNames = {
    {"letter.txt", "dear reader"},
    {"empty.txt", ""},
    {"\u00fcber \u65e5\u672c \U0001F600.bin", manyBytes(3000001)},
    {"a \"quote\" and 'another'.txt", "quotes"},
    {"back\\slash", "not a folder here"},
    {"  spaces  at both ends  ", "spaces"},
    {"-leading dash", "dash"},
    {"--help", "a word for programs"},
    {".hidden", "dot"},
    {"no extension", manyBytes(262143)},
    {"one chunk", manyBytes(262144)},
    {"one chunk more.", manyBytes(262145)},
    {"already.zel", "carries the ending"},
    {"a*b?.txt", "a pattern by its looks"},
    {"$HOME `id` %s %n;", "no command"},
    {LongestEncryptable, "long name"},
};

} // namespace

class RoundTrip : public PasswordJobs
{
protected:
    std::vector<Path> add(const Contents& contents)
    {
        std::vector<Path> files;
        for (const auto& [name, content] : contents)
            files.push_back(folder.addFile(name, content));
        return files;
    }
};

TEST_F(RoundTrip, bringsBackEveryByteUnderEveryName)
{
    const std::vector<Path> files = add(OddNames);
    encrypt(files, Delete);
    for (const Path& file : files)
    {
        EXPECT_FALSE(fs::exists(file)) << file;
        EXPECT_TRUE(fs::exists(encrypted(file))) << file;
    }
    EXPECT_EQ(contentOf(encrypted(folder.path() / "letter.txt")).find("dear reader"), std::string::npos);
    decrypt(encrypted(files));
    for (const auto& [name, content] : OddNames)
        EXPECT_EQ(contentOf(folder.path() / name), content) << name;
    for (const Path& result : encrypted(files))
        EXPECT_TRUE(fs::exists(result)) << result;
    EXPECT_EQ(names().size(), 2 * OddNames.size()) << "something else was left in the folder";
}

TEST_F(RoundTrip, bringsBackTimeAndRights)
{
    const Path file = folder.addFile("letter.txt");
    const auto time = fs::last_write_time(file) - std::chrono::hours(20000);
    fs::last_write_time(file, time);
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    encrypt({file});
    EXPECT_EQ(fs::status(encrypted(file)).permissions(), fs::perms::owner_read | fs::perms::group_read);
    decrypt({encrypted(file)});
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::group_read);
    EXPECT_LT(std::chrono::abs(fs::last_write_time(file) - time), std::chrono::microseconds(1));
}

TEST_F(RoundTrip, refusesANameThatTheEndingMakesTooLong)
{
    const Path file = folder.addFile(std::string(252, 'n'), "dear reader");
    const Path other = folder.addFile("other.txt");
    PasswordTerminal terminal(folder.addEncryptJob({file, other}, Delete));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.newPassword(Password);
    EXPECT_TRUE(terminal.tells(file, "The name is too long for the system.")) << terminal.shown();
    terminal.skip();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_EQ(names(), (std::vector<std::string>{file.filename(), "other.txt.zel"}));
}

TEST_F(RoundTrip, findsNamesThatAreNoTextByTheirFolderAndByAPattern)
{
    const Contents contents = {{"in/\xff\xfe.txt", "in a folder"}, {"by/\xc3.dat", "by a pattern"}};
    add(contents);
    encrypt({folder.path() / "in", folder.path() / "by" / "*.dat"});
    EXPECT_EQ(names(), (std::vector<std::string>{"by/\xc3.dat.zel", "in/\xff\xfe.txt.zel"}));
    decrypt({folder.path() / "in", folder.path() / "by" / "*"});
    for (const auto& [name, content] : contents)
        EXPECT_EQ(contentOf(folder.path() / name), content) << name;
}

TEST_F(RoundTrip, goesThroughFoldersAndLeavesThem)
{
    add({{"tree/a.txt", "a"}, {"tree/sub/b.txt", "bb"}, {"tree/sub/deep/deeper/c.txt", "ccc"}});
    fs::create_directories(folder.path() / "tree" / "empty");
    const Contents before = contentBelow(folder.path() / "tree");
    encrypt({folder.path() / "tree"});
    EXPECT_EQ(names(), (std::vector<std::string>{"tree/a.txt.zel", "tree/empty/", "tree/sub/b.txt.zel",
                                                 "tree/sub/deep/deeper/c.txt.zel"}));
    PasswordTerminal terminal(folder.addDecryptJob({folder.path() / "tree"}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentBelow(folder.path() / "tree"), before);
}

TEST_F(RoundTrip, carriesTheRiddleForEverybodyAndTheExtraTextForTheOwnerOfTheKeyAlone)
{
    const Path file = folder.addFile("letter.txt", "dear reader");
    PasswordTerminal terminal(
        folder.addJob("encrypt", {file}, "\"algorithm\": 16, \"destiny\": 1, \"extraText\": \"a word in secret\""));
    ASSERT_TRUE(terminal.asksForNewPassword());
    terminal.more();
    terminal.riddle("a riddle that goes");
    EXPECT_NE(terminal.shown().find("Riddle: a riddle that goes\n"), std::string::npos) << terminal.shown();
    terminal.riddle("Where did \u65e5\u672c we meet?");
    terminal.newPassword(Password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    const std::string bytes = contentOf(encrypted(file));
    EXPECT_NE(bytes.find("Where did \u65e5\u672c we meet?"), std::string::npos);
    EXPECT_EQ(bytes.find("a riddle that goes"), std::string::npos);
    EXPECT_EQ(bytes.find("a word in secret"), std::string::npos);
    decrypt({encrypted(file)});
    EXPECT_EQ(contentOf(file), "dear reader");
}

TEST_F(RoundTrip, asksForThePasswordOfAnEmptyListToo)
{
    encrypt({});
    PasswordTerminal terminal(folder.addDecryptJob({}));
    EXPECT_EQ(terminal.exitCode(), 0) << "there is nothing to ask for";
    EXPECT_EQ(terminal.shown().find("Password"), std::string::npos) << terminal.shown();
}

TEST_F(RoundTrip, writesIntoTheFolderThatAJobNames)
{
    const std::vector<Path> files = add({{"a.txt", "a"}, {"sub/b.txt", "bb"}});
    fs::create_directories(folder.path() / "my results");
    encrypt(files);
    PasswordTerminal terminal(
        folder.addJob("decrypt", encrypted(files), "\"path\": " + jsonText(folder.path() / "my results")));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(contentBelow(folder.path() / "my results"), (Contents{{"a.txt", "a"}, {"b.txt", "bb"}}));
    EXPECT_FALSE(fs::exists(files.front()));
}
