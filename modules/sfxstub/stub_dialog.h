#pragma once

#include <windows.h>

namespace SfxStub
{

/// Shows the package and unpacks it when the user says so. Returns the exit code when the window is closed.
int showDialog(HINSTANCE instance);

} // namespace SfxStub
