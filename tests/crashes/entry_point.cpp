#include "crashes/filters.h"
#include "crashes/ways_to_crash.h"

#include "platform/crashes.h"
#include "platform/modules.h"
#include "platform/platform.h"

// A program that crashes in every way there is:
//
//     crashing_application WAY FILTER FILE
//
// with a way of ways_to_crash.cpp and a filter of filters.h. The module beside it crashes too. The program ends with 2
// when it is used wrongly, and with 3 when it did not crash.
int main(int count, char** arguments)
{
    constexpr int WrongUse = 2;
    constexpr int NoCrash = 3;
    if (count != 4)
        return WrongUse;
    const Platform::CrashFilter filter = CrashingApplication::filterOf(arguments[2], arguments[3]);
    if (!filter)
        return WrongUse;
    Platform::System& system = Platform::platform();
    std::wstring folder = system.modules.fileName(nullptr);
    folder.erase(folder.rfind(system.separator) + 1);
    system.crashes.setUnhandledExceptionFilter(filter);
    CrashingApplication::crash(arguments[1], folder + system.modules.moduleFileName(L"crashing_module"));
    return NoCrash;
}
