#pragma once

#include <string>

#include <windows.h>

#include <commdlg.h>

namespace JobRunner
{

/// The system's dialog for picking a key file, on the calling thread, which has to be a task's own. The path of the
/// chosen file; empty when the user cancels or the dialog fails. `initializeCom` makes the thread ready for COM first.
std::wstring showKeyFileDialog(bool initializeCom);

/// Of a path that the classic dialog gives, with the terminator.
inline constexpr DWORD ClassicPathLength = 260;

/// What the classic dialog, that of Windows before Vista, is asked for. It writes into `path`.
OPENFILENAMEW classicKeyFileRequest(wchar_t (&path)[ClassicPathLength]);

} // namespace JobRunner
