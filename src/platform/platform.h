#pragma once

#include <string>

namespace Platform
{

class Modules;
class Threads;
class Messages;
class MessageBoxes;
class Shell;
class Handles;
class Processes;
class Desktop;
class Files;
class Registry;
class Statistics;
class Crashes;
class Locale;
class Paths;

/// The operations that this program needs of the operating system, by concern.
struct System
{
    Modules& modules;
    Threads& threads;
    Messages& messages;
    MessageBoxes& messageBoxes;
    Shell& shell;
    Handles& handles;
    Processes& processes;
    Desktop& desktop;
    Files& files;
    Registry& registry;
    Statistics& statistics;
    Crashes& crashes;
    Locale& locale;
    Paths& paths;
    /// What ends a folder in a path of this system.
    wchar_t separator;
};

/// The real system that this program was built for.
System& nativeSystem();
/// The system in use: the real one, or the one that a test has put in its place.
System& platform();
/// Replaces the system in use; null puts the real one back. First thread, while no other thread runs.
void setPlatform(System* system);

} // namespace Platform

/// What the program does, called by the entry point of the system with the instance handle, which may be null.
int runProgram(void* instance);
