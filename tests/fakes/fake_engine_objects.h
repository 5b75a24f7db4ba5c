#pragma once

#include "fakes/fake_engine.h"

#include <thread>

namespace Fakes
{

/// An object that the engine gives out: logs its calls and its end, and ends through `Release`.
template <class Interface> class EngineObject : public Interface
{
public:
    EngineObject(FakeEngine& engine, const wchar_t* name) : engine_(engine), name_(name) { engine_.count(1); }

    void Release() override
    {
        log(L"Release");
        engine_.count(-1);
        delete this;
    }

protected:
    virtual ~EngineObject() = default;
    void log(const std::wstring& call) { engine_.log().add(name_ + L"." + call); }
    void log(const std::wstring& call, const std::wstring& text) { log(call + L"(" + text + L")"); }
    void log(const std::wstring& call, std::uint32_t number) { log(call, std::to_wstring(number)); }

    FakeEngine& engine_;

private:
    const std::wstring name_;
};

class FakeKey final : public EngineObject<VaultCore::IKey>
{
public:
    /// `secret` is the password, or the path of the key file.
    FakeKey(FakeEngine& engine, std::wstring secret, int type)
        : EngineObject(engine, L"key"), secret_(std::move(secret)), type_(type)
    {
    }

    void notCalled1() override { log(L"notCalled1"); }

    int GetKeyType() override;

    const std::wstring& secret() const { return secret_; }

private:
    const std::wstring secret_;
    const int type_;
};

/// Keeps the callbacks that it is given.
template <class Interface> class CollectingEvents : public EngineObject<Interface>
{
public:
    explicit CollectingEvents(FakeEngine& engine) : EngineObject<Interface>(engine, L"events") {}

    void SetFileListBuilderEvents(VaultCore::IFileListBuilderEvents* events) override
    {
        this->log(L"SetFileListBuilderEvents");
        callbacks.fileList = events;
    }

    void SetOverallProgressEvents(VaultCore::IOverallProgressEvents* events) override
    {
        this->log(L"SetOverallProgressEvents");
        callbacks.overall = events;
    }

    void SetFileProgressEvents(VaultCore::IFileProgressEvents* events) override
    {
        this->log(L"SetFileProgressEvents");
        callbacks.progress = events;
    }

    void SetDestinyProgressEvents(VaultCore::IFileProgressEvents* events) override
    {
        this->log(L"SetDestinyProgressEvents");
        callbacks.destiny = events;
    }

    void SetFileConflictEvents(VaultCore::IFileConflictEvents* events) override
    {
        this->log(L"SetFileConflictEvents");
        callbacks.conflict = events;
    }

    EngineCallbacks callbacks;
};

class FakeOperationEvents final : public CollectingEvents<VaultCore::IOperationEvents>
{
public:
    using CollectingEvents::CollectingEvents;
};

class FakeDecryptionEvents final : public CollectingEvents<VaultCore::IDecryptionEvents>
{
public:
    using CollectingEvents::CollectingEvents;

    void SetPasswordProvider(VaultCore::IPasswordProvider* provider) override
    {
        log(L"SetPasswordProvider");
        callbacks.passwords = provider;
    }
};

/// The options of both encryptions.
template <class Interface> class EncryptionOptionsObject : public EngineObject<Interface>
{
public:
    explicit EncryptionOptionsObject(FakeEngine& engine) : EngineObject<Interface>(engine, L"options") {}

    void SetAlgorithm(std::uint32_t algorithm) override { this->log(L"SetAlgorithm", algorithm); }
    void SetKey(VaultCore::IKey* key) override;
    void SetRiddle(const wchar_t* riddle) override { this->log(L"SetRiddle", riddle); }
    void notCalled1() override { this->log(L"notCalled1"); }
    void notCalled2() override { this->log(L"notCalled2"); }
    void SetExtraText(const wchar_t* text) override { this->log(L"SetExtraText", text); }
    void SetDestiny(std::uint32_t destiny) override { this->log(L"SetDestiny", destiny); }
};

class FakeEncryptionOptions final : public EncryptionOptionsObject<VaultCore::IEncryptionOptions>
{
public:
    using EncryptionOptionsObject::EncryptionOptionsObject;
};

class FakeSfxOptions final : public EncryptionOptionsObject<VaultCore::ISfxOptions>
{
public:
    using EncryptionOptionsObject::EncryptionOptionsObject;
    void SetSfxComment(const wchar_t* comment) override { log(L"SetSfxComment", comment); }
};

class FakeDecryptionOptions final : public EngineObject<VaultCore::IDecryptionOptions>
{
public:
    explicit FakeDecryptionOptions(FakeEngine& engine) : EngineObject(engine, L"options") {}

    void SetPath(const wchar_t* path) override { log(L"SetPath", path); }

    void SetMode(std::uint32_t mode) override
    {
        log(L"SetMode", mode);
        mode_ = static_cast<int>(mode);
    }

    int GetMode() override
    {
        log(L"GetMode");
        return mode_;
    }

private:
    int mode_ = 0;
};

class FakeDeletionOptions final : public EngineObject<VaultCore::IDeletionOptions>
{
public:
    explicit FakeDeletionOptions(FakeEngine& engine) : EngineObject(engine, L"options") {}
    void SetMethod(std::uint32_t method) override { log(L"SetMethod", method); }
};

/// Does the engine's work on a thread of its own.
template <class Interface> class RunnerObject : public EngineObject<Interface>
{
public:
    using EngineObject<Interface>::EngineObject;
    bool IsFinished() override;

protected:
    ~RunnerObject() override;
    void start(const wchar_t* call, VaultCore::IFileList* files, const EngineCallbacks& callbacks);

private:
    std::thread thread_;
    int questions_ = 0;
};

class FakeEncryptor final : public RunnerObject<VaultCore::IEncryptor>
{
public:
    explicit FakeEncryptor(FakeEngine& engine) : RunnerObject(engine, L"encryptor") {}
    void StartSfx(VaultCore::IFileList* files, VaultCore::ISfxOptions* options,
                  VaultCore::IOperationEvents* events) override;
    void Start(VaultCore::IFileList* files, VaultCore::IEncryptionOptions* options,
               VaultCore::IOperationEvents* events) override;
};

class FakeDecryptor final : public RunnerObject<VaultCore::IDecryptor>
{
public:
    explicit FakeDecryptor(FakeEngine& engine) : RunnerObject(engine, L"decryptor") {}
    void Start(VaultCore::IFileList* files, VaultCore::IDecryptionOptions* options,
               VaultCore::IDecryptionEvents* events) override;
};

class FakeDeleter final : public RunnerObject<VaultCore::IDeleter>
{
public:
    explicit FakeDeleter(FakeEngine& engine) : RunnerObject(engine, L"deleter") {}
    void Start(VaultCore::IFileList* files, VaultCore::IDeletionOptions* options,
               VaultCore::IOperationEvents* events) override;
};

} // namespace Fakes
