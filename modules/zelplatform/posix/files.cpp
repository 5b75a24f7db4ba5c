#include "zelplatform/files.h"

#include "platform/utf8.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZelPlatform
{
namespace
{

class File
{
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }
    bool close()
    {
        if (!isOpen())
            return true;
        const bool closed = ::close(descriptor_) == 0;
        descriptor_ = -1;
        return closed;
    }

private:
    int descriptor_;
};

bool writeAll(int file, std::string_view content)
{
    while (!content.empty())
    {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR)
            return false;
        content.remove_prefix(static_cast<std::size_t>(written > 0 ? written : 0));
    }
    return true;
}

void createFolders(const std::string& file)
{
    for (std::size_t end = file.find('/', 1); end != std::string::npos; end = file.find('/', end + 1))
        ::mkdir(file.substr(0, end).c_str(), S_IRWXU);
}

void flushFolder(const std::string& file)
{
    const File folder(::open(file.substr(0, file.rfind('/') + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        ::fsync(folder.get());
}

std::string homeFolder()
{
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/')
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

std::string settingsFolder()
{
    // A relative folder is to be taken as unset.
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && folder[0] == '/')
        return folder;
    const std::string home = homeFolder();
    return home.empty() ? home : home + "/.config";
}

} // namespace

std::optional<std::string> readFile(const std::wstring& path, std::size_t limit)
{
    // Without O_NONBLOCK a named pipe would stop the process until somebody writes to it.
    const File file(::open(Platform::toUtf8(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    if (static_cast<std::uint64_t>(status.st_size) > limit)
        return std::nullopt;

    // One byte more than the file had, to see that it has ended.
    std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t count = 0;
    while (count < content.size())
    {
        const ssize_t got = ::read(file.get(), content.data() + count, content.size() - count);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        count += static_cast<std::size_t>(got);
    }
    // Somebody is still writing to it.
    if (count == content.size())
        return std::nullopt;
    content.resize(count);
    return content;
}

bool replacePrivateFile(const std::wstring& path, std::string_view content)
{
    const std::string target = Platform::toUtf8(path);
    createFolders(target);
    // mkstemp opens a file that nobody else has and that only the user may read.
    std::string temporary = target + ".XXXXXX";
    File file(::mkstemp(temporary.data()));
    if (!file.isOpen())
        return false;
    const bool written = writeAll(file.get(), content) && ::fsync(file.get()) == 0 && file.close();
    if (!written || ::rename(temporary.c_str(), target.c_str()) != 0)
    {
        ::unlink(temporary.c_str());
        return false;
    }
    flushFolder(target);
    return true;
}

std::wstring userCommentFile()
{
    const std::string folder = settingsFolder();
    return folder.empty() ? std::wstring() : Platform::fromUtf8(folder + "/jobrunner/sfx-comment.txt");
}

} // namespace ZelPlatform
