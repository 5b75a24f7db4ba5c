#include "vaultcore/list_job.h"

namespace VaultCore
{

ListJob::ListJob(IFileSystem& files, JobReports& reports, Selection selection)
    : reports_(reports),
      list_(files, std::move(selection), [this](const JobItem& item) { return reports_.listEntry(item.info.size); })
{
}

void ListJob::run(const std::vector<std::wstring>& entries, IListWork& work)
{
    reports_.operationStarted();
    std::vector<JobItem> items = buildList(entries);
    if (!reports_.stopped())
        reports_.listBuilt(list_.totalSize());
    workOn(items, work);
    work.end();
    reports_.operationFinished();
}

std::vector<JobItem> ListJob::buildList(const std::vector<std::wstring>& entries)
{
    std::vector<JobItem> items;
    for (const std::wstring& entry : entries)
    {
        if (reports_.stopped())
            break;
        for (JobItem& item : list_.expandEntry(entry))
            items.push_back(std::move(item));
    }
    return items;
}

void ListJob::workOn(std::vector<JobItem>& items, IListWork& work)
{
    for (std::size_t i = 0; i < items.size(); ++i)
    {
        if (reports_.stopped())
            return;
        JobItem& item = items[i];
        if (item.kind == JobItem::Kind::File)
        {
            work.comingUp(std::span(items).subspan(i));
            work.workOnFile(item);
        }
        else if (item.kind == JobItem::Kind::Folder)
            work.workOnFolder(item);
        else
            workOnBadItem(item, work);
    }
}

void ListJob::workOnBadItem(const JobItem& item, IListWork& work)
{
    std::vector<JobItem> items;
    bool started = false;
    for (;;)
    {
        std::optional<FileFailure> failure;
        try
        {
            items = list_.expandAgain(item);
        }
        catch (const FileFailure& caught)
        {
            failure = caught;
        }
        if (!failure)
            break;
        if (!started)
            reports_.fileStarted(item.name);
        started = true;
        if (reports_.repeats(item.name, L"", *failure))
            continue;
        work.leave(item);
        return reports_.fileFinished(item.name, failure);
    }
    workOn(items, work);
}

} // namespace VaultCore
