#pragma once

#include "fakes/fake_engine.h"
#include "interfaces/vaultcore/factory.h"
#include "platform/threads.h"
#include "schedules/record.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Schedules
{

/// A file of the job.
struct StagedFile
{
    std::wstring name;
    int reports = 2;
    std::uint64_t size = 4 << 20;
    /// So many times the engine asks what to do about an error; a repeat brings it to the next.
    int failures = 0;
    /// Asks for a password until the right one is given.
    bool locked = false;
    /// Reports of the second stage, in which the source is treated.
    int destinyReports = 0;
    /// Milliseconds of work before each report, in which the display has the time to show everything.
    std::uint32_t workTime = 0;
};

struct EnginePlan
{
    std::vector<StagedFile> files;
    /// The list is made on a thread of its own, which may be ahead of the start of the operation.
    bool listOnOwnThread = false;
    /// Errors and passwords of the later files are asked for on a thread of their own, while an earlier file is at
    /// work.
    bool asksAhead = false;
};

using EngineCallbacks = Fakes::EngineCallbacks;

/// A crypto engine that works on nothing and reports as one does, on threads of the platform in use. One at a time.
class StagedEngine
{
public:
    StagedEngine(EnginePlan plan, Record& record);
    ~StagedEngine();
    StagedEngine(const StagedEngine&) = delete;
    StagedEngine& operator=(const StagedEngine&) = delete;

    /// The module's `createFactory`.
    static VaultCore::IFactory* createFactory();

    // For the objects of the engine.
    Record& record() { return record_; }
    void start(const EngineCallbacks& callbacks);
    bool isFinished() const { return finished_; }
    void waitForTheEnd();

private:
    /// What has been found out about a file before its turn.
    enum class Verdict
    {
        Open,
        Skip,
        Stop,
    };

    void work();
    void makeList();
    void askAhead();
    Verdict examine(const StagedFile& file);
    Verdict unlock(const StagedFile& file);
    /// False when the job has to stop.
    bool workOn(const StagedFile& file, Verdict verdict);
    bool report(VaultCore::IFileProgressEvents& events, int reports, const StagedFile& file, bool countsStops);
    void finishFile(const StagedFile& file, std::uint32_t error);

    const EnginePlan plan_;
    Record& record_;
    EngineCallbacks callbacks_;
    std::unique_ptr<Platform::Thread> thread_;
    std::atomic<bool> finished_{false};
    std::vector<Verdict> ahead_;
    std::mutex oneQuestion_; ///< passwords are asked for one at a time
};

} // namespace Schedules
