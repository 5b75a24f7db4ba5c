#pragma once

#include <cstdint>

namespace VaultCore
{

class IFileList;
class IKey;
class IOperationEvents;

/// What becomes of a source file after its encryption.
inline constexpr std::uint32_t DestinyKeep = 0;
inline constexpr std::uint32_t DestinyDelete = 1;
inline constexpr std::uint32_t DestinyWipe = 2;

/// All texts are copied.
class IEncryptionOptions
{
public:
    virtual void Release() = 0;
    /// Id of the table of algorithms, 0 to 16.
    virtual void SetAlgorithm(std::uint32_t algorithm) = 0;
    /// Keeps what it needs of the key; the caller releases the key. Throws `VaultCore::Exception` for a key that
    /// cannot encrypt.
    virtual void SetKey(IKey* key) = 0;
    /// Readable without the key.
    virtual void SetRiddle(const wchar_t* riddle) = 0;
    virtual void notCalled1() = 0;
    virtual void notCalled2() = 0;
    /// Stored inside, readable with the key only.
    virtual void SetExtraText(const wchar_t* text) = 0;
    virtual void SetDestiny(std::uint32_t destiny) = 0;

protected:
    ~IEncryptionOptions() = default;
};

/// A self-extracting job calls no `SetExtraText`.
class ISfxOptions : public IEncryptionOptions
{
public:
    /// Shown by the package.
    virtual void SetSfxComment(const wchar_t* comment) = 0;

protected:
    ~ISfxOptions() = default;
};

class IEncryptor
{
public:
    virtual void Release() = 0;
    /// As `Start`, into one self-extracting package.
    virtual void StartSfx(IFileList* files, ISfxOptions* options, IOperationEvents* events) = 0;
    /// Returns at once. The arguments are not owned and have to outlive the work.
    virtual void Start(IFileList* files, IEncryptionOptions* options, IOperationEvents* events) = 0;
    /// True once the last callback has returned. Safe on any thread.
    virtual bool IsFinished() = 0;

protected:
    ~IEncryptor() = default;
};

} // namespace VaultCore
