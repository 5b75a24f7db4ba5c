#pragma once

#include "vaultcore/job_files.h"
#include "vaultcore/job_reports.h"

#include <span>
#include <string>
#include <vector>

namespace VaultCore
{

/// What one kind of job does with the things of its list. It reports each of them itself.
class IListWork
{
public:
    virtual void workOnFile(JobItem& item) = 0;
    /// Before the work on a file, with those that follow it.
    virtual void comingUp(std::span<const JobItem>) {}
    virtual void workOnFolder(const JobItem& item) = 0;
    /// A name that cannot be listed, and that the user has given up.
    virtual void leave(const JobItem& item) = 0;
    /// Behind the last of them, also of a stopped job.
    virtual void end() {}

protected:
    ~IListWork() = default;
};

/// The frame of every job: operation started; an entry per file found; list built (number of files, total size); the
/// work; operation finished. What cannot be listed is asked about when its turn comes: repeat lists it again, without
/// limit.
class ListJob
{
public:
    ListJob(IFileSystem& files, JobReports& reports, Selection selection);

    /// Returns when the last callback has returned. What a callback throws passes through.
    void run(const std::vector<std::wstring>& entries, IListWork& work);
    JobFiles& list() { return list_; }

private:
    std::vector<JobItem> buildList(const std::vector<std::wstring>& entries);
    void workOn(std::vector<JobItem>& items, IListWork& work);
    void workOnBadItem(const JobItem& item, IListWork& work);

    JobReports& reports_;
    JobFiles list_;
};

} // namespace VaultCore
