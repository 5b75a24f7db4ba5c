#include "platform/platform.h"

#include "platform/win32/concerns.h"

namespace Platform
{

System& nativeSystem()
{
    static System system{win32Modules(),    win32Threads(),   win32Messages(), win32MessageBoxes(), win32Shell(),
                         win32Handles(),    win32Processes(), win32Desktop(),  win32Files(),        win32Registry(),
                         win32Statistics(), win32Crashes(),   win32Locale(),   win32Paths(),        L'\\'};
    return system;
}

} // namespace Platform
