#include "vaultcore/posix/posix_files.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace VaultCore
{
namespace
{

/// 0 where the file system does not keep it.
std::uint64_t creationOf(int file)
{
    struct statx status = {};
    if (::statx(file, "", AT_EMPTY_PATH, STATX_BTIME, &status) != 0 || (status.stx_mask & STATX_BTIME) == 0)
        return 0;
    return ticksOf({static_cast<time_t>(status.stx_btime.tv_sec), static_cast<long>(status.stx_btime.tv_nsec)});
}

class PosixReadFile final : public IReadFile
{
public:
    explicit PosixReadFile(Descriptor file) : file_(std::move(file)) {}

    FileInfo info() override
    {
        FileInfo info = infoOf(statOf(file_.get()));
        info.created = creationOf(file_.get());
        return info;
    }

    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        std::size_t total = 0;
        while (total < bytes.size())
        {
            const ssize_t count = ::read(file_.get(), bytes.data() + total, bytes.size() - total);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                throwError(errno);
            if (count == 0)
                break;
            total += static_cast<std::size_t>(count);
        }
        return total;
    }

    void seek(std::uint64_t offset) override
    {
        if (::lseek(file_.get(), static_cast<off_t>(offset), SEEK_SET) < 0)
            throwError(errno);
    }

    void forgetMemory() override { ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_DONTNEED); }

private:
    Descriptor file_;
};

} // namespace

std::unique_ptr<IReadFile> openReadFile(const Place& place)
{
    const Descriptor folder = openParent(place);
    // Without waiting, should the name have become that of a pipe.
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    Descriptor file(::openat(folder.get(), nameOf(place).c_str(), flags));
    checked(file.get());
    if (!S_ISREG(statOf(file.get()).st_mode))
        throwError(ELOOP);
    ::posix_fadvise(file.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return std::make_unique<PosixReadFile>(std::move(file));
}

} // namespace VaultCore
