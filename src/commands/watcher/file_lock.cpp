#include "commands/watcher/file_lock.h"

#include "platform/files.h"
#include "platform/platform.h"
#include "platform/threads.h"
#include "systemutilities/shell_utilities.h"

namespace JobRunner
{

namespace
{

constexpr std::uint32_t ProbePause = 100;
constexpr int FreeTime = 500;
constexpr std::uint32_t ShortestCycle = 3500;

Platform::Threads& threads()
{
    return Platform::platform().threads;
}

/// Tells of changes in the folder of a file, as a hint to look at the file again.
class FolderChange
{
public:
    explicit FolderChange(const std::wstring& file)
        : handle_(Platform::platform().files.findFirstChange(
              Halden::SystemUtilities::GetFolderOfPath(file, true), false,
              Platform::ChangeFileName | Platform::ChangeAttributes | Platform::ChangeLastWrite))
    {
    }
    ~FolderChange()
    {
        if (usable())
            Platform::platform().files.findCloseChange(handle_);
    }
    FolderChange(const FolderChange&) = delete;
    FolderChange& operator=(const FolderChange&) = delete;

    /// Intended: the handle is never armed again, so that from the first change on this returns at once.
    void wait() const
    {
        if (usable())
            Platform::platform().handles.wait(handle_, ProbePause, false);
        else
            threads().sleep(ProbePause);
    }

private:
    bool usable() const { return handle_ && handle_ != Platform::InvalidHandle; }

    Platform::Handle handle_;
};

bool waitUntilLocked(const std::wstring& file, std::uint32_t limit)
{
    std::uint32_t remaining = limit / ProbePause * ProbePause;
    while (!IsFileLocked(file))
    {
        if (remaining == 0)
            return false;
        threads().sleep(ProbePause);
        remaining -= ProbePause;
        if (remaining == 0)
            return false;
    }
    return true;
}

/// False when it is taken again.
bool staysFree(const std::wstring& file)
{
    for (int counter = FreeTime; counter >= 1; counter -= static_cast<int>(ProbePause))
    {
        threads().sleep(ProbePause);
        if (IsFileLocked(file))
            return false;
    }
    return true;
}

void waitUntilFree(const std::wstring& file, const FolderChange& change)
{
    do
    {
        do
            change.wait();
        while (IsFileLocked(file));
    } while (!staysFree(file));
}

/// A file that is not there counts as locked, on purpose: an application may be about to put a new one in its place.
bool meansLocked(std::uint32_t error)
{
    return error == Platform::ErrorFileNotFound || error == Platform::ErrorAccessDenied ||
           error == Platform::ErrorSharingViolation;
}

} // namespace

bool IsFileLocked(const std::wstring& file)
{
    Platform::System& system = Platform::platform();
    // Intended: the priority is asked of the function's address, which is no thread. The answer is no priority, so it
    // cannot be set back, and the thread stays at the highest.
    const int before = threads().priority(threads().currentThreadFunction());
    threads().setPriority(threads().currentThread(), Platform::PriorityHighest);
    const Platform::Handle handle =
        system.files.open(file, Platform::GenericRead, Platform::ShareNothing, Platform::OpenExisting, 0);
    const std::uint32_t error = system.handles.lastError();
    const bool opened = handle != Platform::InvalidHandle;
    if (opened)
        system.handles.close(handle);
    threads().setPriority(threads().currentThread(), before);
    if (opened || meansLocked(error))
        return !opened;
    system.handles.setLastError(error);
    return false;
}

bool WaitForFileLockCycle(const std::wstring& file, std::uint32_t limit)
{
    // The time before the file is first seen locked counts, too.
    const std::uint32_t start = threads().tickCount();
    if (!waitUntilLocked(file, limit))
        return false;
    const FolderChange change(file);
    waitUntilFree(file, change);
    return threads().tickCount() - start >= ShortestCycle;
}

} // namespace JobRunner
