#pragma once

#include "fakes/fake_handles.h"
#include "platform/processes.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Fakes
{

struct FakeProcess
{
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    std::wstring file{};                  ///< what the name field of the process record holds
    std::vector<std::wstring> modules{};  ///< paths
    std::vector<std::uint32_t> threads{}; ///< ids
};

/// Processes in memory, which a test starts and ends. Records of another size than the wide ones of 32-bit Windows are
/// refused. Logs "findFunction NAME", "loadModule NAME", "unloadModule NAME", "snapshot FLAGS PROCESS",
/// "open process ID ACCESS", "enumProcesses CAPACITY" and "idle NAME LIMIT". One thread at a time.
class FakeProcesses : public Platform::Processes
{
public:
    FakeProcesses(CallLog& log, FakeThreads& threads, FakeHandles& handles)
        : log_(log), threads_(threads), handles_(handles)
    {
    }

    /// The running processes, in the order in which a snapshot lists them.
    std::vector<FakeProcess> running;
    void start(FakeProcess process) { running.push_back(std::move(process)); }
    void end(std::uint32_t id);
    bool runs(std::uint32_t id) const;

    std::uint32_t current = 100;
    /// Functions that the system does not have.
    std::set<std::string> missing;
    /// Modules that cannot be loaded.
    std::set<std::wstring> missingModules;
    /// Kinds of snapshots (`SnapshotProcesses`, ...) that cannot be had.
    std::uint32_t failingSnapshots = 0;
    /// Processes that give this instead of a handle.
    std::map<std::uint32_t, Platform::Handle> unopened;
    /// Processes that are not idle before this time of the clock.
    std::map<std::uint32_t, std::int64_t> busyUntil;
    /// While true, `enumProcesses` fails.
    bool failingLists = false;
    /// While true, `queryInformation` fails.
    bool failingQueries = false;

    Platform::ModuleHandle loadedModule(const std::wstring& name) override;
    Platform::ModuleHandle loadModule(const std::wstring& name) override;
    void unloadModule(Platform::ModuleHandle module) override;
    void* findFunction(Platform::ModuleHandle module, const char* name) override;
    Platform::Handle createSnapshot(void* function, std::uint32_t flags, std::uint32_t processId) override;
    bool nextProcess(void* function, Platform::Handle snapshot, Platform::ProcessEntry& entry) override;
    bool nextModule(void* function, Platform::Handle snapshot, Platform::ModuleEntry& entry) override;
    bool nextThread(void* function, Platform::Handle snapshot, Platform::ThreadEntry& entry) override;
    bool enumProcesses(void* function, std::vector<std::uint32_t>& ids, std::uint32_t& count) override;
    bool queryInformation(void* function, Platform::Handle process, std::uint32_t informationClass, std::uint32_t size,
                          Platform::ProcessInformation& information) override;
    Platform::Handle open(std::uint32_t access, bool inherits, std::uint32_t processId) override;
    std::uint32_t currentId() override { return current; }
    std::uint32_t waitForInputIdle(Platform::Handle process, std::uint32_t limit) override;

private:
    struct Snapshot
    {
        std::vector<Platform::ProcessEntry> processes;
        std::vector<Platform::ModuleEntry> modules;
        std::vector<Platform::ThreadEntry> threads;
        std::size_t position = 0;
    };

    /// The place of the next entry; nothing when the call is wrong.
    std::optional<std::size_t> step(void* function, Platform::Handle snapshot, const char* first, const char* next);
    bool isFunction(void* function, const char* name) const;
    const FakeProcess* find(std::uint32_t id) const;

    CallLog& log_;
    FakeThreads& threads_;
    FakeHandles& handles_;
    std::map<Platform::Handle, Snapshot> snapshots_;
    std::map<Platform::Handle, std::uint32_t> opened_;
    std::set<std::string> names_; ///< a found function is the address of its name here
};

} // namespace Fakes
