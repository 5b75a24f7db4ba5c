#pragma once

#include <cstdint>
#include <string>

namespace JobRunner
{

// Whether an application holds a file. Job thread, whose priority is the highest from the first probe on.

/// True when the file cannot be opened for this process alone because somebody else has it, because it may not be
/// opened, or because it is not there.
bool IsFileLocked(const std::wstring& file);

/// Waits at most `limit` milliseconds, cut to hundreds, for the file to become locked, and then without a limit until
/// it has been free for half a second. True when all of this took 3.5 seconds or more: so long holds a file only an
/// application that keeps its document open.
bool WaitForFileLockCycle(const std::wstring& file, std::uint32_t limit);

} // namespace JobRunner
