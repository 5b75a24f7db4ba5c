#pragma once

#include <string>

namespace JobRunner
{

/// The system's dialog for picking a key file, on the calling thread, which has to be a task's own. The path of the
/// chosen file; empty when the user cancels or the dialog fails. `initializeCom` makes the thread ready for COM first.
std::wstring showKeyFileDialog(bool initializeCom);

} // namespace JobRunner
