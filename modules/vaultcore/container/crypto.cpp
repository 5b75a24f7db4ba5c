#include "vaultcore/container/crypto.h"

#include "vaultcore/crypto_library.h"
#include "vaultcore/file_failure.h"

#include "platform/utf8.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t HashBlock = 64;
using KeyBlock = std::array<std::uint8_t, HashBlock>;

void requireLibrary()
{
    if (!prepareCryptoLibrary())
        checkCrypto(gcry_error(GPG_ERR_NOT_INITIALIZED));
}

/// SHA-256 over all parts. A hash handle would be the usual way, and cost as much as opening a cipher.
Digest hashParts(ByteView first, std::initializer_list<ByteView> parts)
{
    requireLibrary();
    std::vector<gcry_buffer_t> buffers;
    const auto add = [&buffers](ByteView part)
    {
        gcry_buffer_t buffer = {};
        buffer.len = part.size();
        buffer.data = const_cast<std::uint8_t*>(part.data());
        buffers.push_back(buffer);
    };
    add(first);
    for (const ByteView part : parts)
        add(part);
    Digest digest{};
    checkCrypto(
        gcry_md_hash_buffers(GCRY_MD_SHA256, 0, digest.data(), buffers.data(), static_cast<int>(buffers.size())));
    return digest;
}

KeyBlock padded(ByteView key, std::uint8_t pad)
{
    KeyBlock block{};
    std::copy(key.begin(), key.end(), block.begin());
    for (std::uint8_t& byte : block)
        byte ^= pad;
    return block;
}

} // namespace

void checkCrypto(gcry_error_t error)
{
    if (error != 0)
        throw FileFailure(FailureCause::Other, static_cast<std::uint32_t>(error),
                          Platform::fromUtf8(gcry_strerror(error)));
}

CipherHandle openCipher(int cipher, int mode)
{
    requireLibrary();
    gcry_cipher_hd_t handle = nullptr;
    // The keys that a cipher makes of its key are secrets as well: guarded memory, which is wiped when it is given
    // back.
    checkCrypto(gcry_cipher_open(&handle, cipher, mode, GCRY_CIPHER_SECURE));
    return CipherHandle(handle);
}

void setCipherKey(const CipherHandle& cipher, ByteView key)
{
    checkCrypto(gcry_cipher_ctl(cipher.get(), GCRYCTL_SET_ALLOW_WEAK_KEY, nullptr, 1));
    const gcry_error_t error = gcry_cipher_setkey(cipher.get(), key.data(), key.size());
    if (gcry_err_code(error) != GPG_ERR_WEAK_KEY)
        checkCrypto(error);
}

void fillRandom(std::span<std::uint8_t> bytes)
{
    requireLibrary();
    gcry_randomize(bytes.data(), bytes.size(), GCRY_STRONG_RANDOM);
}

void fillNonce(std::span<std::uint8_t> bytes)
{
    requireLibrary();
    gcry_create_nonce(bytes.data(), bytes.size());
}

Digest sha256(ByteView bytes)
{
    requireLibrary();
    Digest digest{};
    gcry_md_hash_buffer(GCRY_MD_SHA256, digest.data(), bytes.data(), bytes.size());
    return digest;
}

Digest sha256(ByteView first, ByteView second)
{
    return hashParts(first, {second});
}

Digest hmacSha256(ByteView key, std::initializer_list<ByteView> parts)
{
    Digest shortKey{};
    if (key.size() > HashBlock)
    {
        shortKey = sha256(key);
        key = shortKey;
    }
    KeyBlock inner = padded(key, 0x36);
    KeyBlock outer = padded(key, 0x5C);
    const Digest digest = hashParts(outer, {hashParts(inner, parts)});
    wipe(inner);
    wipe(outer);
    wipe(shortKey);
    return digest;
}

SecureBytes expandKey(ByteView key, std::string_view purpose, ByteView context, std::size_t size)
{
    SecureBytes out(size);
    const ByteView purposeBytes(reinterpret_cast<const std::uint8_t*>(purpose.data()), purpose.size());
    Digest block{};
    std::size_t done = 0;
    for (std::uint8_t number = 1; done < size; ++number)
    {
        // The first block has none before it.
        const ByteView before = done == 0 ? ByteView() : ByteView(block);
        block = hmacSha256(key, {before, purposeBytes, context, ByteView(&number, 1)});
        const std::size_t part = std::min(size - done, block.size());
        std::copy_n(block.begin(), part, out.bytes().begin() + static_cast<std::ptrdiff_t>(done));
        done += part;
    }
    wipe(block);
    return out;
}

} // namespace VaultCore
