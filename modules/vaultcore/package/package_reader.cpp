#include "vaultcore/package/package_reader.h"

#include "vaultcore/container/key.h"
#include "vaultcore/package/package_failure.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

Bytes trailerBytes(IPackageSource& source)
{
    const std::uint64_t size = source.size();
    Bytes bytes(size < TrailerSize ? 0 : TrailerSize);
    if (!bytes.empty())
        bytes.resize(source.read(size - TrailerSize, bytes));
    return bytes;
}

} // namespace

/// One part of the package as a container's source: it ends where the part ends.
class PackageReader::Part final : public IByteSource
{
public:
    Part(IPackageSource& source, std::uint64_t offset, std::uint64_t size, std::size_t startSize = 0)
        : source_(source), offset_(offset), left_(size), startLeft_(startSize)
    {
    }

    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), left_));
        const std::size_t count = source_.read(offset_, bytes.first(wanted));
        const std::size_t ofStart = std::min(count, startLeft_);
        start_.add(bytes.first(ofStart));
        startLeft_ -= ofStart;
        offset_ += count;
        left_ -= count;
        return count;
    }
    /// Of the bytes that belong to the start, as they were read; nothing when they were not read to their end.
    bool startIs(const Digest& expected) { return startLeft_ == 0 && start_.finish() == expected; }

private:
    IPackageSource& source_;
    std::uint64_t offset_;
    std::uint64_t left_;
    std::size_t startLeft_;
    ContentDigest start_;
};

bool isPackage(IPackageSource& source)
{
    try
    {
        decodeTrailer(trailerBytes(source), source.size());
        return true;
    }
    catch (const ContainerFailure& failure)
    {
        return failure.fault != ContainerFault::NotAContainer;
    }
}

PackageReader::PackageReader(IPackageSource& source)
    : source_(source), trailer_(decodeTrailer(trailerBytes(source), source.size()))
{
    readComment();
    part_ = std::make_unique<Part>(source_, trailer_.directoryOffset, trailer_.directorySize);
    directory_ = openContainer(*part_);
}

PackageReader::~PackageReader() = default;

void PackageReader::readComment()
{
    Bytes bytes(trailer_.commentSize);
    if (source_.read(trailer_.commentOffset, bytes) != bytes.size())
        throwDamagedPackage(L"it ends too early");
    comment_.assign(bytes.begin(), bytes.end());
}

bool PackageReader::unlock(const Key& key, DerivationCache& cache)
{
    if (key_ != nullptr)
        return true;
    if (!directory_->unlock(key, cache))
        return false;
    Directory directory = decodeDirectory(readDirectory(), trailer_);
    if (directory.comment != sha256(viewOf(comment_)))
        throwDamagedPackage(L"its comment was changed");
    entries_ = std::move(directory.entries);
    key_ = key.clone();
    cache_ = &cache;
    return true;
}

Bytes PackageReader::readDirectory()
{
    const ContainerDetails& details = directory_->details();
    if (details.name != DirectoryName)
        throwDamagedPackage(L"another file stands in the place of its directory");
    if (details.size > LargestDirectory)
        throwAbsurdPackage(L"its directory is too long");
    Bytes content;
    content.reserve(static_cast<std::size_t>(std::min(details.size, trailer_.directorySize)));
    for (ByteView piece = directory_->read(); !piece.empty(); piece = directory_->read())
        content.insert(content.end(), piece.begin(), piece.end());
    return content;
}

ContainerReader& PackageReader::open(std::size_t index)
{
    const PackageEntry& entry = entries_.at(index);
    file_.reset();
    checkStart(entry);
    filePart_ = std::make_unique<Part>(source_, entry.offset, entry.size, entry.startSize);
    auto file = openContainer(*filePart_);
    if (!file->unlock(*key_, *cache_))
        throwDamagedPackage(L"a file in it has another key");
    // The bytes that were taken, and no others: the source may have changed since they were looked at.
    if (!filePart_->startIs(entry.start))
        throwDamagedPackage(L"another file stands in the place of one in it");
    if (file->details().name != entry.name || file->details().size != entry.contentSize)
        throwDamagedPackage(L"a file in it is not the one that its directory tells of");
    file_ = std::move(file);
    return *file_;
}

/// Before any of it is worked on.
void PackageReader::checkStart(const PackageEntry& entry)
{
    Part start(source_, entry.offset, entry.startSize, entry.startSize);
    Bytes buffer(std::size_t{64} << 10);
    while (start.read(buffer) == buffer.size())
        continue;
    if (!start.startIs(entry.start))
        throwDamagedPackage(L"a file in it was changed or exchanged");
}

} // namespace VaultCore
