#include "vaultcore/random_stream.h"

#include "vaultcore/crypto_library.h"
#include "vaultcore/file_failure.h"

#include <algorithm>
#include <array>
#include <gcrypt.h>

namespace VaultCore
{
namespace
{

void check(gcry_error_t error)
{
    if (error != 0)
        throw FileFailure(FailureCause::Random, static_cast<std::uint32_t>(error));
}

} // namespace

void RandomStream::Closer::operator()(gcry_cipher_handle* cipher) const
{
    gcry_cipher_close(cipher);
}

RandomStream::RandomStream()
{
    if (!prepareCryptoLibrary())
        throw FileFailure(FailureCause::Random, 0);
    gcry_cipher_hd_t cipher = nullptr;
    check(gcry_cipher_open(&cipher, GCRY_CIPHER_AES256, GCRY_CIPHER_MODE_CTR, 0));
    cipher_.reset(cipher);
    std::array<std::uint8_t, 32> key{};
    std::array<std::uint8_t, 16> counter{};
    gcry_randomize(key.data(), key.size(), GCRY_STRONG_RANDOM);
    gcry_randomize(counter.data(), counter.size(), GCRY_STRONG_RANDOM);
    check(gcry_cipher_setkey(cipher, key.data(), key.size()));
    check(gcry_cipher_setctr(cipher, counter.data(), counter.size()));
}

void RandomStream::fill(std::span<std::uint8_t> bytes)
{
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    check(gcry_cipher_encrypt(cipher_.get(), bytes.data(), bytes.size(), nullptr, 0));
}

std::string RandomStream::letters(std::size_t length)
{
    std::string text(length, 'a');
    for (char& letter : text)
    {
        std::uint8_t byte = 0;
        fill({&byte, 1});
        // The remainder favours a few letters a little, which a name without meaning can bear.
        letter = static_cast<char>('a' + byte % 26);
    }
    return text;
}

} // namespace VaultCore
