#pragma once

#include "interfaces/process/file_destiny_events.h"
#include "interfaces/vaultcore/events.h"

namespace JobRunner
{

/// Takes the engine's progress of the second stage of a file, in which its source is treated, and passes it on under
/// a name of its own: both stages come through one interface. Engine's threads.
class FileDestinyHandler final : public VaultCore::IFileProgressEvents
{
public:
    /// `destiny` is not owned.
    explicit FileDestinyHandler(IFileDestinyEvents* destiny) : destiny_(destiny) {}

    int OnFileProgress(std::uint64_t done, std::uint64_t total) override
    {
        return destiny_->OnDestinyProgress(done, total);
    }

private:
    IFileDestinyEvents* destiny_;
};

} // namespace JobRunner
