#include "platform/posix/exclusive_open.h"

#include "platform/handles.h"
#include "platform/posix/error_numbers.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cerrno>
#include <optional>

namespace Platform
{

namespace
{

/// There a refused lease may only mean that the server grants none.
bool isOnNetwork(int descriptor)
{
    constexpr unsigned long Cifs = 0xFF534D42;
    struct statfs system
    {
    };
    if (fstatfs(descriptor, &system) != 0)
        return true;
    switch (static_cast<unsigned long>(system.f_type))
    {
    case NFS_SUPER_MAGIC:
    case SMB_SUPER_MAGIC:
    case SMB2_SUPER_MAGIC:
    case Cifs:
    case AFS_SUPER_MAGIC:
    case CEPH_SUPER_MAGIC:
    case V9FS_MAGIC:
        return true;
    default:
        return false;
    }
}

/// Asks for a lease for writing, which the system grants to the only one who has the file open. Nothing when it cannot
/// be had here for other reasons: the file belongs to another user, or its file system has none.
std::optional<bool> isAloneByLease(int descriptor)
{
    // Whoever opens the file while the lease is held waits for its end, and the system tells us by a signal. The usual
    // one would end this process; this one does nothing unless somebody asks for it.
    if (fcntl(descriptor, F_SETSIG, SIGURG) != 0)
        return std::nullopt;
    if (fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0)
    {
        fcntl(descriptor, F_SETLEASE, F_UNLCK);
        return true;
    }
    if (errno == EAGAIN && !isOnNetwork(descriptor))
        return false;
    return std::nullopt;
}

} // namespace

OpenResult openForReading(const std::string& path)
{
    // Without waiting: a pipe, or a file on which somebody has a lease, would stop this thread.
    Descriptor descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor)
        return {Descriptor(), errorOf(errno, path)};
    struct stat status
    {
    };
    if (fstat(descriptor.get(), &status) != 0 || S_ISDIR(status.st_mode))
        return {Descriptor(), ErrorAccessDenied};
    return {std::move(descriptor), 0};
}

OpenResult openAlone(const std::string& path)
{
    OpenResult result = openForReading(path);
    if (result.error != 0)
        return result;
    const std::optional<bool> isAlone = isAloneByLease(result.descriptor.get());
    if (isAlone ? *isAlone : !isListedAsOpen(result.descriptor.get()))
        return result;
    return {Descriptor(), ErrorSharingViolation};
}

} // namespace Platform
