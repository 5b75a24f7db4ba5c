#pragma once

#include "vaultcore/job_files.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace VaultCore
{

/// The result of one file on its way: made, named, reported.
struct ResultWork
{
    virtual ~ResultWork() = default;

    Place target;
    /// As long as the device does not have it.
    std::unique_ptr<INewFile> file;
    /// Once it has its name.
    FileInfo result;
};

/// How a job makes a result before its turn. Every operation runs on any thread, for several files at a time, and tells
/// nobody anything. What it throws means that the file is worked on by itself when its turn comes.
class IResultMaker
{
public:
    /// The result under a temporary name: complete and not flushed.
    virtual std::unique_ptr<ResultWork> make(const JobItem& item) = 0;
    /// Looks at a result once more, which the device has under its final name.
    virtual void check(ResultWork& work) = 0;
    /// Removes a result again; throws nothing.
    virtual void takeBack(ResultWork& work) = 0;

protected:
    ~IResultMaker() = default;
};

/// Bounds of what is made at once, so that neither reports nor a cancel wait for long.
struct AheadLimits
{
    std::uint64_t largestFile = std::uint64_t{1} << 20;
    std::uint64_t bytes = std::uint64_t{32} << 20;
    /// Each of them is open until the device has it.
    std::size_t mostFiles = 256;
    /// Fewer gain nothing: each by itself waits for the device no longer.
    std::size_t fewestFiles = 5;
    /// No further one is begun after that.
    std::chrono::milliseconds time{250};
};

/// Makes the results of small files several at a time and ahead of their turn, because most of their time goes into
/// waiting for the device: one flush for all contents, then the names, then one flush for all names. A file that fails
/// leaves nothing behind and is left to its turn, where it is asked about; those behind it wait for that. For one
/// thread.
class WorkAhead
{
public:
    WorkAhead(IFileSystem& files, IResultMaker& maker, AheadLimits limits = {})
        : files_(files), maker_(maker), limits_(limits)
    {
    }
    ~WorkAhead() { takeBackRest(); }
    WorkAhead(const WorkAhead&) = delete;
    WorkAhead& operator=(const WorkAhead&) = delete;

    /// To be called for each file of a list when its turn comes, with those that follow it. The finished result, which
    /// is on the device under its final name; null when the file is to be worked on by itself.
    std::unique_ptr<ResultWork> take(std::span<const JobItem> items);
    /// Removes the results whose turn will not come.
    void takeBackRest();

private:
    using Works = std::vector<std::unique_ptr<ResultWork>>;

    std::span<const JobItem> batchOf(std::span<const JobItem> items) const;
    Works make(std::span<const JobItem> batch);
    void finish(Works& works);
    void endAtFailure(Works& works);
    void giveNames(Works& works);
    bool flush(const Works& works);
    void check(Works& works);

    IFileSystem& files_;
    IResultMaker& maker_;
    const AheadLimits limits_;
    /// Those of the last batch whose turn is to come, the next one last; null for files that failed.
    Works ready_;
};

} // namespace VaultCore
