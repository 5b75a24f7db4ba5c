#pragma once

namespace VaultCore
{

/// Values of `GetKeyType`.
inline constexpr int KeyTypeSymmetric = 1;
inline constexpr int KeyTypePublicRsa = 2;
inline constexpr int KeyTypePrivateRsa = 3;
inline constexpr int KeyTypeRsaPair = 4;

class IKey
{
public:
    virtual void Release() = 0;
    virtual void notCalled1() = 0;
    /// One of the types above for a key file; anything else for another key.
    virtual int GetKeyType() = 0;

protected:
    ~IKey() = default;
};

} // namespace VaultCore
