#include "vaultcore/job_reports.h"

#include "vaultcore/container/container.h"

#include <new>

namespace VaultCore
{
namespace
{

std::optional<FileFailure> failureOf(const std::function<void()>& work)
{
    try
    {
        work();
        return std::nullopt;
    }
    catch (const FileFailure& failure)
    {
        return failure;
    }
    catch (const ContainerFailure& failure)
    {
        return FileFailure(FailureCause::Content, 0, failure.message);
    }
    catch (const std::bad_alloc&)
    {
        return FileFailure(FailureCause::NoMemory, 0);
    }
}

/// The user has spoken already.
bool decided(const FileFailure& failure)
{
    return failure.cause() == FailureCause::Cancelled || failure.cause() == FailureCause::CancelledPartly ||
           failure.cause() == FailureCause::Skipped;
}

} // namespace

void JobReports::operationStarted()
{
    if (events_.overall != nullptr)
        events_.overall->OnOperationStarted();
}

void JobReports::operationFinished()
{
    if (events_.overall != nullptr)
        events_.overall->OnOperationFinished();
}

bool JobReports::listEntry(std::uint64_t size)
{
    const auto low = static_cast<std::uint32_t>(size);
    const auto high = static_cast<std::uint32_t>(size >> 32);
    if (events_.fileList != nullptr && events_.fileList->OnFileListEntry(found_, low, high) == 0)
        stopped_ = true;
    ++found_;
    return !stopped_;
}

void JobReports::listBuilt(std::uint64_t totalSize)
{
    if (events_.fileList != nullptr)
        events_.fileList->OnFileListBuilt(found_, totalSize);
}

void JobReports::fileStarted(const std::wstring& name)
{
    if (events_.overall != nullptr)
        events_.overall->OnFileStarted(name.c_str());
}

void JobReports::fileFinished(const std::wstring& name, const std::optional<FileFailure>& failure,
                              const std::wstring& result)
{
    if (events_.overall == nullptr)
        return;
    const std::wstring& text = failure ? failure->text() : result;
    events_.overall->OnFileFinished(name.c_str(), text.c_str(), failure ? failure->code() : 0);
}

bool JobReports::fileProgress(std::uint64_t done, std::uint64_t total)
{
    if (events_.progress != nullptr && events_.progress->OnFileProgress(done, total) == 0)
        stopped_ = true;
    return !stopped_;
}

bool JobReports::destinyProgress(std::uint64_t done, std::uint64_t total)
{
    if (events_.destiny != nullptr && events_.destiny->OnFileProgress(done, total) == 0)
        stopped_ = true;
    return !stopped_;
}

bool JobReports::repeats(const std::wstring& source, const std::wstring& target, const FileFailure& failure)
{
    if (events_.conflict == nullptr)
        return false;
    const int action = events_.conflict->OnFileError(source.c_str(), target.c_str(), failure.text().c_str());
    if (action == FileErrorAbort)
        stopped_ = true;
    return action == FileErrorRepeat;
}

std::optional<FileFailure> JobReports::attempt(const std::wstring& source, const std::wstring& target,
                                               const std::function<void()>& work)
{
    for (;;)
    {
        std::optional<FileFailure> failure = failureOf(work);
        if (!failure || decided(*failure) || !repeats(source, target, *failure))
            return failure;
    }
}

} // namespace VaultCore
