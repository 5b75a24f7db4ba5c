#include "platform/posix/concerns.h"
#include "platform/posix/family.h"
#include "platform/posix/process_object.h"
#include "platform/utf8.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Platform
{

namespace
{

constexpr std::uint32_t ProcessEntrySize = 556;
constexpr std::uint32_t ModuleEntrySize = 1064;
constexpr std::uint32_t ThreadEntrySize = 28;

constexpr wchar_t ListingModule[] = L"kernel32.dll";

// The process list of this system stands behind the names of the other. A found function is the address of its name.
enum ListingFunction
{
    Create,
    ProcessFirst,
    ProcessNext,
    ModuleFirst,
    ModuleNext,
    ThreadFirst,
    ThreadNext,
    FunctionCount
};

constexpr std::array<std::string_view, FunctionCount> FunctionNames = {
    "CreateToolhelp32Snapshot",
    "Process32First",
    "Process32Next",
    "Module32First",
    "Module32Next",
    "Thread32First",
    "Thread32Next",
};

// The registry has functions there that it looks up in the same way.
constexpr wchar_t RegistryModule[] = L"ntdll.dll";
constexpr std::array<std::string_view, 2> RegistryFunctionNames = {"NtQueryKey", "ZwDeleteKey"};

constexpr std::uint32_t ErrorModuleNotFound = 126;
constexpr std::uint32_t ErrorProcedureNotFound = 127;

/// The address of the name; null when it is not among them.
template <std::size_t Count> void* tokenOf(const char* name, const std::array<std::string_view, Count>& names)
{
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? nullptr : const_cast<std::string_view*>(found);
}

void* tokenOf(ListingFunction function)
{
    return const_cast<std::string_view*>(&FunctionNames[function]);
}

/// What was taken, and how far it was read; one thread reads it.
struct Snapshot : SystemObject
{
    std::vector<ProcessEntry> processes;
    std::vector<ModuleEntry> modules;
    std::vector<ThreadEntry> threads;
    std::size_t position = 0;
};

std::vector<ProcessRecord> runningProcesses()
{
    std::vector<ProcessRecord> records = processRecords();
    for (const ProcessRecord& record : records)
        if (record.hasEnded)
            takeNoticeOfEnd(record.id);
    // As the other system does, one that has ended is not listed, whoever still holds it.
    std::erase_if(records, [](const ProcessRecord& record) { return record.hasEnded; });
    family().setParents(records);
    return records;
}

/// The name alone, as the other system has it in this field.
std::wstring fileNameOf(const ProcessRecord& record)
{
    const std::string program = programOf(record.id);
    return fromUtf8(program.empty() ? record.name : program.substr(program.rfind('/') + 1));
}

template <class Entry>
bool nextEntry(Handle handle, std::vector<Entry> Snapshot::*list, bool isFirst, bool isNext, std::uint32_t size,
               Entry& entry)
{
    const auto snapshot = handleTable().find<Snapshot>(handle);
    if (!snapshot || (!isFirst && !isNext))
        return false;
    if (isFirst)
        snapshot->position = 0;
    const std::vector<Entry>& entries = (*snapshot).*list;
    const std::size_t place = snapshot->position++;
    if (entry.size != size || place >= entries.size())
        return false;
    entry = entries[place];
    return true;
}

class PosixProcesses : public Processes
{
public:
    ModuleHandle loadedModule(const std::wstring& name) override
    {
        return name == ListingModule ? const_cast<wchar_t*>(ListingModule) : nullptr;
    }
    ModuleHandle loadModule(const std::wstring& name) override
    {
        const ModuleHandle module = name == RegistryModule ? const_cast<wchar_t*>(RegistryModule) : loadedModule(name);
        if (!module)
            posixHandles().setLastError(ErrorModuleNotFound);
        return module;
    }
    void unloadModule(ModuleHandle) override {}

    void* findFunction(ModuleHandle module, const char* name) override
    {
        void* function = nullptr;
        if (module == ListingModule)
            function = tokenOf(name, FunctionNames);
        if (module == RegistryModule)
            function = tokenOf(name, RegistryFunctionNames);
        if (!function)
            posixHandles().setLastError(ErrorProcedureNotFound);
        return function;
    }

    Handle createSnapshot(void* function, std::uint32_t flags, std::uint32_t processId) override
    {
        if (function != tokenOf(Create))
            return InvalidHandle;
        const auto snapshot = std::make_shared<Snapshot>();
        if ((flags & SnapshotModules) != 0 && !addModules(*snapshot, processId))
            return InvalidHandle;
        if ((flags & (SnapshotProcesses | SnapshotThreads)) != 0)
            addProcesses(*snapshot, flags);
        return handleTable().add(snapshot);
    }

    bool nextProcess(void* function, Handle snapshot, ProcessEntry& entry) override
    {
        return nextEntry(snapshot, &Snapshot::processes, function == tokenOf(ProcessFirst),
                         function == tokenOf(ProcessNext), ProcessEntrySize, entry);
    }
    bool nextModule(void* function, Handle snapshot, ModuleEntry& entry) override
    {
        return nextEntry(snapshot, &Snapshot::modules, function == tokenOf(ModuleFirst),
                         function == tokenOf(ModuleNext), ModuleEntrySize, entry);
    }
    bool nextThread(void* function, Handle snapshot, ThreadEntry& entry) override
    {
        return nextEntry(snapshot, &Snapshot::threads, function == tokenOf(ThreadFirst),
                         function == tokenOf(ThreadNext), ThreadEntrySize, entry);
    }

    // The other way to list processes is for systems without the first one.
    bool enumProcesses(void*, std::vector<std::uint32_t>&, std::uint32_t&) override { return false; }
    bool queryInformation(void*, Handle, std::uint32_t, std::uint32_t, ProcessInformation&) override { return false; }

    Handle open(std::uint32_t, bool, std::uint32_t processId) override
    {
        auto object = ProcessObject::open(processId);
        return object ? handleTable().add(std::move(object)) : nullptr;
    }
    std::uint32_t currentId() override { return static_cast<std::uint32_t>(getpid()); }
    /// No process has windows here.
    std::uint32_t waitForInputIdle(Handle, std::uint32_t) override { return WaitFailed; }

private:
    /// The program is the one module; false for a process that may not be looked into.
    static bool addModules(Snapshot& snapshot, std::uint32_t processId)
    {
        const auto current = static_cast<std::uint32_t>(getpid());
        const std::string program = programOf(processId == 0 ? current : processId);
        if (!program.empty())
            snapshot.modules.push_back({ModuleEntrySize, fromUtf8(program)});
        return !program.empty();
    }

    static void addProcesses(Snapshot& snapshot, std::uint32_t flags)
    {
        for (const ProcessRecord& record : runningProcesses())
        {
            if ((flags & SnapshotProcesses) != 0)
                snapshot.processes.push_back({ProcessEntrySize, record.id, record.parent, fileNameOf(record)});
            if ((flags & SnapshotThreads) == 0)
                continue;
            for (const std::uint32_t thread : threadsOf(record.id))
                snapshot.threads.push_back({ThreadEntrySize, thread, record.id});
        }
    }
};

} // namespace

Processes& posixProcesses()
{
    static PosixProcesses processes;
    return processes;
}

} // namespace Platform
