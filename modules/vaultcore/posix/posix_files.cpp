#include "vaultcore/posix/posix_files.h"

#include "platform/utf8.h"

#include <cerrno>
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
    return info;
}

Descriptor openParent(const Place& place)
{
    Descriptor start = openFolder(AT_FDCWD, place.root.starts_with('/') ? "/" : ".", 0);
    checked(start.get());
    return descend(descend(std::move(start), place.root, 0), parentOf(place).below, O_NOFOLLOW);
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

} // namespace VaultCore
