#pragma once

#include "interfaces/panekit/controls.h"

namespace Panekit
{

/// Starts the drawing library and registers the window classes. Counted. Thread of the dialogs or the first thread.
void start();
/// The counterpart of `start`; no control may be left at the last call.
void stop();

/// A control as a child window of `parent`, visible. Null for an unknown class, or when there is no window for it.
ICustomControl* makeControl(const wchar_t* classId, void* parent, int x, int y, int width, int height);

} // namespace Panekit
