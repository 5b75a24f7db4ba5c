#include "vaultcore/package/sfx_job.h"

#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/file_streams.h"
#include "vaultcore/result_names.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

constexpr std::string_view ProgramEnding = ".exe";

Selection selection()
{
    const auto wanted = [](const NativeText& name) { return !isTemporaryName(name); };
    return {.links = false, .inFolder = wanted, .byPattern = wanted};
}

EventReceivers withDestiny(EventReceivers events, IFileProgressEvents* destiny)
{
    if (events.destiny != nullptr)
        events.destiny = destiny;
    return events;
}

/// Beside the entry that the file came from, and named after that entry.
Place packageBeside(const Place& first)
{
    const NativeText entry = first.below.substr(0, first.below.find(NativeSeparator));
    return {first.root, entry + NativeText(ProgramEnding.begin(), ProgramEnding.end()), first.rootFolder};
}

} // namespace

int SfxJob::Total::OnFileProgress(std::uint64_t done, std::uint64_t)
{
    return to_->OnFileProgress(std::min(before + done, total), total);
}

SfxJob::SfxJob(IFileSystem& files, const EventReceivers& events, const SfxOrder& order)
    : files_(files), order_(order), destiny_(events.destiny), reports_(withDestiny(events, &destiny_)),
      job_(files, reports_, selection()), temporaries_(files), removal_(files, reports_, job_.list()), naming_(files),
      chunk_(ContentChunk)
{
}

void SfxJob::workOnFile(JobItem& item)
{
    reports_.fileStarted(item.name);
    items_.push_back({item.name, item.info, {}, {item.place, {}, false}, {}, {}});
    Item& added = items_.back();
    const Place target = package_ ? package_->target : packageBeside(item.place);
    const std::wstring targetName = files_.display(target);
    if (!package_)
    {
        total_ = job_.list().totalSize();
        added.failure = reports_.attempt(item.name, targetName, [&] { start(target); });
        if (added.failure)
            return reports_.stop(); // no other file could be packed either
    }
    added.packedName = naming_.nameOfFile(item.place);
    added.failure = reports_.attempt(item.name, targetName, [&] { add(added); });
    done_ += item.info.size;
}

void SfxJob::start(const Place& target)
{
    if (const auto missing = missingAlgorithm(order_.encryption.algorithm))
        throw FileFailure(FailureCause::Content, 0, *missing);
    temporaries_.removeLeftOvers(parentOf(target), nameOf(target));
    failIfThere(files_, target);
    // The key is derived before a file is made: it can take a while, and fail.
    if (!session_)
        session_ = startEncryption(*order_.encryption.key, order_.encryption.algorithm);
    Package package;
    package.target = target;
    package.targetName = files_.display(target);
    package.file = temporaries_.create(parentOf(target), nameOf(target));
    package.sink.emplace(*package.file);
    copyProgram(package);
    package_.emplace(std::move(package));
    package_->writer.emplace(*package_->sink, package_->programSize, *session_, order_.encryption.riddle);
    report(0, false);
}

void SfxJob::copyProgram(Package& package)
{
    std::unique_ptr<IReadFile> program;
    try
    {
        program = files_.openForReading(files_.locate(order_.program));
    }
    catch (const FileFailure& failure)
    {
        throw FileFailure(FailureCause::Content, 0,
                          L"The program for self-extracting packages, " + order_.program + L", cannot be used. " +
                              failure.text());
    }
    ContentDigest digest;
    for (std::size_t count = chunk_.size(); count == chunk_.size();)
    {
        count = program->read(chunk_.bytes());
        const auto piece = chunk_.bytes().first(count);
        if (package.sink->size() == 0 && (count < 2 || piece[0] != 'M' || piece[1] != 'Z'))
            throw FileFailure(FailureCause::Content, 0,
                              L"The program for self-extracting packages, " + order_.program + L", is no program.");
        digest.add(piece);
        package.sink->write(piece);
    }
    package.programSize = package.sink->size();
    package.program = digest.finish();
}

void SfxJob::add(Item& item)
{
    const auto file = files_.openForReading(item.source.place);
    item.source.info = file->info();
    const ContainerDetails details{
        item.packedName, item.source.info.size, item.source.info.modified, item.source.info.created, {}};
    const auto copy = [&](ContainerWriter& container)
    {
        copyContent(*file, container, item);
        const FileInfo now = files_.inspect(item.source.place);
        if (!unchanged(item.source.info, file->info()) || !unchanged(item.source.info, now))
            throw FileFailure(FailureCause::SourceChanged, 0);
    };
    ContentDigest container;
    package_->sink->setDigest(sourceGoes() && !keyDecrypts() ? &container : nullptr);
    try
    {
        package_->writer->add(details, copy);
    }
    catch (...)
    {
        package_->sink->setDigest(nullptr);
        throw;
    }
    package_->sink->setDigest(nullptr);
    if (!keyDecrypts())
        item.digest = container.finish();
}

void SfxJob::copyContent(IReadFile& from, ContainerWriter& to, Item& item)
{
    const std::uint64_t size = item.source.info.size;
    ContentDigest digest;
    for (std::uint64_t done = 0;;)
    {
        const auto content = chunk_.bytes().first(from.read(chunk_.bytes()));
        done += content.size();
        if (done > size || (content.empty() && done < size))
            throw FileFailure(FailureCause::SourceChanged, 0);
        if (content.empty())
            break;
        if (sourceGoes())
            digest.add(content);
        to.write(content);
        report(done_ + std::min(done, item.found.size), false);
    }
    item.digest = digest.finish();
}

void SfxJob::end()
{
    const std::optional<FileFailure> failure = finishPackage();
    if (!failure && sourceGoes() && hasFiles())
        removeSources();
    for (const Item& item : items_)
        reports_.fileFinished(item.name, item.failure ? item.failure : failure);
    package_.reset();
}

/// The failure of the whole package, of which nothing stays then.
std::optional<FileFailure> SfxJob::finishPackage()
{
    if (reports_.stopped())
        return FileFailure(FailureCause::Cancelled, 0);
    if (!hasFiles())
        return std::nullopt;
    const std::wstring& name = package_->targetName;
    if (auto failure = reports_.attempt(name, name, [&] { writeEnd(); }))
        return failure;
    std::optional<FileFailure> failure;
    if (sourceGoes())
        failure = reports_.attempt(name, name, [&] { verify(); });
    if (!failure && !reports_.fileProgress(total_, total_) && sourceGoes())
        failure = FileFailure(FailureCause::Cancelled, 0);
    if (failure)
        takeBack();
    return failure;
}

void SfxJob::writeEnd()
{
    Package& package = *package_;
    if (!package.complete)
    {
        ContentDigest digest;
        package.sink->cutTo(package.writer->size());
        package.sink->setDigest(&digest);
        package.writer->finish(order_.comment);
        package.sink->setDigest(nullptr);
        package.end = digest.finish();
        package.file->takeOver(likeAll());
        package.complete = true;
    }
    package.result = publish(*package.file, nameOf(package.target));
}

/// Nobody may read the package who may not read each of its files.
FileInfo SfxJob::likeAll() const
{
    FileInfo like;
    like.attributes = ~std::uint32_t{0};
    for (const Item& item : items_)
        like.attributes &= item.failure ? ~std::uint32_t{0} : item.source.info.attributes;
    return like;
}

bool SfxJob::sourceGoes() const
{
    return order_.encryption.destiny == DestinyDelete || order_.encryption.destiny == DestinyWipe;
}

bool SfxJob::keyDecrypts() const
{
    return order_.encryption.key->GetKeyType() != KeyTypePublicRsa;
}

/// The end is reported once only, when the package stands.
void SfxJob::report(std::uint64_t done, bool readingBack)
{
    const std::uint64_t shown = !sourceGoes() ? done : readingBack ? total_ / 2 + done / 2 : done / 2;
    if (shown < total_ && !reports_.fileProgress(shown, total_))
        throw FileFailure(FailureCause::Cancelled, 0);
}

} // namespace VaultCore
