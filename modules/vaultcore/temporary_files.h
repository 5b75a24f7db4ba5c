#pragma once

#include "vaultcore/file_system.h"
#include "vaultcore/random_stream.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace VaultCore
{

/// The temporary files of one job: makes new ones, and removes those that an earlier job had no time to remove. Safe on
/// any thread.
class TemporaryFiles
{
public:
    explicit TemporaryFiles(IFileSystem& files) : files_(files) {}

    /// A new file in `folder` for the work on the file called `source`. Left-overs for it go first. Throws
    /// `FileFailure`.
    std::unique_ptr<INewFile> create(const Place& folder, const NativeText& source);
    /// Removes what earlier jobs have left in `folder` of their work on `source`, unless somebody still works on it.
    /// What cannot be removed stays.
    void removeLeftOvers(const Place& folder, const NativeText& source);

private:
    /// By stem: the names that were there when the job first came into the folder.
    using LeftOvers = std::multimap<NativeText, NativeText>;

    LeftOvers& leftOversIn(const Place& folder);
    std::string letters();

    IFileSystem& files_;
    std::mutex mutex_;
    RandomStream random_;
    std::map<std::pair<NativeText, NativeText>, LeftOvers> folders_;
};

/// Throws `TargetExists` when something has the name already, and `NameTooLong` for one that cannot be.
void failIfThere(IFileSystem& files, const Place& target);
/// Throws `ResultDiffers` when a result no longer stands as it was published.
void failIfChanged(IFileSystem& files, const Place& result, const FileInfo& published);
/// Publishes a result; `TargetExists` when something has the name by now.
FileInfo publish(INewFile& file, const NativeText& name);

} // namespace VaultCore
