#include "fakes/fake_processes.h"

#include <algorithm>
#include <array>

namespace Fakes
{

namespace
{

constexpr std::uint32_t ProcessEntrySize = 556;
constexpr std::uint32_t ModuleEntrySize = 1064;
constexpr std::uint32_t ThreadEntrySize = 28;
constexpr std::uint32_t ProcessInformationSize = 24;

constexpr std::uint32_t ErrorModuleNotFound = 126;
constexpr std::uint32_t ErrorProcedureNotFound = 127;

struct FunctionOfModule
{
    const wchar_t* module;
    const char* name;
};

constexpr std::array Functions = {
    FunctionOfModule{L"kernel32.dll", "CreateToolhelp32Snapshot"},
    FunctionOfModule{L"kernel32.dll", "Process32First"},
    FunctionOfModule{L"kernel32.dll", "Process32Next"},
    FunctionOfModule{L"kernel32.dll", "Module32First"},
    FunctionOfModule{L"kernel32.dll", "Module32Next"},
    FunctionOfModule{L"kernel32.dll", "Thread32First"},
    FunctionOfModule{L"kernel32.dll", "Thread32Next"},
    FunctionOfModule{L"psapi.dll", "EnumProcesses"},
    FunctionOfModule{L"ntdll.dll", "NtQueryInformationProcess"},
    FunctionOfModule{L"ntdll.dll", "NtQueryKey"},
    FunctionOfModule{L"ntdll.dll", "ZwDeleteKey"},
};

/// The handle of a module is its name here.
Platform::ModuleHandle moduleNamed(const std::wstring& name)
{
    for (const auto& [module, function] : Functions)
        if (name == module)
            return const_cast<wchar_t*>(module);
    return nullptr;
}

} // namespace

void FakeProcesses::end(std::uint32_t id)
{
    std::erase_if(running, [id](const FakeProcess& process) { return process.id == id; });
}

bool FakeProcesses::runs(std::uint32_t id) const
{
    return find(id) != nullptr;
}

const FakeProcess* FakeProcesses::find(std::uint32_t id) const
{
    const auto found =
        std::find_if(running.begin(), running.end(), [id](const FakeProcess& process) { return process.id == id; });
    return found == running.end() ? nullptr : &*found;
}

Platform::ModuleHandle FakeProcesses::loadedModule(const std::wstring& name)
{
    return name == L"psapi.dll" ? nullptr : moduleNamed(name);
}

Platform::ModuleHandle FakeProcesses::loadModule(const std::wstring& name)
{
    log_.add(L"loadModule " + name);
    const Platform::ModuleHandle module = missingModules.contains(name) ? nullptr : moduleNamed(name);
    if (!module)
        handles_.setLastError(ErrorModuleNotFound);
    return module;
}

void FakeProcesses::unloadModule(Platform::ModuleHandle module)
{
    log_.add(std::wstring(L"unloadModule ") + static_cast<const wchar_t*>(module));
}

void* FakeProcesses::findFunction(Platform::ModuleHandle module, const char* name)
{
    const std::string narrow = name;
    log_.add(L"findFunction " + std::wstring(narrow.begin(), narrow.end()));
    const bool known = std::any_of(Functions.begin(), Functions.end(),
                                   [&](const FunctionOfModule& function) {
                                       return module && function.name == narrow &&
                                              std::wstring(function.module) == static_cast<const wchar_t*>(module);
                                   });
    if (!known || missing.contains(narrow))
    {
        handles_.setLastError(ErrorProcedureNotFound);
        return nullptr;
    }
    return const_cast<std::string*>(&*names_.insert(narrow).first);
}

bool FakeProcesses::isFunction(void* function, const char* name) const
{
    const auto found = names_.find(name);
    return found != names_.end() && function == &*found;
}

Platform::Handle FakeProcesses::createSnapshot(void* function, std::uint32_t flags, std::uint32_t processId)
{
    log_.add(L"snapshot " + std::to_wstring(flags) + L' ' + std::to_wstring(processId));
    if (!isFunction(function, "CreateToolhelp32Snapshot") || (flags & failingSnapshots) != 0)
        return Platform::InvalidHandle;
    Snapshot snapshot;
    for (const FakeProcess& process : running)
    {
        snapshot.processes.push_back({ProcessEntrySize, process.id, process.parent, process.file});
        for (const std::uint32_t thread : process.threads)
            snapshot.threads.push_back({ThreadEntrySize, thread, process.id});
        if (process.id == processId)
            for (const std::wstring& path : process.modules)
                snapshot.modules.push_back({ModuleEntrySize, path});
    }
    if ((flags & Platform::SnapshotProcesses) == 0)
        snapshot.processes.clear();
    if ((flags & Platform::SnapshotThreads) == 0)
        snapshot.threads.clear();
    if ((flags & Platform::SnapshotModules) == 0)
        snapshot.modules.clear();
    const Platform::Handle handle = handles_.add(L"snapshot");
    snapshots_[handle] = std::move(snapshot);
    return handle;
}

std::optional<std::size_t> FakeProcesses::step(void* function, Platform::Handle snapshot, const char* first,
                                               const char* next)
{
    const auto found = snapshots_.find(snapshot);
    if (found == snapshots_.end() || handles_.nameOf(snapshot) != L"snapshot")
        return std::nullopt;
    if (isFunction(function, first))
        found->second.position = 0;
    else if (!isFunction(function, next))
        return std::nullopt;
    return found->second.position++;
}

bool FakeProcesses::nextProcess(void* function, Platform::Handle snapshot, Platform::ProcessEntry& entry)
{
    const auto place = step(function, snapshot, "Process32First", "Process32Next");
    if (!place || entry.size != ProcessEntrySize || *place >= snapshots_[snapshot].processes.size())
        return false;
    entry = snapshots_[snapshot].processes[*place];
    return true;
}

bool FakeProcesses::nextModule(void* function, Platform::Handle snapshot, Platform::ModuleEntry& entry)
{
    const auto place = step(function, snapshot, "Module32First", "Module32Next");
    if (!place || entry.size != ModuleEntrySize || *place >= snapshots_[snapshot].modules.size())
        return false;
    entry = snapshots_[snapshot].modules[*place];
    return true;
}

bool FakeProcesses::nextThread(void* function, Platform::Handle snapshot, Platform::ThreadEntry& entry)
{
    const auto place = step(function, snapshot, "Thread32First", "Thread32Next");
    if (!place || entry.size != ThreadEntrySize || *place >= snapshots_[snapshot].threads.size())
        return false;
    entry = snapshots_[snapshot].threads[*place];
    return true;
}

bool FakeProcesses::enumProcesses(void* function, std::vector<std::uint32_t>& ids, std::uint32_t& count)
{
    log_.add(L"enumProcesses " + std::to_wstring(ids.size()));
    if (!isFunction(function, "EnumProcesses") || failingLists)
        return false;
    count = static_cast<std::uint32_t>(std::min(running.size(), ids.size()));
    for (std::uint32_t i = 0; i < count; ++i)
        ids[i] = running[i].id;
    return true;
}

bool FakeProcesses::queryInformation(void* function, Platform::Handle process, std::uint32_t informationClass,
                                     std::uint32_t size, Platform::ProcessInformation& information)
{
    const auto opened = opened_.find(process);
    const FakeProcess* found = opened == opened_.end() ? nullptr : find(opened->second);
    if (!isFunction(function, "NtQueryInformationProcess") || failingQueries || informationClass != 0 ||
        size != ProcessInformationSize || !found)
        return false;
    information = {found->id, found->parent};
    return true;
}

Platform::Handle FakeProcesses::open(std::uint32_t access, bool inherits, std::uint32_t processId)
{
    log_.add(L"open process " + std::to_wstring(processId) + L' ' + std::to_wstring(access) +
             (inherits ? L" inherited" : L""));
    if (const auto found = unopened.find(processId); found != unopened.end())
        return found->second;
    if (!runs(processId))
        return nullptr;
    const Platform::Handle handle =
        handles_.add(L"process " + std::to_wstring(processId), [this, processId] { return !runs(processId); });
    opened_[handle] = processId;
    return handle;
}

std::uint32_t FakeProcesses::waitForInputIdle(Platform::Handle process, std::uint32_t limit)
{
    const std::wstring name = handles_.nameOf(process);
    log_.add(L"idle " + name + L' ' + std::to_wstring(limit));
    const auto opened = opened_.find(process);
    if (opened == opened_.end() || name == L"closed")
        return Platform::WaitFailed;
    const auto busy = busyUntil.find(opened->second);
    const auto idle = [&] { return busy == busyUntil.end() || threads_.elapsed() >= busy->second; };
    if (!idle())
        threads_.at(busy->second, [] {}); // the clock stops there
    return threads_.waitUntil(idle, limit) ? Platform::WaitSignalled : Platform::WaitTimedOut;
}

} // namespace Fakes
