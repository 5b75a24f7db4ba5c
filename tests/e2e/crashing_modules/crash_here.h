#pragma once

#include <string>

namespace CrashingModules
{

// The modules of the program as they are, but that they crash where the variable JOBRUNNER_CRASH of the environment
// says so: "THREAD WAY". The threads are "first" (while the job file is read), "job" (while the command asks for an
// object of the engine), "engine" (while a deletion is reported) and "dialog" (in the progress dialog); the ways are
// "fault", which writes to a null pointer, and "exception", which nobody catches.

/// Is a crash on this thread wanted?
bool isWanted(const std::string& thread);
/// Crashes if it is.
void crashIfWanted(const std::string& thread);

} // namespace CrashingModules
