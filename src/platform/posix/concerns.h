#pragma once

#include "platform/crashes.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/handles.h"
#include "platform/locale.h"
#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/statistics.h"
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
Registry& posixRegistry();
Statistics& posixStatistics();
Crashes& posixCrashes();
Locale& posixLocale();
Paths& posixPaths();

/// Message boxes on a terminal, which outlives them.
std::unique_ptr<MessageBoxes> terminalMessageBoxes(Terminal& terminal);

} // namespace Platform
