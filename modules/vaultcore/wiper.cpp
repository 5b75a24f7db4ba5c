#include "vaultcore/wiper.h"

#include "vaultcore/file_failure.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

constexpr int RenameAttempts = 8;

} // namespace

bool Wiper::wipe(Place& place, std::uint64_t names, const Progress& progress, const Accept& accept)
{
    // Asked before the file is opened too: opening takes off a write protection, which other names share.
    if (files_.inspect(place).names > names)
        throw FileFailure(FailureCause::OtherNames, 0);
    const std::unique_ptr<IWipeFile> file = files_.openForWipe(place);
    const FileInfo info = file->info();
    if (info.names > names)
        throw FileFailure(FailureCause::OtherNames, 0);
    if (accept)
        accept(info);
    if (!overwrite(*file, info.size, progress))
        return false;
    file->truncate();
    rename(*file, place);
    file->remove();
    return true;
}

bool Wiper::overwrite(IWipeFile& file, std::uint64_t size, const Progress& progress)
{
    const std::vector<Extent> extents = file.extents();
    for (std::uint64_t pass = 0; pass < WipePasses; ++pass)
    {
        for (const Extent& extent : extents)
        {
            for (std::uint64_t at = 0; at < extent.length; at += WipeChunk)
            {
                const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(WipeChunk, extent.length - at));
                const std::span bytes(chunk_.data(), length);
                random_.fill(bytes);
                file.write(extent.offset + at, bytes);
                const std::uint64_t reached = std::min(extent.offset + at + length, size);
                const std::uint64_t done = pass * (size / WipePasses) + reached / WipePasses;
                // The whole size is reported by the caller, once, when the file is gone.
                if (done < size && !progress(done))
                    return false;
            }
        }
        file.flush();
    }
    return true;
}

void Wiper::rename(IWipeFile& file, Place& place)
{
    for (int attempt = 1;; ++attempt)
    {
        const NativeText name = meaninglessName();
        try
        {
            file.rename(name);
            place = childOf(parentOf(place), name);
            return;
        }
        catch (const FileFailure& failure)
        {
            if (failure.cause() != FailureCause::NameTaken || attempt == RenameAttempts)
                throw;
        }
    }
}

NativeText Wiper::meaninglessName()
{
    const std::string letters = random_.letters(MeaninglessNameLength);
    return NativeText(letters.begin(), letters.end());
}

} // namespace VaultCore
