#include "commands/watcher/application_watcher.h"

#include "commands/watcher/pump_wait.h"
#include "platform/desktop.h"
#include "platform/platform.h"
#include "platform/threads.h"

#include <algorithm>
#include <cwctype>

namespace JobRunner
{

namespace
{

constexpr std::uint32_t IdleLimit = 10000;
constexpr std::uint32_t TreeSlice = 50;
constexpr std::uint32_t PollPause = 500;
constexpr int TextLength = 1024;

Platform::System& system()
{
    return Platform::platform();
}

/// Intended: a process that cannot be opened gives null, not the invalid handle value that the callers look for; the
/// wait on it then fails at once, and it counts as ended.
Platform::Handle openProcess(std::uint32_t id)
{
    return system().processes.open(Platform::AccessSynchronize | Platform::AccessQueryInformation, false, id);
}

bool sameCharacter(wchar_t left, wchar_t right)
{
    return std::towlower(static_cast<std::wint_t>(left)) == std::towlower(static_cast<std::wint_t>(right));
}

} // namespace

void ApplicationWatcher::TakeSnapshot(std::uint32_t pid, const std::wstring& executable)
{
    if (!executable.empty())
        executable_ = executable;
    processesBefore_.clear();
    newProcesses_.clear();
    // Without a parent every process is taken.
    parentProcess_ = 0;
    ScanProcesses(newProcesses_, processesBefore_, false);
    parentProcess_ = pid;
    newThreads_.clear();
    ScanThreads(newThreads_, threadsBefore_, nullptr);
    windowsBefore_.clear();
    newWindows_.clear();
    ScanWindows(newWindows_, windowsBefore_);
}

void ApplicationWatcher::FindNewObjects(Platform::WindowHandle foreground)
{
    ScanProcesses(processesBefore_, newProcesses_, false);
    ScanThreads(threadsBefore_, newThreads_, foreground);
    ScanWindows(windowsBefore_, newWindows_);
}

void ApplicationWatcher::ScanProcesses(const Ids& known, Ids& found, bool followOnly)
{
    if (!lists_.hasSnapshots())
        return scanProcessList(known, found, followOnly);
    const std::uint32_t self = system().processes.currentId();
    lists_.walkProcesses(
        [&](const Platform::ProcessEntry& entry)
        {
            const bool wanted = (!followOnly && entry.parentId == parentProcess_) || found.contains(entry.parentId) ||
                                parentProcess_ == 0;
            if (wanted && !known.contains(entry.processId) && entry.processId != self)
                found.insert(entry.processId);
            return true;
        });
}

/// Intended: unlike with snapshots, no parent does not mean every process, and this process is not left out.
void ApplicationWatcher::scanProcessList(const Ids& known, Ids& found, bool followOnly)
{
    lists_.walkProcessList(
        [&](const Platform::ProcessInformation& process)
        {
            const bool wanted = (!followOnly && process.parentId == parentProcess_) || found.contains(process.parentId);
            if (wanted && !known.contains(process.processId))
                found.insert(process.processId);
        });
}

void ApplicationWatcher::ScanThreads(Ids& known, Ids& found, Platform::WindowHandle window)
{
    found.clear();
    foregroundWindow_ = window;
    if (window)
    {
        known.clear();
        found.insert(system().desktop.windowThread(window));
        // Intended: the text is read and dropped.
        system().desktop.windowText(window, TextLength);
        return;
    }
    if (!lists_.hasSnapshots())
        return;
    const Ids owners = processesOfExecutable();
    lists_.walkThreads(
        [&](const Platform::ThreadEntry& thread)
        {
            if (owners.contains(thread.processId) && !known.contains(thread.threadId))
                found.insert(thread.threadId);
            return true;
        });
}

ApplicationWatcher::Ids ApplicationWatcher::processesOfExecutable() const
{
    Ids owners;
    lists_.walkProcesses(
        [&](const Platform::ProcessEntry& process)
        {
            if (isExecutable(process.file))
            {
                owners.insert(process.processId);
                return true;
            }
            lists_.walkModules(process.processId,
                               [&](const Platform::ModuleEntry& module)
                               {
                                   if (isExecutable(module.path))
                                       owners.insert(process.processId);
                                   return true;
                               });
            return true;
        });
    return owners;
}

bool ApplicationWatcher::isExecutable(const std::wstring& path) const
{
    return !executable_.empty() &&
           std::equal(path.begin(), path.end(), executable_.begin(), executable_.end(), sameCharacter);
}

void ApplicationWatcher::ScanWindows(const Windows& known, Windows& found)
{
    windowsNow_.clear();
    system().desktop.enumWindows(
        [this](Platform::WindowHandle window)
        {
            if (system().desktop.isVisible(window))
                windowsNow_.insert(window);
            return true;
        });
    for (const Platform::WindowHandle window : windowsNow_)
        if (!known.contains(window))
            found.insert(window);
}

void ApplicationWatcher::WaitForProcessesIdle()
{
    for (const std::uint32_t id : newProcesses_)
    {
        Platform::Handle process = openProcess(id);
        if (process == Platform::InvalidHandle)
            continue;
        if (system().processes.waitForInputIdle(process, IdleLimit) != Platform::WaitTimedOut)
        {
            system().handles.close(process);
            process = openProcess(id);
        }
        system().handles.close(process);
    }
}

void ApplicationWatcher::WaitForProcesses()
{
    for (const std::uint32_t id : newProcesses_)
    {
        const Platform::Handle process = openProcess(id);
        if (process == Platform::InvalidHandle)
            continue;
        PumpWait(process, Platform::WaitForever);
        system().handles.close(process);
    }
}

void ApplicationWatcher::WaitForProcessTree()
{
    for (auto member = newProcesses_.begin(); !newProcesses_.empty();)
    {
        member = waitForMemberOfTree(*member) ? std::next(member) : newProcesses_.begin();
        if (member == newProcesses_.end())
            member = newProcesses_.begin();
    }
}

bool ApplicationWatcher::waitForMemberOfTree(std::uint32_t id)
{
    const Platform::Handle process = openProcess(id);
    if (process == Platform::InvalidHandle)
    {
        newProcesses_.erase(id);
        return false;
    }
    if (PumpWait(process, TreeSlice) == Platform::WaitTimedOut)
    {
        system().handles.close(process);
        return true;
    }
    // A launcher may have handed on: what it has started is taken up before it goes.
    ScanProcesses(processesBefore_, newProcesses_, true);
    newProcesses_.erase(id);
    // Intended: the handle of a process that has ended stays open.
    return false;
}

void ApplicationWatcher::WaitForThreadsAndWindows()
{
    while (true)
    {
        if (!newThreads_.empty())
            RemoveDeadThreads();
        if (!newWindows_.empty())
            RemoveHiddenWindows();
        if (foregroundWindow_ && !system().desktop.isWindow(foregroundWindow_))
            foregroundWindow_ = nullptr;
        if (newThreads_.empty() && newWindows_.empty() && !foregroundWindow_)
            return;
        system().threads.sleep(PollPause);
    }
}

/// All or none: while one of the threads lives, the set stays as it is. Intended: without snapshots nothing tells that
/// a thread has ended, and the wait for it goes on for ever.
void ApplicationWatcher::RemoveDeadThreads()
{
    if (!lists_.hasSnapshots())
        return;
    bool lives = false;
    lists_.walkThreads(
        [&](const Platform::ThreadEntry& thread)
        {
            lives = newThreads_.contains(thread.threadId);
            return !lives;
        });
    if (!lives)
        newThreads_.clear();
}

/// Intended: the walk stops at the first visible window, and a window that was hidden once does not come back.
void ApplicationWatcher::RemoveHiddenWindows()
{
    while (!newWindows_.empty() && !system().desktop.isVisible(*newWindows_.begin()))
        newWindows_.erase(newWindows_.begin());
}

} // namespace JobRunner
