#include "vaultcore/decryption_job.h"

#include "platform/utf8.h"
#include "vaultcore/file_streams.h"
#include "vaultcore/package/package_decryption.h"
#include "vaultcore/read_back.h"
#include "vaultcore/result_names.h"

#include <algorithm>
#include <utility>

namespace VaultCore
{
namespace
{

Selection selection()
{
    return {.links = false, .inFolder = isEncryptedName, .byPattern = [](const NativeText& name) {
                return !isTemporaryName(name);
            }};
}

} // namespace

DecryptionJob::DecryptionJob(IFileSystem& files, const EventReceivers& events, DecryptionOrder order)
    : files_(files), order_(std::move(order)), reports_(events), job_(files, reports_, selection()),
      temporaries_(files), keys_(order_.provider, reports_), ahead_(files, *this)
{
}

/// Before a key has fitted, somebody has to be asked.
void DecryptionJob::comingUp(std::span<const JobItem> items)
{
    ready_ = keys_.hasStored() ? ahead_.take(items) : nullptr;
}

void DecryptionJob::workOnFile(JobItem& item)
{
    reports_.fileStarted(item.name);
    const std::unique_ptr<ResultWork> ready = ready_ ? std::move(ready_) : workOf(item);
    auto& work = static_cast<Work&>(*ready);
    auto failure = reports_.attempt(item.name, work.targetName, [&] { decrypt(work); });
    if (!failure && order_.deletesEncrypted)
        failure = reports_.attempt(item.name, work.targetName, [&] { removeEncrypted(work); });
    job_.list().forgetName(item.info.identity, !failure && order_.deletesEncrypted);
    reports_.fileFinished(item.name, failure, work.resultName);
}

std::unique_ptr<DecryptionJob::Work> DecryptionJob::workOf(const JobItem& item)
{
    auto work = std::make_unique<Work>();
    work->encrypted = item.place;
    work->name = item.name;
    return work;
}

std::unique_ptr<ResultWork> DecryptionJob::make(const JobItem& item)
{
    auto work = workOf(item);
    work->ahead = true;
    const auto file = files_.openForReading(work->encrypted);
    work->info = file->info();
    writeResult(*work, *file);
    return work;
}

void DecryptionJob::check(ResultWork& work)
{
    compare(static_cast<Work&>(work));
}

void DecryptionJob::decrypt(Work& work)
{
    const bool ahead = std::exchange(work.ahead, false);
    if (!ahead)
        produce(work);
    work.resultName = work.isPackage ? work.resultName : work.targetName;
    try
    {
        for (const std::uint64_t part : work.parts)
            reportShown(work, part);
        if (!ahead)
            compare(work);
        finishResult(work);
    }
    catch (...)
    {
        takeBack(work);
        throw;
    }
    if (!work.isPackage)
        job_.list().addKnown(work.result.identity);
}

/// What the file gives stands under its final name then.
void DecryptionJob::produce(Work& work)
{
    const auto file = files_.openForReading(work.encrypted);
    work.info = file->info();
    try
    {
        writeResult(work, *file);
        const auto result = std::move(work.file);
        work.result = publish(*result, nameOf(work.target));
    }
    catch (const ContainerFailure& failure)
    {
        if (failure.fault != ContainerFault::NotAContainer || !unpackPackage(work, *file))
            throw;
        work.isPackage = true;
    }
}

void DecryptionJob::compare(Work& work)
{
    if (work.digest && !work.isPackage)
        readBack(files_, work.target, work.result, *work.digest,
                 [&](std::uint64_t done) { reportPart(work, done, true); });
}

/// The result stands under its name.
void DecryptionJob::finishResult(Work& work)
{
    if (!reports_.fileProgress(work.info.size, work.info.size) && order_.deletesEncrypted)
        throw FileFailure(FailureCause::Cancelled, 0);
}

void DecryptionJob::removeEncrypted(const Work& work)
{
    // A question may have stood for long.
    if (!work.isPackage)
        failIfChanged(files_, work.target, work.result);
    files_.removeUnchanged(work.encrypted, work.info);
}

/// The end is reported once only, when the result stands.
void DecryptionJob::reportPart(Work& work, std::uint64_t done, bool readingBack)
{
    const std::uint64_t size = work.info.size;
    const std::uint64_t shown = !order_.deletesEncrypted ? done : readingBack ? size / 2 + done / 2 : done / 2;
    if (shown >= size)
        return;
    if (work.ahead)
        work.parts.push_back(shown);
    else
        reportShown(work, shown);
}

void DecryptionJob::reportShown(const Work& work, std::uint64_t shown)
{
    if (!reports_.fileProgress(shown, work.info.size))
        throw FileFailure(FailureCause::Cancelled, 0);
}

/// Leaves the result under its temporary name.
void DecryptionJob::writeResult(Work& work, IReadFile& file)
{
    FileSource source(file);
    const auto reader = openContainer(source);
    // A folder that is not there is told before anybody thinks about a password.
    targetFolder(work.encrypted);
    unlock(*reader, work);
    const ContainerDetails details = reader->details();
    chooseTarget(work, details);
    auto result = createResult(work);
    work.digest.reset();
    if (order_.deletesEncrypted)
        work.digest.emplace();
    reportPart(work, 0, false);
    for (auto piece = reader->read(); !piece.empty(); piece = reader->read())
    {
        if (work.digest)
            work.digest->add(piece);
        result->write(piece);
        reportPart(work, source.taken(), false);
    }
    FileInfo like = work.info;
    like.modified = details.modified;
    like.created = details.created;
    result->takeOver(like);
    work.file = std::move(result);
}

/// Ahead of a file's turn nobody is asked.
void DecryptionJob::unlock(ContainerReader& reader, const Work& work)
{
    if (!work.ahead)
        keys_.unlock(reader, work.name);
    else if (!keys_.unlockWithStored(reader))
        throw FileFailure(FailureCause::NoKey, 0);
}

/// False when the file is no package.
bool DecryptionJob::unpackPackage(Work& work, IReadFile& file)
{
    PackageFileSource source(file);
    if (!isPackage(source))
        return false;
    const PackageWork package{work.name, work.info, targetFolder(work.encrypted), order_.deletesEncrypted};
    decryptPackage(file, package, files_, keys_, reports_);
    const std::wstring folder = files_.display(package.folder);
    work.resultName = folder.empty() ? L"./" : folder;
    return true;
}

void DecryptionJob::chooseTarget(Work& work, const ContainerDetails& details)
{
    NativeText name = files_.leafName(Platform::fromUtf8(details.name));
    if (name.empty())
        name = files_.leafName(files_.displayName(plainName(nameOf(work.encrypted))));
    if (name.empty())
        name = files_.leafName(L"decrypted");
    work.target = childOf(targetFolder(work.encrypted), name);
    work.targetName = files_.display(work.target);
    temporaries_.removeLeftOvers(parentOf(work.target), nameOf(work.encrypted));
    failIfThere(files_, work.target);
}

/// Throws `NoTargetFolder` when there is no such folder.
Place DecryptionJob::targetFolder(const Place& encrypted)
{
    if (order_.path.empty())
        return parentOf(encrypted);
    Place folder = files_.locateFolder(order_.path);
    try
    {
        files_.inspectParent(childOf(folder, nameOf(encrypted)));
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::Missing)
            throw FileFailure(FailureCause::NoTargetFolder, 0);
        throw;
    }
    return folder;
}

std::unique_ptr<INewFile> DecryptionJob::createResult(const Work& work)
{
    try
    {
        return temporaries_.create(parentOf(work.target), nameOf(work.encrypted));
    }
    catch (const FileFailure& failure)
    {
        // A file in the folder's place, or a folder that has gone by now.
        if (failure.cause() == FailureCause::Missing)
            throw FileFailure(FailureCause::NoTargetFolder, 0);
        throw;
    }
}

/// Removes the result, if the encrypted file is still there. The files of a package stay: each of them is whole.
void DecryptionJob::takeBack(ResultWork& result)
{
    const auto& work = static_cast<const Work&>(result);
    if (work.isPackage)
        return;
    try
    {
        if (unchanged(work.info, files_.inspect(work.encrypted)))
            files_.removeUnchanged(work.target, work.result);
    }
    catch (...)
    {
        // Both are better than none.
    }
}

} // namespace VaultCore
