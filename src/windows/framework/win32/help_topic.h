#pragma once

#include <windows.h>

namespace JobRunner
{

/// Asks the system's help viewer for a topic. This process names no help file, so the request starts with "::/" and
/// shows nothing by itself; its result is ignored.
void showHelpTopic(HWND owner, const wchar_t* topic);

} // namespace JobRunner
