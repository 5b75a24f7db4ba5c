#include "fakes/fake_files.h"

#include "platform/path_text.h"

namespace Fakes
{

FakeFile& FakeFiles::change(const std::wstring& path)
{
    ++changes_;
    return files[path];
}

void FakeFiles::remove(const std::wstring& path)
{
    ++changes_;
    files.erase(path);
}

std::uint32_t FakeFiles::openError(const std::wstring& path) const
{
    const auto found = files.find(path);
    if (found == files.end())
        return Platform::ErrorFileNotFound;
    if (found->second.error != 0)
        return found->second.error;
    if (found->second.isFolder)
        return Platform::ErrorAccessDenied;
    return found->second.isLocked ? Platform::ErrorSharingViolation : 0;
}

Platform::Handle FakeFiles::open(const std::wstring& path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags)
{
    log_.add(L"open " + path + L' ' + std::to_wstring(access) + L' ' + std::to_wstring(share) + L' ' +
             std::to_wstring(disposition) + L' ' + std::to_wstring(flags));
    if (onOpen)
        onOpen();
    const std::uint32_t error = openError(path);
    handles_.setLastError(error);
    return error == 0 ? handles_.add(L"file " + path) : Platform::InvalidHandle;
}

Platform::Handle FakeFiles::findFirstChange(const std::wstring& folder, bool subtree, std::uint32_t filter)
{
    log_.add(L"findFirstChange " + folder + L' ' + std::to_wstring(filter) + (subtree ? L" subtree" : L""));
    if (insteadOfNotification)
        return *insteadOfNotification;
    return handles_.add(L"notification", [this, before = changes_] { return changes_ != before; });
}

void FakeFiles::findCloseChange(Platform::Handle handle)
{
    log_.add(L"findCloseChange " + handles_.nameOf(handle));
    handles_.remove(handle);
    if (onCloseChange)
        onCloseChange();
}

Platform::Handle FakeFiles::findFirst(const std::wstring& pattern, Platform::FoundFile& found)
{
    log_.add(L"findFirst " + pattern);
    const std::size_t nameStart = pattern.rfind(separator_) + 1;
    const std::wstring folder = pattern.substr(0, nameStart);
    const std::wstring wanted = pattern.substr(nameStart);
    std::vector<Platform::FoundFile> matching;
    if (wanted == L"*")
        matching = {{L".", Platform::AttributeDirectory}, {L"..", Platform::AttributeDirectory}};
    for (const auto& [path, file] : files)
    {
        const std::wstring name = path.substr(std::min(path.size(), nameStart));
        if (path.starts_with(folder) && !name.empty() && name.find(separator_) == std::wstring::npos &&
            matches(name, wanted))
            matching.push_back({name, file.isFolder ? Platform::AttributeDirectory : 0});
    }
    const bool lists = wanted == L"*";
    if (matching.size() <= (lists ? 2U : 0U) || (lists && unlistedFolders))
    {
        handles_.setLastError(Platform::ErrorFileNotFound);
        return Platform::InvalidHandle;
    }
    const Platform::Handle search = handles_.add(L"search");
    searches_[search] = std::move(matching);
    findNext(search, found);
    return search;
}

bool FakeFiles::findNext(Platform::Handle search, Platform::FoundFile& found)
{
    auto& rest = searches_[search];
    if (rest.empty())
        return false;
    found = rest.front();
    rest.erase(rest.begin());
    return true;
}

void FakeFiles::findClose(Platform::Handle search)
{
    log_.add(L"findClose " + handles_.nameOf(search));
    handles_.remove(search);
}

bool FakeFiles::modificationTime(const std::wstring& path, std::int64_t& seconds)
{
    const auto found = files.find(path);
    if (found == files.end())
        return false;
    seconds = found->second.modified;
    return true;
}

bool FakeFiles::matches(const std::wstring& file, const std::wstring& pattern)
{
    return Platform::matchesPatternText(file, pattern);
}

std::wstring FakeFiles::fileName(const std::wstring& path)
{
    return Platform::fileNameText(path, separator_);
}

std::wstring FakeFiles::removeFileSpec(const std::wstring& path)
{
    return Platform::removeFileSpecText(path, separator_);
}

std::wstring FakeFiles::append(const std::wstring& path, const std::wstring& more)
{
    return Platform::appendPathText(path, more, separator_);
}

} // namespace Fakes
