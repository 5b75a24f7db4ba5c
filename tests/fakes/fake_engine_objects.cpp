#include "fakes/fake_engine_objects.h"

#include "interfaces/vaultcore/exception.h"

namespace Fakes
{

namespace
{

const EngineCallbacks& callbacksOf(VaultCore::IOperationEvents* events)
{
    return static_cast<FakeOperationEvents*>(events)->callbacks;
}

} // namespace

int FakeKey::GetKeyType()
{
    log(L"GetKeyType");
    if (!engine_.keyTypeFailure.empty())
        throw VaultCore::Exception(engine_.keyTypeFailure);
    return type_;
}

template <class Interface> void EncryptionOptionsObject<Interface>::SetKey(VaultCore::IKey* key)
{
    this->log(L"SetKey", static_cast<FakeKey*>(key)->secret());
    if (!this->engine_.keyFailure.empty())
        throw VaultCore::Exception(this->engine_.keyFailure);
}

template <class Interface> bool RunnerObject<Interface>::IsFinished()
{
    this->log(L"IsFinished");
    if (questions_++ < this->engine_.questionsUntilFinished)
        return false;
    if (thread_.joinable())
        thread_.join();
    return true;
}

template <class Interface> RunnerObject<Interface>::~RunnerObject()
{
    if (thread_.joinable())
        thread_.join();
}

template <class Interface>
void RunnerObject<Interface>::start(const wchar_t* call, VaultCore::IFileList* files, const EngineCallbacks& callbacks)
{
    this->log(call);
    this->engine_.startedWith = files;
    if (this->engine_.onStart)
        this->engine_.onStart();
    thread_ = std::thread([&engine = this->engine_, callbacks] { engine.work(callbacks); });
}

void FakeEncryptor::StartSfx(VaultCore::IFileList* files, VaultCore::ISfxOptions*, VaultCore::IOperationEvents* events)
{
    start(L"StartSfx", files, callbacksOf(events));
}

void FakeEncryptor::Start(VaultCore::IFileList* files, VaultCore::IEncryptionOptions*,
                          VaultCore::IOperationEvents* events)
{
    start(L"Start", files, callbacksOf(events));
}

void FakeDecryptor::Start(VaultCore::IFileList* files, VaultCore::IDecryptionOptions*,
                          VaultCore::IDecryptionEvents* events)
{
    start(L"Start", files, static_cast<FakeDecryptionEvents*>(events)->callbacks);
}

void FakeDeleter::Start(VaultCore::IFileList* files, VaultCore::IDeletionOptions*, VaultCore::IOperationEvents* events)
{
    start(L"Start", files, callbacksOf(events));
}

template class EncryptionOptionsObject<VaultCore::IEncryptionOptions>;
template class EncryptionOptionsObject<VaultCore::ISfxOptions>;
template class RunnerObject<VaultCore::IEncryptor>;
template class RunnerObject<VaultCore::IDecryptor>;
template class RunnerObject<VaultCore::IDeleter>;

} // namespace Fakes
