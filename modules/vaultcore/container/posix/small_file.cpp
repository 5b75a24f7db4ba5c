#include "vaultcore/container/small_file.h"

#include "vaultcore/posix/posix_files.h"

#include "platform/utf8.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace VaultCore
{
namespace
{

/// As many bytes as there are, up to the size of `out`.
std::size_t readAll(int file, std::span<std::uint8_t> out)
{
    std::size_t done = 0;
    while (done < out.size())
    {
        const ssize_t count = ::read(file, out.data() + done, out.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (checked(static_cast<int>(count)) == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void writeAll(int file, ByteView bytes)
{
    while (!bytes.empty())
    {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        bytes = bytes.subspan(static_cast<std::size_t>(checked(static_cast<int>(count))));
    }
}

std::string folderOf(const std::string& path)
{
    const std::size_t end = path.rfind('/');
    return end == std::string::npos ? "." : path.substr(0, end + 1);
}

} // namespace

SmallFile readSmallFile(const std::wstring& path, std::size_t limit)
{
    // Without waiting for the other end of a pipe.
    const Descriptor file(::open(Platform::toUtf8(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    checked(file.get());
    const struct stat status = statOf(file.get());
    if (S_ISDIR(status.st_mode))
        return {SmallFileKind::Folder, {}};
    if (!S_ISREG(status.st_mode))
        return {SmallFileKind::NoPlainFile, {}};
    if (status.st_size > static_cast<off_t>(limit))
        return {SmallFileKind::TooLarge, {}};
    SecureBytes room(limit + 1);
    const std::size_t size = readAll(file.get(), room.bytes());
    if (size > limit)
        return {SmallFileKind::TooLarge, {}};
    return {SmallFileKind::Content, SecureBytes(room.bytes().first(size))};
}

void writeSecretFile(const std::wstring& path, ByteView bytes)
{
    const std::string name = Platform::toUtf8(path);
    const Descriptor folder(::open(folderOf(name).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    checked(folder.get());
    const Descriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    checked(file.get());
    try
    {
        writeAll(file.get(), bytes);
        checked(::fsync(file.get()));
        // What is encrypted with a key is worth no more than the key: its name has to last as well.
        flushFolder(folder.get());
    }
    catch (const FileFailure&)
    {
        ::unlink(name.c_str());
        throw;
    }
}

} // namespace VaultCore
