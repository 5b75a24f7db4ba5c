#include "vaultcore/posix/posix_files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <linux/magic.h>
#include <map>
#include <sys/file.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace VaultCore
{
namespace
{

/// So much is handed to the device at a time while the rest is being made.
constexpr off_t Window = 16 << 20;
/// Memory keeps no more of a file's end than these: a large result would drive out what others have there, and to fill
/// fresh memory takes longer than to fill it again.
constexpr off_t WindowsInMemory = 2;
/// A file up to this size stays in memory for whoever reads it next.
constexpr off_t KeptInMemory = 64 << 20;

/// Gives the file its final name. Nothing is replaced.
void publishIn(int folder, const NativeText& from, const NativeText& to)
{
    if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0)
        return;
    if (errno != EINVAL && errno != ENOSYS)
        throwError(errno);
    linkIn(folder, from, to);
}

/// Beyond a limit on the size of files a write is to fail, and not to end the process by a signal. For this thread,
/// from now on.
void takeLimitsAsFailures()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGXFSZ);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

class PosixNewFile final : public INewFile
{
public:
    PosixNewFile(Descriptor folder, Descriptor file, NativeText name)
        : folder_(std::move(folder)), file_(std::move(file)), name_(std::move(name))
    {
    }

    ~PosixNewFile() override
    {
        if (!stays_)
            discard();
    }

    void write(std::span<const std::uint8_t> bytes) override
    {
        while (!bytes.empty())
        {
            const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                throwError(errno);
            bytes = bytes.subspan(static_cast<std::size_t>(written));
            written_ += written;
        }
        while (written_ - handedOver_ >= Window)
            handOver();
    }

    void cutTo(std::uint64_t size) override
    {
        checked(::ftruncate(file_.get(), static_cast<off_t>(size)));
        if (::lseek(file_.get(), static_cast<off_t>(size), SEEK_SET) < 0)
            throwError(errno);
        written_ = static_cast<off_t>(size);
        handedOver_ = std::min(handedOver_, written_);
    }

    void takeOver(const FileInfo& like) override
    {
        // What the place cannot keep stays at its own value. Whoever makes a file may read it.
        const bool sameGroup = !like.group || ::fchown(file_.get(), static_cast<uid_t>(-1), *like.group) == 0;
        const std::uint32_t mode = sameGroup ? like.attributes : like.attributes & ~std::uint32_t{S_IRWXG};
        [[maybe_unused]] const int changed = ::fchmod(file_.get(), mode | S_IRUSR);
        struct timespec times[2] = {};
        times[0].tv_nsec = UTIME_OMIT;
        times[1] = timeOf(like.modified);
        if (like.modified != 0)
            ::futimens(file_.get(), times);
    }

    FileInfo publish(const NativeText& name) override
    {
        checked(::fsync(file_.get()));
        giveName(name);
        flushFolder(folder_.get());
        stays_ = true;
        const FileInfo info = infoOf(statOf(file_.get()));
        file_ = Descriptor();
        return info;
    }

    FileInfo rename(const NativeText& name) override
    {
        giveName(name);
        stays_ = true;
        return infoOf(statOf(file_.get()));
    }

    /// As long as the file is in the making; a file system without locks has none to respect. Before it is held,
    /// another job can take the file for a left-over and remove it: then the name is as good as taken.
    void hold()
    {
        const bool locked = ::flock(file_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        // The other job is about to remove it by its name, which until then must not become that of a newer file.
        stays_ = !locked;
        if (!locked || !hasName(folder_.get(), name_, file_.get()))
            throwError(EEXIST);
    }

    int file() const { return file_.get(); }

    /// Returns when the device has content and name.
    void flush() const
    {
        checked(::fsync(file_.get()));
        flushFolder(folder_.get());
    }

    /// Returns when the device has everything that was written to the volume.
    void flushVolume() const { checked(::syncfs(file_.get())); }

    /// Of what was written back so far: a failure is told to each file by itself.
    void checkWritten() const { checked(::sync_file_range(file_.get(), 0, 0, SYNC_FILE_RANGE_WAIT_BEFORE)); }

private:
    void giveName(const NativeText& name)
    {
        checkName(folder_.get(), name_, file_.get());
        publishIn(folder_.get(), name_, name);
        name_ = name;
    }

    /// Lets the device work while the rest is being made.
    void handOver()
    {
        writeBack(handedOver_, SYNC_FILE_RANGE_WRITE);
        handedOver_ += Window;
        if (handedOver_ > KeptInMemory)
            forget(handedOver_ - (WindowsInMemory + 1) * Window);
    }

    void forget(off_t begin)
    {
        writeBack(begin, SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
        ::posix_fadvise(file_.get(), begin, Window, POSIX_FADV_DONTNEED);
    }

    void writeBack(off_t begin, unsigned flags) const
    {
        // What the device refused is told once only: the flush at the end would know nothing of it. A file system that
        // does not have the call is asked by that flush alone.
        const int error = ::sync_file_range(file_.get(), begin, Window, flags) == 0 ? 0 : errno;
        if (error == EIO || error == ENOSPC || error == EDQUOT)
            throwError(error);
    }

    void discard() const
    {
        try
        {
            // Gone already, or another's file by now?
            if (hasName(folder_.get(), name_, file_.get()))
                ::unlinkat(folder_.get(), name_.c_str(), 0);
        }
        catch (const FileFailure&)
        {
            // A later job removes what is left.
        }
    }

    Descriptor folder_;
    Descriptor file_;
    NativeText name_;
    off_t written_ = 0;
    off_t handedOver_ = 0;
    /// When this ends.
    bool stays_ = false;
};

/// Is the flush of a whole volume known to reach the device there? Elsewhere it may end in another program's memory.
bool hasVolumeFlush(int file)
{
    struct statfs volume = {};
    if (::fstatfs(file, &volume) != 0)
        return false;
    const auto type = static_cast<std::uint32_t>(volume.f_type);
    return type == EXT4_SUPER_MAGIC || type == XFS_SUPER_MAGIC || type == BTRFS_SUPER_MAGIC ||
           type == F2FS_SUPER_MAGIC || type == TMPFS_MAGIC;
}

void flushTogether(const std::vector<const PosixNewFile*>& files)
{
    if (!hasVolumeFlush(files.front()->file()))
    {
        for (const PosixNewFile* file : files)
            file->flush();
        return;
    }
    files.front()->flushVolume();
    for (const PosixNewFile* file : files)
        file->checkWritten();
}

} // namespace

void flushNewFiles(const std::vector<INewFile*>& files)
{
    std::map<dev_t, std::vector<const PosixNewFile*>> volumes;
    for (const INewFile* each : files)
    {
        const auto* file = static_cast<const PosixNewFile*>(each);
        volumes[statOf(file->file()).st_dev].push_back(file);
    }
    for (const auto& [volume, itsFiles] : volumes)
        flushTogether(itsFiles);
}

std::unique_ptr<INewFile> createNewFile(const Place& place)
{
    Descriptor folder = openParent(place);
    const NativeText name = nameOf(place);
    const int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    Descriptor file(::openat(folder.get(), name.c_str(), flags, S_IRUSR | S_IWUSR));
    checked(file.get());
    takeLimitsAsFailures();
    auto made = std::make_unique<PosixNewFile>(std::move(folder), std::move(file), name);
    made->hold();
    return made;
}

bool removeAbandonedFile(const Place& place)
{
    const Descriptor folder = openParent(place);
    const NativeText name = nameOf(place);
    const Descriptor file(
        ::openat(folder.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.get() < 0 || !S_ISREG(statOf(file.get()).st_mode) || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    return hasName(folder.get(), name, file.get()) && ::unlinkat(folder.get(), name.c_str(), 0) == 0;
}

} // namespace VaultCore
