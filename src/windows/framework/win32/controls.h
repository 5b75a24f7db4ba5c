#pragma once

#include "interfaces/panekit/controls.h"

#include <windows.h>

namespace JobRunner
{

/// A custom control from the control module, as a child of `parent`; it ends with `destroy`. The export is looked up
/// in `controlModule()` on first use and kept. Null without the module, its export or the class; nobody tests for it.
ICustomControl* createControl(const wchar_t* classId, HWND parent, int x, int y, int width, int height);

/// The same with the operations of its class. `Interface` must be that of `classId`.
template <class Interface>
Interface* createControlAs(const wchar_t* classId, HWND parent, int x, int y, int width, int height)
{
    return static_cast<Interface*>(createControl(classId, parent, x, y, width, height));
}

} // namespace JobRunner
