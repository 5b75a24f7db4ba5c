#include "engine/timed_engine.h"

#include "interfaces/release_ptr.h"

#include <chrono>
#include <cstdlib>
#include <fstream>

namespace Benchmarks
{

namespace
{

using namespace VaultCore;
using Clock = std::chrono::steady_clock;

void keep(Clock::duration time)
{
    if (const char* const file = std::getenv("JOBRUNNER_ENGINE_TIME"))
        std::ofstream(file) << std::chrono::nanoseconds(time).count() << '\n';
}

/// Takes the time where a job begins, asks for a key, and ends; passes all on.
class TimedReceiver final : public IOverallProgressEvents, public IPasswordProvider
{
public:
    void start() { start_ = Clock::now(); }

    void OnOperationStarted() override { overall->OnOperationStarted(); }
    void OnFileStarted(const wchar_t* name) override { overall->OnFileStarted(name); }
    void OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error) override
    {
        overall->OnFileFinished(file, text, error);
    }
    void OnOperationFinished() override
    {
        overall->OnOperationFinished();
        keep(Clock::now() - start_ - asked_);
    }

    int ProvideKey(const wchar_t* file, IKey** key) override
    {
        const auto asked = Clock::now();
        const int answer = passwords->ProvideKey(file, key);
        asked_ += Clock::now() - asked;
        return answer;
    }
    IKey* GetStoredKey(int index) override { return passwords->GetStoredKey(index); }
    int GetStoredKeyCount() override { return passwords->GetStoredKeyCount(); }
    bool AddStoredKey(IKey* key) override { return passwords->AddStoredKey(key); }

    IOverallProgressEvents* overall = nullptr;
    IPasswordProvider* passwords = nullptr;

private:
    Clock::time_point start_;
    Clock::duration asked_{0};
};

/// The engine's own collector with the receiver between. Both interfaces share all slots but the last.
template <class Interface> class TimedCollector : public Interface
{
public:
    explicit TimedCollector(Interface* events) : engine(events) {}
    virtual ~TimedCollector() = default;
    void Release() override { delete this; }
    void SetFileListBuilderEvents(IFileListBuilderEvents* events) override { engine->SetFileListBuilderEvents(events); }
    void SetOverallProgressEvents(IOverallProgressEvents* events) override
    {
        receiver.overall = events;
        engine->SetOverallProgressEvents(&receiver);
    }
    void SetFileProgressEvents(IFileProgressEvents* events) override { engine->SetFileProgressEvents(events); }
    void SetDestinyProgressEvents(IFileProgressEvents* events) override { engine->SetDestinyProgressEvents(events); }
    void SetFileConflictEvents(IFileConflictEvents* events) override { engine->SetFileConflictEvents(events); }

    const ReleasePtr<Interface> engine;
    TimedReceiver receiver;
};

using TimedOperationEvents = TimedCollector<IOperationEvents>;

class TimedDecryptionEvents final : public TimedCollector<IDecryptionEvents>
{
public:
    using TimedCollector::TimedCollector;
    void SetPasswordProvider(IPasswordProvider* provider) override
    {
        receiver.passwords = provider;
        engine->SetPasswordProvider(&receiver);
    }
};

/// Starts the clock, and gives the engine its own collector back, as it takes no other.
template <class Collector, class Interface> Interface* started(Interface* events)
{
    auto& collector = dynamic_cast<Collector&>(*events);
    collector.receiver.start();
    return collector.engine.get();
}

class TimedEncryptor final : public IEncryptor
{
public:
    explicit TimedEncryptor(IEncryptor* encryptor) : engine_(encryptor) {}
    void Release() override { delete this; }
    void StartSfx(IFileList* files, ISfxOptions* options, IOperationEvents* events) override
    {
        engine_->StartSfx(files, options, started<TimedOperationEvents>(events));
    }
    void Start(IFileList* files, IEncryptionOptions* options, IOperationEvents* events) override
    {
        engine_->Start(files, options, started<TimedOperationEvents>(events));
    }
    bool IsFinished() override { return engine_->IsFinished(); }

private:
    const ReleasePtr<IEncryptor> engine_;
};

class TimedDecryptor final : public IDecryptor
{
public:
    explicit TimedDecryptor(IDecryptor* decryptor) : engine_(decryptor) {}
    void Release() override { delete this; }
    void Start(IFileList* files, IDecryptionOptions* options, IDecryptionEvents* events) override
    {
        engine_->Start(files, options, started<TimedDecryptionEvents>(events));
    }
    bool IsFinished() override { return engine_->IsFinished(); }

private:
    const ReleasePtr<IDecryptor> engine_;
};

class TimedDeleter final : public IDeleter
{
public:
    explicit TimedDeleter(IDeleter* deleter) : engine_(deleter) {}
    void Release() override { delete this; }
    void Start(IFileList* files, IDeletionOptions* options, IOperationEvents* events) override
    {
        engine_->Start(files, options, started<TimedOperationEvents>(events));
    }
    bool IsFinished() override { return engine_->IsFinished(); }

private:
    const ReleasePtr<IDeleter> engine_;
};

class TimedFactory final : public IFactory
{
public:
    explicit TimedFactory(IFactory* engine) : engine_(engine) {}
    void Release() override { delete this; }
    void notCalled1() override { engine_->notCalled1(); }
    IKey* CreatePasswordKey(const wchar_t* password) override { return engine_->CreatePasswordKey(password); }
    IKey* LoadKeyFile(const wchar_t* path) override { return engine_->LoadKeyFile(path); }
    IFileList* CreateFileList() override { return engine_->CreateFileList(); }
    IOperationEvents* CreateOperationEvents() override
    {
        return new TimedOperationEvents(engine_->CreateOperationEvents());
    }
    IEncryptionOptions* CreateEncryptionOptions() override { return engine_->CreateEncryptionOptions(); }
    ISfxOptions* CreateSfxOptions() override { return engine_->CreateSfxOptions(); }
    IEncryptor* CreateEncryptor() override { return new TimedEncryptor(engine_->CreateEncryptor()); }
    IDecryptionOptions* CreateDecryptionOptions() override { return engine_->CreateDecryptionOptions(); }
    IDecryptionEvents* CreateDecryptionEvents() override
    {
        return new TimedDecryptionEvents(engine_->CreateDecryptionEvents());
    }
    IDecryptor* CreateDecryptor() override { return new TimedDecryptor(engine_->CreateDecryptor()); }
    IDeleter* CreateDeleter() override { return new TimedDeleter(engine_->CreateDeleter()); }
    IDeletionOptions* CreateDeletionOptions() override { return engine_->CreateDeletionOptions(); }

private:
    const ReleasePtr<IFactory> engine_;
};

} // namespace

IFactory* timed(IFactory* engine)
{
    return new TimedFactory(engine);
}

} // namespace Benchmarks
