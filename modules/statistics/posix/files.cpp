#include "statistics/files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace StatisticsModule
{
namespace
{

int descriptorOf(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

void createFolders(const std::string& file)
{
    for (std::size_t end = file.find('/', 1); end != std::string::npos; end = file.find('/', end + 1))
        ::mkdir(file.substr(0, end).c_str(), S_IRWXU);
}

int openPrivate(const std::string& file)
{
    // Without O_NONBLOCK a named pipe would stop the process until somebody reads it.
    return ::open(file.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
}

std::filesystem::path folderOfVariable(const char* name)
{
    // A relative folder is to be taken as unset.
    const char* folder = std::getenv(name);
    return folder && folder[0] == '/' ? folder : std::filesystem::path();
}

std::filesystem::path homeFolder()
{
    std::filesystem::path home = folderOfVariable("HOME");
    if (!home.empty())
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

} // namespace

PrivateFile::PrivateFile(const std::filesystem::path& path)
{
    int file = openPrivate(path.native());
    if (file < 0 && errno == ENOENT)
    {
        createFolders(path.native());
        file = openPrivate(path.native());
    }
    struct stat status = {};
    if (file >= 0 && (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)))
    {
        ::close(file);
        return;
    }
    handle_ = file;
}

PrivateFile::~PrivateFile()
{
    if (isOpen())
        ::close(descriptorOf(handle_));
}

bool PrivateFile::tryLock()
{
    return ::flock(descriptorOf(handle_), LOCK_EX | LOCK_NB) == 0;
}

std::uint64_t PrivateFile::size() const
{
    struct stat status = {};
    return ::fstat(descriptorOf(handle_), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::string PrivateFile::end(std::size_t count) const
{
    const std::uint64_t all = size();
    std::string text(static_cast<std::size_t>(count < all ? count : all), '\0');
    const ssize_t got = ::pread(descriptorOf(handle_), text.data(), text.size(), static_cast<off_t>(all - text.size()));
    text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return text;
}

bool PrivateFile::cutTo(std::uint64_t size)
{
    return ::ftruncate(descriptorOf(handle_), static_cast<off_t>(size)) == 0;
}

bool PrivateFile::append(std::string_view text)
{
    while (!text.empty())
    {
        const ssize_t written = ::write(descriptorOf(handle_), text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written > 0 ? written : 0));
    }
    return true;
}

std::filesystem::path userJournalFile()
{
    std::filesystem::path folder = folderOfVariable("XDG_STATE_HOME");
    if (folder.empty() && !homeFolder().empty())
        folder = homeFolder() / ".local" / "state";
    return folder.empty() ? folder : folder / "jobrunner" / "statistics.log";
}

std::uint32_t currentProcess()
{
    return static_cast<std::uint32_t>(::getpid());
}

} // namespace StatisticsModule
