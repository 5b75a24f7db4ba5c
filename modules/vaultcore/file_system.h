#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace VaultCore
{

/// Text of a path as the system has it: bytes on Linux, 16-bit units on Windows. Never converted on the way, so that
/// a name that is no valid text can be removed too.
using NativeText = std::filesystem::path::string_type;
inline constexpr NativeText::value_type NativeSeparator = std::filesystem::path::preferred_separator;

/// The same for every name of one file.
struct FileIdentity
{
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

/// Where a name is. `root` is the user's own way to the entry, and links in it are followed; an empty one is the
/// current folder. `below` is walked from there without following any link.
struct Place
{
    NativeText root;
    NativeText below;
    /// The folder that `root` led to when the place was located (Linux). A way that leads elsewhere by now is refused:
    /// whoever may write to a folder on it could send the work into another one of the user's.
    std::optional<FileIdentity> rootFolder = std::nullopt;
};

enum class FileKind
{
    File,
    Folder,
    /// A link to a file, or anything else that has no content of its own here: its name alone is removed.
    Link,
    FolderLink,
};

struct FileInfo
{
    FileKind kind = FileKind::File;
    std::uint64_t size = 0;
    std::uint64_t names = 1;
    FileIdentity identity;
    /// In 100 ns since 1601 (UTC); 0 when not known.
    std::uint64_t modified = 0;
    std::uint64_t created = 0;
    /// Permissions (Linux) or attributes (Windows), as the system has them.
    std::uint32_t attributes = 0;
    /// Group that the permissions speak of (Linux); nothing when it is not known.
    std::optional<std::uint32_t> group;
};

/// Is it still the same file, with the same content as far as the system tells?
inline bool unchanged(const FileInfo& before, const FileInfo& now)
{
    return before.kind == now.kind && before.identity == now.identity && before.size == now.size &&
           before.modified == now.modified;
}

/// A part of a file that has storage behind it, in bytes.
struct Extent
{
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// A file opened to be overwritten; no other program has it open. Every operation works on the file that was opened,
/// whatever its name leads to by then, and throws `FileFailure`.
class IWipeFile
{
public:
    virtual ~IWipeFile() = default;
    virtual FileInfo info() = 0;
    /// In rising order. The last one reaches over the end as far as the file's last block does.
    virtual std::vector<Extent> extents() = 0;
    virtual void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;
    /// Returns when the device has it.
    virtual void flush() = 0;
    virtual void truncate() = 0;
    /// Gives the file another name in its folder. `NameTaken` when there is one already: nothing is replaced.
    virtual void rename(const NativeText& name) = 0;
    virtual void remove() = 0;
};

/// A file opened to be read, from its start on. Every operation throws `FileFailure`.
class IReadFile
{
public:
    virtual ~IReadFile() = default;
    virtual FileInfo info() = 0;
    /// Fills `bytes` as far as there is content left; a short count is the end.
    virtual std::size_t read(std::span<std::uint8_t> bytes) = 0;
    /// The next read begins here, which may be behind the end.
    virtual void seek(std::uint64_t offset) = 0;
    /// Drops what memory holds of the file, so that the reads ask the device, as far as the system lets itself be told.
    virtual void forgetMemory() = 0;
};

/// A file in the making, under a temporary name that nobody else works on. It disappears with this object unless it
/// got its final name. Every operation throws `FileFailure`.
class INewFile
{
public:
    virtual ~INewFile() = default;
    virtual void write(std::span<const std::uint8_t> bytes) = 0;
    /// Drops all behind the first `size` bytes; the next write follows them.
    virtual void cutTo(std::uint64_t size) = 0;
    /// Takes over permissions and times, as far as the place can keep them; a time of 0 is left out. What was allowed
    /// to a group is allowed to that group alone.
    virtual void takeOver(const FileInfo& like) = 0;
    /// Gives the file its final name in its folder, and returns when the device has content and name. `NameTaken` when
    /// there is such a name already: nothing is replaced. Closes the file.
    virtual FileInfo publish(const NativeText& name) = 0;
    /// Gives the file its final name in its folder, and leaves it to `IFileSystem::flush` what the device has of
    /// content and name: for many files at once. `NameTaken` when there is such a name already: nothing is replaced.
    virtual FileInfo rename(const NativeText& name) = 0;
};

/// The operations on files that the jobs need. A failed one throws `FileFailure`. Safe on any thread.
class IFileSystem
{
public:
    virtual ~IFileSystem() = default;
    /// Place of an entry of the user's; throws `NoName` for a text that names nothing to remove.
    virtual Place locate(const std::wstring& entry) = 0;
    virtual std::wstring display(const Place& place) = 0;
    virtual std::wstring displayName(const NativeText& name) = 0;
    /// Names that differ only in what this changes are the same name.
    virtual NativeText fold(const NativeText& name) = 0;
    /// Of the name itself: a link is not followed.
    virtual FileInfo inspect(const Place& place) = 0;
    /// Identity of the folder that holds the name.
    virtual FileIdentity inspectParent(const Place& place) = 0;
    /// Names in a folder, without "." and "..". An empty `below` lists `root` itself.
    virtual std::vector<NativeText> list(const Place& folder) = 0;
    virtual std::unique_ptr<IWipeFile> openForWipe(const Place& place) = 0;
    /// Gives a folder another name beside the old one; `NameTaken` when there is one already.
    virtual void renameFolder(const Place& folder, const NativeText& name) = 0;
    /// Removes a name: a file's, a link's own, or that of an empty folder. A write protection is taken off first.
    virtual void remove(const Place& place, FileKind kind) = 0;
    /// Removes the name of a file that still is as `expected`; otherwise `SourceChanged`. `InUse` when another program
    /// has it open and may write to it, as far as the system tells.
    virtual void removeUnchanged(const Place& place, const FileInfo& expected) = 0;

    /// Place of a folder of the user's: an empty `below`. It need not exist. Throws `NoName` for no path at all.
    virtual Place locateFolder(const std::wstring& path) = 0;
    /// `text` without what must not be in a file's name here: folders on the way, control characters, and whatever
    /// leads elsewhere. Empty when nothing is left of it.
    virtual NativeText leafName(const std::wstring& text) = 0;
    /// Opens the file itself: a link is refused.
    virtual std::unique_ptr<IReadFile> openForReading(const Place& place) = 0;
    /// Makes a file that was not there; `NameTaken` otherwise. Only its maker can read it until `takeOver`.
    virtual std::unique_ptr<INewFile> createNew(const Place& place) = 0;
    /// Returns when the device has content and present name of all these files, which this file system has made and
    /// none of which was published. For many of them: it may flush the whole volume once instead of each of them.
    virtual void flush(const std::vector<INewFile*>& files) = 0;
    /// Makes a folder that was not there; `NameTaken` otherwise. Returns when the device has its name, where the system
    /// lets itself be told.
    virtual void createFolder(const Place& place) = 0;
    /// Removes a file that nobody is making any more; false, and nothing done, when somebody has it.
    virtual bool removeAbandoned(const Place& place) = 0;
};

/// The one of this system.
std::unique_ptr<IFileSystem> createFileSystem();

inline Place childOf(const Place& folder, const NativeText& name)
{
    return {folder.root, folder.below.empty() ? name : folder.below + NativeSeparator + name, folder.rootFolder};
}

inline NativeText nameOf(const Place& place)
{
    return place.below.substr(place.below.rfind(NativeSeparator) + 1);
}

/// Folder of a name that lies below another; that of a name directly in `root` has an empty `below`.
inline Place parentOf(const Place& place)
{
    const auto end = place.below.rfind(NativeSeparator);
    return {place.root, end == NativeText::npos ? NativeText() : place.below.substr(0, end), place.rootFolder};
}

} // namespace VaultCore
