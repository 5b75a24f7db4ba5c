#include "platform/posix/start_program.h"

#include "platform/posix/descriptor.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <sstream>

namespace Platform
{

namespace
{

constexpr char Nothing[] = "/dev/null";
constexpr int FirstOwnDescriptor = 3;

class FileActions
{
public:
    explicit FileActions(const StartSettings& settings)
    {
        posix_spawn_file_actions_init(&actions_);
        if (settings.isQuiet)
        {
            posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, Nothing, O_RDONLY, 0);
            posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, Nothing, O_WRONLY, 0);
        }
        if (settings.output >= 0)
            posix_spawn_file_actions_adddup2(&actions_, settings.output, STDOUT_FILENO);
        if (!settings.folder.empty())
            posix_spawn_file_actions_addchdir_np(&actions_, settings.folder.c_str());
        // A descriptor of ours that somebody else keeps would make a file look as if it were in use.
        posix_spawn_file_actions_addclosefrom_np(&actions_, FirstOwnDescriptor);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

/// No signal is blocked, and each does what it usually does.
class PlainSignals
{
public:
    PlainSignals()
    {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
    }
    ~PlainSignals() { posix_spawnattr_destroy(&attributes_); }
    PlainSignals(const PlainSignals&) = delete;
    PlainSignals& operator=(const PlainSignals&) = delete;
    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

bool isProgram(const std::string& path)
{
    struct stat status
    {
    };
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

std::string readToEnd(int descriptor)
{
    std::string text;
    std::array<char, 4096> buffer{};
    while (true)
    {
        const ssize_t length = read(descriptor, buffer.data(), buffer.size());
        if (length > 0)
            text.append(buffer.data(), static_cast<std::size_t>(length));
        else if (length == 0 || errno != EINTR)
            return text;
    }
}

} // namespace

pid_t startProgram(const std::string& program, const std::vector<std::string>& arguments, const StartSettings& settings)
{
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const FileActions actions(settings);
    const PlainSignals signals;
    pid_t process = -1;
    const int error = posix_spawn(&process, program.c_str(), actions.get(), signals.get(), pointers.data(), environ);
    return error == 0 ? process : -1;
}

std::string outputOf(const std::string& program, const std::vector<std::string>& arguments)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    StartSettings settings;
    settings.output = writing.get();
    settings.isQuiet = true;
    const pid_t process = startProgram(program, arguments, settings);
    writing = Descriptor();
    if (process < 0)
        return {};
    std::string text = readToEnd(reading.get());
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR)
    {
    }
    return text;
}

std::string findProgram(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return name.starts_with('/') && isProgram(name) ? name : std::string();
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path ? path : "/usr/local/bin:/usr/bin:/bin");
    for (std::string folder; !name.empty() && std::getline(folders, folder, ':');)
    {
        std::string program = folder;
        program += '/' + name;
        if (folder.starts_with('/') && isProgram(program))
            return program;
    }
    return {};
}

} // namespace Platform
