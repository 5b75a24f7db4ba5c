#pragma once

#include <string>

namespace CrashingApplication
{

/// Crashes in the way that is named; comes back only from a name that it does not know. Those with no thread in their
/// name crash on the thread that calls.
void crash(const std::string& way, const std::wstring& module);

/// The same for the ways of this system alone.
void crashInTheWayOfTheSystem(const std::string& way);

/// Instructions that no program may run.
void runIllegalInstruction();
void runBreakpoint();

} // namespace CrashingApplication
