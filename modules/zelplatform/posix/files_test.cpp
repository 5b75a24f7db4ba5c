#include "zelplatform/files.h"

#include "zelplatform/scratch_folder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZelPlatform
{
namespace
{

class PosixFiles : public ScratchFolder
{
};

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

unsigned modeOf(const std::filesystem::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 0777U;
}

TEST_F(PosixFiles, keepTheCommentFromOtherUsers)
{
    ASSERT_TRUE(replacePrivateFile(file("new/jobrunner/comment").wstring(), "x"));
    EXPECT_EQ(modeOf(file("new")), 0700U);
    EXPECT_EQ(modeOf(file("new/jobrunner/comment")), 0600U);
}

TEST_F(PosixFiles, stayAsTheyWereWhenThereIsNoRoom)
{
    ASSERT_TRUE(replacePrivateFile(file("comment").wstring(), "before"));
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small = {4, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool replaced = replacePrivateFile(file("comment").wstring(), "afterwards");
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(replaced);
    EXPECT_EQ(readFile(file("comment").wstring(), 100), "before");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file("comment").parent_path()), {}), 1);
}

TEST_F(PosixFiles, liveInTheFolderOfSettings)
{
    const Variable home("HOME", "/home/me");
    {
        const Variable settings("XDG_CONFIG_HOME", "/settings");
        EXPECT_EQ(userCommentFile(), L"/settings/jobrunner/sfx-comment.txt");
    }
    for (const char* unset : {static_cast<const char*>(nullptr), "", "relative"})
    {
        const Variable settings("XDG_CONFIG_HOME", unset);
        EXPECT_EQ(userCommentFile(), L"/home/me/.config/jobrunner/sfx-comment.txt");
    }
}

TEST_F(PosixFiles, areFoundWithoutAHomeInTheEnvironment)
{
    const Variable settings("XDG_CONFIG_HOME", nullptr);
    const Variable home("HOME", nullptr);
    EXPECT_TRUE(userCommentFile().ends_with(L"/.config/jobrunner/sfx-comment.txt"));
}

TEST_F(PosixFiles, takeARelativeHomeAsNone)
{
    const Variable settings("XDG_CONFIG_HOME", nullptr);
    const Variable home("HOME", "relative");
    EXPECT_TRUE(userCommentFile().starts_with(L"/"));
    EXPECT_EQ(userCommentFile().find(L"relative"), std::wstring::npos);
}

TEST_F(PosixFiles, areNothingWhileTheyGrow)
{
    // A file of the system that tells a size of 0 and still has content reads like one that grows.
    EXPECT_FALSE(readFile(L"/proc/self/status", 100'000));
}

TEST_F(PosixFiles, areNotPipesOrDevices)
{
    ASSERT_EQ(::mkfifo(file("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(readFile(file("pipe").wstring(), 100));
    EXPECT_FALSE(readFile(L"/dev/zero", 100));
}

TEST_F(PosixFiles, areNothingWhenTheyMayNotBeRead)
{
    write(file("secret"), "x");
    EXPECT_TRUE(readFile(file("secret").wstring(), 100));
    ::chmod(file("secret").c_str(), 0);
    // The superuser may read every file, so look as somebody else.
    constexpr uid_t nobody = 65534;
    const uid_t user = ::geteuid();
    ASSERT_EQ(::seteuid(user == 0 ? nobody : user), 0);
    EXPECT_FALSE(readFile(file("secret").wstring(), 100));
    ASSERT_EQ(::seteuid(user), 0);
}

} // namespace
} // namespace ZelPlatform
