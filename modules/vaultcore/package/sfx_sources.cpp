#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/package/sfx_job.h"

#include <algorithm>

// What becomes of the sources: the package is read back, then they go.

namespace VaultCore
{

void SfxJob::verify()
{
    const auto file = files_.openForReading(package_->target);
    file->forgetMemory();
    try
    {
        if (!unchanged(package_->result, file->info()))
            throw FileFailure(FailureCause::ResultDiffers, 0);
        done_ = 0;
        verifyProgram(*file);
        PackageFileSource source(*file);
        if (keyDecrypts())
            verifyContent(source);
        else
            verifyBytes(*file);
    }
    catch (const ContainerFailure&)
    {
        // What is wrong with it helps nobody: it goes.
        throw FileFailure(FailureCause::ResultDiffers, 0);
    }
}

void SfxJob::verifyProgram(IReadFile& file)
{
    if (digestOf(file, package_->programSize) != package_->program)
        throw FileFailure(FailureCause::ResultDiffers, 0);
}

void SfxJob::verifyContent(IPackageSource& source)
{
    const auto derivations = createDerivationCache();
    PackageReader reader(source);
    if (!reader.unlock(*order_.encryption.key, *derivations) || reader.entries().size() != package_->writer->count())
        throw FileFailure(FailureCause::ResultDiffers, 0);
    std::size_t index = 0;
    for (const Item& item : items_)
    {
        if (item.failure)
        {
            done_ += item.found.size;
            continue;
        }
        ContainerReader& container = reader.open(index++);
        ContentDigest digest;
        std::uint64_t done = 0;
        for (auto piece = container.read(); !piece.empty(); piece = container.read())
        {
            digest.add(piece);
            done += piece.size();
            report(done_ + std::min(done, item.found.size), true);
        }
        if (container.details().name != item.packedName || digest.finish() != item.digest)
            throw FileFailure(FailureCause::ResultDiffers, 0);
        done_ += item.found.size;
    }
}

/// With a public key, which does not decrypt: the bytes have to be those that were written.
void SfxJob::verifyBytes(IReadFile& file)
{
    file.seek(package_->programSize);
    std::size_t index = 0;
    for (const Item& item : items_)
    {
        done_ += item.found.size;
        if (!item.failure && digestOf(file, package_->writer->entries()[index++].size) != item.digest)
            throw FileFailure(FailureCause::ResultDiffers, 0);
        report(done_, true);
    }
    if (digestOf(file, ~std::uint64_t{0}) != package_->end)
        throw FileFailure(FailureCause::ResultDiffers, 0);
}

/// Of the next bytes, or of all that are left when they are fewer.
ContentDigest::Value SfxJob::digestOf(IReadFile& file, std::uint64_t size)
{
    ContentDigest digest;
    while (size > 0)
    {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, chunk_.size()));
        const std::size_t count = file.read(chunk_.bytes().first(wanted));
        digest.add(chunk_.bytes().first(count));
        if (count < wanted)
            break;
        size -= count;
    }
    return digest.finish();
}

void SfxJob::removeSources()
{
    destiny_.total = total_;
    destiny_.before = 0;
    for (Item& item : items_)
    {
        if (!item.failure)
            item.failure = reports_.stopped()
                               ? FileFailure(FailureCause::Cancelled, 0)
                               : reports_.attempt(item.name, package_->targetName, [&] { removeSource(item); });
        job_.list().forgetName(item.found.identity, !item.failure);
        destiny_.before += item.found.size;
    }
}

void SfxJob::removeSource(Item& item)
{
    // A question may have stood for long. What the job itself has begun to overwrite is of no use to anybody.
    if (!item.source.begun)
        failIfChanged(files_, package_->target, package_->result);
    if (order_.encryption.destiny == DestinyWipe)
        removal_.wipe(item.source);
    else
        removal_.remove(item.source);
}

void SfxJob::takeBack()
{
    try
    {
        files_.removeUnchanged(package_->target, package_->result);
    }
    catch (const FileFailure&)
    {
        // The sources are there, and that is what counts.
    }
}

} // namespace VaultCore
