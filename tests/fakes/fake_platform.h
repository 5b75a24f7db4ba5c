#pragma once

#include "fakes/fake_call_log.h"
#include "fakes/fake_crashes.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_handles.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_message_boxes.h"
#include "fakes/fake_messages.h"
#include "fakes/fake_modules.h"
#include "fakes/fake_paths.h"
#include "fakes/fake_processes.h"
#include "fakes/fake_registry.h"
#include "fakes/fake_shell.h"
#include "fakes/fake_statistics.h"
#include "fakes/fake_threads.h"
#include "platform/platform.h"

namespace Fakes
{

/// A working system in memory, in place of the real one from construction to destruction. It looks like Windows unless
/// a test says otherwise. All parts write into one log. Threads that use it have to end before it does.
class FakePlatform
{
public:
    explicit FakePlatform(wchar_t separator = L'\\')
        : shell(log, separator),
          files(log, handles, separator), system_{modules,    threads,   messages, messageBoxes, shell,
                                                  handles,    processes, desktop,  files,        registry,
                                                  statistics, crashes,   locale,   paths,        separator}
    {
        Platform::setPlatform(&system_);
    }
    ~FakePlatform() { Platform::setPlatform(nullptr); }
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    Platform::System& system() { return system_; }

    CallLog log;
    FakeModules modules{log};
    FakeThreads threads{log};
    FakeMessages messages{log};
    FakeMessageBoxes messageBoxes{log};
    FakeShell shell;
    FakeHandles handles{log, threads, messages};
    FakeProcesses processes{log, threads, handles};
    FakeDesktop desktop{log};
    FakeFiles files;
    FakeRegistry registry{log};
    FakeStatistics statistics{log};
    FakeCrashes crashes{log};
    FakeLocale locale{log};
    FakePaths paths{log, handles};

private:
    Platform::System system_;
};

} // namespace Fakes
