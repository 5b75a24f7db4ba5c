#include "vaultcore/factory.h"

#include "interfaces/vaultcore/exception.h"
#include "vaultcore/deleter.h"
#include "vaultcore/file_list.h"
#include "vaultcore/file_system.h"
#include "vaultcore/operation_events.h"

namespace VaultCore
{
namespace
{

constexpr const wchar_t* NoKeys = L"This engine cannot use passwords or key files.";
constexpr const wchar_t* NoEncryption = L"This engine cannot encrypt.";
constexpr const wchar_t* NoDecryption = L"This engine cannot decrypt.";

} // namespace

IKey* Factory::CreatePasswordKey(const wchar_t*)
{
    throw Exception(NoKeys);
}
IKey* Factory::LoadKeyFile(const wchar_t*)
{
    throw Exception(NoKeys);
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
    throw Exception(NoEncryption);
}
ISfxOptions* Factory::CreateSfxOptions()
{
    throw Exception(NoEncryption);
}
IEncryptor* Factory::CreateEncryptor()
{
    throw Exception(NoEncryption);
}
IDecryptionOptions* Factory::CreateDecryptionOptions()
{
    throw Exception(NoDecryption);
}
IDecryptionEvents* Factory::CreateDecryptionEvents()
{
    return new DecryptionEvents;
}
IDecryptor* Factory::CreateDecryptor()
{
    throw Exception(NoDecryption);
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
