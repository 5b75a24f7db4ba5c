#include "trapped_program.h"

#include "oracle/sealed.h"
#include "statistics_testing/recorded_statistics.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace fs = std::filesystem;

namespace Faults
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds EndLimit{120};
constexpr const char* TrapLibrary = "fault_trap.so";

/// What the programs report, not among the records of whoever runs the tests.
class Records : public testing::Environment
{
public:
    void SetUp() override { records = std::make_unique<StatisticsTesting::RecordedStatistics>(); }
    void TearDown() override { records.reset(); }
    static inline std::unique_ptr<StatisticsTesting::RecordedStatistics> records;
};

const testing::Environment* const recordsOfTests = testing::AddGlobalTestEnvironment(new Records);

std::optional<std::size_t> numberBehind(const std::string& text, const std::string& name)
{
    std::smatch found;
    if (!std::regex_search(text, found, std::regex(name + ", , ([0-9]+)\\)")))
        return std::nullopt;
    return std::stoul(found[1].str());
}

std::optional<Told> told()
{
    std::string all;
    for (const std::string& call : Records::records->calls())
        all += call + '\n';
    const auto processed = numberBehind(all, "processed_file_count");
    const auto failed = numberBehind(all, "failed_file_count");
    if (!processed || !failed)
        return std::nullopt;
    return Told{*processed, *failed};
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Its output, and what it says of errors, goes to one file.
pid_t start(std::vector<std::string> command, std::vector<std::string> environment, const Path& input,
            const Path& output)
{
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    pid_t process = -1;
    const int error = posix_spawn(&process, command[0].c_str(), &files, nullptr, pointersTo(command).data(),
                                  pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&files);
    if (error != 0)
        throw std::runtime_error("the program does not start");
    return process;
}

int codeOf(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// Watches what the trap writes down.
class Watch
{
public:
    explicit Watch(Path log) : log_(std::move(log)) {}

    void look(Clock::time_point now)
    {
        std::error_code missing;
        const std::uintmax_t size = fs::file_size(log_, missing);
        if (missing || size == size_)
            return;
        if (size_ == 0)
            first_ = now;
        last_ = now;
        size_ = size;
    }
    /// Since the first call.
    std::chrono::microseconds since(Clock::time_point now) const
    {
        return std::chrono::duration_cast<std::chrono::microseconds>(size_ == 0 ? Clock::duration(-1) : now - first_);
    }
    std::chrono::microseconds worked() const { return size_ == 0 ? std::chrono::microseconds(0) : since(last_); }

private:
    const Path log_;
    std::uintmax_t size_ = 0;
    Clock::time_point first_;
    Clock::time_point last_;
};

void waitFor(pid_t process, const std::optional<std::chrono::microseconds>& killedAfter, Watch watch, Ended& ended)
{
    const auto begin = Clock::now();
    for (int status = 0;;)
    {
        const bool isOver = ::waitpid(process, &status, WNOHANG) == process;
        const auto now = Clock::now();
        watch.look(now);
        ended.code = codeOf(status);
        ended.worked = watch.worked();
        if (isOver)
            return;
        const bool overdue = now - begin > EndLimit;
        if (overdue || (killedAfter && watch.since(now) >= *killedAfter))
        {
            ::kill(process, SIGKILL);
            ::waitpid(process, &status, 0);
            ended.code = overdue ? -1 : codeOf(status);
            return;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
}

std::vector<std::string> linesOf(const Path& file)
{
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

Workplace::Workplace()
{
    fs::create_directory(files());
    folder_.addFile("tested.zelkey", testedKeyFile());
}

Path Workplace::addJob(const std::string& kind, const std::vector<std::string>& entries,
                       const std::string& fields) const
{
    std::vector<Path> paths;
    for (const std::string& entry : entries)
        paths.push_back(files() / entry);
    return folder_.addJob(kind, paths, fields);
}

Ended Workplace::run(const std::vector<std::string>& command, const std::string& input, const Trapping& trapping,
                     std::optional<std::chrono::microseconds> killedAfter) const
{
    Records::records->clear();
    fs::remove(log());
    const pid_t process = start(command, environment(trapping), folder_.addFile("input", input), output());
    Ended ended;
    waitFor(process, killedAfter, Watch(log()), ended);
    ended.calls = linesOf(log());
    ended.shown = EndToEnd::contentOf(output());
    ended.told = told();
    return ended;
}

std::vector<std::string> Workplace::environment(const Trapping& trapping) const
{
    const Path library = fs::read_symlink("/proc/self/exe").parent_path() / TrapLibrary;
    const char* const sanitizer = std::getenv("ASAN_OPTIONS");
    std::vector<std::string> set{
        "LD_PRELOAD=" + library.string(), "JOBRUNNER_TRAP_FOLDER=" + fs::canonical(files()).string(),
        "JOBRUNNER_TRAP_LOG=" + log().string(), "JOBRUNNER_TRAP_STEP=" + std::to_string(trapping.step),
        "JOBRUNNER_TRAP_DEED=" + trapping.deed, "JOBRUNNER_TRAP_ERROR=" + std::to_string(trapping.error),
        "XDG_CONFIG_HOME=" + (folder_.path() / "config").string(),
        // The trap stands in front of the address sanitizer, which does not mind.
        std::string("ASAN_OPTIONS=") + (sanitizer == nullptr ? "" : sanitizer) + ":verify_asan_link_order=0"};
    const auto isSet = [&](const std::string& variable)
    {
        const std::string name = variable.substr(0, variable.find('=') + 1);
        return std::any_of(set.begin(), set.end(), [&](const std::string& other) { return other.starts_with(name); });
    };
    for (char** variable = environ; *variable != nullptr; ++variable)
    {
        if (!isSet(*variable))
            set.push_back(*variable);
    }
    return set;
}

} // namespace Faults
