#include "commands/watcher/open_document.h"

#include "commands/watcher/application_watcher.h"
#include "commands/watcher/document_folder.h"
#include "commands/watcher/file_lock.h"
#include "commands/watcher/shell_open.h"
#include "platform/desktop.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/shell.h"
#include "systemutilities/shell_utilities.h"

namespace JobRunner
{

namespace
{

constexpr std::uint32_t FirstLockLimit = 500;
constexpr std::uint32_t SecondLockLimit = 5000;

/// Full path of the application that opens the document; empty for none.
std::wstring associatedExecutable(const std::wstring& path)
{
    std::wstring executable;
    if (Platform::platform().shell.findExecutable(path, executable) <= Platform::FindExecutableFailure)
        return {};
    return executable;
}

void waitForEnd(ApplicationWatcher& watcher, const std::wstring& path)
{
    if (watcher.hasNewProcesses())
        watcher.WaitForProcessesIdle();
    const bool locked = WaitForFileLockCycle(path, FirstLockLimit);
    // The application has let the document go; it may still run, for other documents.
    if (locked && IsDocumentAlone(path))
        return;
    if (watcher.hasNewProcesses())
        return locked ? watcher.WaitForProcesses() : watcher.WaitForProcessTree();
    if (watcher.hasNewThreadsOrWindows())
        return watcher.WaitForThreadsAndWindows();
    // Nothing can be seen. Whatever comes of this wait, the job goes on behind it.
    if (!locked)
        WaitForFileLockCycle(path, SecondLockLimit);
}

} // namespace

bool OpenDocumentAndWait(const std::wstring& path)
{
    Platform::System& system = Platform::platform();
    ApplicationWatcher watcher;
    const std::wstring directory = Halden::SystemUtilities::GetFolderOfPath(path, true);
    watcher.TakeSnapshot(system.processes.currentId(), associatedExecutable(path));
    const Platform::WindowHandle oldForeground = system.desktop.foregroundWindow();
    if (!ShellOpen(path, directory))
        return false;
    watcher.FindNewObjects(WaitForForegroundChange(oldForeground));
    waitForEnd(watcher, path);
    return true;
}

} // namespace JobRunner
