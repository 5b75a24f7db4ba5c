#include "crashing_modules/crash_here.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace CrashingModules
{

namespace
{

volatile std::uintptr_t nowhere = 0;

std::string wantedCrash()
{
    const char* const value = std::getenv("JOBRUNNER_CRASH");
    return value ? value : "";
}

} // namespace

bool isWanted(const std::string& thread)
{
    return wantedCrash().starts_with(thread + ' ');
}

void crashIfWanted(const std::string& thread)
{
    if (wantedCrash() == thread + " fault")
        *reinterpret_cast<volatile int*>(nowhere) = 1;
    if (wantedCrash() == thread + " exception")
        throw std::runtime_error("nobody catches it");
}

} // namespace CrashingModules
