#include "platform/posix/registry_file.h"

#include "platform/handles.h"
#include "platform/registry.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <future>
#include <system_error>
#include <thread>

namespace Platform
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t ErrorGeneralFailure = 31;
constexpr mode_t PrivateFolder = 0700;
constexpr mode_t PrivateFile = 0600;

bool isOwn(const struct stat& status)
{
    return status.st_uid == ::geteuid();
}

std::uint32_t checkOwnFile(int file)
{
    struct stat status = {};
    if (::fstat(file, &status) != 0)
        return errorOfSettings(errno);
    return S_ISREG(status.st_mode) && isOwn(status) ? ErrorSuccess : ErrorAccessDenied;
}

/// Whether the name still stands for the open file.
bool isStillThere(int folder, const char* name, int file)
{
    struct stat open = {};
    struct stat named = {};
    return ::fstat(file, &open) == 0 && ::fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

bool isMade(const std::string& folder)
{
    return ::mkdir(folder.c_str(), PrivateFolder) == 0 || errno == EEXIST;
}

bool isLocked(const Descriptor& file, int operation)
{
    int result = 0;
    while ((result = ::flock(file.get(), operation)) != 0 && errno == EINTR)
        ;
    return result == 0;
}

/// Starts a thread that no signal of the process is handled on. False when no more threads can be had.
template <class Work> bool startQuietly(Work work)
{
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    bool isStarted = true;
    try
    {
        std::thread(std::move(work)).detach();
    }
    catch (const std::system_error&)
    {
        isStarted = false;
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return isStarted;
}

/// Waits for the lock in the queue of the system: whoever only tries now and then may try for seconds in vain on a slow
/// disk, when others write one change after the other. That wait has no limit, so a thread of its own does it; when
/// nobody waits for the thread any more, it closes the file with the lock that it gets at last.
std::uint32_t lockOpenFile(Descriptor file, Clock::time_point end, Descriptor& lock)
{
    if (isLocked(file, LOCK_EX | LOCK_NB))
    {
        lock = std::move(file);
        return ErrorSuccess;
    }
    if (errno != EWOULDBLOCK)
        return errorOfSettings(errno);
    std::packaged_task<Descriptor()> task([waiting = std::move(file)]() mutable
                                          { return isLocked(waiting, LOCK_EX) ? std::move(waiting) : Descriptor(); });
    std::future<Descriptor> result = task.get_future();
    if (!startQuietly(std::move(task)) || result.wait_until(end) != std::future_status::ready)
        return ErrorLockViolation;
    lock = result.get();
    return lock ? ErrorSuccess : ErrorGeneralFailure;
}

bool writeAll(int file, std::string_view content)
{
    while (!content.empty())
    {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR)
            return false;
        content.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

} // namespace

std::uint32_t errorOfSettings(int error)
{
    switch (error)
    {
    case EACCES:
    case EPERM:
    case EROFS:
    case ELOOP: // a link in place of a file
    case ENOTDIR:
    case EISDIR:
    case ENXIO: // a pipe in place of a file
        return ErrorAccessDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorDiskFull;
    default:
        return ErrorGeneralFailure;
    }
}

std::uint32_t openOwnFolder(const std::string& path, Descriptor& folder)
{
    for (std::size_t end = path.find('/', 1); end != path.npos; end = path.find('/', end + 1))
        if (!isMade(path.substr(0, end)) && errno == ENOSPC)
            return ErrorDiskFull;
    if (!isMade(path))
        return errorOfSettings(errno == ENOENT ? EACCES : errno);
    folder = Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status = {};
    if (!folder || ::fstat(folder.get(), &status) != 0)
        return errorOfSettings(errno);
    return isOwn(status) ? ErrorSuccess : ErrorAccessDenied;
}

std::uint32_t readOwnFile(int file, std::string& content)
{
    if (const std::uint32_t error = checkOwnFile(file); error != ErrorSuccess)
        return error;
    char buffer[16384];
    while (content.size() <= LargestSettingsFile)
    {
        const ssize_t length = ::read(file, buffer, sizeof buffer);
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return errorOfSettings(errno);
        if (length == 0)
            return ErrorSuccess;
        content.append(buffer, static_cast<std::size_t>(length));
    }
    return ErrorRegistryCorrupt;
}

std::uint32_t writeOwnFile(int folder, const char* name, const std::string& content, Descriptor& file)
{
    if (::unlinkat(folder, name, 0) != 0 && errno != ENOENT)
        return errorOfSettings(errno);
    file = Descriptor(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, PrivateFile));
    if (!file)
        return errorOfSettings(errno);
    // Whatever the process takes from the rights of new files, the user himself keeps these.
    if (::fchmod(file.get(), PrivateFile) != 0 || !writeAll(file.get(), content) || ::fsync(file.get()) != 0)
        return errorOfSettings(errno);
    return ErrorSuccess;
}

std::uint32_t lockFile(int folder, const char* name, std::chrono::milliseconds patience, Descriptor& lock)
{
    const Clock::time_point end = Clock::now() + patience;
    while (true)
    {
        Descriptor file(::openat(folder, name, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, PrivateFile));
        if (!file)
            return errorOfSettings(errno);
        if (const std::uint32_t error = checkOwnFile(file.get()); error != ErrorSuccess)
            return error;
        if (const std::uint32_t error = lockOpenFile(std::move(file), end, lock); error != ErrorSuccess)
            return error;
        // Somebody may have taken the file away in between; then others lock another one.
        if (isStillThere(folder, name, lock.get()))
            return ErrorSuccess;
    }
}

} // namespace Platform
