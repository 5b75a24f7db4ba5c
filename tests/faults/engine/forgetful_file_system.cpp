#include "engine/forgetful_file_system.h"

#include "engine/forgetful_files.h"

namespace Faults
{

using namespace VaultCore;

namespace
{

constexpr std::uint64_t FolderIndex = 1'000'000;

NativeText nativeOf(const std::string& text)
{
    return NativeText(text.begin(), text.end());
}

std::string textOf(const NativeText& text)
{
    std::string result;
    for (const auto unit : text)
        result += unit == NativeSeparator ? '/' : static_cast<char>(unit);
    return result;
}

std::string pathOf(const Place& place)
{
    const std::string below = textOf(place.below);
    if (place.root.empty() || below.empty())
        return textOf(place.root) + below;
    return textOf(place.root) + '/' + below;
}

std::string folderOf(const std::string& path)
{
    const auto end = path.rfind('/');
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

std::string besides(const std::string& path, const NativeText& name)
{
    const std::string folder = folderOf(path);
    return folder.empty() ? textOf(name) : folder + '/' + textOf(name);
}

} // namespace

ForgetfulFileSystem::ForgetfulFileSystem(const Files& files)
{
    folders_.insert("");
    for (const auto& [path, content] : files)
    {
        addFolders(path);
        if (path.ends_with('/'))
            continue;
        files_[path] = std::make_shared<File>(File{nextNode_, content, clock_++});
        disk_.keep(path, nextNode_++, content);
    }
}

Files ForgetfulFileSystem::files() const
{
    const std::lock_guard lock(mutex_);
    Files found;
    for (const auto& [path, file] : files_)
        found[path] = file->content;
    return found;
}

Place ForgetfulFileSystem::locate(const std::wstring& entry)
{
    const std::string path(entry.begin(), entry.end());
    const std::string folder = folderOf(path);
    return {nativeOf(folder), nativeOf(nameOf(path))};
}

std::wstring ForgetfulFileSystem::display(const Place& place)
{
    const std::string path = pathOf(place);
    return {path.begin(), path.end()};
}

std::wstring ForgetfulFileSystem::displayName(const NativeText& name)
{
    return {name.begin(), name.end()};
}

FileInfo ForgetfulFileSystem::inspect(const Place& place)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(place);
    if (!folders_.contains(path))
        return infoOf(*require(path));
    FileInfo info;
    info.kind = FileKind::Folder;
    info.identity = {1, FolderIndex + static_cast<std::uint64_t>(std::distance(folders_.begin(), folders_.find(path)))};
    return info;
}

FileIdentity ForgetfulFileSystem::inspectParent(const Place& place)
{
    const std::lock_guard lock(mutex_);
    const auto folder = folders_.find(folderOf(pathOf(place)));
    if (folder == folders_.end())
        throw FileFailure(FailureCause::Missing, 0);
    return {1, FolderIndex + static_cast<std::uint64_t>(std::distance(folders_.begin(), folder))};
}

std::vector<NativeText> ForgetfulFileSystem::list(const Place& folder)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(folder);
    if (!folders_.contains(path))
        throw FileFailure(FailureCause::Missing, 0);
    std::vector<NativeText> names;
    for (const auto& [file, content] : files_)
    {
        if (folderOf(file) == path)
            names.push_back(nativeOf(nameOf(file)));
    }
    for (const std::string& other : folders_)
    {
        if (!other.empty() && other != path && folderOf(other) == path)
            names.push_back(nativeOf(nameOf(other)));
    }
    return names;
}

std::unique_ptr<IWipeFile> ForgetfulFileSystem::openForWipe(const Place& place)
{
    const std::lock_guard lock(mutex_);
    return std::make_unique<WipeFile>(*this, pathOf(place));
}

void ForgetfulFileSystem::renameFolder(const Place& folder, const NativeText& name)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(folder);
    if (folders_.erase(path) == 0)
        throw FileFailure(FailureCause::Missing, 0);
    folders_.insert(besides(path, name));
}

void ForgetfulFileSystem::remove(const Place& place, FileKind kind)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(place);
    if (kind != FileKind::Folder)
        return unlink(path);
    const auto next = files_.lower_bound(path + '/');
    if (next != files_.end() && next->first.starts_with(path + '/'))
        throw FileFailure(FailureCause::NotEmpty, 0);
    if (folders_.erase(path) == 0)
        throw FileFailure(FailureCause::Missing, 0);
}

void ForgetfulFileSystem::removeUnchanged(const Place& place, const FileInfo& expected)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(place);
    if (!unchanged(expected, infoOf(*require(path))))
        throw FileFailure(FailureCause::SourceChanged, 0);
    unlink(path);
}

Place ForgetfulFileSystem::locateFolder(const std::wstring& path)
{
    return {NativeText(path.begin(), path.end()), {}};
}

NativeText ForgetfulFileSystem::leafName(const std::wstring& text)
{
    const std::wstring leaf = text.substr(text.rfind(L'/') + 1);
    return NativeText(leaf.begin(), leaf.end());
}

std::unique_ptr<IReadFile> ForgetfulFileSystem::openForReading(const Place& place)
{
    const std::lock_guard lock(mutex_);
    return std::make_unique<ReadFile>(*this, pathOf(place));
}

std::unique_ptr<INewFile> ForgetfulFileSystem::createNew(const Place& place)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(place);
    requireFolderOf(path);
    if (files_.contains(path) || folders_.contains(path))
        throw FileFailure(FailureCause::NameTaken, 0);
    files_[path] = std::make_shared<File>(File{nextNode_, {}, clock_++});
    disk_.addName(path, nextNode_++);
    changed();
    return std::make_unique<NewFile>(*this, path);
}

void ForgetfulFileSystem::flush(const std::vector<INewFile*>& files)
{
    const std::lock_guard lock(mutex_);
    for (INewFile* file : files)
        static_cast<NewFile*>(file)->flush();
}

/// Its name counts as kept at once: a real file system's journal writes it no later than what is in it.
void ForgetfulFileSystem::createFolder(const Place& place)
{
    const std::lock_guard lock(mutex_);
    const std::string path = pathOf(place);
    requireFolderOf(path);
    if (files_.contains(path) || !folders_.insert(path).second)
        throw FileFailure(FailureCause::NameTaken, 0);
}

bool ForgetfulFileSystem::removeAbandoned(const Place& place)
{
    const std::lock_guard lock(mutex_);
    const FilePtr file = find(pathOf(place));
    if (!file || inTheMaking_.contains(file->node))
        return false;
    unlink(pathOf(place));
    return true;
}

ForgetfulFileSystem::FilePtr ForgetfulFileSystem::find(const std::string& path) const
{
    const auto found = files_.find(path);
    return found == files_.end() ? nullptr : found->second;
}

ForgetfulFileSystem::FilePtr ForgetfulFileSystem::require(const std::string& path) const
{
    FilePtr file = find(path);
    if (!file)
        throw FileFailure(FailureCause::Missing, 0);
    return file;
}

FileInfo ForgetfulFileSystem::infoOf(const File& file) const
{
    FileInfo info;
    info.size = file.content.size();
    info.identity = {1, file.node};
    info.modified = file.modified;
    return info;
}

void ForgetfulFileSystem::requireFolderOf(const std::string& path) const
{
    if (!folders_.contains(folderOf(path)))
        throw FileFailure(FailureCause::Missing, 0);
}

void ForgetfulFileSystem::unlink(const std::string& path)
{
    const FilePtr file = require(path);
    files_.erase(path);
    disk_.removeName(path, file->node);
    changed();
}

void ForgetfulFileSystem::rename(const std::string& from, const std::string& to)
{
    const FilePtr file = require(from);
    if (files_.contains(to) || folders_.contains(to))
        throw FileFailure(FailureCause::NameTaken, 0);
    files_.erase(from);
    files_[to] = file;
    disk_.changeName(from, to, file->node);
    changed();
}

void ForgetfulFileSystem::write(File& file, std::uint64_t offset, std::span<const std::uint8_t> bytes)
{
    const auto place = static_cast<std::size_t>(offset);
    file.content.resize(std::max(file.content.size(), place + bytes.size()));
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    file.content.replace(place, text.size(), text);
    file.modified = clock_++;
    disk_.write(file.node, offset, text);
    changed();
}

void ForgetfulFileSystem::cut(File& file, std::uint64_t size)
{
    file.content.resize(static_cast<std::size_t>(size));
    file.modified = clock_++;
    disk_.cut(file.node, size);
    changed();
}

void ForgetfulFileSystem::flushContent(const File& file)
{
    disk_.flushContent(file.node, file.content);
    changed();
}

void ForgetfulFileSystem::flushNames(const File& file)
{
    disk_.flushNames(file.node);
    changed();
}

void ForgetfulFileSystem::addFolders(const std::string& path)
{
    for (std::size_t end = path.find('/'); end != std::string::npos; end = path.find('/', end + 1))
        folders_.insert(path.substr(0, end));
}

} // namespace Faults
