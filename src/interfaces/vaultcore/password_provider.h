#pragma once

namespace VaultCore
{

class IKey;

/// Answers of `ProvideKey`.
enum ProvideKeyAnswer : int
{
    KeyProvided = 0,
    KeyIgnoreFile = 1,
    KeyCancelJob = 2,
};

/// How the engine asks for keys, and keeps the ones that fitted. Engine thread.
class IPasswordProvider
{
public:
    /// Answers a `ProvideKeyAnswer`; for 0 `key` is set and belongs to the engine. May block for as long as the user
    /// thinks, and may throw `VaultCore::Exception`. A repeated call for a file means that the key did not fit.
    virtual int ProvideKey(const wchar_t* file, IKey** key) = 0;
    /// Key at `index`, counted from 0; still owned by the provider.
    virtual IKey* GetStoredKey(int index) = 0;
    virtual int GetStoredKeyCount() = 0;
    /// Takes ownership of `key`, at the end of the list. True.
    virtual bool AddStoredKey(IKey* key) = 0;

protected:
    ~IPasswordProvider() = default;
};

} // namespace VaultCore
