#pragma once

#include "fakes/fake_engine.h"

#include <thread>

namespace Fakes
{

/// An object that the engine gives out: logs its making and its end, and ends through `Release`.
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

    FakeEngine& engine_;

private:
    const std::wstring name_;
};

class FakeOperationEvents final : public EngineObject<VaultCore::IOperationEvents>
{
public:
    explicit FakeOperationEvents(FakeEngine& engine) : EngineObject(engine, L"events") {}

    void SetFileListBuilderEvents(VaultCore::IFileListBuilderEvents* events) override;
    void SetOverallProgressEvents(VaultCore::IOverallProgressEvents* events) override;
    void SetFileProgressEvents(VaultCore::IFileProgressEvents* events) override;
    void SetDestinyProgressEvents(VaultCore::IFileProgressEvents* events) override;
    void SetFileConflictEvents(VaultCore::IFileConflictEvents* events) override;

    EngineCallbacks callbacks;
};

class FakeDeletionOptions final : public EngineObject<VaultCore::IDeletionOptions>
{
public:
    explicit FakeDeletionOptions(FakeEngine& engine) : EngineObject(engine, L"options") {}
    void SetMethod(std::uint32_t method) override;
};

class FakeDeleter final : public EngineObject<VaultCore::IDeleter>
{
public:
    explicit FakeDeleter(FakeEngine& engine) : EngineObject(engine, L"deleter") {}
    void Start(VaultCore::IFileList* files, VaultCore::IDeletionOptions* options,
               VaultCore::IOperationEvents* events) override;
    bool IsFinished() override;

private:
    ~FakeDeleter() override;

    std::thread thread_;
    int questions_ = 0;
};

} // namespace Fakes
