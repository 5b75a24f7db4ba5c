#pragma once

#include <string>

#include "running_program.h"

namespace EndToEnd
{

/// Writes a picture of the screen where the window is to NAME.png in the folder that JOBRUNNER_SCREENSHOTS names; does
/// nothing when it names none. True unless writing fails.
bool takeScreenshot(const Window& window, const std::wstring& name);

} // namespace EndToEnd
