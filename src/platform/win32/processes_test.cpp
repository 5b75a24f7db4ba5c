#include "platform/processes.h"

#include "platform/testing_processes.h"
#include "platform/threads.h"

#include <windows.h>

#include <array>
#include <cstring>

namespace
{

class ProcessesWithoutSnapshots : public EachProcesses
{
};

TEST_P(ProcessesWithoutSnapshots, theIdsAreListedInABuffer)
{
    const Platform::ModuleHandle module = processes().loadModule(L"psapi.dll");
    void* const enumerate = processes().findFunction(module, "EnumProcesses");
    ASSERT_NE(enumerate, nullptr);
    std::vector<std::uint32_t> ids(1024);
    std::uint32_t count = 0;
    ASSERT_TRUE(processes().enumProcesses(enumerate, ids, count));
    ASSERT_LT(count, ids.size());
    ids.resize(count);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), current()), 1);

    std::vector<std::uint32_t> few(1);
    EXPECT_TRUE(processes().enumProcesses(enumerate, few, count));
    EXPECT_EQ(count, 1u) << "a full buffer, which may not hold all";
    EXPECT_EQ(few.size(), 1u);
    processes().unloadModule(module);
}

TEST_P(ProcessesWithoutSnapshots, aProcessTellsItsParent)
{
    void* const query = processes().findFunction(processes().loadedModule(L"ntdll.dll"), "NtQueryInformationProcess");
    ASSERT_NE(query, nullptr);
    const Platform::Handle handle = processes().open(Platform::AccessQueryInformation, false, current());
    Platform::ProcessInformation information;
    EXPECT_TRUE(processes().queryInformation(query, handle, 0, InformationSize, information));
    EXPECT_EQ(information.processId, current());
    EXPECT_EQ(information.parentId, own().parentId);
    EXPECT_FALSE(processes().queryInformation(query, handle, 0, InformationSize - 4, information));
    EXPECT_FALSE(processes().queryInformation(query, nullptr, 0, InformationSize, information));
    EXPECT_TRUE(system().handles.close(handle));
}

INSTANTIATE_EACH_SYSTEM(ProcessesWithoutSnapshots);

/// This program once more, as a process that lists its tests and ends.
class Child
{
public:
    Child()
    {
        std::array<wchar_t, 1024> program{};
        GetModuleFileNameW(nullptr, program.data(), 1024);
        std::wstring line = L'"' + std::wstring(program.data()) + L"\" --gtest_list_tests --gtest_filter=none";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        EXPECT_TRUE(CreateProcessW(program.data(), line.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                                   nullptr, &startup, &process_));
    }
    ~Child()
    {
        if (process_.hProcess)
            finish();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    DWORD id() const { return process_.dwProcessId; }
    HANDLE handle() const { return process_.hProcess; }
    void resume() { ResumeThread(process_.hThread); }
    /// Lets it end, and forgets it.
    void finish()
    {
        resume();
        WaitForSingleObject(process_.hProcess, INFINITE);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
        process_ = {};
    }

private:
    PROCESS_INFORMATION process_{};
};

class NativeProcesses : public EachProcesses
{
protected:
    std::vector<Platform::ProcessEntry> entriesOf(std::uint32_t id)
    {
        auto entries = listedProcesses();
        std::erase_if(entries, [id](const auto& entry) { return entry.processId != id; });
        return entries;
    }
};

/// What wide text is made of the bytes of a narrow one.
std::wstring readAsWide(const std::string& narrow)
{
    std::wstring wide((narrow.size() + 1) / 2, L'\0');
    std::memcpy(wide.data(), narrow.data(), narrow.size());
    return wide;
}

TEST_P(NativeProcesses, aChildIsListedWithThisProcessAsItsParentUntilItHasEnded)
{
    Child child;
    const std::uint32_t id = child.id();
    const auto entries = entriesOf(id);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].parentId, current());
    child.finish();
    EXPECT_TRUE(entriesOf(id).empty());
}

TEST_P(NativeProcesses, aProcessThatHasEndedIsNotOpened)
{
    Child child;
    const std::uint32_t id = child.id();
    const Platform::Handle handle = processes().open(Platform::AccessSynchronize, false, id);
    EXPECT_NE(handle, nullptr);
    child.finish();
    EXPECT_EQ(system().handles.wait(handle, Platform::WaitForever, false), Platform::WaitSignalled);
    EXPECT_EQ(system().handles.waitOrMessage(handle, Platform::WaitForever, Platform::AllInput),
              Platform::WaitSignalled);
    EXPECT_TRUE(system().handles.close(handle));
    // The system keeps what is left of a process for a moment.
    Platform::Handle again = nullptr;
    for (int attempt = 0; attempt < 500; ++attempt)
    {
        again = processes().open(Platform::AccessSynchronize, false, id);
        if (!again)
            break;
        EXPECT_EQ(system().handles.wait(again, 0, false), Platform::WaitSignalled);
        EXPECT_TRUE(system().handles.close(again));
        system().threads.sleep(10);
    }
    EXPECT_EQ(again, nullptr);
}

TEST_P(NativeProcesses, aProcessWithoutWindowsHasNoIdleTime)
{
    Child child;
    const Platform::Handle handle =
        processes().open(Platform::AccessSynchronize | Platform::AccessQueryInformation, false, child.id());
    child.resume();
    EXPECT_EQ(processes().waitForInputIdle(handle, 5000), Platform::WaitFailed);
    EXPECT_TRUE(system().handles.close(handle));
}

// The records are the wide ones and the functions the narrow ones: a name of the record is what the function wrote of
// it in narrow characters, two of which are read as one wide character.

TEST_P(NativeProcesses, theNameOfAProcessIsItsNarrowNameReadAsWideText)
{
    EXPECT_EQ(own().file, readAsWide("platform_test.exe"));
}

TEST_P(NativeProcesses, thePathOfAModuleIsReadBehindTheNarrowOne)
{
    const Platform::Handle handle = snapshot(Platform::SnapshotModules, current());
    Platform::ModuleEntry entry{ModuleEntrySize};
    int modules = 0;
    for (const char* name = "Module32First"; processes().nextModule(function(name), handle, entry);
         name = "Module32Next")
    {
        ++modules;
        EXPECT_EQ(entry.path, L"");
    }
    EXPECT_GT(modules, 1);
    EXPECT_TRUE(system().handles.close(handle));
}

TEST_P(NativeProcesses, theWideFunctionsFillTheSameRecords)
{
    Platform::Handle handle = snapshot(Platform::SnapshotModules, current());
    Platform::ModuleEntry module{ModuleEntrySize};
    EXPECT_TRUE(processes().nextModule(function("Module32FirstW"), handle, module));
    EXPECT_TRUE(module.path.ends_with(L"platform_test.exe")) << testing::PrintToString(module.path);
    EXPECT_TRUE(system().handles.close(handle));

    handle = snapshot(Platform::SnapshotProcesses);
    Platform::ProcessEntry process{ProcessEntrySize};
    for (const char* name = "Process32FirstW"; processes().nextProcess(function(name), handle, process);
         name = "Process32NextW")
        if (process.processId == current())
            break;
    EXPECT_EQ(process.file, L"platform_test.exe");
    EXPECT_TRUE(system().handles.close(handle));
}

TEST_P(NativeProcesses, aRecordThatIsTooSmallIsRefused)
{
    const Platform::Handle handle = snapshot(Platform::SnapshotProcesses);
    Platform::ProcessEntry entry{16};
    EXPECT_FALSE(processes().nextProcess(function("Process32First"), handle, entry));
    EXPECT_TRUE(system().handles.close(handle));
}

INSTANTIATE_TEST_SUITE_P(OnWindows, NativeProcesses, testing::Values(Kind::Native), kindName);

} // namespace
