#include "commands/watcher/shell_open.h"

#include "platform/desktop.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/shell.h"
#include "platform/threads.h"

namespace JobRunner
{

namespace
{

constexpr std::uint32_t ExecutionSize = 60; // of SHELLEXECUTEINFOW on 32-bit Windows
constexpr std::uint32_t StartedProcessLimit = 1000;
constexpr int ForegroundPolls = 50;
constexpr std::uint32_t ForegroundPause = 10;

} // namespace

bool ShellOpen(const std::wstring& file, const std::wstring& directory)
{
    Platform::System& system = Platform::platform();
    Platform::ShellExecution execution;
    execution.size = ExecutionSize;
    execution.mask = Platform::ExecuteKeepProcess | Platform::ExecuteWaitForDde | Platform::ExecuteWithoutBox;
    execution.file = file;
    execution.directory = directory;
    execution.show = Platform::ShowNormal;
    if (!system.shell.execute(execution))
        return false;
    // No process is known of a document that went to a running application.
    if (execution.process)
    {
        system.processes.waitForInputIdle(execution.process, StartedProcessLimit);
        system.handles.close(execution.process);
    }
    return true;
}

Platform::WindowHandle WaitForForegroundChange(Platform::WindowHandle old)
{
    Platform::System& system = Platform::platform();
    Platform::WindowHandle current = system.desktop.foregroundWindow();
    for (int polls = 0; current == old && polls < ForegroundPolls; ++polls)
    {
        system.threads.sleep(ForegroundPause);
        current = system.desktop.foregroundWindow();
    }
    return current == old ? nullptr : current;
}

} // namespace JobRunner
