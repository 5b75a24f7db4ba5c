#include "vaultcore/posix/posix_files.h"

#include "platform/utf8.h"

#include <algorithm>
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

/// Characters that command a terminal, or that turn the direction of writing, so that "exe.txt" shows as "txt.exe".
bool isControl(wchar_t letter)
{
    return letter < L' ' || (letter >= L'\x7F' && letter < L'\xA0') || (letter >= L'\u202A' && letter <= L'\u202E') ||
           (letter >= L'\u2066' && letter <= L'\u2069');
}

/// What another program writes to a file whose name goes would be lost.
void checkNotWritten(int folder, const NativeText& name)
{
    const Descriptor file(::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.get() >= 0)
        checkNotInUse(file.get(), Use::Writing);
}

/// With the folder that its root leads to now; one that is not there is told by whoever opens it.
Place held(Place place)
{
    struct stat status = {};
    if (::stat(place.root.empty() ? "." : place.root.c_str(), &status) == 0)
        place.rootFolder = infoOf(status).identity;
    return place;
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
            return held({"", name});
        return held({end == 0 ? "/" : path.substr(0, end), name});
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

    void removeUnchanged(const Place& place, const FileInfo& expected) override
    {
        const Descriptor folder = openParent(place);
        struct stat status = {};
        checked(::fstatat(folder.get(), nameOf(place).c_str(), &status, AT_SYMLINK_NOFOLLOW));
        if (!unchanged(expected, infoOf(status)))
            throw FileFailure(FailureCause::SourceChanged, 0);
        checkNotWritten(folder.get(), nameOf(place));
        checked(::unlinkat(folder.get(), nameOf(place).c_str(), 0));
    }

    Place locateFolder(const std::wstring& path) override
    {
        NativeText folder = Platform::toUtf8(path);
        while (folder.size() > 1 && folder.ends_with('/'))
            folder.pop_back();
        if (folder.empty() || folder.find('\0') != NativeText::npos)
            throw FileFailure(FailureCause::NoName, 0);
        return held({folder, ""});
    }

    NativeText leafName(const std::wstring& text) override
    {
        std::wstring leaf = text.substr(text.rfind(L'/') + 1);
        std::replace_if(leaf.begin(), leaf.end(), isControl, L'_');
        return leaf == L"." || leaf == L".." ? NativeText() : Platform::toUtf8(leaf);
    }

    std::unique_ptr<IReadFile> openForReading(const Place& place) override { return openReadFile(place); }
    std::unique_ptr<INewFile> createNew(const Place& place) override { return createNewFile(place); }
    void flush(const std::vector<INewFile*>& files) override { flushNewFiles(files); }

    void createFolder(const Place& place) override
    {
        const Descriptor folder = openParent(place);
        checked(::mkdirat(folder.get(), nameOf(place).c_str(), S_IRWXU | S_IRWXG | S_IRWXO));
        // A file in it may take the place of one that goes.
        flushFolder(folder.get());
    }

    bool removeAbandoned(const Place& place) override { return removeAbandonedFile(place); }
};

} // namespace

std::unique_ptr<IFileSystem> createFileSystem()
{
    return std::make_unique<PosixFileSystem>();
}

} // namespace VaultCore
