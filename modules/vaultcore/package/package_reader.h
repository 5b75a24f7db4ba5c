#pragma once

#include "vaultcore/container/container.h"
#include "vaultcore/content_digest.h"
#include "vaultcore/package/package_format.h"

#include <memory>

namespace VaultCore
{

/// The bytes of a package. Throws on failure; what it throws passes through the reader.
class IPackageSource
{
public:
    virtual ~IPackageSource() = default;
    virtual std::uint64_t size() = 0;
    /// Fills `bytes` from `offset` on as far as there is data; a short count is the end.
    virtual std::size_t read(std::uint64_t offset, std::span<std::uint8_t> bytes) = 0;
};

/// Is there the end of a package? A damaged one counts as well.
bool isPackage(IPackageSource& source);

/// Reads one package. All that it tells once it is unlocked has been authenticated. Not for two threads at once.
class PackageReader
{
public:
    /// Throws `ContainerFailure` for what is no package and for one that is damaged where that is seen without a key.
    /// The source has to outlive the reader.
    explicit PackageReader(IPackageSource& source);
    ~PackageReader();

    /// UTF-8. Anybody could have changed it as long as the package is locked.
    const std::string& comment() const { return comment_; }
    /// As those of any container.
    std::string riddle() const { return directory_->riddle(); }
    std::uint32_t algorithm() const { return directory_->algorithm(); }

    /// False for a key that does not fit; another one may be tried. The cache has to outlive the reader. Throws
    /// `ContainerFailure`: the key fits and the directory, a name in it or the comment is not what was packed.
    bool unlock(const Key& key, DerivationCache& cache);

    /// Only once unlocked, from here on.
    const std::vector<PackageEntry>& entries() const { return entries_; }
    /// The unlocked container of an entry. Throws `Damaged` for one that is not the entry's. Only one at a time: the
    /// next call ends the one before.
    ContainerReader& open(std::size_t index);

private:
    class Part;

    void readComment();
    Bytes readDirectory();
    void checkStart(const PackageEntry& entry);

    IPackageSource& source_;
    Trailer trailer_;
    std::string comment_;
    std::unique_ptr<Part> part_;
    std::unique_ptr<ContainerReader> directory_;
    std::unique_ptr<Key> key_;
    DerivationCache* cache_ = nullptr;
    std::vector<PackageEntry> entries_;
    std::unique_ptr<Part> filePart_;
    std::unique_ptr<ContainerReader> file_;
};

} // namespace VaultCore
