#include "vaultcore/deletion_job.h"

namespace VaultCore
{
namespace
{

NativeText pathOf(const Place& place)
{
    return place.root + NativeSeparator + place.below;
}

bool cancelled(const FileFailure& failure)
{
    return failure.cause() == FailureCause::Cancelled || failure.cause() == FailureCause::CancelledPartly;
}

} // namespace

DeletionJob::DeletionJob(IFileSystem& files, const EventReceivers& events, bool wipe)
    : files_(files), events_(events), wipe_(wipe), list_(files, [this](const JobItem& item) { return listed(item); })
{
}

void DeletionJob::run(const std::vector<std::wstring>& entries)
{
    if (events_.overall != nullptr)
        events_.overall->OnOperationStarted();
    std::vector<JobItem> items = buildList(entries);
    if (!stop_ && events_.fileList != nullptr)
        events_.fileList->OnFileListBuilt(found_, list_.totalSize());
    work(items);
    if (events_.overall != nullptr)
        events_.overall->OnOperationFinished();
}

std::vector<JobItem> DeletionJob::buildList(const std::vector<std::wstring>& entries)
{
    std::vector<JobItem> items;
    for (const std::wstring& entry : entries)
    {
        if (stop_)
            break;
        for (JobItem& item : list_.expandEntry(entry))
            items.push_back(std::move(item));
    }
    return items;
}

void DeletionJob::work(std::vector<JobItem>& items)
{
    for (JobItem& item : items)
    {
        if (stop_)
            return;
        if (item.kind == JobItem::Kind::File)
            workOnFile(item);
        else if (item.kind == JobItem::Kind::Folder)
            workOnFolder(item);
        else
            workOnBadItem(item);
    }
}

void DeletionJob::workOnFile(JobItem& item)
{
    start(item.name);
    for (;;)
    {
        const std::optional<FileFailure> failure =
            wipe_ && item.info.kind == FileKind::File ? wipeFile(item) : removeFile(item);
        if (!failure)
            break;
        if (!cancelled(*failure) && repeats(item, *failure))
            continue;
        keepFoldersOf(item.place);
        return finish(item, &*failure);
    }
    list_.forgetName(item.info.identity);
    report(item.info.size, item.info.size);
    finish(item, nullptr);
}

void DeletionJob::workOnFolder(const JobItem& item)
{
    if (kept_.contains(pathOf(item.place)))
        return;
    bool started = false;
    for (;;)
    {
        const std::optional<FileFailure> failure = removeFolder(item);
        if (!failure)
            break;
        if (!started)
            start(item.name);
        started = true;
        if (repeats(item, *failure))
            continue;
        keepFoldersOf(item.place);
        return finish(item, &*failure);
    }
    list_.forgetName(item.info.identity);
    if (started)
        finish(item, nullptr);
}

void DeletionJob::workOnBadItem(const JobItem& item)
{
    std::vector<JobItem> items;
    bool started = false;
    for (;;)
    {
        std::optional<FileFailure> failure;
        try
        {
            items = list_.expandAgain(item);
        }
        catch (const FileFailure& caught)
        {
            failure = caught;
        }
        if (!failure)
            break;
        if (!started)
            start(item.name);
        started = true;
        if (repeats(item, *failure))
            continue;
        keepFoldersOf(item.place);
        return finish(item, &*failure);
    }
    work(items);
}

std::optional<FileFailure> DeletionJob::removeFile(JobItem& item)
{
    try
    {
        files_.remove(item.place, item.info.kind);
        return std::nullopt;
    }
    catch (const FileFailure& failure)
    {
        return failure;
    }
}

std::optional<FileFailure> DeletionJob::wipeFile(JobItem& item)
{
    if (item.info.size > 0 && !report(0, item.info.size))
        return FileFailure(FailureCause::Cancelled, 0);
    const auto progress = [&](std::uint64_t done)
    {
        // A file that grew since it was listed is complete only once: when it is gone.
        return done >= item.info.size || report(done, item.info.size);
    };
    try
    {
        if (wiper().wipe(item.place, list_.namesOf(item.info.identity), progress))
            return std::nullopt;
        return FileFailure(FailureCause::CancelledPartly, 0);
    }
    catch (const FileFailure& failure)
    {
        return failure;
    }
}

std::optional<FileFailure> DeletionJob::removeFolder(const JobItem& item)
{
    try
    {
        if (wipe_)
            wipeFolder(item.place);
        else
            files_.remove(item.place, FileKind::Folder);
        return std::nullopt;
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::Missing)
            return std::nullopt;
        return failure;
    }
}

void DeletionJob::wipeFolder(const Place& folder)
{
    const NativeText name = wiper().meaninglessName();
    files_.renameFolder(folder, name);
    try
    {
        files_.remove(childOf(parentOf(folder), name), FileKind::Folder);
    }
    catch (const FileFailure&)
    {
        // A folder that stays, stays under its own name.
        files_.renameFolder(childOf(parentOf(folder), name), nameOf(folder));
        throw;
    }
}

Wiper& DeletionJob::wiper()
{
    if (!wiper_)
        wiper_.emplace(files_);
    return *wiper_;
}

bool DeletionJob::listed(const JobItem& item)
{
    const auto low = static_cast<std::uint32_t>(item.info.size);
    const auto high = static_cast<std::uint32_t>(item.info.size >> 32);
    if (events_.fileList != nullptr && events_.fileList->OnFileListEntry(found_, low, high) == 0)
        stop_ = true;
    ++found_;
    return !stop_;
}

void DeletionJob::start(const std::wstring& name)
{
    if (events_.overall != nullptr)
        events_.overall->OnFileStarted(name.c_str());
}

bool DeletionJob::report(std::uint64_t done, std::uint64_t total)
{
    if (events_.progress != nullptr && events_.progress->OnFileProgress(done, total) == 0)
        stop_ = true;
    return !stop_;
}

bool DeletionJob::repeats(const JobItem& item, const FileFailure& failure)
{
    if (events_.conflict == nullptr)
        return false;
    const int action = events_.conflict->OnFileError(item.name.c_str(), L"", failure.text().c_str());
    if (action == FileErrorAbort)
        stop_ = true;
    return action == FileErrorRepeat;
}

void DeletionJob::finish(const JobItem& item, const FileFailure* failure)
{
    if (events_.overall == nullptr)
        return;
    const wchar_t* text = failure != nullptr ? failure->text().c_str() : L"";
    events_.overall->OnFileFinished(item.name.c_str(), text, failure != nullptr ? failure->code() : 0);
}

void DeletionJob::keepFoldersOf(const Place& place)
{
    NativeText path = pathOf(place);
    // Ends at a folder that is known already: those above it are known as well.
    for (auto end = path.rfind(NativeSeparator); end != NativeText::npos && end > 0; end = path.rfind(NativeSeparator))
    {
        path.resize(end);
        if (!kept_.insert(path).second)
            return;
    }
}

} // namespace VaultCore
