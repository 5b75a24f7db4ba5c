#include "platform/posix/registry_store.h"

#include "platform/handles.h"
#include "platform/posix/registry_file.h"
#include "platform/posix/registry_format.h"

#include <fcntl.h>
#include <pwd.h>

#include <cerrno>
#include <cstdlib>

namespace Platform
{

namespace
{

constexpr char FileName[] = "registry";
constexpr char NewFileName[] = "registry.new";
constexpr char LockFileName[] = "registry.lock";

bool isSame(const timespec& first, const timespec& second)
{
    return first.tv_sec == second.tv_sec && first.tv_nsec == second.tv_nsec;
}

bool isSame(const struct stat& first, const struct stat& second)
{
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino && first.st_size == second.st_size &&
           isSame(first.st_mtim, second.st_mtim) && isSame(first.st_ctim, second.st_ctim);
}

bool isMissing(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

} // namespace

std::uint32_t RegistryStore::read(const Reading& reading)
{
    const std::string folder = folderOf_();
    Tree tree = std::make_shared<RegistryTree>();
    if (!folder.empty())
        if (const std::uint32_t error = load(folder + '/' + FileName, tree); error != ErrorSuccess)
            return error;
    return reading(*tree);
}

/// The tree as it is now, read again only when the file is another one.
std::uint32_t RegistryStore::load(const std::string& path, Tree& tree)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return isMissing(errno) ? ErrorSuccess : errorOfSettings(errno);
    {
        const std::lock_guard guard(lock_);
        if (known_.tree && known_.path == path && isSame(known_.status, status))
        {
            tree = known_.tree;
            return ErrorSuccess;
        }
    }
    Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return isMissing(errno) ? ErrorSuccess : errorOfSettings(errno);
    std::string text;
    if (const std::uint32_t error = readOwnFile(file.get(), text); error != ErrorSuccess)
        return error;
    auto parsed = parseRegistry(text);
    if (!parsed)
        return ErrorRegistryCorrupt;
    tree = std::make_shared<RegistryTree>(std::move(*parsed));
    remember(path, std::move(file), tree);
    return ErrorSuccess;
}

void RegistryStore::remember(const std::string& path, Descriptor file, Tree tree)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        return;
    const std::lock_guard guard(lock_);
    known_ = Known{path, std::move(file), status, std::move(tree)};
}

std::uint32_t RegistryStore::change(const Change& change)
{
    const std::string place = folderOf_();
    if (place.empty())
        return ErrorAccessDenied;
    Descriptor folder;
    if (const std::uint32_t error = openOwnFolder(place, folder); error != ErrorSuccess)
        return error;
    Descriptor turn; // given back when it is closed
    if (const std::uint32_t error = lockFile(folder.get(), LockFileName, patience_, turn); error != ErrorSuccess)
        return error;

    const std::string path = place + '/' + FileName;
    Tree before = std::make_shared<RegistryTree>();
    if (const std::uint32_t error = load(path, before); error != ErrorSuccess)
        return error;
    const auto after = std::make_shared<RegistryTree>(*before);
    const std::uint32_t result = change(*after);
    if (result != ErrorSuccess || *after == *before)
        return result;
    return replace(folder.get(), path, after);
}

std::uint32_t RegistryStore::replace(int folder, const std::string& path, Tree tree)
{
    // The right to write to the folder alone is not enough, though it would do.
    if (::faccessat(folder, FileName, W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        return errorOfSettings(errno);
    const std::string text = formatRegistry(*tree);
    if (text.size() > LargestSettingsFile)
        return ErrorDiskFull;
    Descriptor file;
    std::uint32_t error = writeOwnFile(folder, NewFileName, text, file);
    if (error == ErrorSuccess && ::renameat(folder, NewFileName, folder, FileName) != 0)
        error = errorOfSettings(errno);
    if (error != ErrorSuccess)
    {
        ::unlinkat(folder, NewFileName, 0);
        return error;
    }
    // The change is in place and whole, whether or not this works: only a loss of power could take it back.
    ::fsync(folder);
    remember(path, std::move(file), std::move(tree));
    return ErrorSuccess;
}

std::string userSettingsFolder()
{
    constexpr char Suite[] = "/jobrunner";
    // A relative folder is to be taken as unset.
    if (const char* const folder = std::getenv("XDG_CONFIG_HOME"); folder && folder[0] == '/')
        return std::string(folder) + Suite;
    const char* home = std::getenv("HOME");
    if (!home || home[0] != '/')
    {
        const passwd* const user = ::getpwuid(::getuid());
        home = user ? user->pw_dir : nullptr;
    }
    return home && home[0] == '/' ? std::string(home) + "/.config" + Suite : std::string();
}

} // namespace Platform
