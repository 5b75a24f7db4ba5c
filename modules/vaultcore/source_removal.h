#pragma once

#include "vaultcore/job_files.h"
#include "vaultcore/job_reports.h"
#include "vaultcore/wiper.h"

#include <optional>

namespace VaultCore
{

/// A source file whose result is complete.
struct Source
{
    Place place;
    /// As it was read.
    FileInfo info;
    /// Some of its content may be overwritten already.
    bool begun = false;
};

/// Removes or wipes source files, and reports a wipe to the receiver of the destiny: (0, size) before it begins, every
/// chunk, (size, size) once the file is gone.
class SourceRemoval
{
public:
    SourceRemoval(IFileSystem& files, JobReports& reports, JobFiles& list)
        : files_(files), reports_(reports), list_(list)
    {
    }

    /// Throws `SourceChanged` for a file that is not what was read.
    void remove(const Source& source);
    /// May be tried again after a failure. A file with further names in the list loses its name alone; its content
    /// goes with the last of them, because each of them is still to be read. Throws `OtherNames` for one with names
    /// outside the list; `Cancelled` or, with a part of it overwritten, `CancelledPartly`.
    void wipe(Source& source);

private:
    void overwrite(Source& source);

    IFileSystem& files_;
    JobReports& reports_;
    JobFiles& list_;
    std::optional<Wiper> wiper_;
};

} // namespace VaultCore
