#pragma once

#include "platform/handles.h"
#include "platform/modules.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{

// `CreateToolhelp32Snapshot`: what to take. Modules are those of one process, the others those of the system.
inline constexpr std::uint32_t SnapshotProcesses = 0x2;
inline constexpr std::uint32_t SnapshotThreads = 0x4;
inline constexpr std::uint32_t SnapshotModules = 0x8;

inline constexpr std::uint32_t AccessSynchronize = 0x00100000;
inline constexpr std::uint32_t AccessQueryInformation = 0x0400; ///< `PROCESS_QUERY_INFORMATION`

/// `PROCESSENTRY32W`. The caller sets `size`, in bytes, as the record of the system wants it.
struct ProcessEntry
{
    std::uint32_t size = 0;
    std::uint32_t processId = 0;
    std::uint32_t parentId = 0;
    std::wstring file{}; ///< what the name field holds as wide text
};

/// `MODULEENTRY32W`.
struct ModuleEntry
{
    std::uint32_t size = 0;
    std::wstring path{}; ///< what the path field holds as wide text
};

/// `THREADENTRY32`.
struct ThreadEntry
{
    std::uint32_t size = 0;
    std::uint32_t threadId = 0;
    std::uint32_t processId = 0;
};

/// What `NtQueryInformationProcess` tells, of the record of 24 bytes.
struct ProcessInformation
{
    std::uint32_t processId = 0;
    std::uint32_t parentId = 0;
};

/// Processes and threads of the system. The functions that list them are looked up by name, since not every system has
/// them, and called through what was found. Any thread.
class Processes
{
public:
    virtual ~Processes() = default;

    /// `GetModuleHandleW`: a module that is loaded already, not to be unloaded. Null when it is not.
    virtual ModuleHandle loadedModule(const std::wstring& name) = 0;
    /// `LoadLibraryW` with a bare name of the system's own. Null on failure; the caller unloads it.
    virtual ModuleHandle loadModule(const std::wstring& name) = 0;
    /// `FreeLibrary`.
    virtual void unloadModule(ModuleHandle module) = 0;
    /// `GetProcAddress`. Null when there is none of that name.
    virtual void* findFunction(ModuleHandle module, const char* name) = 0;

    // Calls of a function that was found; it is never null.

    /// `CreateToolhelp32Snapshot`. `InvalidHandle` on failure; the caller closes it.
    virtual Handle createSnapshot(void* function, std::uint32_t flags, std::uint32_t processId) = 0;
    /// `Process32First` or `Process32Next`. False at the end; the entry is then unchanged.
    virtual bool nextProcess(void* function, Handle snapshot, ProcessEntry& entry) = 0;
    /// `Module32First` or `Module32Next`.
    virtual bool nextModule(void* function, Handle snapshot, ModuleEntry& entry) = 0;
    /// `Thread32First` or `Thread32Next`.
    virtual bool nextThread(void* function, Handle snapshot, ThreadEntry& entry) = 0;
    /// `EnumProcesses` into a buffer of the size of `ids`; `count` is how many were written. False on failure.
    virtual bool enumProcesses(void* function, std::vector<std::uint32_t>& ids, std::uint32_t& count) = 0;
    /// `NtQueryInformationProcess` with a record of `size` bytes. False when it answers with a failure.
    virtual bool queryInformation(void* function, Handle process, std::uint32_t informationClass, std::uint32_t size,
                                  ProcessInformation& information) = 0;

    /// `OpenProcess`. Null on failure; the caller closes it. Signalled once the process has ended.
    virtual Handle open(std::uint32_t access, bool inherits, std::uint32_t processId) = 0;
    /// `GetCurrentProcessId`.
    virtual std::uint32_t currentId() = 0;
    /// `WaitForInputIdle`: 0, `WaitTimedOut`, or `WaitFailed` at once for a process without windows or no handle.
    virtual std::uint32_t waitForInputIdle(Handle process, std::uint32_t limit) = 0;
};

} // namespace Platform
