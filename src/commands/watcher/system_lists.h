#pragma once

#include "platform/processes.h"

#include <cstdint>
#include <functional>
#include <string>

namespace JobRunner
{

/// The processes, threads and modules of the system, from snapshots where the system has them and else from the plain
/// list of processes. Receivers are called for one entry after the other and answer false to end the walk. A list that
/// cannot be had is empty. Job thread.
class SystemLists
{
public:
    /// Looks up the functions of the system.
    SystemLists();
    ~SystemLists();
    SystemLists(const SystemLists&) = delete;
    SystemLists& operator=(const SystemLists&) = delete;

    bool hasSnapshots() const { return createSnapshot_ != nullptr; }

    // With snapshots.
    void walkProcesses(const std::function<bool(const Platform::ProcessEntry&)>& receiver) const;
    void walkThreads(const std::function<bool(const Platform::ThreadEntry&)>& receiver) const;
    void walkModules(std::uint32_t processId, const std::function<bool(const Platform::ModuleEntry&)>& receiver) const;

    /// Without snapshots: the processes that may be asked about.
    void walkProcessList(const std::function<void(const Platform::ProcessInformation&)>& receiver);

private:
    void listProcesses();

    Platform::ModuleHandle psapi_ = nullptr; ///< loaded only where there are no snapshots
    void* enumProcesses_ = nullptr;
    Platform::ModuleHandle kernel_;
    void* createSnapshot_;
    void* processFirst_;
    void* processNext_;
    void* moduleFirst_;
    void* moduleNext_;
    void* threadFirst_;
    void* threadNext_;
    std::vector<std::uint32_t> ids_;
    std::uint32_t count_ = 0;
};

} // namespace JobRunner
