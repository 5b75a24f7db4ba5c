#pragma once

#include "vaultcore/file_system.h"
#include "vaultcore/random_stream.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace VaultCore
{

/// How often a file is overwritten with random bytes. One pass is beyond recovery on the disks of today.
inline constexpr std::uint64_t WipePasses = 1;
/// Bytes written between two reports, and so between two chances to cancel.
inline constexpr std::size_t WipeChunk = std::size_t{1} << 20;
inline constexpr std::size_t MeaninglessNameLength = 12;

/// Overwrites files in place. What a disk, a file system with snapshots or a compressing one keeps elsewhere is out of
/// reach for it.
class Wiper
{
public:
    /// Told the bytes that are done; false stops between two chunks. Not called for the last chunk of a file.
    using Progress = std::function<bool(std::uint64_t done)>;

    /// Looks at the opened file before a byte of it is written, and throws to refuse it.
    using Accept = std::function<void(const FileInfo& opened)>;

    explicit Wiper(IFileSystem& files) : files_(files) {}

    /// Overwrites, flushes, truncates, renames and removes the file, in this order. `place` follows the new name, so
    /// that a failed removal can be tried again. False when `progress` stopped it. Throws `FileFailure`;
    /// `OtherNames`, before a byte is written, when the file has more names than `names`.
    bool wipe(Place& place, std::uint64_t names, const Progress& progress, const Accept& accept = {});
    /// The name with no meaning that an empty folder gets before it goes.
    NativeText meaninglessName();

private:
    bool overwrite(IWipeFile& file, std::uint64_t size, const Progress& progress);
    void rename(IWipeFile& file, Place& place);

    IFileSystem& files_;
    RandomStream random_;
    std::vector<std::uint8_t> chunk_ = std::vector<std::uint8_t>(WipeChunk);
};

} // namespace VaultCore
