#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct gcry_cipher_handle;

namespace VaultCore
{

/// An endless stream of random bytes, fast enough for a disk: the key stream of AES-256 in counter mode under a random
/// key that nobody keeps. Throws `FileFailure` when libgcrypt refuses. Not for use by two threads at once.
class RandomStream
{
public:
    RandomStream();
    void fill(std::span<std::uint8_t> bytes);
    /// `length` random small letters.
    std::string letters(std::size_t length);

private:
    struct Closer
    {
        void operator()(gcry_cipher_handle* cipher) const;
    };
    std::unique_ptr<gcry_cipher_handle, Closer> cipher_;
};

} // namespace VaultCore
