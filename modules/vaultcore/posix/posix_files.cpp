#include "vaultcore/posix/posix_files.h"

#include "platform/utf8.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace VaultCore
{
namespace
{

FailureCause causeOf(int error)
{
    switch (error)
    {
    case ENOENT:
    case ENOTDIR:
        return FailureCause::Missing;
    case EACCES:
    case EPERM:
        return FailureCause::Denied;
    case EROFS:
        return FailureCause::ReadOnlyPlace;
    case EBUSY:
    case ETXTBSY:
        return FailureCause::InUse;
    case ENOTEMPTY:
        return FailureCause::NotEmpty;
    case ELOOP:
        return FailureCause::LinkOnTheWay;
    case ENOSPC:
    case EDQUOT:
        return FailureCause::Full;
    case EFBIG:
        return FailureCause::TooLarge;
    case EIO:
        return FailureCause::Device;
    case ENAMETOOLONG:
        return FailureCause::NameTooLong;
    case EEXIST:
        return FailureCause::NameTaken;
    default:
        return FailureCause::Other;
    }
}

constexpr std::int64_t SecondsFrom1601To1970 = 11644473600;
constexpr std::int64_t TicksPerSecond = 10000000;
constexpr std::int64_t NanosecondsPerTick = 100;
/// Beyond the year 9999 no clock is meant.
constexpr std::int64_t LatestSecond = 265046774400;

Descriptor openFolder(int from, const NativeText& name, int flags)
{
    return Descriptor(::openat(from, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC | flags));
}

/// Goes down a path, one folder at a time. `flags` are for each of them.
Descriptor descend(Descriptor folder, const NativeText& path, int flags)
{
    std::size_t begin = 0;
    while (begin < path.size())
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const NativeText name = path.substr(begin, end - begin);
        begin = end + 1;
        if (name.empty())
            continue;
        Descriptor next = openFolder(folder.get(), name, flags);
        // With O_NOFOLLOW a link is "not a folder"; a file in a folder's place is told apart from it by nothing else.
        if (next.get() < 0 && errno == ENOTDIR && (flags & O_NOFOLLOW) != 0)
            throwError(ELOOP);
        checked(next.get());
        folder = std::move(next);
    }
    return folder;
}

Descriptor openRoot(const NativeText& root)
{
    const bool oneCall = root.size() < PATH_MAX;
    Descriptor start = openFolder(AT_FDCWD, root.empty() ? "." : oneCall ? root : root.starts_with('/') ? "/" : ".", 0);
    checked(start.get());
    return oneCall ? std::move(start) : descend(std::move(start), root, 0);
}

} // namespace

Descriptor::~Descriptor()
{
    if (value_ >= 0)
        ::close(value_);
}

void throwError(int error)
{
    const std::string detail = std::generic_category().message(error);
    throw FileFailure(causeOf(error), static_cast<std::uint32_t>(error), Platform::fromUtf8(detail));
}

int checked(int result)
{
    if (result == -1)
        throwError(errno);
    return result;
}

struct stat statOf(int descriptor)
{
    struct stat status = {};
    checked(::fstat(descriptor, &status));
    return status;
}

FileInfo infoOf(const struct stat& status)
{
    FileInfo info;
    info.identity = {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
    info.names = static_cast<std::uint64_t>(status.st_nlink);
    if (S_ISREG(status.st_mode))
        info.size = static_cast<std::uint64_t>(status.st_size);
    else
        info.kind = S_ISDIR(status.st_mode) ? FileKind::Folder : FileKind::Link;
    info.modified = ticksOf(status.st_mtim);
    info.attributes = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    info.group = status.st_gid;
    return info;
}

std::uint64_t ticksOf(const struct timespec& time)
{
    const std::int64_t seconds = time.tv_sec + SecondsFrom1601To1970;
    if (seconds < 0 || seconds > LatestSecond)
        return 0;
    return static_cast<std::uint64_t>(seconds * TicksPerSecond + time.tv_nsec / NanosecondsPerTick);
}

struct timespec timeOf(std::uint64_t ticks)
{
    const auto perSecond = static_cast<std::uint64_t>(TicksPerSecond);
    struct timespec time = {};
    time.tv_sec = static_cast<time_t>(ticks / perSecond) - SecondsFrom1601To1970;
    time.tv_nsec = static_cast<long>(ticks % perSecond) * NanosecondsPerTick;
    return time;
}

Descriptor openParent(const Place& place)
{
    Descriptor root = openRoot(place.root);
    if (place.rootFolder && infoOf(statOf(root.get())).identity != *place.rootFolder)
        throw FileFailure(FailureCause::FolderExchanged, 0);
    return descend(std::move(root), parentOf(place).below, O_NOFOLLOW);
}

void renameIn(int folder, const NativeText& from, const NativeText& to)
{
    if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0)
        return;
    if (errno != EINVAL && errno != ENOSYS)
        throwError(errno);
    // A file system without that call: look first.
    struct stat status = {};
    if (::fstatat(folder, to.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        throwError(EEXIST);
    checked(::renameat(folder, from.c_str(), folder, to.c_str()));
}

bool hasName(int folder, const NativeText& name, int file)
{
    struct stat named = {};
    if (::fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0)
        return infoOf(named).identity == infoOf(statOf(file)).identity;
    if (errno != ENOENT)
        throwError(errno);
    return false;
}

void checkName(int folder, const NativeText& name, int file)
{
    if (!hasName(folder, name, file))
        throwError(ENOENT);
}

void linkIn(int folder, const NativeText& from, const NativeText& to)
{
    checked(::linkat(folder, from.c_str(), folder, to.c_str(), 0));
    if (::unlinkat(folder, from.c_str(), 0) == 0)
        return;
    const int error = errno;
    ::unlinkat(folder, to.c_str(), 0);
    throwError(error);
}

void flushFolder(int folder)
{
    const Descriptor readable(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that cannot be read, and a file system that knows nothing of this, keep the name in their own time.
    if (readable.get() < 0 || ::fsync(readable.get()) == 0 || errno == EINVAL)
        return;
    throwError(errno);
}

/// A lease is granted only as long as nobody else has the file open, or open for writing.
void checkNotInUse(int file, Use use)
{
    // The signal of a broken lease would end the process; this one is ignored by default.
    ::fcntl(file, F_SETSIG, SIGURG);
    if (::fcntl(file, F_SETLEASE, use == Use::Any ? F_WRLCK : F_RDLCK) == 0)
        ::fcntl(file, F_SETLEASE, F_UNLCK);
    else if (errno == EAGAIN)
        throwError(EBUSY);
}

} // namespace VaultCore
