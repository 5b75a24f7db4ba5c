#include "platform/win32/concerns.h"

#include <windows.h>

#include <tlhelp32.h>

#include <array>

namespace Platform
{

namespace
{

static_assert(SnapshotProcesses == TH32CS_SNAPPROCESS && SnapshotThreads == TH32CS_SNAPTHREAD &&
              SnapshotModules == TH32CS_SNAPMODULE);
static_assert(AccessSynchronize == SYNCHRONIZE && AccessQueryInformation == PROCESS_QUERY_INFORMATION);
static_assert(sizeof(PROCESSENTRY32W) == 556 && sizeof(MODULEENTRY32W) == 1064 && sizeof(THREADENTRY32) == 28);

/// `PROCESS_BASIC_INFORMATION`, with the names of what is read.
struct BasicInformation
{
    std::array<ULONG_PTR, 4> others;
    ULONG_PTR processId;
    ULONG_PTR parentId;
};
static_assert(sizeof(BasicInformation) == 24);

// The functions that are found by name. Intended: those that list processes and modules are the narrow ones, and are
// handed the wide records, which are larger. What stands before the names stands at the same place in both.
using CreateSnapshot = HANDLE WINAPI(DWORD flags, DWORD processId);
template <class Record> using NextRecord = BOOL WINAPI(HANDLE snapshot, Record* record);
using EnumerateProcesses = BOOL WINAPI(DWORD* ids, DWORD size, DWORD* written);
using QueryProcess = LONG WINAPI(HANDLE process, DWORD informationClass, void* information, ULONG size, ULONG* written);

/// Takes the next record; it is empty but for its size when it is handed over.
template <class Record> bool next(void* function, HANDLE snapshot, std::uint32_t size, Record& record)
{
    record = {};
    record.dwSize = size;
    return reinterpret_cast<NextRecord<Record>*>(function)(snapshot, &record);
}

/// The text of a field, which need not be terminated.
template <std::size_t Length> std::wstring text(const wchar_t (&field)[Length])
{
    return {field, wcsnlen(field, Length)};
}

HMODULE loadOfSystem(const std::wstring& name)
{
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    return LoadLibraryW((std::wstring(folder.data(), length) + L'\\' + name).c_str());
}

class Win32Processes : public Processes
{
public:
    ModuleHandle loadedModule(const std::wstring& name) override { return GetModuleHandleW(name.c_str()); }
    ModuleHandle loadModule(const std::wstring& name) override { return loadOfSystem(name); }
    void unloadModule(ModuleHandle module) override { FreeLibrary(static_cast<HMODULE>(module)); }

    void* findFunction(ModuleHandle module, const char* name) override
    {
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    }

    Handle createSnapshot(void* function, std::uint32_t flags, std::uint32_t processId) override
    {
        return reinterpret_cast<CreateSnapshot*>(function)(flags, processId);
    }

    bool nextProcess(void* function, Handle snapshot, ProcessEntry& entry) override
    {
        PROCESSENTRY32W record;
        if (!next(function, snapshot, entry.size, record))
            return false;
        entry.processId = record.th32ProcessID;
        entry.parentId = record.th32ParentProcessID;
        entry.file = text(record.szExeFile);
        return true;
    }

    bool nextModule(void* function, Handle snapshot, ModuleEntry& entry) override
    {
        MODULEENTRY32W record;
        if (!next(function, snapshot, entry.size, record))
            return false;
        entry.path = text(record.szExePath);
        return true;
    }

    bool nextThread(void* function, Handle snapshot, ThreadEntry& entry) override
    {
        THREADENTRY32 record;
        if (!next(function, snapshot, entry.size, record))
            return false;
        entry.threadId = record.th32ThreadID;
        entry.processId = record.th32OwnerProcessID;
        return true;
    }

    bool enumProcesses(void* function, std::vector<std::uint32_t>& ids, std::uint32_t& count) override
    {
        std::vector<DWORD> found(ids.size());
        const auto size = static_cast<DWORD>(found.size() * sizeof(DWORD));
        DWORD written = 0;
        if (!reinterpret_cast<EnumerateProcesses*>(function)(found.data(), size, &written))
            return false;
        ids.assign(found.begin(), found.end());
        count = written / sizeof(DWORD);
        return true;
    }

    bool queryInformation(void* function, Handle process, std::uint32_t informationClass, std::uint32_t size,
                          ProcessInformation& information) override
    {
        BasicInformation answer{};
        if (reinterpret_cast<QueryProcess*>(function)(process, informationClass, &answer, size, nullptr) < 0)
            return false;
        information = {answer.processId, answer.parentId};
        return true;
    }

    Handle open(std::uint32_t access, bool inherits, std::uint32_t processId) override
    {
        return OpenProcess(access, inherits, processId);
    }

    std::uint32_t currentId() override { return GetCurrentProcessId(); }

    std::uint32_t waitForInputIdle(Handle process, std::uint32_t limit) override
    {
        return WaitForInputIdle(process, limit);
    }
};

} // namespace

Processes& win32Processes()
{
    static Win32Processes processes;
    return processes;
}

} // namespace Platform
