#pragma once

#include <cstdint>

namespace VaultCore
{

class IFileList;
class IDecryptionEvents;

class IDecryptionOptions
{
public:
    virtual void Release() = 0;
    /// Folder for the decrypted files; the text is copied. Empty: beside the encrypted file.
    virtual void SetPath(const wchar_t* path) = 0;
    /// 0 keeps the encrypted files, any other value deletes them after decryption.
    virtual void SetMode(std::uint32_t mode) = 0;
    /// Not 0 when encrypted files are deleted.
    virtual int GetMode() = 0;

protected:
    ~IDecryptionOptions() = default;
};

class IDecryptor
{
public:
    virtual void Release() = 0;
    /// Returns at once. The arguments are not owned and have to outlive the work.
    virtual void Start(IFileList* files, IDecryptionOptions* options, IDecryptionEvents* events) = 0;
    /// True once the last callback has returned. Safe on any thread.
    virtual bool IsFinished() = 0;

protected:
    ~IDecryptor() = default;
};

} // namespace VaultCore
