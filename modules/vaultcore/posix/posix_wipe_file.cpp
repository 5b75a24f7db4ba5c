#include "vaultcore/posix/posix_files.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace VaultCore
{
namespace
{

/// Blocks above this are a file system's own unit of bookkeeping; the file's end is not padded to them.
constexpr std::uint64_t LargestPaddedBlock = 65536;

class PosixWipeFile final : public IWipeFile
{
public:
    PosixWipeFile(Descriptor folder, Descriptor file, NativeText name)
        : folder_(std::move(folder)), file_(std::move(file)), name_(std::move(name))
    {
    }

    FileInfo info() override { return infoOf(statOf(file_.get())); }

    std::vector<Extent> extents() override
    {
        const struct stat status = statOf(file_.get());
        const auto size = static_cast<std::uint64_t>(status.st_size);
        std::vector<Extent> found = dataOf(status.st_size);
        const auto block = static_cast<std::uint64_t>(status.st_blksize);
        if (found.empty() || block == 0 || block > LargestPaddedBlock)
            return found;
        Extent& last = found.back();
        if (last.offset + last.length == size)
            last.length = (size + block - 1) / block * block - last.offset;
        return found;
    }

    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override
    {
        while (!bytes.empty())
        {
            const ssize_t written = ::pwrite(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                throwError(errno);
            offset += static_cast<std::uint64_t>(written);
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
    }

    // Times and names need not arrive, so there is no waiting for the journal of the file system.
    void flush() override { checked(::fdatasync(file_.get())); }
    void truncate() override { checked(::ftruncate(file_.get(), 0)); }

    void rename(const NativeText& name) override
    {
        checkName(folder_.get(), name_, file_.get());
        renameIn(folder_.get(), name_, name);
        name_ = name;
    }

    void remove() override
    {
        checkName(folder_.get(), name_, file_.get());
        checked(::unlinkat(folder_.get(), name_.c_str(), 0));
    }

private:
    std::vector<Extent> dataOf(off_t size) const
    {
        std::vector<Extent> found;
        for (off_t at = 0; at < size;)
        {
            const off_t begin = ::lseek(file_.get(), at, SEEK_DATA);
            if (begin < 0 && errno == ENXIO)
                break; // a hole up to the end
            if (begin < 0)
                return {{0, static_cast<std::uint64_t>(size)}}; // holes are not told here
            const off_t end = ::lseek(file_.get(), begin, SEEK_HOLE);
            if (end <= begin)
                return {{0, static_cast<std::uint64_t>(size)}};
            found.push_back({static_cast<std::uint64_t>(begin), static_cast<std::uint64_t>(end - begin)});
            at = end;
        }
        return found;
    }

    Descriptor folder_;
    Descriptor file_;
    NativeText name_;
};

Descriptor openForWriting(int folder, const NativeText& name)
{
    // Without waiting, should the name have become that of a pipe.
    return Descriptor(::openat(folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
}

/// Opens a file whose own permissions forbid writing: gives its owner the permission, and takes it back on failure.
Descriptor openProtected(int folder, const NativeText& name)
{
    Descriptor anchor(::openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    checked(anchor.get());
    const struct stat status = statOf(anchor.get());
    if (!S_ISREG(status.st_mode))
        throwError(ELOOP);
    // By the open file and not by its name, which could lead elsewhere by now.
    const std::string self = "/proc/self/fd/" + std::to_string(anchor.get());
    const mode_t mode = status.st_mode & 07777;
    if (::chmod(self.c_str(), mode | S_IRUSR | S_IWUSR) != 0)
        throwError(EACCES);
    Descriptor file(::open(self.c_str(), O_RDWR | O_CLOEXEC));
    if (file.get() >= 0)
        return file;
    const int error = errno;
    ::chmod(self.c_str(), mode);
    throwError(error);
}

} // namespace

std::unique_ptr<IWipeFile> openWipeFile(const Place& place)
{
    Descriptor folder = openParent(place);
    const NativeText name = nameOf(place);
    Descriptor file = openForWriting(folder.get(), name);
    if (file.get() < 0 && errno == EACCES)
        file = openProtected(folder.get(), name);
    checked(file.get());
    if (!S_ISREG(statOf(file.get()).st_mode))
        throwError(ELOOP);
    checkNotInUse(file.get(), Use::Any);
    return std::make_unique<PosixWipeFile>(std::move(folder), std::move(file), name);
}

} // namespace VaultCore
