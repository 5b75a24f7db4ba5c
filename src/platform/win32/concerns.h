#pragma once

#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/shell.h"
#include "platform/threads.h"

// The one implementation of each concern; `nativeSystem` puts them together.

namespace Platform
{

Modules& win32Modules();
Threads& win32Threads();
Messages& win32Messages();
MessageBoxes& win32MessageBoxes();
Shell& win32Shell();

} // namespace Platform
