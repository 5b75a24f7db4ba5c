#pragma once

#include "platform/messages.h"

#include <string>

namespace JobRunner
{

// Job thread. Both block for about a second at most, unless the shell itself does.

/// Opens a document in its associated application, with no box of the shell's own. False when the shell refuses.
bool ShellOpen(const std::wstring& file, const std::wstring& directory);

/// Gives a started application half a second to come to the front. The window in front, null when it is still `old`.
Platform::WindowHandle WaitForForegroundChange(Platform::WindowHandle old);

} // namespace JobRunner
