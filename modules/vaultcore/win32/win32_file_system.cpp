#include "vaultcore/win32/win32_files.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

struct SearchCloser
{
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

std::wstring fullPath(const std::wstring& entry)
{
    if (entry.starts_with(LR"(\\?\)"))
        return entry;
    std::wstring path(32768, L'\0');
    const DWORD length = GetFullPathNameW(entry.c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
    if (length == 0 || length >= path.size())
        throw FileFailure(FailureCause::NoName, GetLastError());
    path.resize(length);
    return path;
}

constexpr DWORD RemoveAccess = DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;

/// A write protection is taken off first, and given back to a file that stays.
void removeProtected(HANDLE file)
{
    const bool wasProtected = unprotect(file);
    try
    {
        removeOpen(file);
    }
    catch (const FileFailure&)
    {
        if (wasProtected)
            protect(file);
        throw;
    }
}

class Win32FileSystem final : public IFileSystem
{
public:
    Place locate(const std::wstring& entry) override
    {
        if (entry.empty())
            throw FileFailure(FailureCause::NoName, 0);
        std::wstring path = fullPath(entry);
        while (path.ends_with(L'\\'))
            path.pop_back();
        const auto end = path.rfind(L'\\');
        // The first two are the start of a device or of a server's share, which is no folder's content.
        if (end == std::wstring::npos || end < 2 || path.starts_with(LR"(\\.\)"))
            throw FileFailure(FailureCause::NoName, 0);
        const Place place{path.substr(0, end), path.substr(end + 1)};
        if (place.below.empty() || place.root == LR"(\\?)" || isShare(path))
            throw FileFailure(FailureCause::NoName, 0);
        return place;
    }

    std::wstring display(const Place& place) override { return pathOf(place); }
    std::wstring displayName(const NativeText& name) override { return name; }

    NativeText fold(const NativeText& name) override
    {
        NativeText folded = name;
        CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
        return folded;
    }

    FileInfo inspect(const Place& place) override
    {
        return infoOf(openName(place, FILE_READ_ATTRIBUTES, ShareAll).get());
    }

    FileIdentity inspectParent(const Place& place) override
    {
        // With the links in it: the user's own way may lead over some.
        const FileHandle folder(CreateFileW(extended(pathOf(parentOf(place))).c_str(), FILE_READ_ATTRIBUTES, ShareAll,
                                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (folder.get() == INVALID_HANDLE_VALUE)
            throwError(GetLastError());
        return infoOf(folder.get()).identity;
    }

    std::vector<NativeText> list(const Place& folder) override
    {
        // Held open without sharing its deletion, so that it stays the folder that was looked at.
        const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        std::vector<FileHandle> held;
        if (!folder.below.empty())
            held.push_back(openName(folder, FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, share));
        if (!held.empty() && infoOf(held[0].get()).kind != FileKind::Folder)
            throwError(ERROR_CANT_ACCESS_FILE);
        WIN32_FIND_DATAW found = {};
        const std::wstring all = extended(pathOf(childOf(folder, L"*")));
        const std::unique_ptr<void, SearchCloser> search(FindFirstFileW(all.c_str(), &found));
        if (search.get() == INVALID_HANDLE_VALUE)
            throwError(GetLastError());
        std::vector<NativeText> names;
        do
        {
            const std::wstring name = found.cFileName;
            if (name != L"." && name != L"..")
                names.push_back(name);
        } while (FindNextFileW(search.get(), &found));
        if (GetLastError() != ERROR_NO_MORE_FILES)
            throwError(GetLastError());
        return names;
    }

    std::unique_ptr<IWipeFile> openForWipe(const Place& place) override { return openWipeFile(place); }

    void renameFolder(const Place& folder, const NativeText& name) override
    {
        renameOpen(openName(folder, DELETE | FILE_READ_ATTRIBUTES, ShareAll).get(), folder, name);
    }

    void remove(const Place& place, FileKind kind) override
    {
        // Without sharing, a file that another program holds open is told at once and does not linger half removed.
        const FileHandle file = openName(place, RemoveAccess, kind == FileKind::File ? 0 : ShareAll);
        if (infoOf(file.get()).kind != kind)
            throwError(ERROR_CANT_ACCESS_FILE);
        removeProtected(file.get());
    }

    void removeUnchanged(const Place& place, const FileInfo& expected) override
    {
        const FileHandle file = openName(place, RemoveAccess, 0);
        if (!unchanged(expected, infoOf(file.get())))
            throw FileFailure(FailureCause::SourceChanged, 0);
        removeProtected(file.get());
    }

    Place locateFolder(const std::wstring& path) override
    {
        if (path.empty())
            throw FileFailure(FailureCause::NoName, 0);
        std::wstring folder = fullPath(path);
        while (folder.ends_with(L'\\'))
            folder.pop_back();
        return {folder, L""};
    }

    NativeText leafName(const std::wstring& text) override { return safeLeafName(text); }
    std::unique_ptr<IReadFile> openForReading(const Place& place) override { return openReadFile(place); }
    std::unique_ptr<INewFile> createNew(const Place& place) override { return createNewFile(place); }
    void flush(const std::vector<INewFile*>& files) override { flushNewFiles(files); }

    void createFolder(const Place& place) override
    {
        // The folder above is held without sharing its deletion, so that it stays the one that was looked at.
        const Place above = parentOf(place);
        std::vector<FileHandle> held;
        if (!above.below.empty())
            held.push_back(openName(above, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE));
        if (!held.empty() && infoOf(held[0].get()).kind != FileKind::Folder)
            throwError(ERROR_CANT_ACCESS_FILE);
        checked(CreateDirectoryW(extended(pathOf(place)).c_str(), nullptr));
    }

    bool removeAbandoned(const Place& place) override
    {
        try
        {
            // Whoever is making the file shares it with nobody.
            const FileHandle file = openName(place, RemoveAccess, 0);
            if (infoOf(file.get()).kind != FileKind::File)
                return false;
            removeProtected(file.get());
            return true;
        }
        catch (const FileFailure&)
        {
            return false;
        }
    }

private:
    /// `\\server\share` is the start of a path and no name in it.
    static bool isShare(const std::wstring& path)
    {
        return path.starts_with(LR"(\\)") && !path.starts_with(LR"(\\?\)") &&
               std::count(path.begin(), path.end(), L'\\') < 4;
    }
};

} // namespace

std::unique_ptr<IFileSystem> createFileSystem()
{
    return std::make_unique<Win32FileSystem>();
}

} // namespace VaultCore
