#pragma once

#include "commands/watcher/system_lists.h"
#include "platform/messages.h"

#include <cstdint>
#include <set>
#include <string>

namespace JobRunner
{

/// Compares the processes, threads and windows before and after a document was opened, and waits for the end of what is
/// new. Lives while one document is open. Job thread.
class ApplicationWatcher
{
public:
    /// What is there before the start. `executable` is the full path of the associated application, empty for none.
    void TakeSnapshot(std::uint32_t pid, const std::wstring& executable);
    /// What is new behind the start. `foreground` is the window that came to the front, null for none; with one, its
    /// thread alone is taken for a new thread.
    void FindNewObjects(Platform::WindowHandle foreground);

    bool hasNewProcesses() const { return !newProcesses_.empty(); }
    bool hasNewThreadsOrWindows() const { return !newThreads_.empty() || !newWindows_.empty(); }

    /// Lets each new process come up, at most ten seconds each.
    void WaitForProcessesIdle();

    // Without a limit.

    /// The end of each process that is new now.
    void WaitForProcesses();
    /// The end of the new processes and of those that they have started when they end.
    void WaitForProcessTree();
    /// The end of the new threads and windows, and of the window that came to the front.
    void WaitForThreadsAndWindows();

private:
    using Ids = std::set<std::uint32_t>;
    using Windows = std::set<Platform::WindowHandle>;

    void ScanProcesses(const Ids& known, Ids& found, bool followOnly);
    void scanProcessList(const Ids& known, Ids& found, bool followOnly);
    void ScanThreads(Ids& known, Ids& found, Platform::WindowHandle window);
    void ScanWindows(const Windows& known, Windows& found);
    void RemoveDeadThreads();
    void RemoveHiddenWindows();
    /// False when the process has ended; it is then no longer in the set.
    bool waitForMemberOfTree(std::uint32_t id);
    Ids processesOfExecutable() const;
    bool isExecutable(const std::wstring& path) const;

    SystemLists lists_;
    std::wstring executable_;
    std::uint32_t parentProcess_ = 0;
    Ids processesBefore_;
    Ids newProcesses_;
    Ids threadsBefore_;
    Ids newThreads_;
    Windows windowsBefore_;
    Windows newWindows_;
    Windows windowsNow_;
    Platform::WindowHandle foregroundWindow_ = nullptr;
};

} // namespace JobRunner
