#pragma once

#include "vaultcore/list_job.h"
#include "vaultcore/wiper.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace VaultCore
{

/// Removes or wipes the names of a list and tells the receivers: operation started; an entry per file found; list
/// built (number of files, total size); per file started, progress, finished; operation finished.
/// - A plain removal reports (size, size) once the file is gone. A wipe reports (0, size) before it begins, then every
///   chunk, and (size, size) once the file is gone. A progress answer of 0 stops the job.
/// - A folder that goes as it should is silent; one that cannot be removed is reported as a file is. One that keeps a
///   failed file stays without a further question.
/// - A failure is asked about: repeat tries the same again, without limit; abort ends the job; any other answer, and
///   no receiver to ask, skips the file.
class DeletionJob final : private IListWork
{
public:
    DeletionJob(IFileSystem& files, const EventReceivers& events, bool wipe);

    /// Returns when the last callback has returned. What a callback throws passes through.
    void run(const std::vector<std::wstring>& entries);

private:
    void workOnFile(JobItem& item) override;
    void workOnFolder(const JobItem& item) override;
    void leave(const JobItem& item) override;
    void removeFile(JobItem& item);
    void wipeFile(JobItem& item);
    std::optional<FileFailure> removeFolder(const JobItem& item);
    void wipeFolder(const Place& folder);
    Wiper& wiper();

    void keepFoldersOf(const Place& place);

    IFileSystem& files_;
    JobReports reports_;
    bool wipe_;
    std::optional<Wiper> wiper_;
    ListJob job_;
    /// Paths of the folders that hold something that stays.
    std::set<NativeText> kept_;
};

} // namespace VaultCore
