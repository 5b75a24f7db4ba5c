#pragma once

#include <cstddef>

// Set in front of the C library by the dynamic linker (LD_PRELOAD): counts the calls that read or change what is below
// a folder, and at one of them ends the process or lets the call fail. It is told by the environment what to do:
//
//     JOBRUNNER_TRAP_FOLDER   the folder, as the system names it; without it nothing is counted
//     JOBRUNNER_TRAP_LOG      a file that gets a line for each counted call: its name and the path
//     JOBRUNNER_TRAP_STEP     which call, from 1 on
//     JOBRUNNER_TRAP_DEED     "end": the process ends before the call; "tear": behind it, and a write gets half of its
//                             bytes to the disk; "once": the call fails; "on": it fails, and so does each behind it;
//                             "short": a read or write does half of its work
//     JOBRUNNER_TRAP_ERROR    the error number of a failed call

namespace Trap
{

/// What is to happen at a call.
enum class Act
{
    Pass,
    Fail,
    End,
    Tear,
    Short,
};

/// Counts a call on an open file, or on a name below an open folder (or AT_FDCWD); `path` may be null for the file
/// itself. `Fail` has set errno. Calls elsewhere pass.
Act nextCall(const char* name, int descriptor, const char* path);
/// Ends the process as the system would: at once, and nothing runs any more.
[[noreturn]] void endProcess();

} // namespace Trap
