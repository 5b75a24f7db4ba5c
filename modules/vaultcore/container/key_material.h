#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/key.h"
#include "vaultcore/container/secure_bytes.h"

namespace VaultCore
{

/// Numbers of an RSA key as big-endian bytes. The secret ones are empty in a public key.
struct RsaNumbers
{
    Bytes modulus;
    std::uint32_t exponent = 0;
    SecureBytes privateExponent;
    SecureBytes prime1;
    SecureBytes prime2;

    RsaNumbers copy() const;
};

/// What a key is made of.
struct KeyMaterial
{
    /// `Key::TypePassword` or one of the types of key files.
    int type = Key::TypePassword;
    /// The UTF-8 bytes of a password, or the bytes of a symmetric key.
    SecureBytes secret;
    RsaNumbers rsa;

    KeyMaterial copy() const;
};

/// The numbers have to be checked already.
std::unique_ptr<Key> createKey(KeyMaterial material);

} // namespace VaultCore
