#pragma once

#include <string>

#include <windows.h>

namespace JobRunner
{

/// Asks the system's help viewer for a topic; its result is ignored.
void showHelpTopic(HWND owner, const wchar_t* topic);
/// What the viewer is asked for. Intended: this process names no help file, so it starts with "::/" and shows nothing
/// by itself.
std::wstring helpRequest(const wchar_t* topic);

} // namespace JobRunner
