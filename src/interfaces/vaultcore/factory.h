#pragma once

#include "interfaces/vaultcore/decryptor.h"
#include "interfaces/vaultcore/deleter.h"
#include "interfaces/vaultcore/encryptor.h"
#include "interfaces/vaultcore/events.h"
#include "interfaces/vaultcore/file_list.h"
#include "interfaces/vaultcore/key.h"
#include "interfaces/vaultcore/password_provider.h"

namespace VaultCore
{

/// Every object that the engine gives out belongs to the caller and ends through its `Release`.
class IFactory
{
public:
    virtual void Release() = 0;
    virtual void notCalled1() = 0;
    virtual IKey* CreatePasswordKey(const wchar_t* password) = 0;
    /// Throws `VaultCore::Exception` when the file cannot be used.
    virtual IKey* LoadKeyFile(const wchar_t* path) = 0;
    virtual IFileList* CreateFileList() = 0;
    virtual IOperationEvents* CreateOperationEvents() = 0;
    virtual IEncryptionOptions* CreateEncryptionOptions() = 0;
    virtual ISfxOptions* CreateSfxOptions() = 0;
    virtual IEncryptor* CreateEncryptor() = 0;
    virtual IDecryptionOptions* CreateDecryptionOptions() = 0;
    virtual IDecryptionEvents* CreateDecryptionEvents() = 0;
    virtual IDecryptor* CreateDecryptor() = 0;
    virtual IDeleter* CreateDeleter() = 0;
    virtual IDeletionOptions* CreateDeletionOptions() = 0;

protected:
    ~IFactory() = default;
};

/// Types of the module's exports, by their names.
using InitializeFunction = int (*)();
using CreateFactoryFunction = IFactory* (*)();
using UninitializeFunction = void (*)();

} // namespace VaultCore
