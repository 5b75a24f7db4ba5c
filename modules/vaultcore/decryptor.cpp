#include "vaultcore/decryptor.h"

#include "interfaces/vaultcore/exception.h"
#include "vaultcore/file_list.h"

namespace VaultCore
{

void Decryptor::Start(IFileList* files, IDecryptionOptions* options, IDecryptionEvents* events)
{
    if (thread_.joinable())
        throw Exception(L"The decryption has been started already.");
    auto* ownOptions = dynamic_cast<DecryptionOptions*>(options);
    const auto* source = dynamic_cast<DecryptionEvents*>(events);
    if (files == nullptr || ownOptions == nullptr || source == nullptr)
        throw Exception(L"The decryption cannot start without a file list, options and events of this engine.");
    // All of it is read here, on the caller's thread: later changes do not reach a job that has begun.
    DecryptionOrder order{ownOptions->path(), ownOptions->GetMode() != 0, source->passwordProvider()};
    thread_ = std::jthread(
        [this, entries = entriesOf(*files), order = std::move(order), receivers = source->receivers()]
        {
            DecryptionJob(*files_, receivers, order).run(entries);
            finished_.store(true);
        });
}

} // namespace VaultCore
