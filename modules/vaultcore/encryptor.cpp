#include "vaultcore/encryptor.h"

#include "interfaces/vaultcore/exception.h"
#include "platform/utf8.h"
#include "vaultcore/file_list.h"
#include "vaultcore/package/sfx_options.h"

namespace VaultCore
{
namespace
{

std::string utf8Of(const wchar_t* text)
{
    return text != nullptr ? Platform::toUtf8(text) : std::string();
}

} // namespace

void EncryptionOptions::SetKey(IKey* key)
{
    const auto* own = dynamic_cast<const Key*>(key);
    if (own == nullptr)
        throw Exception(L"The key does not belong to this engine.");
    if (key->GetKeyType() == KeyTypePrivateRsa)
        throw Exception(L"A private key only decrypts; encrypting needs the public one.");
    order_.key = own->clone();
}

void EncryptionOptions::SetRiddle(const wchar_t* riddle)
{
    order_.riddle = utf8Of(riddle);
}

void EncryptionOptions::SetExtraText(const wchar_t* text)
{
    order_.extraText = utf8Of(text);
}

void Encryptor::StartSfx(IFileList* files, ISfxOptions* options, IOperationEvents* events)
{
    if (thread_.joinable())
        throw Exception(L"The encryption has been started already.");
    const auto* ownOptions = dynamic_cast<SfxOptions*>(options);
    const auto* source = dynamic_cast<IEventSource*>(events);
    if (files == nullptr || ownOptions == nullptr || source == nullptr)
        throw Exception(L"The encryption cannot start without a file list, options and events of this engine.");
    SfxOrder order = ownOptions->order();
    if (order.encryption.key == nullptr)
        throw Exception(L"The encryption cannot start without a password or key file.");
    thread_ = std::jthread(
        [this, entries = entriesOf(*files), order = std::move(order), receivers = source->receivers()]
        {
            SfxJob(*files_, receivers, order).run(entries);
            finished_.store(true);
        });
}

void Encryptor::Start(IFileList* files, IEncryptionOptions* options, IOperationEvents* events)
{
    if (thread_.joinable())
        throw Exception(L"The encryption has been started already.");
    const auto* ownOptions = dynamic_cast<EncryptionOptions*>(options);
    const auto* source = dynamic_cast<IEventSource*>(events);
    if (files == nullptr || ownOptions == nullptr || source == nullptr)
        throw Exception(L"The encryption cannot start without a file list, options and events of this engine.");
    if (ownOptions->order().key == nullptr)
        throw Exception(L"The encryption cannot start without a password or key file.");
    // All of it is read here, on the caller's thread: later changes do not reach a job that has begun.
    thread_ = std::jthread(
        [this, entries = entriesOf(*files), order = ownOptions->order(), receivers = source->receivers()]
        {
            EncryptionJob(*files_, receivers, order).run(entries);
            finished_.store(true);
        });
}

} // namespace VaultCore
