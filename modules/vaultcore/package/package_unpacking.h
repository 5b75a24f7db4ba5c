#pragma once

#include "vaultcore/package/package_reader.h"
#include "vaultcore/temporary_files.h"

#include <functional>
#include <optional>
#include <set>

namespace VaultCore
{

/// Unpacks the files of one package below a folder. Nothing is written outside of it: the names were checked by the
/// reader, links on the way are refused, and nothing that exists is replaced without a yes.
class PackageUnpacking
{
public:
    /// Bytes of the file's content that are done; with reading back, writing counts as the first half and reading as
    /// the second. Throws to stop.
    using Progress = std::function<void(std::uint64_t done)>;
    /// Asked with the path of an existing file; an empty one means no.
    using MayReplace = std::function<bool(const std::wstring& path)>;

    /// The package is unlocked, the folder exists; both and the file system have to outlive the unpacking.
    /// `attributes` are those of the new files. With `readsBack` each file has to give its content back once it stands.
    PackageUnpacking(IFileSystem& files, PackageReader& package, Place folder, std::uint32_t attributes,
                     bool readsBack = false)
        : files_(files), package_(package), folder_(std::move(folder)), attributes_(attributes), readsBack_(readsBack),
          temporaries_(files)
    {
    }

    /// Where the file of an entry belongs.
    Place placeOf(std::size_t index) const;
    /// The file stands under its name when this returns, complete and authenticated to its end. Throws `FileFailure`
    /// (`TargetExists` for one that may not be replaced) and `ContainerFailure`, and leaves nothing of it then.
    void unpack(std::size_t index, const Progress& progress, const MayReplace& mayReplace = {});

private:
    FileInfo write(const Place& target, ContainerReader& container, const std::optional<FileInfo>& replaced,
                   ContentDigest& digest, const Progress& progress);
    void verify(const Place& target, const FileInfo& result, ContentDigest& digest, const Progress& progress);
    void takeBack(const Place& target, const FileInfo& result);
    void makeFolders(const Place& target);
    void makeFolder(const Place& folder);
    bool isFolder(const Place& place);
    std::optional<FileInfo> toReplace(const Place& target, const MayReplace& mayReplace);

    IFileSystem& files_;
    PackageReader& package_;
    Place folder_;
    std::uint32_t attributes_;
    bool readsBack_;
    TemporaryFiles temporaries_;
    /// Files of this package; two names may be the same to a file system in its own way.
    std::set<FileIdentity> made_;
};

} // namespace VaultCore
