#include "commands/watcher/system_lists.h"

#include "platform/platform.h"

namespace JobRunner
{

namespace
{

// Sizes of the wide records on 32-bit Windows.
constexpr std::uint32_t ProcessEntrySize = 556;
constexpr std::uint32_t ModuleEntrySize = 1064;
constexpr std::uint32_t ThreadEntrySize = 28;

constexpr std::size_t FirstListLength = 1024;
constexpr std::uint32_t BasicInformation = 0;
constexpr std::uint32_t BasicInformationSize = 24;

Platform::Processes& processes()
{
    return Platform::platform().processes;
}

/// Closes it at the end of a scope.
class OpenHandle
{
public:
    explicit OpenHandle(Platform::Handle handle) : handle_(handle) {}
    ~OpenHandle() { Platform::platform().handles.close(handle_); }
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

private:
    Platform::Handle handle_;
};

template <class Entry>
void walk(void* createSnapshot, std::uint32_t flags, std::uint32_t processId,
          bool (Platform::Processes::*step)(void*, Platform::Handle, Entry&), void* first, void* next,
          std::uint32_t size, const std::function<bool(const Entry&)>& receiver)
{
    if (!createSnapshot || !first || !next)
        return;
    const Platform::Handle snapshot = processes().createSnapshot(createSnapshot, flags, processId);
    if (snapshot == Platform::InvalidHandle)
        return;
    const OpenHandle closing(snapshot);
    Entry entry;
    entry.size = size;
    bool more = (processes().*step)(first, snapshot, entry);
    while (more && receiver(entry))
        more = (processes().*step)(next, snapshot, entry);
}

} // namespace

SystemLists::SystemLists() : kernel_(processes().loadedModule(L"kernel32.dll"))
{
    // Intended: these are the names without a suffix, while their records are the wide ones.
    const auto find = [this](const char* name) { return processes().findFunction(kernel_, name); };
    createSnapshot_ = find("CreateToolhelp32Snapshot");
    processFirst_ = find("Process32First");
    processNext_ = find("Process32Next");
    moduleFirst_ = find("Module32First");
    moduleNext_ = find("Module32Next");
    threadFirst_ = find("Thread32First");
    threadNext_ = find("Thread32Next");
    if (createSnapshot_)
        return;
    psapi_ = processes().loadModule(L"psapi.dll");
    if (psapi_)
        enumProcesses_ = processes().findFunction(psapi_, "EnumProcesses");
}

SystemLists::~SystemLists()
{
    if (psapi_)
        processes().unloadModule(psapi_);
}

void SystemLists::walkProcesses(const std::function<bool(const Platform::ProcessEntry&)>& receiver) const
{
    walk(createSnapshot_, Platform::SnapshotProcesses, 0, &Platform::Processes::nextProcess, processFirst_,
         processNext_, ProcessEntrySize, receiver);
}

void SystemLists::walkThreads(const std::function<bool(const Platform::ThreadEntry&)>& receiver) const
{
    walk(createSnapshot_, Platform::SnapshotThreads, 0, &Platform::Processes::nextThread, threadFirst_, threadNext_,
         ThreadEntrySize, receiver);
}

void SystemLists::walkModules(std::uint32_t processId,
                              const std::function<bool(const Platform::ModuleEntry&)>& receiver) const
{
    walk(createSnapshot_, Platform::SnapshotModules, processId, &Platform::Processes::nextModule, moduleFirst_,
         moduleNext_, ModuleEntrySize, receiver);
}

void SystemLists::listProcesses()
{
    count_ = 0;
    if (!enumProcesses_)
        return;
    ids_.resize(FirstListLength);
    // A full buffer may have been too small.
    while (processes().enumProcesses(enumProcesses_, ids_, count_) && count_ >= ids_.size())
        ids_.resize(2 * ids_.size());
}

void SystemLists::walkProcessList(const std::function<void(const Platform::ProcessInformation&)>& receiver)
{
    void* const query = processes().findFunction(processes().loadedModule(L"ntdll.dll"), "NtQueryInformationProcess");
    if (!query)
        return;
    listProcesses();
    for (std::uint32_t i = 0; i < count_; ++i)
    {
        const Platform::Handle process = processes().open(Platform::AccessQueryInformation, false, ids_[i]);
        if (!process)
            continue;
        const OpenHandle closing(process);
        Platform::ProcessInformation information;
        if (processes().queryInformation(query, process, BasicInformation, BasicInformationSize, information))
            receiver(information);
    }
}

} // namespace JobRunner
