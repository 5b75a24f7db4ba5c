#pragma once

#include <cstdint>
#include <string>

namespace VaultCore
{
class IFileList;
}

namespace ZelPlatform
{

/// The job of one configuration file. A document that answers true to a kind also implements the interface of
/// that kind, which is reached by a checked cast and never released by itself.
class IJobRunnerDocument
{
public:
    virtual void Release() = 0;
    /// Files and patterns of the job; owned by the document.
    virtual VaultCore::IFileList* GetFileList() = 0;
    virtual void notCalled1() = 0;
    virtual bool IsDecryption() = 0;
    virtual bool IsDoubleClickDecryption() = 0;
    virtual bool IsEncryption() = 0;
    virtual bool IsSfxEncryption() = 0;
    virtual bool IsWipe() = 0;

protected:
    ~IJobRunnerDocument() = default;
};

class IEncryptorThreadDocument
{
public:
    /// Algorithm id, 0 to 16.
    virtual std::uint32_t GetAlgorithm() = 0;
    virtual void notCalled1() = 0;
    virtual void notCalled2() = 0;
    virtual void notCalled3() = 0;
    /// 0 keep, 1 delete, 2 wipe the source files.
    virtual std::uint32_t GetDestiny() = 0;
    /// Owned by the document; may be empty.
    virtual const wchar_t* GetExtraText() = 0;

protected:
    ~IEncryptorThreadDocument() = default;
};

class IEncryptorSfxThreadDocument
{
public:
    virtual void notCalled1() = 0;
    virtual void notCalled2() = 0;
    virtual void notCalled3() = 0;
    virtual void notCalled4() = 0;
    virtual std::uint32_t GetDestiny() = 0;
    virtual void notCalled5() = 0;
    /// The comment that the password window shows first.
    virtual std::wstring GetSfxComment() = 0;

protected:
    ~IEncryptorSfxThreadDocument() = default;
};

class IDecryptorThreadDocument
{
public:
    /// Folder for the decrypted files; owned by the document; may be null.
    virtual const wchar_t* GetDecryptionPath() = 0;
    /// 0 keeps the encrypted originals, any other value deletes them.
    virtual std::uint32_t GetDecryptionMode() = 0;

protected:
    ~IDecryptorThreadDocument() = default;
};

class IDeleterThreadDocument
{
public:
    /// 2 is wipe, every other value is delete.
    virtual std::uint32_t GetDeletionMethod() = 0;

protected:
    ~IDeleterThreadDocument() = default;
};

} // namespace ZelPlatform
