#pragma once

#include "platform/each_system.h"
#include "platform/processes.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

inline constexpr std::uint32_t ProcessEntrySize = 556;
inline constexpr std::uint32_t ModuleEntrySize = 1064;
inline constexpr std::uint32_t ThreadEntrySize = 28;
inline constexpr std::uint32_t InformationSize = 24;
inline constexpr std::uint32_t NoProcess = 0x7FFFFFFC;

/// Looks the functions up by their names and calls them. The fake has this process, its parent and another.
class EachProcesses : public EachSystem
{
protected:
    void SetUp() override
    {
        if (GetParam() != Kind::Fake)
            return;
        fake().processes.start({4, 0, L"system"});
        fake().processes.start({fake().processes.current, 4, L"this one", {L"C:\\this.exe"}, {1, 2}});
        fake().processes.start({200, 4, L"another", {}, {3}});
    }

    Platform::Processes& processes() { return system().processes; }
    std::uint32_t current() { return processes().currentId(); }

    void* function(const char* name)
    {
        return processes().findFunction(processes().loadedModule(L"kernel32.dll"), name);
    }

    Platform::Handle snapshot(std::uint32_t flags, std::uint32_t processId = 0)
    {
        return processes().createSnapshot(function("CreateToolhelp32Snapshot"), flags, processId);
    }

    std::vector<Platform::ProcessEntry> listedProcesses()
    {
        std::vector<Platform::ProcessEntry> entries;
        const Platform::Handle handle = snapshot(Platform::SnapshotProcesses);
        Platform::ProcessEntry entry{ProcessEntrySize};
        for (const char* name = "Process32First"; processes().nextProcess(function(name), handle, entry);
             name = "Process32Next")
            entries.push_back(entry);
        EXPECT_TRUE(system().handles.close(handle));
        return entries;
    }

    /// The entry of this process.
    Platform::ProcessEntry own()
    {
        const auto entries = listedProcesses();
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [this](const auto& entry) { return entry.processId == current(); });
        EXPECT_NE(found, entries.end());
        return found == entries.end() ? Platform::ProcessEntry{} : *found;
    }
};
