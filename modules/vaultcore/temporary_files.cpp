#include "vaultcore/temporary_files.h"

#include "vaultcore/file_failure.h"
#include "vaultcore/result_names.h"

namespace VaultCore
{
namespace
{

constexpr int CreateAttempts = 8;
constexpr std::size_t LongestName = 255;

} // namespace

std::unique_ptr<INewFile> TemporaryFiles::create(const Place& folder, const NativeText& source)
{
    removeLeftOvers(folder, source);
    const NativeText stem = temporaryStem(source);
    for (int attempt = 1;; ++attempt)
    {
        try
        {
            return files_.createNew(childOf(folder, temporaryName(stem, letters())));
        }
        catch (const FileFailure& failure)
        {
            if (failure.cause() != FailureCause::NameTaken || attempt == CreateAttempts)
                throw;
        }
    }
}

std::string TemporaryFiles::letters()
{
    const std::lock_guard lock(mutex_);
    return random_.letters(TemporaryLetters);
}

void TemporaryFiles::removeLeftOvers(const Place& folder, const NativeText& source)
{
    const std::lock_guard lock(mutex_);
    LeftOvers& leftOvers = leftOversIn(folder);
    const auto [first, last] = leftOvers.equal_range(files_.fold(temporaryStem(source)));
    for (auto at = first; at != last; ++at)
    {
        try
        {
            files_.removeAbandoned(childOf(folder, at->second));
        }
        catch (const FileFailure&)
        {
            // It is in nobody's way.
        }
    }
    leftOvers.erase(first, last);
}

/// With the lock held. Each folder is listed once for a job, or a folder of many files would be listed for each of
/// them.
TemporaryFiles::LeftOvers& TemporaryFiles::leftOversIn(const Place& folder)
{
    const auto [found, isNew] = folders_.try_emplace({folder.root, folder.below});
    if (!isNew)
        return found->second;
    try
    {
        for (const NativeText& name : files_.list(folder))
        {
            if (isTemporaryName(name))
                found->second.emplace(files_.fold(stemOf(name)), name);
        }
    }
    catch (const FileFailure&)
    {
        // A folder that may not be listed can still be written in.
    }
    return found->second;
}

void failIfThere(IFileSystem& files, const Place& target)
{
    // Found out before the work, not after it.
    if (nameOf(target).size() > LongestName)
        throw FileFailure(FailureCause::NameTooLong, 0);
    try
    {
        files.inspect(target);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::Missing)
            return;
        throw;
    }
    throw FileFailure(FailureCause::TargetExists, 0);
}

void failIfChanged(IFileSystem& files, const Place& result, const FileInfo& published)
{
    try
    {
        if (unchanged(published, files.inspect(result)))
            return;
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() != FailureCause::Missing)
            throw;
    }
    throw FileFailure(FailureCause::ResultDiffers, 0);
}

FileInfo publish(INewFile& file, const NativeText& name)
{
    try
    {
        return file.publish(name);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() == FailureCause::NameTaken)
            throw FileFailure(FailureCause::TargetExists, 0);
        throw;
    }
}

} // namespace VaultCore
