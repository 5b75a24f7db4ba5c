#include "fakes/fake_engine.h"

#include "fakes/fake_engine_objects.h"
#include "fakes/fake_file_list.h"
#include "interfaces/vaultcore/exception.h"

#include <numeric>

namespace Fakes
{

namespace
{

FakeEngine* current = nullptr;

class FakeFactory final : public EngineObject<VaultCore::IFactory>
{
public:
    explicit FakeFactory(FakeEngine& engine) : EngineObject(engine, L"factory") {}

    void notCalled1() override { log(L"notCalled1"); }

    VaultCore::IKey* CreatePasswordKey(const wchar_t* password) override
    {
        log(std::wstring(L"CreatePasswordKey(") + password + L")");
        if (!engine_.passwordFailure.empty())
            throw VaultCore::Exception(engine_.passwordFailure);
        return new FakeKey(engine_, password, 0);
    }

    VaultCore::IKey* LoadKeyFile(const wchar_t* path) override
    {
        log(std::wstring(L"LoadKeyFile(") + path + L")");
        const auto found = engine_.keyFiles.find(path);
        if (found == engine_.keyFiles.end() || found->second.loads == 0)
            throw VaultCore::Exception(std::wstring(L"No key file: ") + path);
        --found->second.loads;
        return new FakeKey(engine_, path, found->second.type);
    }

    VaultCore::IFileList* CreateFileList() override
    {
        log(L"CreateFileList");
        return new FakeFileList(engine_.log(), true);
    }

    VaultCore::IOperationEvents* CreateOperationEvents() override
    {
        return make<FakeOperationEvents>(L"CreateOperationEvents");
    }

    VaultCore::IEncryptionOptions* CreateEncryptionOptions() override
    {
        return make<FakeEncryptionOptions>(L"CreateEncryptionOptions");
    }

    VaultCore::ISfxOptions* CreateSfxOptions() override { return make<FakeSfxOptions>(L"CreateSfxOptions"); }
    VaultCore::IEncryptor* CreateEncryptor() override { return make<FakeEncryptor>(L"CreateEncryptor"); }

    VaultCore::IDecryptionOptions* CreateDecryptionOptions() override
    {
        return make<FakeDecryptionOptions>(L"CreateDecryptionOptions");
    }

    VaultCore::IDecryptionEvents* CreateDecryptionEvents() override
    {
        return make<FakeDecryptionEvents>(L"CreateDecryptionEvents");
    }

    VaultCore::IDecryptor* CreateDecryptor() override { return make<FakeDecryptor>(L"CreateDecryptor"); }
    VaultCore::IDeleter* CreateDeleter() override { return make<FakeDeleter>(L"CreateDeleter"); }

    VaultCore::IDeletionOptions* CreateDeletionOptions() override
    {
        return make<FakeDeletionOptions>(L"CreateDeletionOptions");
    }

private:
    template <class Object> Object* make(const wchar_t* call)
    {
        log(call);
        return new Object(engine_);
    }
};

std::uint64_t totalSize(const std::vector<EngineFile>& files)
{
    return std::accumulate(files.begin(), files.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const EngineFile& file) { return sum + file.size; });
}

bool opens(VaultCore::IKey* key, const EngineFile& file)
{
    return static_cast<FakeKey*>(key)->secret() == file.secret;
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
    const bool locked = callbacks.passwords && !file.secret.empty();
    if (const int answer = locked ? open(file, *callbacks.passwords) : VaultCore::KeyProvided)
    {
        callbacks.overall->OnFileFinished(nullptr, L"No key.", Failed);
        return answer != VaultCore::KeyCancelJob;
    }
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
    callbacks.overall->OnFileFinished(nullptr, goOn ? file.text.c_str() : L"Cancelled.", goOn ? 0 : Failed);
    return goOn;
}

int FakeEngine::open(const EngineFile& file, VaultCore::IPasswordProvider& passwords)
{
    for (int index = 0; index < passwords.GetStoredKeyCount(); ++index)
    {
        if (opens(passwords.GetStoredKey(index), file))
            return VaultCore::KeyProvided;
    }
    while (true)
    {
        VaultCore::IKey* key = nullptr;
        const int answer = passwords.ProvideKey(file.name.c_str(), &key);
        if (answer != VaultCore::KeyProvided)
            return answer;
        if (opens(key, file))
        {
            passwords.AddStoredKey(key);
            return answer;
        }
        key->Release();
    }
}

} // namespace Fakes
