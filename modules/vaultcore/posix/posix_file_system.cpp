#include "vaultcore/posix/posix_files.h"

#include "platform/utf8.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace VaultCore
{
namespace
{

struct FolderCloser
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};

std::vector<NativeText> namesIn(DIR* folder)
{
    std::vector<NativeText> names;
    for (;;)
    {
        errno = 0;
        const dirent* entry = ::readdir(folder);
        if (entry == nullptr && errno != 0)
            throwError(errno);
        if (entry == nullptr)
            return names;
        const NativeText name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
}

class PosixFileSystem final : public IFileSystem
{
public:
    Place locate(const std::wstring& entry) override
    {
        NativeText path = Platform::toUtf8(entry);
        while (path.size() > 1 && path.ends_with('/'))
            path.pop_back();
        const auto end = path.rfind('/');
        const NativeText name = path.substr(end + 1);
        if (name.empty() || name == "." || name == ".." || path.find('\0') != NativeText::npos)
            throw FileFailure(FailureCause::NoName, 0);
        if (end == NativeText::npos)
            return {"", name};
        return {end == 0 ? "/" : path.substr(0, end), name};
    }

    std::wstring display(const Place& place) override
    {
        if (place.root.empty() || place.root == "/")
            return Platform::fromUtf8(place.root + place.below);
        return Platform::fromUtf8(place.root + '/' + place.below);
    }

    std::wstring displayName(const NativeText& name) override { return Platform::fromUtf8(name); }
    NativeText fold(const NativeText& name) override { return name; }

    FileInfo inspect(const Place& place) override
    {
        const Descriptor folder = openParent(place);
        struct stat status = {};
        checked(::fstatat(folder.get(), nameOf(place).c_str(), &status, AT_SYMLINK_NOFOLLOW));
        return infoOf(status);
    }

    FileIdentity inspectParent(const Place& place) override { return infoOf(statOf(openParent(place).get())).identity; }

    std::vector<NativeText> list(const Place& folder) override
    {
        // The folder itself is opened by its name below the one above; without one, `root` is opened with its links.
        const bool self = folder.below.empty();
        const Descriptor above = openParent(folder);
        const NativeText name = self ? "." : nameOf(folder);
        const int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        const int opened = checked(::openat(above.get(), name.c_str(), flags));
        const std::unique_ptr<DIR, FolderCloser> stream(::fdopendir(opened));
        if (!stream)
        {
            const int error = errno;
            ::close(opened);
            throwError(error);
        }
        return namesIn(stream.get());
    }

    std::unique_ptr<IWipeFile> openForWipe(const Place& place) override { return openWipeFile(place); }

    void renameFolder(const Place& folder, const NativeText& name) override
    {
        renameIn(openParent(folder).get(), nameOf(folder), name);
    }

    void remove(const Place& place, FileKind kind) override
    {
        const Descriptor folder = openParent(place);
        checked(::unlinkat(folder.get(), nameOf(place).c_str(), kind == FileKind::Folder ? AT_REMOVEDIR : 0));
    }
};

} // namespace

std::unique_ptr<IFileSystem> createFileSystem()
{
    return std::make_unique<PosixFileSystem>();
}

} // namespace VaultCore
