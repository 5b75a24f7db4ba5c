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

// The one implementation of each concern; `nativeSystem` puts them together.

namespace Platform
{

Modules& win32Modules();
Threads& win32Threads();
Messages& win32Messages();
MessageBoxes& win32MessageBoxes();
Shell& win32Shell();
Handles& win32Handles();
Processes& win32Processes();
Desktop& win32Desktop();
Files& win32Files();
Registry& win32Registry();
Statistics& win32Statistics();
Crashes& win32Crashes();
Locale& win32Locale();
Paths& win32Paths();

} // namespace Platform
