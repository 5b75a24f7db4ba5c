#include "platform/posix/error_numbers.h"

#include "platform/handles.h"

#include <sys/stat.h>

#include <cerrno>

namespace Platform
{

namespace
{

constexpr std::uint32_t ErrorPathNotFound = 3;
constexpr std::uint32_t ErrorGeneralFailure = 31;

bool isFolder(const std::string& path)
{
    struct stat status
    {
    };
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string folderOf(const std::string& path)
{
    const std::size_t end = path.rfind('/');
    if (end == std::string::npos)
        return ".";
    return end == 0 ? "/" : path.substr(0, end);
}

} // namespace

std::uint32_t errorOf(int error, const std::string& path)
{
    switch (error)
    {
    case ENOENT:
        // A missing folder is another error than a missing file, and to the watcher no sign of a lock.
        return isFolder(folderOf(path)) ? ErrorFileNotFound : ErrorPathNotFound;
    case ENOTDIR:
        return ErrorPathNotFound;
    case EACCES:
    case EPERM:
        return ErrorAccessDenied;
    case EWOULDBLOCK: // somebody has a lease on it
    case ETXTBSY:
        return ErrorSharingViolation;
    default:
        return ErrorGeneralFailure;
    }
}

} // namespace Platform
