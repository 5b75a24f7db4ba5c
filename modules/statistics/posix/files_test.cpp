#include "statistics/files.h"

#include "platform/testing_folder.h"

#include <cstdlib>
#include <optional>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace StatisticsModule
{
namespace
{

/// A variable of the environment, put back at the end.
class Variable
{
public:
    Variable(const char* name, const char* value) : name_(name)
    {
        if (const char* former = std::getenv(name))
            former_ = former;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Variable() { former_ ? ::setenv(name_, former_->c_str(), 1) : ::unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::optional<std::string> former_;
};

unsigned modeOf(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 0777U;
}

} // namespace

TEST(TheJournalOnLinux, isInTheUsersFolderOfStates)
{
    const Variable home("HOME", "/home/me");
    {
        const Variable states("XDG_STATE_HOME", "/states");
        EXPECT_EQ(userJournalFile(), "/states/jobrunner/statistics.log");
    }
    for (const char* unset : {static_cast<const char*>(nullptr), "", "relative"})
    {
        const Variable states("XDG_STATE_HOME", unset);
        EXPECT_EQ(userJournalFile(), "/home/me/.local/state/jobrunner/statistics.log");
    }
}

TEST(TheJournalOnLinux, isFoundWithoutAHomeInTheEnvironment)
{
    const Variable states("XDG_STATE_HOME", nullptr);
    for (const char* unset : {static_cast<const char*>(nullptr), "relative"})
    {
        const Variable home("HOME", unset);
        EXPECT_TRUE(userJournalFile().is_absolute());
        EXPECT_TRUE(userJournalFile().native().ends_with("/.local/state/jobrunner/statistics.log"));
    }
}

TEST(TheJournalOnLinux, isKeptFromOtherUsers)
{
    const TestingFolder folder;
    const fs::path file = TestingFolder::fileOf(folder.path()) / "new" / "statistics.log";
    ASSERT_TRUE(PrivateFile(file).isOpen());
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(file.parent_path()), 0700U);
}

TEST(TheJournalOnLinux, isNoPipeAndNoDevice)
{
    const TestingFolder folder;
    const fs::path pipe = TestingFolder::fileOf(folder.path()) / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(PrivateFile(pipe).isOpen());
    EXPECT_FALSE(PrivateFile("/dev/null").isOpen());
}

} // namespace StatisticsModule
