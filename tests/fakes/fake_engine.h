#pragma once

#include "fakes/fake_call_log.h"
#include "interfaces/vaultcore/factory.h"

#include <atomic>
#include <functional>
#include <map>
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
    VaultCore::IPasswordProvider* passwords = nullptr; ///< of a decryption only
};

/// A file that the engine works on. While `failures` is above 0 it asks what to do about the file's error.
struct EngineFile
{
    std::wstring name;
    std::uint64_t size = 0;
    int failures = 0;
    /// The password, or the path of the key file, that a decryption needs; empty for a file that is not encrypted.
    std::wstring secret{};
    /// What is reported at its end when it succeeds.
    std::wstring text{};
};

struct EngineKeyFile
{
    int type = VaultCore::KeyTypeSymmetric;
    /// How often it can be loaded before it is gone; a number below 0 for always.
    int loads = -1;
};

/// A crypto engine in memory. It changes no file; it calls back on a thread of its own as a job does, and logs what is
/// made, called and released, as "options.SetRiddle(text)". A key is shown as its password or path. One engine at a
/// time.
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

    /// By their paths. Any other path throws "No key file: PATH".
    std::map<std::wstring, EngineKeyFile> keyFiles;
    /// When it is not empty, `SetKey` throws it. The same for `CreatePasswordKey` and for `GetKeyType`.
    std::wstring keyFailure;
    std::wstring passwordFailure;
    std::wstring keyTypeFailure;

    /// The list of the last `Start` or `StartSfx`.
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
    /// Asks for keys until one fits. A `ProvideKeyAnswer`.
    int open(const EngineFile& file, VaultCore::IPasswordProvider& passwords);

    CallLog& log_;
    std::atomic<int> liveObjects_{0};
};

} // namespace Fakes
