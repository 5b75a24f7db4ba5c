#include "fakes/fake_engine.h"

#include "fakes/fake_engine_objects.h"
#include "fakes/fake_file_list.h"

#include <numeric>

namespace Fakes
{

namespace
{

FakeEngine* current = nullptr;

/// Gives out what a deletion needs. What only other jobs ask for is logged and null.
class FakeFactory final : public EngineObject<VaultCore::IFactory>
{
public:
    explicit FakeFactory(FakeEngine& engine) : EngineObject(engine, L"factory") {}

    void notCalled1() override { log(L"notCalled1"); }
    VaultCore::IKey* CreatePasswordKey(const wchar_t*) override { return none(L"CreatePasswordKey"); }
    VaultCore::IKey* LoadKeyFile(const wchar_t*) override { return none(L"LoadKeyFile"); }

    VaultCore::IFileList* CreateFileList() override
    {
        log(L"CreateFileList");
        return new FakeFileList(engine_.log(), true);
    }

    VaultCore::IOperationEvents* CreateOperationEvents() override
    {
        log(L"CreateOperationEvents");
        return new FakeOperationEvents(engine_);
    }

    VaultCore::IEncryptionOptions* CreateEncryptionOptions() override { return none(L"CreateEncryptionOptions"); }
    VaultCore::ISfxOptions* CreateSfxOptions() override { return none(L"CreateSfxOptions"); }
    VaultCore::IEncryptor* CreateEncryptor() override { return none(L"CreateEncryptor"); }
    VaultCore::IDecryptionOptions* CreateDecryptionOptions() override { return none(L"CreateDecryptionOptions"); }
    VaultCore::IDecryptionEvents* CreateDecryptionEvents() override { return none(L"CreateDecryptionEvents"); }
    VaultCore::IDecryptor* CreateDecryptor() override { return none(L"CreateDecryptor"); }

    VaultCore::IDeleter* CreateDeleter() override
    {
        log(L"CreateDeleter");
        return new FakeDeleter(engine_);
    }

    VaultCore::IDeletionOptions* CreateDeletionOptions() override
    {
        log(L"CreateDeletionOptions");
        return new FakeDeletionOptions(engine_);
    }

private:
    std::nullptr_t none(const wchar_t* call)
    {
        log(call);
        return nullptr;
    }
};

std::uint64_t totalSize(const std::vector<EngineFile>& files)
{
    return std::accumulate(files.begin(), files.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const EngineFile& file) { return sum + file.size; });
}

constexpr std::uint32_t Failed = 5;

} // namespace

FakeEngine::FakeEngine(CallLog& log) : log_(log)
{
    current = this;
}

FakeEngine::~FakeEngine()
{
    current = nullptr;
}

VaultCore::IFactory* FakeEngine::createFactory()
{
    current->log_.add(L"createFactory");
    return new FakeFactory(*current);
}

void FakeEngine::work(const EngineCallbacks& callbacks)
{
    if (script)
        return script(callbacks);
    callbacks.overall->OnOperationStarted();
    callbacks.fileList->OnFileListBuilt(0, totalSize(files));
    for (EngineFile& file : files)
    {
        if (!workOn(file, callbacks))
            break;
    }
    callbacks.overall->OnOperationFinished();
}

bool FakeEngine::workOn(EngineFile& file, const EngineCallbacks& callbacks)
{
    callbacks.overall->OnFileStarted(file.name.c_str());
    for (; file.failures > 0; --file.failures)
    {
        const int action = callbacks.conflict->OnFileError(file.name.c_str(), L"", L"Access is denied.");
        if (action == VaultCore::FileErrorRepeat)
            continue;
        callbacks.overall->OnFileFinished(nullptr, L"Access is denied.", Failed);
        return action != VaultCore::FileErrorAbort;
    }
    const bool goOn = callbacks.progress->OnFileProgress(file.size / 2, file.size) != 0 &&
                      callbacks.progress->OnFileProgress(file.size, file.size) != 0;
    callbacks.overall->OnFileFinished(nullptr, nullptr, goOn ? 0 : Failed);
    return goOn;
}

} // namespace Fakes
