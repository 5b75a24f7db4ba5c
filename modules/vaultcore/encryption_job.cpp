#include "vaultcore/encryption_job.h"

#include "interfaces/vaultcore/encryptor.h"
#include "platform/utf8.h"
#include "vaultcore/file_streams.h"
#include "vaultcore/result_names.h"

#include <algorithm>
#include <utility>

namespace VaultCore
{
namespace
{

Selection selection()
{
    const auto wanted = [](const NativeText& name) { return !isTemporaryName(name); };
    return {.links = false, .inFolder = wanted, .byPattern = wanted};
}

} // namespace

EncryptionJob::EncryptionJob(IFileSystem& files, const EventReceivers& events, const EncryptionOrder& order)
    : files_(files), order_(order), reports_(events), job_(files, reports_, selection()), temporaries_(files),
      removal_(files, reports_, job_.list()), ahead_(files, *this)
{
}

/// The first file derives the key, which can take a while, or fail.
void EncryptionJob::comingUp(std::span<const JobItem> items)
{
    ready_ = session_ ? ahead_.take(items) : nullptr;
}

void EncryptionJob::workOnFile(JobItem& item)
{
    reports_.fileStarted(item.name);
    const std::unique_ptr<ResultWork> ready = ready_ ? std::move(ready_) : workOf(item);
    auto& work = static_cast<Work&>(*ready);
    const std::wstring target = files_.display(work.target);
    auto failure = reports_.attempt(item.name, target, [&] { encrypt(work); });
    if (!failure && sourceGoes())
        failure = reports_.attempt(item.name, target, [&] { removeSource(work); });
    job_.list().forgetName(item.info.identity, !failure && sourceGoes());
    reports_.fileFinished(item.name, failure);
}

std::unique_ptr<EncryptionJob::Work> EncryptionJob::workOf(const JobItem& item)
{
    auto work = std::make_unique<Work>();
    work->source.place = item.place;
    work->target = childOf(parentOf(item.place), encryptedName(nameOf(item.place)));
    return work;
}

std::unique_ptr<ResultWork> EncryptionJob::make(const JobItem& item)
{
    auto work = workOf(item);
    work->ahead = true;
    writeResult(*work);
    return work;
}

void EncryptionJob::check(ResultWork& work)
{
    if (sourceGoes())
        verify(static_cast<Work&>(work));
}

void EncryptionJob::encrypt(Work& work)
{
    if (const auto missing = missingAlgorithm(order_.algorithm))
        throw FileFailure(FailureCause::Content, 0, *missing);
    const bool ahead = std::exchange(work.ahead, false);
    if (!ahead)
    {
        writeResult(work);
        const auto file = std::move(work.file);
        work.result = publish(*file, nameOf(work.target));
    }
    try
    {
        for (const std::uint64_t part : work.parts)
            reportShown(work, part);
        if (!ahead && sourceGoes())
            verify(work);
        finishResult(work);
    }
    catch (...)
    {
        takeBack(work);
        throw;
    }
    job_.list().addKnown(work.result.identity);
}

/// Leaves the result under its temporary name.
void EncryptionJob::writeResult(Work& work)
{
    const auto file = files_.openForReading(work.source.place);
    work.source.info = file->info();
    temporaries_.removeLeftOvers(parentOf(work.target), nameOf(work.source.place));
    failIfThere(files_, work.target);
    work.digest.reset();
    if (sourceGoes())
        work.digest.emplace();
    // The key is derived before a file is made: it can take a while, and fail.
    EncryptionSession& encryption = session();
    auto result = temporaries_.create(parentOf(work.target), nameOf(work.source.place));
    FileSink sink(*result, sourceGoes() && !keyDecrypts() ? &*work.digest : nullptr);
    ContainerDetails details;
    details.name = Platform::toUtf8(files_.displayName(nameOf(work.source.place)));
    details.size = work.source.info.size;
    details.modified = work.source.info.modified;
    details.created = work.source.info.created;
    details.extraText = order_.extraText;
    const auto writer = encryption.begin(sink, order_.riddle, details);
    copyContent(*file, *writer, work);
    writer->finish();
    if (!unchanged(work.source.info, files_.inspect(work.source.place)))
        throw FileFailure(FailureCause::SourceChanged, 0);
    result->takeOver(work.source.info);
    work.file = std::move(result);
}

void EncryptionJob::copyContent(IReadFile& from, ContainerWriter& to, Work& work)
{
    const std::uint64_t size = work.source.info.size;
    if (size > 0)
        reportPart(work, 0, false);
    // One byte more than there should be shows a file that grew.
    SecureBytes chunk(static_cast<std::size_t>(std::min<std::uint64_t>(ContentChunk, size + 1)));
    for (std::uint64_t done = 0;;)
    {
        const auto content = chunk.bytes().first(from.read(chunk.bytes()));
        done += content.size();
        if (done > size || (content.empty() && done < size))
            throw FileFailure(FailureCause::SourceChanged, 0);
        if (content.empty())
            return;
        if (work.digest && keyDecrypts())
            work.digest->add(content);
        to.write(content);
        if (done < size)
            reportPart(work, done, false);
    }
}

/// The result stands under its name.
void EncryptionJob::finishResult(Work& work)
{
    const std::uint64_t size = work.source.info.size;
    if (!reports_.fileProgress(size, size) && sourceGoes())
        throw FileFailure(FailureCause::Cancelled, 0);
}

/// Nobody but the owner of the private key can decrypt what was made with a public one: there the bytes are compared.
void EncryptionJob::verify(Work& work)
{
    const std::uint64_t size = work.source.info.size;
    const auto report = [&](std::uint64_t done)
    {
        if (done < size)
            reportPart(work, done, true);
    };
    if (!keyDecrypts())
        return readBack(files_, work.target, work.result, *work.digest, report);
    const auto file = files_.openForReading(work.target);
    file->forgetMemory();
    try
    {
        if (unchanged(work.result, file->info()) && decryptedDigest(*file, report) == work.digest->finish())
            return;
    }
    catch (const ContainerFailure&)
    {
        // What is wrong with it helps nobody: it goes.
    }
    throw FileFailure(FailureCause::ResultDiffers, 0);
}

ContentDigest::Value EncryptionJob::decryptedDigest(IReadFile& file, const ReadBackProgress& progress)
{
    FileSource source(file);
    const auto reader = openContainer(source);
    if (!unlock(*reader))
        throw FileFailure(FailureCause::ResultDiffers, 0);
    ContentDigest digest;
    std::uint64_t done = 0;
    for (auto piece = reader->read(); !piece.empty(); piece = reader->read())
    {
        digest.add(piece);
        done += piece.size();
        progress(done);
    }
    return digest.finish();
}

void EncryptionJob::removeSource(Work& work)
{
    // A question may have stood for long. What the job itself has begun to overwrite is of no use to anybody.
    if (!work.source.begun)
        failIfChanged(files_, work.target, work.result);
    try
    {
        if (order_.destiny == DestinyWipe)
            removal_.wipe(work.source);
        else
            removal_.remove(work.source);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::Cancelled)
            takeBack(work);
        throw;
    }
}

/// Removes the result, if the source is still there to be encrypted again.
void EncryptionJob::takeBack(ResultWork& work)
{
    const Source& source = static_cast<const Work&>(work).source;
    try
    {
        if (unchanged(source.info, files_.inspect(source.place)))
            files_.removeUnchanged(work.target, work.result);
    }
    catch (...)
    {
        // Both are better than none.
    }
}

void EncryptionJob::reportPart(Work& work, std::uint64_t done, bool readingBack)
{
    const std::uint64_t size = work.source.info.size;
    const std::uint64_t shown = !sourceGoes() ? done : readingBack ? size / 2 + done / 2 : done / 2;
    if (work.ahead)
        work.parts.push_back(shown);
    else
        reportShown(work, shown);
}

void EncryptionJob::reportShown(const Work& work, std::uint64_t shown)
{
    if (!reports_.fileProgress(shown, work.source.info.size))
        throw FileFailure(FailureCause::Cancelled, 0);
}

bool EncryptionJob::sourceGoes() const
{
    return order_.destiny == DestinyDelete || order_.destiny == DestinyWipe;
}

bool EncryptionJob::keyDecrypts() const
{
    return order_.key->GetKeyType() != KeyTypePublicRsa;
}

EncryptionSession& EncryptionJob::session()
{
    if (!session_)
        session_ = startEncryption(*order_.key, order_.algorithm);
    return *session_;
}

bool EncryptionJob::unlock(ContainerReader& reader)
{
    const std::lock_guard lock(mutex_);
    if (!derivations_)
        derivations_ = createDerivationCache();
    return reader.unlock(*order_.key, *derivations_);
}

} // namespace VaultCore
