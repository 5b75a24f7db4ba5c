#include "schedules/staged_engine.h"
#include "schedules/staged_key.h"

#include <stdexcept>

namespace Schedules
{

using namespace VaultCore;

namespace
{

StagedEngine* engineInUse = nullptr;

class Events final : public EngineObject<IDecryptionEvents>
{
public:
    using EngineObject::EngineObject;
    void SetFileListBuilderEvents(IFileListBuilderEvents* events) override { callbacks.fileList = events; }
    void SetOverallProgressEvents(IOverallProgressEvents* events) override { callbacks.overall = events; }
    void SetFileProgressEvents(IFileProgressEvents* events) override { callbacks.progress = events; }
    void SetDestinyProgressEvents(IFileProgressEvents* events) override { callbacks.destiny = events; }
    void SetFileConflictEvents(IFileConflictEvents* events) override { callbacks.conflict = events; }
    void SetPasswordProvider(IPasswordProvider* provider) override { callbacks.passwords = provider; }

    EngineCallbacks callbacks;
};

class EncryptionOptions final : public EngineObject<ISfxOptions>
{
public:
    using EngineObject::EngineObject;
    void SetAlgorithm(std::uint32_t) override {}
    void SetKey(IKey*) override {}
    void SetRiddle(const wchar_t*) override {}
    void notCalled1() override {}
    void notCalled2() override {}
    void SetExtraText(const wchar_t*) override {}
    void SetDestiny(std::uint32_t) override {}
    void SetSfxComment(const wchar_t*) override {}
};

class DecryptionOptions final : public EngineObject<IDecryptionOptions>
{
public:
    using EngineObject::EngineObject;
    void SetPath(const wchar_t*) override {}
    void SetMode(std::uint32_t mode) override { mode_ = static_cast<int>(mode); }
    int GetMode() override { return mode_; }

private:
    int mode_ = 0;
};

class DeletionOptions final : public EngineObject<IDeletionOptions>
{
public:
    using EngineObject::EngineObject;
    void SetMethod(std::uint32_t) override {}
};

template <class Interface> class Runner : public EngineObject<Interface>
{
public:
    explicit Runner(StagedEngine& engine) : EngineObject<Interface>(engine.record()), engine_(engine) {}
    bool IsFinished() override { return engine_.isFinished(); }

protected:
    ~Runner() override { engine_.waitForTheEnd(); }
    void begin(IOperationEvents* events) { engine_.start(dynamic_cast<Events*>(events)->callbacks); }

private:
    StagedEngine& engine_;
};

class Encryptor final : public Runner<IEncryptor>
{
public:
    using Runner::Runner;
    void StartSfx(IFileList*, ISfxOptions*, IOperationEvents* events) override { begin(events); }
    void Start(IFileList*, IEncryptionOptions*, IOperationEvents* events) override { begin(events); }
};

class Decryptor final : public Runner<IDecryptor>
{
public:
    using Runner::Runner;
    void Start(IFileList*, IDecryptionOptions*, IDecryptionEvents* events) override { begin(events); }
};

class Deleter final : public Runner<IDeleter>
{
public:
    using Runner::Runner;
    void Start(IFileList*, IDeletionOptions*, IOperationEvents* events) override { begin(events); }
};

class Factory final : public EngineObject<IFactory>
{
public:
    explicit Factory(StagedEngine& engine) : EngineObject(engine.record()), engine_(engine) {}

    void notCalled1() override {}
    IKey* CreatePasswordKey(const wchar_t* password) override { return new StagedKey(engine_.record(), password); }
    IKey* LoadKeyFile(const wchar_t*) override { throw std::logic_error("there are no key files here"); }
    IFileList* CreateFileList() override { throw std::logic_error("the lists are the documents' here"); }
    IOperationEvents* CreateOperationEvents() override { return new Events(engine_.record()); }
    IEncryptionOptions* CreateEncryptionOptions() override { return new EncryptionOptions(engine_.record()); }
    ISfxOptions* CreateSfxOptions() override { return new EncryptionOptions(engine_.record()); }
    IEncryptor* CreateEncryptor() override { return new Encryptor(engine_); }
    IDecryptionOptions* CreateDecryptionOptions() override { return new DecryptionOptions(engine_.record()); }
    IDecryptionEvents* CreateDecryptionEvents() override { return new Events(engine_.record()); }
    IDecryptor* CreateDecryptor() override { return new Decryptor(engine_); }
    IDeleter* CreateDeleter() override { return new Deleter(engine_); }
    IDeletionOptions* CreateDeletionOptions() override { return new DeletionOptions(engine_.record()); }

private:
    StagedEngine& engine_;
};

} // namespace

StagedEngine::StagedEngine(EnginePlan plan, Record& record) : plan_(std::move(plan)), record_(record)
{
    engineInUse = this;
}

StagedEngine::~StagedEngine()
{
    engineInUse = nullptr;
}

IFactory* StagedEngine::createFactory()
{
    return new Factory(*engineInUse);
}

} // namespace Schedules
