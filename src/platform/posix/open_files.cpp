#include "platform/posix/exclusive_open.h"
#include "platform/posix/process_records.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace Platform
{

namespace
{

/// Only what has a path is a file; the others are pipes, sockets and the like.
bool isPath(const std::string& link)
{
    char first = 0;
    return readlink(link.c_str(), &first, 1) == 1 && first == '/';
}

bool isSameFile(const std::string& link, const struct stat& file)
{
    struct stat status
    {
    };
    return isPath(link) && stat(link.c_str(), &status) == 0 && status.st_dev == file.st_dev &&
           status.st_ino == file.st_ino;
}

} // namespace

bool isListedAsOpen(int descriptor)
{
    struct stat file
    {
    };
    if (fstat(descriptor, &file) != 0)
        return false;
    const std::string own = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(descriptor);
    const std::vector<std::uint32_t> processes = numbersIn("/proc");
    return std::any_of(processes.begin(), processes.end(),
                       [&](std::uint32_t process)
                       {
                           const std::string folder = "/proc/" + std::to_string(process) + "/fd";
                           const std::vector<std::uint32_t> descriptors = numbersIn(folder);
                           return std::any_of(descriptors.begin(), descriptors.end(),
                                              [&](std::uint32_t number)
                                              {
                                                  const std::string link = folder + '/' + std::to_string(number);
                                                  return link != own && isSameFile(link, file);
                                              });
                       });
}

} // namespace Platform
