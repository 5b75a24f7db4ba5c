#include "vaultcore/job_files.h"

#include "vaultcore/wildcard.h"

#include <algorithm>
#include <iterator>

namespace VaultCore
{

std::vector<JobItem> JobFiles::expandEntry(const std::wstring& entry)
{
    try
    {
        return readEntry(entry);
    }
    catch (const FileFailure&)
    {
        return {{JobItem::Kind::BadEntry, {}, entry, {}}};
    }
}

std::vector<JobItem> JobFiles::expandAgain(const JobItem& bad)
{
    if (bad.kind == JobItem::Kind::BadEntry)
        return readEntry(bad.name);
    const FileInfo info = files_.inspect(bad.place);
    std::vector<JobItem> items;
    if (info.kind == FileKind::Folder)
        addTree(bad.place, info, items);
    else if (isWanted(selection_.inFolder, bad.place, info))
        addFile(bad.place, info, items);
    return items;
}

std::uint64_t JobFiles::namesOf(const FileIdentity& identity) const
{
    const auto found = names_.find(identity);
    return found == names_.end() ? 0 : found->second;
}

void JobFiles::forgetName(const FileIdentity& identity, bool gone)
{
    const auto found = names_.find(identity);
    if (found != names_.end() && --found->second > 0)
        return;
    if (found != names_.end())
        names_.erase(found);
    if (!gone)
        return;
    // The system may give the identity to the next file that is made; that one is not known.
    const auto first = known_.lower_bound({identity, {}, {}});
    const auto last =
        std::find_if(first, known_.end(), [&](const NameKey& key) { return std::get<0>(key) != identity; });
    known_.erase(first, last);
}

std::vector<JobItem> JobFiles::readEntry(const std::wstring& entry)
{
    std::vector<JobItem> items;
    const Place place = files_.locate(entry);
    const std::optional<FileInfo> info = inspectIfThere(place);
    if (info && info->kind == FileKind::Folder)
    {
        addEntryFolder(place, *info, items);
        return items;
    }
    if (info && info->kind != FileKind::File && !selection_.links)
        throw FileFailure(FailureCause::IsLink, 0);
    if (info)
    {
        addFile(place, *info, items);
        return items;
    }
    if (!isPattern(files_.displayName(place.below)))
        throw FileFailure(FailureCause::Missing, 0);
    addMatches(place, items);
    return items;
}

void JobFiles::addEntryFolder(const Place& folder, const FileInfo& info, std::vector<JobItem>& items)
{
    if (!isNew(folder, info))
        return;
    try
    {
        addTree(folder, info, items);
    }
    catch (const FileFailure&)
    {
        addBadName(folder, items);
    }
}

/// Throws when the folder itself cannot be listed; what fails inside it becomes an item of its own, to be asked about.
void JobFiles::addTree(const Place& folder, const FileInfo& info, std::vector<JobItem>& items)
{
    // A list instead of recursion: a tree may be deeper than the stack of a thread.
    std::vector<JobItem> pending{{JobItem::Kind::Folder, folder, files_.display(folder), info}};
    std::vector<JobItem> folders;
    while (!pending.empty() && !stopped_)
    {
        JobItem next = std::move(pending.back());
        pending.pop_back();
        const bool sameVolume = next.info.identity.volume == info.identity.volume;
        try
        {
            const auto names = sameVolume ? files_.list(next.place) : std::vector<NativeText>();
            for (const NativeText& name : names)
                addChild(childOf(next.place, name), items, pending);
            folders.push_back(std::move(next));
        }
        catch (const FileFailure&)
        {
            if (folders.empty())
                throw;
            addBadName(next.place, items);
        }
    }
    // A folder is found before what is in it, so the way back meets the inner ones first.
    items.insert(items.end(), std::make_move_iterator(folders.rbegin()), std::make_move_iterator(folders.rend()));
}

void JobFiles::addChild(const Place& place, std::vector<JobItem>& items, std::vector<JobItem>& pending)
{
    if (stopped_)
        return;
    try
    {
        const std::optional<FileInfo> info = inspectIfThere(place);
        if (!info)
            return; // gone since its folder was listed
        if (info->kind != FileKind::Folder && isWanted(selection_.inFolder, place, *info))
            return addFile(place, *info, items);
        if (info->kind == FileKind::Folder && isNew(place, *info))
            pending.push_back({JobItem::Kind::Folder, place, files_.display(place), *info});
    }
    catch (const FileFailure&)
    {
        addBadName(place, items);
    }
}

void JobFiles::addMatches(const Place& pattern, std::vector<JobItem>& items)
{
    const std::wstring wanted = files_.displayName(files_.fold(pattern.below));
    const Place folder = parentOf(pattern);
    bool matched = false;
    for (const NativeText& name : files_.list(folder))
    {
        if (!matchesPattern(files_.displayName(files_.fold(name)), wanted))
            continue;
        const Place place = childOf(folder, name);
        const std::optional<FileInfo> info = inspectIfThere(place);
        if (!info || info->kind == FileKind::Folder || !isWanted(selection_.byPattern, place, *info))
            continue;
        matched = true;
        addFile(place, *info, items);
    }
    if (!matched)
        throw FileFailure(FailureCause::NoMatch, 0);
}

void JobFiles::addFile(const Place& place, const FileInfo& info, std::vector<JobItem>& items)
{
    if (stopped_ || !isNew(place, info))
        return;
    ++names_[info.identity];
    totalSize_ += info.size;
    items.push_back({JobItem::Kind::File, place, files_.display(place), info});
    stopped_ = !found_(items.back());
}

void JobFiles::addBadName(const Place& place, std::vector<JobItem>& items)
{
    items.push_back({JobItem::Kind::BadName, place, files_.display(place), {}});
}

bool JobFiles::isWanted(const Selection::Wanted& wanted, const Place& place, const FileInfo& info) const
{
    if (info.kind != FileKind::File && !selection_.links)
        return false;
    return !wanted || wanted(nameOf(place));
}

bool JobFiles::isNew(const Place& place, const FileInfo& info)
{
    // A file with one name is known by itself, whatever way leads to it; of several names, each stands for itself.
    if (info.names <= 1 || info.kind == FileKind::Folder)
        return known_.insert({info.identity, {}, {}}).second;
    return known_.insert({info.identity, files_.inspectParent(place), files_.fold(nameOf(place))}).second;
}

std::optional<FileInfo> JobFiles::inspectIfThere(const Place& place)
{
    try
    {
        return files_.inspect(place);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() != FailureCause::Missing)
            throw;
        return std::nullopt;
    }
}

} // namespace VaultCore
