#pragma once

#include "fakes/fake_call_log.h"
#include "interfaces/vaultcore/factory.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace Fakes
{

/// What a job has given to the engine's collecting object.
struct EngineCallbacks
{
    VaultCore::IFileListBuilderEvents* fileList = nullptr;
    VaultCore::IOverallProgressEvents* overall = nullptr;
    VaultCore::IFileProgressEvents* progress = nullptr;
    VaultCore::IFileProgressEvents* destiny = nullptr;
    VaultCore::IFileConflictEvents* conflict = nullptr;
};

/// A file that the engine works on. While `failures` is above 0 it asks what to do about the file's error.
struct EngineFile
{
    std::wstring name;
    std::uint64_t size = 0;
    int failures = 0;
};

/// A crypto engine in memory. It deletes nothing; it calls back on a thread of its own as a deletion does, and logs
/// what is made, called and released. One engine at a time.
class FakeEngine
{
public:
    /// `log` is not owned.
    explicit FakeEngine(CallLog& log);
    ~FakeEngine();
    FakeEngine(const FakeEngine&) = delete;
    FakeEngine& operator=(const FakeEngine&) = delete;

    /// The module's `createFactory`. A new factory of the engine at hand.
    static VaultCore::IFactory* createFactory();

    /// Files of the next job: each is started, reported half done and done, and finished.
    std::vector<EngineFile> files;
    /// Takes the place of the work on `files` when it is set. Runs on the engine's thread.
    std::function<void(const EngineCallbacks&)> script;
    /// Runs in `Start`, on the thread of the caller.
    std::function<void()> onStart;
    /// So many times `IsFinished` answers false; the next question waits for the end of the work and answers true.
    int questionsUntilFinished = 0;

    /// The list of the last `Start`.
    VaultCore::IFileList* startedWith = nullptr;
    /// Objects that were made and not yet released.
    int liveObjects() const { return liveObjects_; }

    // For the objects of the engine.
    CallLog& log() { return log_; }
    void work(const EngineCallbacks& callbacks);
    void count(int change) { liveObjects_ += change; }

private:
    /// False when the job has to stop.
    bool workOn(EngineFile& file, const EngineCallbacks& callbacks);

    CallLog& log_;
    std::atomic<int> liveObjects_{0};
};

} // namespace Fakes
