#include <cstring>
#include <elf.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "linux/password_jobs.h"
#include "recorded/user_account.h"
#include "scenarios/environment.h"

// The program in surroundings that somebody else has prepared, and what it leaves in them.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string IsLink = "This is a link and not a file with content of its own; links are not followed.";

/// The process that was started with this argument, once it is there; 0 when it does not come.
pid_t processOf(const Path& argument)
{
    for (int attempt = 0; attempt < 2000; ++attempt)
    {
        for (const fs::directory_entry& entry : fs::directory_iterator("/proc"))
        {
            const std::string id = entry.path().filename();
            const bool isProcess = id.find_first_not_of("0123456789") == std::string::npos;
            const std::string command = isProcess ? contentOf(entry.path() / "cmdline") : std::string();
            if (command.ends_with('\0' + argument.string() + '\0') && command.find("jobrunner") != std::string::npos)
                return std::stoi(id);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return 0;
}

/// A file of the system's format for programs, as far as its list of what it needs goes.
class ElfFile
{
public:
    explicit ElfFile(const Path& file) : bytes_(contentOf(file)) {}

    bool isOne() const { return bytes_.starts_with(ELFMAG); }

    /// Is there an entry of this kind in the list?
    bool needs(std::int64_t kind) const
    {
        const auto head = at<Elf64_Ehdr>(0);
        for (std::size_t i = 0; i < head.e_phnum; ++i)
        {
            const auto part = at<Elf64_Phdr>(head.e_phoff + i * sizeof(Elf64_Phdr));
            for (std::size_t at_ = 0; part.p_type == PT_DYNAMIC && at_ < part.p_filesz; at_ += sizeof(Elf64_Dyn))
                if (at<Elf64_Dyn>(part.p_offset + at_).d_tag == kind)
                    return true;
        }
        return false;
    }

private:
    template <class Record> Record at(std::size_t offset) const
    {
        Record record = {};
        if (offset + sizeof record <= bytes_.size())
            std::memcpy(&record, bytes_.data() + offset, sizeof record);
        return record;
    }

    const std::string bytes_;
};

class HostileSurroundings : public PasswordJobs
{
};

} // namespace

TEST_F(HostileSurroundings, doNotChangeTheModulesByTheSearchPathOfLibraries)
{
    const Path plants = folder.path() / "plants";
    fs::create_directories(plants);
    for (const char* name : {"zelplatform.so", "vaultcore.so", "statistics.so", "planted.so"})
        fs::copy_file(fs::read_symlink("/proc/self/exe").parent_path() / "planted" / "planted.so", plants / name);
    const Path mark = folder.path() / "mark";
    const EnvironmentVariable marking("JOBRUNNER_PLANTED", mark);
    const EnvironmentVariable search("LD_LIBRARY_PATH", plants);
    const Path file = folder.addFile("letter.txt", "dear reader");
    encrypt({file});
    EXPECT_TRUE(fs::exists(encrypted(file)));
    EXPECT_FALSE(fs::exists(mark));
}

TEST_F(HostileSurroundings, areNotNamedInTheProgramAndItsModules)
{
    int read = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(programUnderTest().parent_path()))
    {
        const ElfFile file(entry.path());
        if (!file.isOne())
            continue;
        ++read;
        EXPECT_TRUE(file.needs(DT_NEEDED)) << entry.path();
        EXPECT_FALSE(file.needs(DT_RPATH)) << entry.path();
        EXPECT_FALSE(file.needs(DT_RUNPATH)) << entry.path();
    }
    EXPECT_GE(read, 4);
}

TEST_F(HostileSurroundings, doNotStopAJobByPipesAndDevices)
{
    const Path pipe = folder.path() / "pipe";
    const Path tree = folder.path() / "tree";
    const Path file = folder.addFile("tree/letter.txt", "dear reader");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((tree / "pipe").c_str(), 0600), 0);
    PasswordTerminal terminal(folder.addEncryptJob({pipe, "/dev/zero", "/dev/stdin", tree}, Wipe));
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(Password);
    for (const Path& refused : {pipe, Path("/dev/zero"), Path("/dev/stdin")})
    {
        EXPECT_TRUE(terminal.tells(refused, IsLink)) << terminal.shown();
        terminal.skip();
    }
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), std::vector<std::string>{"tree/letter.txt.zel"});
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_TRUE(fs::is_fifo(tree / "pipe"));
    PasswordTerminal decryption(folder.addDecryptJob({pipe, "/dev/zero"}));
    for (const Path& refused : {pipe, Path("/dev/zero")})
    {
        EXPECT_TRUE(decryption.tells(refused, IsLink)) << decryption.shown();
        decryption.skip();
    }
    EXPECT_EQ(decryption.exitCode(), 0) << decryption.shown();
}

TEST_F(HostileSurroundings, loseTheLinkToAJobFileAndNotWhatItLeadsTo)
{
    const Path job = folder.addDeleteJob({}, SampleFolder::Delete, "real.json");
    const Path link = folder.path() / "link.json";
    fs::create_symlink(job, link);
    PasswordTerminal terminal(link);
    EXPECT_TRUE(terminal.expect("[y/n] ")) << terminal.shown();
    terminal.answer("n");
    EXPECT_EQ(terminal.exitCode(), 0);
    EXPECT_FALSE(fs::is_symlink(link));
    EXPECT_TRUE(fs::exists(job));
}

TEST_F(HostileSurroundings, seeNothingOfTheFilesWhenTheTerminalHangsUp)
{
    const Path file = folder.addFile("letter.txt", "dear reader");
    const Path job = folder.addEncryptJob({file}, Wipe);
    PasswordTerminal terminal(job);
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    kill(processOf(job), SIGHUP);
    EXPECT_EQ(terminal.exitCode(), 128 + SIGHUP);
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_EQ(names(), std::vector<std::string>{"letter.txt"});
}

TEST_F(HostileSurroundings, doNotReadTheMemoryOfTheProgram)
{
    fs::permissions(folder.path(), fs::perms::all);
    const EnvironmentVariable settings("XDG_CONFIG_HOME", folder.path() / "settings");
    const Path job = folder.addDeleteJob({});
    // A process that may be read belongs to its user, and to the system otherwise. As root all is the system's.
    PasswordTerminal::Command wrapper;
    if (geteuid() == 0)
        wrapper = {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    PasswordTerminal terminal(job, wrapper);
    ASSERT_TRUE(terminal.expect("[y/n] ")) << terminal.shown();
    const std::string record = "/proc/" + std::to_string(processOf(job));
    struct stat status = {};
    ASSERT_EQ(stat((record + "/mem").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 0U);
    const std::string state = contentOf(record + "/status");
    EXPECT_NE(state.find("\nUid:\t" + std::to_string(geteuid() == 0 ? 65534 : geteuid())), std::string::npos) << state;
    terminal.answer("n");
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
}

TEST_F(HostileSurroundings, areShutOutOfWhatIsKept)
{
    const mode_t before = umask(0);
    const Path state = folder.path() / "state";
    const Path settings = folder.path() / "settings";
    const EnvironmentVariable stateFolder("XDG_STATE_HOME", state);
    const EnvironmentVariable settingsFolder("XDG_CONFIG_HOME", settings);
    const Path file = folder.addFile("MarkedName.txt", "MarkedContent");
    PasswordTerminal terminal(folder.addJob("encrypt-sfx", {file}, "\"destiny\": 1, \"comment\": \"a word\""));
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword("MarkedPassword");
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    umask(before);
    int kept = 0;
    for (const Path& place : {state, settings})
    {
        std::error_code none;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place, none))
        {
            const fs::perms all =
                entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
            EXPECT_EQ(entry.status().permissions(), all) << entry.path();
            const std::string content = entry.is_directory() ? std::string() : contentOf(entry.path());
            EXPECT_EQ(content.find("Marked"), std::string::npos) << entry.path() << content;
            ++kept;
        }
    }
    EXPECT_GE(kept, 2);
}
