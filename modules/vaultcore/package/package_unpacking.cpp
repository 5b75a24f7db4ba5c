#include "vaultcore/package/package_unpacking.h"

#include "platform/utf8.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/package/package_failure.h"
#include "vaultcore/read_back.h"

namespace VaultCore
{

Place PackageUnpacking::placeOf(std::size_t index) const
{
    const std::wstring name = Platform::fromUtf8(package_.entries().at(index).name);
    Place place = folder_;
    for (std::size_t begin = 0; begin <= name.size();)
    {
        const std::size_t end = std::min(name.find(L'/', begin), name.size());
        const std::wstring part = name.substr(begin, end - begin);
        const NativeText leaf = files_.leafName(part);
        // What the reader let pass means itself on every system.
        if (leaf.empty() || files_.displayName(leaf) != part)
            throwDamagedPackage(L"a name in it is refused by this system");
        place = childOf(place, leaf);
        begin = end + 1;
    }
    return place;
}

void PackageUnpacking::unpack(std::size_t index, const Progress& progress, const MayReplace& mayReplace)
{
    const Place target = placeOf(index);
    makeFolders(target);
    const std::optional<FileInfo> replaced = toReplace(target, mayReplace);
    ContentDigest digest;
    const FileInfo result = write(target, package_.open(index), replaced, digest, progress);
    made_.insert(result.identity);
    if (readsBack_)
        verify(target, result, digest, progress);
}

FileInfo PackageUnpacking::write(const Place& target, ContainerReader& container,
                                 const std::optional<FileInfo>& replaced, ContentDigest& digest,
                                 const Progress& progress)
{
    const auto file = temporaries_.create(parentOf(target), nameOf(target));
    std::uint64_t done = 0;
    progress(done);
    for (auto piece = container.read(); !piece.empty(); piece = container.read())
    {
        if (readsBack_)
            digest.add(piece);
        file->write(piece);
        done += piece.size();
        progress(readsBack_ ? done / 2 : done);
    }
    FileInfo like;
    like.attributes = attributes_;
    like.modified = container.details().modified;
    like.created = container.details().created;
    file->takeOver(like);
    if (replaced)
        files_.removeUnchanged(target, *replaced);
    return publish(*file, nameOf(target));
}

/// What reads back differently goes.
void PackageUnpacking::verify(const Place& target, const FileInfo& result, ContentDigest& digest,
                              const Progress& progress)
{
    try
    {
        readBack(files_, target, result, digest, [&](std::uint64_t done) { progress(result.size / 2 + done / 2); });
    }
    catch (...)
    {
        made_.erase(result.identity);
        takeBack(target, result);
        throw;
    }
}

void PackageUnpacking::takeBack(const Place& target, const FileInfo& result)
{
    try
    {
        files_.removeUnchanged(target, result);
    }
    catch (const FileFailure&)
    {
        // The package is there, and that is what counts.
    }
}

void PackageUnpacking::makeFolders(const Place& target)
{
    const NativeText way = parentOf(target).below;
    for (std::size_t end = 0; end < way.size();)
    {
        end = std::min(way.find(NativeSeparator, end + 1), way.size());
        makeFolder({target.root, way.substr(0, end), target.rootFolder});
    }
}

void PackageUnpacking::makeFolder(const Place& folder)
{
    if (isFolder(folder))
        return;
    try
    {
        files_.createFolder(folder);
    }
    catch (const FileFailure& failure)
    {
        // Somebody else made it meanwhile.
        if (failure.cause() != FailureCause::NameTaken || !isFolder(folder))
            throw;
    }
}

/// False when there is nothing of the name. Throws when it is anything but a folder itself.
bool PackageUnpacking::isFolder(const Place& place)
{
    try
    {
        if (files_.inspect(place).kind == FileKind::Folder)
            return true;
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::Missing)
            return false;
        throw;
    }
    throw FileFailure(FailureCause::LinkOnTheWay, 0);
}

/// The file that the new one replaces. Nothing when the name is free.
std::optional<FileInfo> PackageUnpacking::toReplace(const Place& target, const MayReplace& mayReplace)
{
    std::optional<FileInfo> existing;
    try
    {
        existing = files_.inspect(target);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() != FailureCause::Missing)
            throw;
    }
    if (!existing)
    {
        failIfThere(files_, target); // the name may be too long
        return std::nullopt;
    }
    const bool mayGo = existing->kind == FileKind::File && !made_.contains(existing->identity);
    if (!mayGo || !mayReplace || !mayReplace(files_.display(target)))
        throw FileFailure(FailureCause::TargetExists, 0);
    return existing;
}

} // namespace VaultCore
