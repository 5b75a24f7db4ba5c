#include "vaultcore/work_ahead.h"

#include "vaultcore/file_failure.h"
#include "vaultcore/parallel.h"

#include <algorithm>
#include <atomic>

namespace VaultCore
{

std::unique_ptr<ResultWork> WorkAhead::take(std::span<const JobItem> items)
{
    if (ready_.empty())
    {
        const std::span<const JobItem> batch = batchOf(items);
        if (batch.size() < limits_.fewestFiles)
            return nullptr;
        ready_ = make(batch);
        finish(ready_);
        std::reverse(ready_.begin(), ready_.end());
    }
    std::unique_ptr<ResultWork> work = std::move(ready_.back());
    ready_.pop_back();
    return work;
}

void WorkAhead::takeBackRest()
{
    for (const auto& work : ready_)
    {
        if (work)
            maker_.takeBack(*work);
    }
    ready_.clear();
}

/// The small files that come next, one behind the other.
std::span<const JobItem> WorkAhead::batchOf(std::span<const JobItem> items) const
{
    std::uint64_t bytes = 0;
    std::size_t count = 0;
    for (; count < std::min(items.size(), limits_.mostFiles); ++count)
    {
        const JobItem& item = items[count];
        bytes += item.info.size;
        const bool isFile = item.kind == JobItem::Kind::File && item.info.kind == FileKind::File;
        if (!isFile || item.info.size > limits_.largestFile || bytes > limits_.bytes)
            break;
    }
    return items.first(count);
}

/// In the order of the files; null at most for the last one, and at least one.
WorkAhead::Works WorkAhead::make(std::span<const JobItem> batch)
{
    Works works(batch.size());
    std::atomic<bool> failed = false;
    const auto end = std::chrono::steady_clock::now() + limits_.time;
    const auto makeOne = [&](std::size_t i)
    {
        if (failed || std::chrono::steady_clock::now() >= end)
            return;
        try
        {
            works[i] = maker_.make(batch[i]);
        }
        catch (...)
        {
            // Its turn will show what is wrong with it.
            failed = true;
        }
    };
    inParallel(batch.size(), makeOne);
    endAtFailure(works);
    return works;
}

/// What follows a file that is left to its turn has to wait for that: its result could be in the way there.
void WorkAhead::endAtFailure(Works& works)
{
    const auto failure = std::find(works.begin(), works.end(), nullptr);
    if (failure == works.end())
        return;
    for (auto work = failure + 1; work != works.end(); ++work)
    {
        if (*work && !(*work)->file)
            maker_.takeBack(**work);
    }
    works.erase(failure + 1, works.end());
}

void WorkAhead::finish(Works& works)
{
    if (!flush(works))
    {
        // Each by itself may still go well.
        for (auto& work : works)
            work.reset();
        return;
    }
    giveNames(works);
    const bool flushed = flush(works);
    for (auto& work : works)
    {
        if (work)
            work->file.reset();
        if (work && !flushed)
        {
            maker_.takeBack(*work);
            work.reset();
        }
    }
    if (!flushed)
        return;
    check(works);
    endAtFailure(works);
}

void WorkAhead::giveNames(Works& works)
{
    for (auto& work : works)
    {
        try
        {
            if (work)
                work->result = work->file->rename(nameOf(work->target));
        }
        catch (...)
        {
            work.reset();
            return endAtFailure(works);
        }
    }
}

/// False when the device did not take them all.
bool WorkAhead::flush(const Works& works)
{
    try
    {
        std::vector<INewFile*> files;
        for (const auto& work : works)
        {
            if (work)
                files.push_back(work->file.get());
        }
        if (!files.empty())
            files_.flush(files);
        return true;
    }
    catch (...)
    {
        return false;
    }
}

void WorkAhead::check(Works& works)
{
    const auto checkOne = [&](std::size_t i)
    {
        if (!works[i])
            return;
        try
        {
            maker_.check(*works[i]);
        }
        catch (...)
        {
            maker_.takeBack(*works[i]);
            works[i].reset();
        }
    };
    inParallel(works.size(), checkOne);
}

} // namespace VaultCore
