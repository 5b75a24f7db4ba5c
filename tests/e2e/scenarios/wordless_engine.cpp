#include "scenarios/wordless_engine.h"

#include "interfaces/release_ptr.h"

namespace EndToEnd
{
namespace
{

using namespace VaultCore;

CreateFactoryFunction original = nullptr;

/// Passes everything on, without the text.
class WordlessReceiver final : public IOverallProgressEvents
{
public:
    void OnOperationStarted() override { to->OnOperationStarted(); }
    void OnFileStarted(const wchar_t* name) override { to->OnFileStarted(name); }
    void OnFileFinished(const void* file, const wchar_t*, std::uint32_t error) override
    {
        to->OnFileFinished(file, L"", error);
    }
    void OnOperationFinished() override { to->OnOperationFinished(); }

    IOverallProgressEvents* to = nullptr;
};

class WordlessEvents final : public IDecryptionEvents
{
public:
    explicit WordlessEvents(IDecryptionEvents* events) : engine(events) {}
    void Release() override { delete this; }
    void SetFileListBuilderEvents(IFileListBuilderEvents* events) override { engine->SetFileListBuilderEvents(events); }
    void SetOverallProgressEvents(IOverallProgressEvents* events) override
    {
        receiver_.to = events;
        engine->SetOverallProgressEvents(&receiver_);
    }
    void SetFileProgressEvents(IFileProgressEvents* events) override { engine->SetFileProgressEvents(events); }
    void SetDestinyProgressEvents(IFileProgressEvents* events) override { engine->SetDestinyProgressEvents(events); }
    void SetFileConflictEvents(IFileConflictEvents* events) override { engine->SetFileConflictEvents(events); }
    void SetPasswordProvider(IPasswordProvider* provider) override { engine->SetPasswordProvider(provider); }

    const ReleasePtr<IDecryptionEvents> engine;

private:
    WordlessReceiver receiver_;
};

/// Gives the engine its own events back, as it takes no others.
class WordlessDecryptor final : public IDecryptor
{
public:
    explicit WordlessDecryptor(IDecryptor* decryptor) : engine_(decryptor) {}
    void Release() override { delete this; }
    void Start(IFileList* files, IDecryptionOptions* options, IDecryptionEvents* events) override
    {
        engine_->Start(files, options, dynamic_cast<WordlessEvents&>(*events).engine.get());
    }
    bool IsFinished() override { return engine_->IsFinished(); }

private:
    const ReleasePtr<IDecryptor> engine_;
};

class WordlessFactory final : public IFactory
{
public:
    explicit WordlessFactory(IFactory* factory) : engine_(factory) {}
    void Release() override { delete this; }
    void notCalled1() override { engine_->notCalled1(); }
    IKey* CreatePasswordKey(const wchar_t* password) override { return engine_->CreatePasswordKey(password); }
    IKey* LoadKeyFile(const wchar_t* path) override { return engine_->LoadKeyFile(path); }
    IFileList* CreateFileList() override { return engine_->CreateFileList(); }
    IOperationEvents* CreateOperationEvents() override { return engine_->CreateOperationEvents(); }
    IEncryptionOptions* CreateEncryptionOptions() override { return engine_->CreateEncryptionOptions(); }
    ISfxOptions* CreateSfxOptions() override { return engine_->CreateSfxOptions(); }
    IEncryptor* CreateEncryptor() override { return engine_->CreateEncryptor(); }
    IDecryptionOptions* CreateDecryptionOptions() override { return engine_->CreateDecryptionOptions(); }
    IDecryptionEvents* CreateDecryptionEvents() override
    {
        return new WordlessEvents(engine_->CreateDecryptionEvents());
    }
    IDecryptor* CreateDecryptor() override { return new WordlessDecryptor(engine_->CreateDecryptor()); }
    IDeleter* CreateDeleter() override { return engine_->CreateDeleter(); }
    IDeletionOptions* CreateDeletionOptions() override { return engine_->CreateDeletionOptions(); }

private:
    const ReleasePtr<IFactory> engine_;
};

IFactory* createWordlessFactory()
{
    return new WordlessFactory(original());
}

} // namespace

CreateFactoryFunction withoutWords(CreateFactoryFunction createFactory)
{
    original = createFactory;
    return &createWordlessFactory;
}

} // namespace EndToEnd
