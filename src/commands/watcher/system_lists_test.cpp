#include "commands/watcher/system_lists.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;
using Ids = std::vector<std::uint32_t>;

class TheSystemLists : public testing::Test
{
protected:
    TheSystemLists()
    {
        platform.processes.start({4, 0, L"System", {L"C:\\kernel"}, {1, 2}});
        platform.processes.start({20, 4, L"app.exe", {L"C:\\app.exe", L"C:\\lib.dll"}, {3}});
    }

    Ids processes()
    {
        Ids ids;
        SystemLists().walkProcesses(
            [&ids](const Platform::ProcessEntry& entry)
            {
                ids.push_back(entry.processId);
                return true;
            });
        return ids;
    }

    Ids listedProcesses()
    {
        Ids ids;
        SystemLists().walkProcessList([&ids](const Platform::ProcessInformation& process)
                                      { ids.push_back(process.processId); });
        return ids;
    }

    FakePlatform platform;
};

TEST_F(TheSystemLists, comeFromFunctionsThatAreLookedUpUnderTheirNamesWithoutASuffix)
{
    const SystemLists lists;
    EXPECT_TRUE(lists.hasSnapshots());
    EXPECT_EQ(platform.log.calls(),
              (Calls{L"findFunction CreateToolhelp32Snapshot", L"findFunction Process32First",
                     L"findFunction Process32Next", L"findFunction Module32First", L"findFunction Module32Next",
                     L"findFunction Thread32First", L"findFunction Thread32Next"}));
}

TEST_F(TheSystemLists, holdProcessesThreadsAndModulesInTheirOrder)
{
    const SystemLists lists;
    std::wstring told;
    lists.walkProcesses(
        [&](const Platform::ProcessEntry& entry)
        {
            told += std::to_wstring(entry.processId) + L" of " + std::to_wstring(entry.parentId) + L" " + entry.file +
                    L"; ";
            return true;
        });
    lists.walkThreads(
        [&](const Platform::ThreadEntry& entry)
        {
            told += std::to_wstring(entry.threadId) + L" of " + std::to_wstring(entry.processId) + L"; ";
            return true;
        });
    lists.walkModules(20,
                      [&](const Platform::ModuleEntry& entry)
                      {
                          told += entry.path + L"; ";
                          return true;
                      });
    EXPECT_EQ(told, L"4 of 0 System; 20 of 4 app.exe; 1 of 4; 2 of 4; 3 of 20; C:\\app.exe; C:\\lib.dll; ");
    EXPECT_EQ(platform.log.callsOf(L"snapshot"), (Calls{L"snapshot 2 0", L"snapshot 4 0", L"snapshot 8 20"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(TheSystemLists, endWhenTheReceiverSaysSo)
{
    int calls = 0;
    SystemLists().walkThreads([&](const Platform::ThreadEntry&) { return ++calls < 2; });
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(TheSystemLists, areEmptyWithoutASnapshot)
{
    platform.processes.failingSnapshots = Platform::SnapshotProcesses;
    EXPECT_EQ(processes(), Ids());
    EXPECT_TRUE(platform.log.callsOf(L"close").empty());
}

TEST_F(TheSystemLists, areEmptyWithoutOneOfTheFunctions)
{
    for (const char* function : {"Process32First", "Process32Next"})
    {
        platform.processes.missing = {function};
        EXPECT_EQ(processes(), Ids()) << function;
    }
    EXPECT_TRUE(platform.log.callsOf(L"snapshot").empty());
}

TEST_F(TheSystemLists, loadTheirSubstituteOnlyWhereThereAreNoSnapshots)
{
    SystemLists();
    EXPECT_TRUE(platform.log.callsOf(L"loadModule").empty());
    platform.log.clear();
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    EXPECT_FALSE(SystemLists().hasSnapshots());
    EXPECT_EQ(platform.log.callsOf(L"loadModule"), (Calls{L"loadModule psapi.dll"}));
    EXPECT_EQ(platform.log.calls().back(), L"unloadModule psapi.dll");
    EXPECT_TRUE(platform.log.contains(L"findFunction EnumProcesses"));
}

TEST_F(TheSystemLists, askEveryListedProcessForItsParent)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    EXPECT_EQ(listedProcesses(), (Ids{4, 20}));
    EXPECT_EQ(platform.log.callsOf(L"open process"), (Calls{L"open process 4 1024", L"open process 20 1024"}));
    EXPECT_EQ(platform.log.callsOf(L"enumProcesses"), (Calls{L"enumProcesses 1024"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(TheSystemLists, growUntilTheyHoldAllProcesses)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    // With the two that are there already: one less than the room, then as many as the room, which may be too few.
    for (std::uint32_t id = 1000; id < 1000 + 1021; ++id)
        platform.processes.start({id, 4});
    EXPECT_EQ(listedProcesses().size(), 1023U);
    EXPECT_EQ(platform.log.callsOf(L"enumProcesses"), (Calls{L"enumProcesses 1024"}));
    platform.processes.start({900, 4});
    platform.log.clear();
    EXPECT_EQ(listedProcesses().size(), 1024U);
    EXPECT_EQ(platform.log.callsOf(L"enumProcesses"), (Calls{L"enumProcesses 1024", L"enumProcesses 2048"}));
    for (std::uint32_t id = 3000; id < 6000; ++id)
        platform.processes.start({id, 4});
    platform.log.clear();
    EXPECT_EQ(listedProcesses().size(), 4024U);
    EXPECT_EQ(platform.log.callsOf(L"enumProcesses"),
              (Calls{L"enumProcesses 1024", L"enumProcesses 2048", L"enumProcesses 4096"}));
}

TEST_F(TheSystemLists, leaveOutProcessesThatMayNotBeAskedAbout)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    platform.processes.unopened[4] = nullptr;
    EXPECT_EQ(listedProcesses(), (Ids{20}));
    EXPECT_EQ(platform.log.callsOf(L"close"), (Calls{L"close process 20"}));
}

TEST_F(TheSystemLists, areEmptyWhenTheyCannotBeHadASecondTime)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    SystemLists lists;
    int processes = 0;
    const auto count = [&processes](const Platform::ProcessInformation&) { ++processes; };
    lists.walkProcessList(count);
    EXPECT_EQ(processes, 2);
    platform.processes.failingLists = true;
    lists.walkProcessList(count);
    EXPECT_EQ(processes, 2);
}

TEST_F(TheSystemLists, areEmptyWithoutTheirSubstituteToo)
{
    platform.processes.missing = {"CreateToolhelp32Snapshot", "EnumProcesses"};
    EXPECT_EQ(listedProcesses(), Ids());
    platform.processes.missing = {"CreateToolhelp32Snapshot", "NtQueryInformationProcess"};
    EXPECT_EQ(listedProcesses(), Ids());
    platform.processes.missing = {"CreateToolhelp32Snapshot"};
    platform.processes.failingQueries = true;
    EXPECT_EQ(listedProcesses(), Ids());
    platform.processes.failingLists = true;
    EXPECT_EQ(listedProcesses(), Ids());
    EXPECT_TRUE(platform.handles.open().empty());
}

} // namespace
