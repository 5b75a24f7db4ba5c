#pragma once

#include "platform/crashes.h"

#include <string>

namespace CrashingApplication
{

/// Filters by their names; what they are told they append to the file, as a line "CODE ADDRESS" of two hexadecimal
/// numbers:
///
///     note          answers that the process ends
///     slow-note     the same, but waits before, so that another thread can crash meanwhile
///     throw         throws behind that
///     fault         crashes behind that
///     stuck         waits behind that for ever, as for a lock of the thread that crashed
///     box           shows a message box behind that
///
/// Null for another name.
Platform::CrashFilter filterOf(const std::string& name, const std::string& file);

} // namespace CrashingApplication
