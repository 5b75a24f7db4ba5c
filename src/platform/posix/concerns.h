#pragma once

#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/shell.h"
#include "platform/threads.h"

#include <memory>

// The one implementation of each concern; `nativeSystem` puts them together.

namespace Platform
{

class Terminal;

Modules& posixModules();
Threads& posixThreads();
Messages& posixMessages();
MessageBoxes& posixMessageBoxes();
Shell& posixShell();

/// Message boxes on a terminal, which outlives them.
std::unique_ptr<MessageBoxes> terminalMessageBoxes(Terminal& terminal);

} // namespace Platform
