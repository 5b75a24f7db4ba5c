#include "commands/watcher/pump_wait.h"

#include "platform/messages.h"
#include "platform/platform.h"

namespace JobRunner
{

std::uint32_t PumpWait(Platform::Handle handle, std::uint32_t limit)
{
    Platform::System& system = Platform::platform();
    while (true)
    {
        while (system.messages.dispatchOne())
        {
        }
        // Intended: a message begins the wait anew with the whole limit.
        const std::uint32_t result = system.handles.waitOrMessage(handle, limit, Platform::AllInput);
        if (result != Platform::WaitMessage)
            return result;
    }
}

} // namespace JobRunner
