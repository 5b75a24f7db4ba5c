#pragma once

#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/shell.h"
#include "platform/threads.h"

// The one implementation of each concern; `nativeSystem` puts them together.

namespace Platform
{

Modules& posixModules();
Threads& posixThreads();
Messages& posixMessages();
MessageBoxes& posixMessageBoxes();
Shell& posixShell();

} // namespace Platform
