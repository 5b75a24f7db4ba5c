#include "vaultcore/factory.h"

#include "vaultcore/container/key.h"
#include "vaultcore/decryptor.h"
#include "vaultcore/deleter.h"
#include "vaultcore/encryptor.h"
#include "vaultcore/file_list.h"
#include "vaultcore/file_system.h"
#include "vaultcore/operation_events.h"
#include "vaultcore/package/sfx_options.h"

namespace VaultCore
{
IKey* Factory::CreatePasswordKey(const wchar_t* password)
{
    return createPasswordKey(password != nullptr ? password : L"").release();
}
IKey* Factory::LoadKeyFile(const wchar_t* path)
{
    return loadKeyFile(path != nullptr ? path : L"").release();
}
IFileList* Factory::CreateFileList()
{
    return new FileList;
}
IOperationEvents* Factory::CreateOperationEvents()
{
    return new OperationEvents;
}
IEncryptionOptions* Factory::CreateEncryptionOptions()
{
    return new EncryptionOptions;
}
ISfxOptions* Factory::CreateSfxOptions()
{
    return new SfxOptions;
}
IEncryptor* Factory::CreateEncryptor()
{
    return new Encryptor(createFileSystem());
}
IDecryptionOptions* Factory::CreateDecryptionOptions()
{
    return new DecryptionOptions;
}
IDecryptionEvents* Factory::CreateDecryptionEvents()
{
    return new DecryptionEvents;
}
IDecryptor* Factory::CreateDecryptor()
{
    return new Decryptor(createFileSystem());
}
IDeleter* Factory::CreateDeleter()
{
    return new Deleter(createFileSystem());
}
IDeletionOptions* Factory::CreateDeletionOptions()
{
    return new DeletionOptions;
}

} // namespace VaultCore
