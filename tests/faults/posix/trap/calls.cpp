#include "trap.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

// The calls of the C library in whose place the trap stands. Each one asks the trap, and then does what it is for by
// the system's own call.

// The types for large files are the same ones on a system of 64 bits, by other names.
#pragma GCC diagnostic ignored "-Wattribute-alias"
#define TRAPPED extern "C" __attribute__((visibility("default")))

namespace
{

using Trap::Act;

/// A call that is done or not.
template <class... Arguments>
int done(const char* name, int descriptor, const char* path, long number, Arguments... arguments)
{
    const Act act = Trap::nextCall(name, descriptor, path);
    if (act == Act::Fail)
        return -1;
    const long result = ::syscall(number, arguments...);
    if (act == Act::Tear)
        Trap::endProcess();
    return static_cast<int>(result);
}

/// One that moves bytes.
template <class Bytes, class... Place>
ssize_t moved(const char* name, long number, int descriptor, Bytes bytes, std::size_t size, Place... place)
{
    const Act act = Trap::nextCall(name, descriptor, nullptr);
    if (act == Act::Fail)
        return -1;
    const bool halved = act == Act::Tear || act == Act::Short;
    const std::size_t count = halved ? std::max<std::size_t>(size / 2, std::min<std::size_t>(size, 1)) : size;
    const long result = ::syscall(number, descriptor, bytes, count, place...);
    if (act == Act::Tear)
        Trap::endProcess();
    return result;
}

int openAt(int folder, const char* path, int flags, unsigned mode)
{
    return done("open", folder, path, SYS_openat, folder, path, flags, mode);
}

/// Permissions of a new file, where there are any among the arguments.
unsigned modeOf(int flags, va_list arguments)
{
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? va_arg(arguments, unsigned) : 0U;
}

} // namespace

TRAPPED int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return openAt(AT_FDCWD, path, flags, mode);
}

TRAPPED int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return openAt(folder, path, flags, mode);
}

TRAPPED int open64(const char*, int, ...) __attribute__((alias("open")));
TRAPPED int openat64(int, const char*, int, ...) __attribute__((alias("openat")));

TRAPPED int close(int file)
{
    const Act act = Trap::nextCall("close", file, nullptr);
    const int error = errno;
    const long result = ::syscall(SYS_close, file);
    if (act == Act::Tear)
        Trap::endProcess();
    // A file is closed even where that fails.
    if (act != Act::Fail)
        return static_cast<int>(result);
    errno = error;
    return -1;
}

TRAPPED ssize_t read(int file, void* bytes, std::size_t size)
{
    return moved("read", SYS_read, file, bytes, size);
}

TRAPPED ssize_t pread(int file, void* bytes, std::size_t size, off_t at)
{
    return moved("pread", SYS_pread64, file, bytes, size, at);
}

TRAPPED ssize_t write(int file, const void* bytes, std::size_t size)
{
    return moved("write", SYS_write, file, bytes, size);
}

TRAPPED ssize_t pwrite(int file, const void* bytes, std::size_t size, off_t at)
{
    return moved("pwrite", SYS_pwrite64, file, bytes, size, at);
}

TRAPPED ssize_t pread64(int, void*, std::size_t, off64_t) __attribute__((alias("pread")));
TRAPPED ssize_t pwrite64(int, const void*, std::size_t, off64_t) __attribute__((alias("pwrite")));

TRAPPED ssize_t writev(int file, const struct iovec* parts, int count)
{
    return done("writev", file, nullptr, SYS_writev, file, parts, count);
}

TRAPPED int fsync(int file)
{
    return done("fsync", file, nullptr, SYS_fsync, file);
}

TRAPPED int fdatasync(int file)
{
    return done("fdatasync", file, nullptr, SYS_fdatasync, file);
}

TRAPPED int syncfs(int file)
{
    return done("syncfs", file, nullptr, SYS_syncfs, file);
}

TRAPPED int sync_file_range(int file, off64_t at, off64_t size, unsigned flags)
{
    return done("sync_file_range", file, nullptr, SYS_sync_file_range, file, at, size, flags);
}

TRAPPED int ftruncate(int file, off_t size)
{
    return done("ftruncate", file, nullptr, SYS_ftruncate, file, size);
}
TRAPPED int ftruncate64(int, off64_t) __attribute__((alias("ftruncate")));

TRAPPED int fallocate(int file, int mode, off_t at, off_t size)
{
    return done("fallocate", file, nullptr, SYS_fallocate, file, mode, at, size);
}

TRAPPED off_t lseek(int file, off_t at, int from)
{
    const Act act = Trap::nextCall("lseek", file, nullptr);
    if (act == Act::Tear)
        Trap::endProcess();
    return act == Act::Fail ? -1 : ::syscall(SYS_lseek, file, at, from);
}
TRAPPED off64_t lseek64(int, off64_t, int) __attribute__((alias("lseek")));

TRAPPED int fchmod(int file, mode_t mode)
{
    return done("fchmod", file, nullptr, SYS_fchmod, file, mode);
}

TRAPPED int chmod(const char* path, mode_t mode)
{
    return done("chmod", AT_FDCWD, path, SYS_fchmodat, AT_FDCWD, path, mode);
}

TRAPPED int fchown(int file, uid_t user, gid_t group)
{
    return done("fchown", file, nullptr, SYS_fchown, file, user, group);
}

TRAPPED int futimens(int file, const struct timespec* times)
{
    return done("futimens", file, nullptr, SYS_utimensat, file, nullptr, times, 0);
}

TRAPPED int fstat(int file, struct stat* status)
{
    return done("fstat", file, nullptr, SYS_fstat, file, status);
}
TRAPPED int fstat64(int, struct stat64*) __attribute__((alias("fstat")));

TRAPPED int fstatat(int folder, const char* path, struct stat* status, int flags)
{
    return done("fstatat", folder, path, SYS_newfstatat, folder, path, status, flags);
}
TRAPPED int fstatat64(int, const char*, struct stat64*, int) __attribute__((alias("fstatat")));

TRAPPED int mkdirat(int folder, const char* path, mode_t mode)
{
    return done("mkdirat", folder, path, SYS_mkdirat, folder, path, mode);
}

TRAPPED int mkdir(const char* path, mode_t mode)
{
    return mkdirat(AT_FDCWD, path, mode);
}

TRAPPED int unlinkat(int folder, const char* path, int flags)
{
    return done("unlinkat", folder, path, SYS_unlinkat, folder, path, flags);
}

TRAPPED int unlink(const char* path)
{
    return unlinkat(AT_FDCWD, path, 0);
}

TRAPPED int linkat(int from, const char* path, int to, const char* name, int flags)
{
    return done("linkat", from, path, SYS_linkat, from, path, to, name, flags);
}

TRAPPED int renameat2(int from, const char* path, int to, const char* name, unsigned flags)
{
    return done("renameat2", from, path, SYS_renameat2, from, path, to, name, flags);
}

TRAPPED int renameat(int from, const char* path, int to, const char* name)
{
    return done("renameat", from, path, SYS_renameat2, from, path, to, name, 0);
}

TRAPPED int rename(const char* path, const char* name)
{
    return renameat(AT_FDCWD, path, AT_FDCWD, name);
}

TRAPPED struct dirent* readdir(DIR* folder)
{
    using Read = struct dirent*(DIR*);
    static Read* const next = reinterpret_cast<Read*>(::dlsym(RTLD_NEXT, "readdir"));
    const Act act = Trap::nextCall("readdir", ::dirfd(folder), nullptr);
    if (act == Act::Tear)
        Trap::endProcess();
    return act == Act::Fail ? nullptr : next(folder);
}
TRAPPED struct dirent64* readdir64(DIR*) __attribute__((alias("readdir")));
