#include "vaultcore/source_removal.h"

namespace VaultCore
{

void SourceRemoval::remove(const Source& source)
{
    files_.removeUnchanged(source.place, source.info);
}

void SourceRemoval::wipe(Source& source)
{
    const std::uint64_t size = source.info.size;
    if (size > 0 && !reports_.destinyProgress(0, size))
        throw FileFailure(source.begun ? FailureCause::CancelledPartly : FailureCause::Cancelled, 0);
    const FileInfo now = files_.inspect(source.place);
    if (now.names > 1 && list_.namesOf(source.info.identity) >= now.names)
        remove(source);
    else
        overwrite(source);
    reports_.destinyProgress(size, size);
}

void SourceRemoval::overwrite(Source& source)
{
    if (!wiper_)
        wiper_.emplace(files_);
    const auto progress = [&](std::uint64_t done)
    { return done >= source.info.size || reports_.destinyProgress(done, source.info.size); };
    const auto accept = [&](const FileInfo& opened)
    {
        // What a failed attempt has overwritten differs by that alone.
        if (source.begun ? opened.identity != source.info.identity : !unchanged(source.info, opened))
            throw FileFailure(FailureCause::SourceChanged, 0);
        source.begun = true;
    };
    if (!wiper_->wipe(source.place, 1, progress, accept))
        throw FileFailure(FailureCause::CancelledPartly, 0);
}

} // namespace VaultCore
