#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/secure_bytes.h"

#include <gcrypt.h>
#include <initializer_list>
#include <memory>
#include <string_view>

// The operations of libgcrypt in the form that the containers use. What libgcrypt refuses is thrown as `FileFailure`.

namespace VaultCore
{

struct CipherCloser
{
    void operator()(gcry_cipher_handle* cipher) const { gcry_cipher_close(cipher); }
};
using CipherHandle = std::unique_ptr<gcry_cipher_handle, CipherCloser>;

inline constexpr std::size_t DigestSize = 32;
using Digest = std::array<std::uint8_t, DigestSize>;

/// Throws for an error of libgcrypt.
void checkCrypto(gcry_error_t error);

/// A cipher without a key. libgcrypt gathers noise for its random data on this occasion, which takes long on Windows:
/// open few.
CipherHandle openCipher(int cipher, int mode);
/// Weak keys of a cipher are taken as any other: the keys are random, and all but never weak.
void setCipherKey(const CipherHandle& cipher, ByteView key);

void fillRandom(std::span<std::uint8_t> bytes);
/// Random too, quickly, and not for secrets.
void fillNonce(std::span<std::uint8_t> bytes);
Digest sha256(ByteView bytes);
/// Of both, one behind the other.
Digest sha256(ByteView first, ByteView second);
/// HMAC-SHA-256 over all parts, one behind the other.
Digest hmacSha256(ByteView key, std::initializer_list<ByteView> parts);
inline Digest hmacSha256(ByteView key, ByteView bytes)
{
    return hmacSha256(key, {bytes});
}
/// HKDF-Expand of RFC 5869 with SHA-256: `size` bytes, at most 255 digests, from a key that is random already.
SecureBytes expandKey(ByteView key, std::string_view purpose, ByteView context, std::size_t size);

} // namespace VaultCore
