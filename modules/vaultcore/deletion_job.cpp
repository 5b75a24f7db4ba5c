#include "vaultcore/deletion_job.h"

namespace VaultCore
{
namespace
{

NativeText pathOf(const Place& place)
{
    return place.root + NativeSeparator + place.below;
}

} // namespace

DeletionJob::DeletionJob(IFileSystem& files, const EventReceivers& events, bool wipe)
    : files_(files), reports_(events), wipe_(wipe), job_(files, reports_, Selection{})
{
}

void DeletionJob::run(const std::vector<std::wstring>& entries)
{
    job_.run(entries, *this);
}

void DeletionJob::workOnFile(JobItem& item)
{
    reports_.fileStarted(item.name);
    const bool wiped = wipe_ && item.info.kind == FileKind::File;
    const auto failure = reports_.attempt(item.name, L"", [&] { wiped ? wipeFile(item) : removeFile(item); });
    if (failure)
    {
        keepFoldersOf(item.place);
        return reports_.fileFinished(item.name, failure);
    }
    job_.list().forgetName(item.info.identity);
    reports_.fileProgress(item.info.size, item.info.size);
    reports_.fileFinished(item.name, std::nullopt);
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
            reports_.fileStarted(item.name);
        started = true;
        if (reports_.repeats(item.name, L"", *failure))
            continue;
        keepFoldersOf(item.place);
        return reports_.fileFinished(item.name, failure);
    }
    job_.list().forgetName(item.info.identity);
    if (started)
        reports_.fileFinished(item.name, std::nullopt);
}

void DeletionJob::leave(const JobItem& item)
{
    keepFoldersOf(item.place);
}

void DeletionJob::removeFile(JobItem& item)
{
    files_.remove(item.place, item.info.kind);
}

void DeletionJob::wipeFile(JobItem& item)
{
    if (item.info.size > 0 && !reports_.fileProgress(0, item.info.size))
        throw FileFailure(FailureCause::Cancelled, 0);
    const auto progress = [&](std::uint64_t done)
    {
        // A file that grew since it was listed is complete only once: when it is gone.
        return done >= item.info.size || reports_.fileProgress(done, item.info.size);
    };
    if (!wiper().wipe(item.place, job_.list().namesOf(item.info.identity), progress))
        throw FileFailure(FailureCause::CancelledPartly, 0);
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
