#include "vaultcore/decryption_job.h"

#include "platform/utf8.h"
#include "vaultcore/file_streams.h"
#include "vaultcore/package/package_decryption.h"
#include "vaultcore/read_back.h"
#include "vaultcore/result_names.h"

#include <algorithm>

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
      temporaries_(files), keys_(order_.provider, reports_)
{
}

void DecryptionJob::workOnFile(JobItem& item)
{
    reports_.fileStarted(item.name);
    Work work;
    work.encrypted = item.place;
    work.name = item.name;
    auto failure = reports_.attempt(item.name, work.targetName, [&] { decrypt(work); });
    if (!failure && order_.deletesEncrypted)
        failure = reports_.attempt(item.name, work.targetName, [&] { removeEncrypted(work); });
    job_.list().forgetName(item.info.identity, !failure && order_.deletesEncrypted);
    reports_.fileFinished(item.name, failure, work.resultName);
}

void DecryptionJob::decrypt(Work& work)
{
    const auto file = files_.openForReading(work.encrypted);
    work.info = file->info();
    try
    {
        writeResult(work, *file);
    }
    catch (const ContainerFailure& failure)
    {
        if (failure.fault != ContainerFault::NotAContainer || !unpackPackage(work, *file))
            throw;
        work.isPackage = true;
    }
    try
    {
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

/// The result stands under its name.
void DecryptionJob::finishResult(Work& work)
{
    if (work.digest && !work.isPackage)
        readBack(files_, work.target, work.result, *work.digest,
                 [&](std::uint64_t done) { reportPart(work, done, true); });
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
void DecryptionJob::reportPart(const Work& work, std::uint64_t done, bool readingBack)
{
    const std::uint64_t size = work.info.size;
    const std::uint64_t shown = !order_.deletesEncrypted ? done : readingBack ? size / 2 + done / 2 : done / 2;
    if (shown < size && !reports_.fileProgress(shown, size))
        throw FileFailure(FailureCause::Cancelled, 0);
}

void DecryptionJob::writeResult(Work& work, IReadFile& file)
{
    FileSource source(file);
    const auto reader = openContainer(source);
    // A folder that is not there is told before anybody thinks about a password.
    targetFolder(work.encrypted);
    keys_.unlock(*reader, work.name);
    const ContainerDetails details = reader->details();
    chooseTarget(work, details);
    const auto result = createResult(work);
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
    work.result = publish(*result, nameOf(work.target));
    work.resultName = work.targetName;
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
void DecryptionJob::takeBack(const Work& work)
{
    if (work.isPackage)
        return;
    try
    {
        if (unchanged(work.info, files_.inspect(work.encrypted)))
            files_.removeUnchanged(work.target, work.result);
    }
    catch (const FileFailure&)
    {
        // Both are better than none.
    }
}

} // namespace VaultCore
