#include "platform/path_text.h"
#include "platform/posix/concerns.h"
#include "platform/posix/default_application.h"
#include "platform/posix/family.h"
#include "platform/posix/process_object.h"
#include "platform/posix/start_program.h"
#include "platform/utf8.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace Platform
{

namespace
{

constexpr std::size_t DirectoryLength = 1024;
constexpr std::uint32_t CompactLength = 1024;
constexpr wchar_t Separator = L'/';

// What `FindExecutableW` answers.
constexpr std::intptr_t ExecutableFound = 42;
constexpr std::intptr_t NoFile = 2;
constexpr std::intptr_t NoAssociation = 31;

/// Full path of a file as the system has it; a path of the working folder is led by that folder, so that no name begins
/// with a dash. Empty when it is no file.
std::string documentOf(const std::wstring& file)
{
    std::string name = toUtf8(file);
    struct stat status
    {
    };
    if (name.find('\0') != std::string::npos || stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    if (name.starts_with('/'))
        return name;
    std::array<char, PATH_MAX> folder{};
    return getcwd(folder.data(), folder.size()) ? std::string(folder.data()) + '/' + name : std::string();
}

/// Where links lead, as the list of processes shows it.
std::string realPathOf(const std::string& program)
{
    const std::unique_ptr<char, void (*)(void*)> path(realpath(program.c_str(), nullptr), std::free);
    return path ? path.get() : program;
}

class PosixShell : public Shell
{
public:
    std::vector<std::wstring> commandLineArguments() override
    {
        // The system ends each argument with a null.
        std::ifstream commandLine("/proc/self/cmdline", std::ios::binary);
        std::vector<std::wstring> arguments;
        for (std::string argument; std::getline(commandLine, argument, '\0');)
            arguments.push_back(fromUtf8(argument));
        return arguments;
    }

    SystemVersion version() override { return {}; }

    std::wstring currentDirectory() override
    {
        std::array<char, PATH_MAX> buffer{};
        if (!getcwd(buffer.data(), buffer.size()))
            return {};
        std::wstring directory = fromUtf8(buffer.data());
        return directory.size() < DirectoryLength ? directory : std::wstring();
    }

    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override
    {
        return combinePathText(folder, file, Separator);
    }

    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override
    {
        return compactPathText(path, std::min(size, CompactLength), Separator);
    }

    bool deleteFile(const std::wstring& path) override { return unlink(toUtf8(path).c_str()) == 0; }

    std::intptr_t findExecutable(const std::wstring& file, std::wstring& executable) override
    {
        executable.clear();
        const std::string document = documentOf(file);
        if (document.empty())
            return NoFile;
        const std::string program = defaultApplicationOf(document).program;
        const std::wstring path = program.empty() ? std::wstring() : fromUtf8(realPathOf(program));
        // The buffer also holds the null at the end.
        if (path.empty() || path.size() >= MaxPath)
            return NoAssociation;
        executable = path;
        return ExecutableFound;
    }

    bool execute(ShellExecution& execution) override
    {
        execution.process = nullptr;
        const std::string document = documentOf(execution.file);
        if (document.empty())
            return false;
        const DefaultApplication application = defaultApplicationOf(document);
        if (application.program.empty())
            return false;
        StartSettings settings;
        settings.folder = execution.directory.empty() ? application.folder : toUtf8(execution.directory);
        takeInOrphans();
        const pid_t process = startProgram(application.program, application.arguments, settings);
        if (process < 0)
            return false;
        execution.process = takeUp(static_cast<std::uint32_t>(process));
        return true;
    }

private:
    static Handle takeUp(std::uint32_t process)
    {
        // As long as nobody waits for this child its id stays taken.
        if (const auto record = processRecord(process))
            family().onStarted(*record);
        return handleTable().add(ProcessObject::ofChild(process));
    }
};

} // namespace

Shell& posixShell()
{
    static PosixShell shell;
    return shell;
}

} // namespace Platform
