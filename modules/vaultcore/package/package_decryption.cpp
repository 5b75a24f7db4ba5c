#include "vaultcore/package/package_decryption.h"

#include "vaultcore/package/package_failure.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

/// How the search for a key, which knows containers, tries its keys on a package.
class PackageLock final : public ContainerReader
{
public:
    explicit PackageLock(PackageReader& package) : package_(package) {}
    std::string riddle() const override { return package_.riddle(); }
    std::uint32_t algorithm() const override { return package_.algorithm(); }
    bool unlock(const Key& key, DerivationCache& cache) override { return package_.unlock(key, cache); }
    const ContainerDetails& details() const override { return details_; }
    std::span<const std::uint8_t> read() override { return {}; }

private:
    PackageReader& package_;
    ContainerDetails details_;
};

} // namespace

void decryptPackage(IReadFile& file, const PackageWork& work, IFileSystem& files, KeySearch& keys, JobReports& reports)
{
    PackageFileSource source(file);
    PackageReader package(source);
    PackageLock lock(package);
    keys.unlock(lock, work.name);
    PackageUnpacking unpacking(files, package, work.folder, work.info.attributes, work.readsBack);
    bool complete = true;
    for (std::size_t index = 0; index < package.entries().size(); ++index)
    {
        const PackageEntry& entry = package.entries()[index];
        // Counted by the bytes of the package. Its end is reported by the job, once all is done.
        const auto progress = [&](std::uint64_t done)
        {
            if (!reports.fileProgress(entry.offset + std::min(done, entry.size), work.info.size))
                throw FileFailure(FailureCause::Cancelled, 0);
        };
        const std::wstring target = files.display(unpacking.placeOf(index));
        const auto failure = reports.attempt(work.name, target, [&] { unpacking.unpack(index, progress); });
        if (reports.stopped())
            throw FileFailure(FailureCause::Cancelled, 0);
        complete = complete && !failure;
    }
    if (!complete)
        throw FileFailure(FailureCause::Skipped, 0);
}

} // namespace VaultCore
