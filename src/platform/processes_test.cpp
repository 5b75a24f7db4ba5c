#include "platform/processes.h"

#include "platform/testing_processes.h"

namespace
{

class Processes : public EachProcesses
{
};

TEST_P(Processes, aModuleOrFunctionThatIsNotThereIsNull)
{
    EXPECT_NE(processes().loadedModule(L"kernel32.dll"), nullptr);
    EXPECT_EQ(processes().loadedModule(L"no such module.dll"), nullptr);
    EXPECT_EQ(processes().loadModule(L"no such module.dll"), nullptr);
    EXPECT_NE(function("CreateToolhelp32Snapshot"), nullptr);
    EXPECT_EQ(function("NoSuchFunction"), nullptr);
}

TEST_P(Processes, aSnapshotListsThisProcessWithItsParent)
{
    const auto entries = listedProcesses();
    EXPECT_EQ(std::count_if(entries.begin(), entries.end(),
                            [this](const auto& entry) { return entry.processId == current(); }),
              1);
    EXPECT_NE(own().parentId, current());
    EXPECT_EQ(own().size, ProcessEntrySize);
    EXPECT_FALSE(own().file.empty());
}

TEST_P(Processes, atTheEndTheEntryIsUnchanged)
{
    const Platform::Handle handle = snapshot(Platform::SnapshotProcesses);
    Platform::ProcessEntry entry{ProcessEntrySize};
    EXPECT_TRUE(processes().nextProcess(function("Process32First"), handle, entry));
    while (processes().nextProcess(function("Process32Next"), handle, entry))
        continue;
    const Platform::ProcessEntry last = entry;
    EXPECT_FALSE(processes().nextProcess(function("Process32Next"), handle, entry));
    EXPECT_EQ(entry.processId, last.processId);
    EXPECT_EQ(entry.file, last.file);
    EXPECT_TRUE(processes().nextProcess(function("Process32First"), handle, entry)) << "the first one, once more";
    system().handles.close(handle);
}

TEST_P(Processes, theThreadsOfThisProcessAreListed)
{
    std::set<std::uint32_t> threads;
    const Platform::Handle handle = snapshot(Platform::SnapshotThreads);
    Platform::ThreadEntry entry{ThreadEntrySize};
    for (const char* name = "Thread32First"; processes().nextThread(function(name), handle, entry);
         name = "Thread32Next")
    {
        EXPECT_NE(entry.threadId, 0u);
        if (entry.processId == current())
            threads.insert(entry.threadId);
    }
    EXPECT_TRUE(system().handles.close(handle));
    if (GetParam() == Kind::Native)
        EXPECT_TRUE(threads.contains(system().threads.currentThreadId()));
    else
        EXPECT_EQ(threads, (std::set<std::uint32_t>{1, 2}));
}

TEST_P(Processes, theModulesOfThisProcessAreListed)
{
    const Platform::Handle handle = snapshot(Platform::SnapshotModules, current());
    ASSERT_NE(handle, Platform::InvalidHandle);
    Platform::ModuleEntry entry{ModuleEntrySize};
    EXPECT_TRUE(processes().nextModule(function("Module32First"), handle, entry));
    EXPECT_EQ(entry.size, ModuleEntrySize);
    EXPECT_TRUE(system().handles.close(handle));
}

TEST_P(Processes, aSnapshotHoldsOnlyWhatWasAskedFor)
{
    const Platform::Handle handle = snapshot(Platform::SnapshotThreads);
    Platform::ProcessEntry entry{ProcessEntrySize};
    EXPECT_FALSE(processes().nextProcess(function("Process32First"), handle, entry));
    system().handles.close(handle);
}

TEST_P(Processes, thisProcessIsOpenedAndStillRuns)
{
    const Platform::Handle handle =
        processes().open(Platform::AccessSynchronize | Platform::AccessQueryInformation, false, current());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(system().handles.wait(handle, 0, false), Platform::WaitTimedOut);
    EXPECT_TRUE(system().handles.close(handle));
}

TEST_P(Processes, whatDoesNotRunIsNotOpened)
{
    EXPECT_EQ(processes().open(Platform::AccessSynchronize, false, NoProcess), nullptr);
}

TEST_P(Processes, noProcessIsNeverIdle)
{
    EXPECT_EQ(processes().waitForInputIdle(nullptr, Platform::WaitForever), Platform::WaitFailed);
}

INSTANTIATE_EACH_SYSTEM(Processes);

} // namespace
