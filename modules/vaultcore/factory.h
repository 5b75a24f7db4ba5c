#pragma once

#include "interfaces/vaultcore/factory.h"

namespace VaultCore
{

/// Gives out the parts of this engine.
class Factory final : public IFactory
{
public:
    void Release() override { delete this; }
    void notCalled1() override {}
    IKey* CreatePasswordKey(const wchar_t* password) override;
    IKey* LoadKeyFile(const wchar_t* path) override;
    IFileList* CreateFileList() override;
    IOperationEvents* CreateOperationEvents() override;
    IEncryptionOptions* CreateEncryptionOptions() override;
    ISfxOptions* CreateSfxOptions() override;
    IEncryptor* CreateEncryptor() override;
    IDecryptionOptions* CreateDecryptionOptions() override;
    IDecryptionEvents* CreateDecryptionEvents() override;
    IDecryptor* CreateDecryptor() override;
    IDeleter* CreateDeleter() override;
    IDeletionOptions* CreateDeletionOptions() override;
};

} // namespace VaultCore
