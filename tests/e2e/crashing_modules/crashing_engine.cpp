#include "crashing_modules/crash_here.h"
#include "interfaces/release_ptr.h"
#include "vaultcore/crypto_library.h"
#include "vaultcore/factory.h"
#include "vaultcore/operation_events.h"

#include <chrono>
#include <thread>

// The engine; it crashes on the job's thread, while a deleter is asked for, or on a thread of its own, while a deletion
// is reported. Where the dialog is to crash, a deletion begins and never ends.

namespace
{

using namespace VaultCore;

class CrashingDeleter final : public IDeleter
{
public:
    void Release() override { delete this; }
    void Start(IFileList*, IDeletionOptions*, IOperationEvents* events) override
    {
        std::thread(work, dynamic_cast<IEventSource&>(*events).receivers()).detach();
    }
    bool IsFinished() override { return false; }

private:
    static void work(const EventReceivers& receivers)
    {
        receivers.overall->OnOperationStarted();
        receivers.fileList->OnFileListBuilt(0, 100);
        receivers.overall->OnFileStarted(L"a file");
        receivers.progress->OnFileProgress(50, 100);
        CrashingModules::crashIfWanted("engine");
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
};

class CrashingFactory final : public IFactory
{
public:
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
    IDecryptionEvents* CreateDecryptionEvents() override { return engine_->CreateDecryptionEvents(); }
    IDecryptor* CreateDecryptor() override { return engine_->CreateDecryptor(); }
    IDeleter* CreateDeleter() override
    {
        CrashingModules::crashIfWanted("job");
        if (CrashingModules::isWanted("engine") || CrashingModules::isWanted("dialog"))
            return new CrashingDeleter;
        return engine_->CreateDeleter();
    }
    IDeletionOptions* CreateDeletionOptions() override { return engine_->CreateDeletionOptions(); }

private:
    const ReleasePtr<IFactory> engine_{new Factory};
};

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int initialize()
{
    return prepareCryptoLibrary() ? 1 : 0;
}

EXPORTED IFactory* createFactory()
{
    return new CrashingFactory;
}

EXPORTED void uninitialize() {}
