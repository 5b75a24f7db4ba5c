#pragma once

#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/handles.h"
#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/processes.h"
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
Handles& posixHandles();
Processes& posixProcesses();
Desktop& posixDesktop();
Files& posixFiles();

/// Message boxes on a terminal, which outlives them.
std::unique_ptr<MessageBoxes> terminalMessageBoxes(Terminal& terminal);

} // namespace Platform
