#include "platform/platform.h"

#include "platform/posix/concerns.h"

namespace Platform
{

System& nativeSystem()
{
    static System system{posixModules(),    posixThreads(),   posixMessages(), posixMessageBoxes(), posixShell(),
                         posixHandles(),    posixProcesses(), posixDesktop(),  posixFiles(),        posixRegistry(),
                         posixStatistics(), posixCrashes(),   posixLocale(),   posixPaths(),        L'/'};
    return system;
}

} // namespace Platform
