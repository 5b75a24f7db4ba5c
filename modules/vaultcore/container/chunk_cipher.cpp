#include "vaultcore/container/chunk_cipher.h"

#include "vaultcore/container/chunk_keys.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t OcbTagSize = 16;
constexpr std::size_t MacKeySize = 32;

/// Index and last flag: what makes a chunk fit at one place only.
std::array<std::uint8_t, 12> placeBytes(ChunkPlace place)
{
    std::array<std::uint8_t, 12> bytes{};
    ByteWriter writer(bytes);
    writer.u64(place.index);
    writer.u8(place.last ? 1 : 0);
    return bytes;
}

/// AES in OCB mode (RFC 7253), which encrypts and authenticates at once; the place is the nonce.
class OcbChunks final : public ChunkCipher
{
public:
    OcbChunks(const Algorithm& algorithm, ByteView fileKey, std::uint32_t chunkSize)
        : keys_(algorithm, fileKey, chunkSize, algorithm.keySize),
          cipher_(openCipher(algorithm.cipher, GCRY_CIPHER_MODE_OCB))
    {
    }

    std::size_t tagSize() const override { return OcbTagSize; }

    void seal(ChunkPlace place, ByteView plain, std::span<std::uint8_t> sealed) override
    {
        prepare(place);
        checkCrypto(gcry_cipher_encrypt(cipher_.get(), sealed.data(), plain.size(), plain.data(), plain.size()));
        checkCrypto(gcry_cipher_gettag(cipher_.get(), sealed.data() + plain.size(), OcbTagSize));
    }

    bool open(ChunkPlace place, std::span<std::uint8_t> chunk) override
    {
        prepare(place);
        const std::span<std::uint8_t> content = chunk.first(chunk.size() - OcbTagSize);
        checkCrypto(gcry_cipher_decrypt(cipher_.get(), content.data(), content.size(), nullptr, 0));
        const gcry_error_t error = gcry_cipher_checktag(cipher_.get(), chunk.last(OcbTagSize).data(), OcbTagSize);
        if (error == 0)
            return true;
        wipe(chunk);
        if (gcry_err_code(error) != GPG_ERR_CHECKSUM)
            checkCrypto(error);
        return false;
    }

private:
    void prepare(ChunkPlace place)
    {
        if (const auto key = keys_.keyFor(place.index))
            setCipherKey(cipher_, key->bytes());
        const auto nonce = placeBytes(place);
        checkCrypto(gcry_cipher_setiv(cipher_.get(), nonce.data(), nonce.size()));
        // A chunk is given to the cipher in one piece.
        checkCrypto(gcry_cipher_final(cipher_.get()));
    }

    ChunkKeys keys_;
    CipherHandle cipher_;
};

/// Any cipher in counter mode; HMAC-SHA-256 over the place and the encrypted bytes authenticates.
class CounterChunks final : public ChunkCipher
{
public:
    CounterChunks(const Algorithm& algorithm, ByteView fileKey, std::uint32_t chunkSize)
        : algorithm_(algorithm), blocksPerChunk_(chunkSize / algorithm.blockSize),
          keys_(algorithm, fileKey, chunkSize, algorithm.keySize + MacKeySize),
          cipher_(openCipher(algorithm.cipher, GCRY_CIPHER_MODE_CTR))
    {
        // The S-box of RFC 7836 instead of the library's, which is meant for tests.
        if (algorithm.cipher == GCRY_CIPHER_GOST28147)
            checkCrypto(gcry_cipher_ctl(cipher_.get(), GCRYCTL_SET_SBOX, const_cast<char*>(GostSbox), 0));
    }

    std::size_t tagSize() const override { return DigestSize; }

    void seal(ChunkPlace place, ByteView plain, std::span<std::uint8_t> sealed) override
    {
        prepare(place);
        const std::span<std::uint8_t> content = sealed.first(plain.size());
        checkCrypto(gcry_cipher_encrypt(cipher_.get(), content.data(), content.size(), plain.data(), plain.size()));
        const Digest tag = tagOf(place, content);
        std::copy(tag.begin(), tag.end(), sealed.begin() + static_cast<std::ptrdiff_t>(plain.size()));
    }

    bool open(ChunkPlace place, std::span<std::uint8_t> chunk) override
    {
        prepare(place);
        const std::span<std::uint8_t> content = chunk.first(chunk.size() - DigestSize);
        if (!sameSecret(tagOf(place, content), chunk.last(DigestSize)))
        {
            wipe(chunk);
            return false;
        }
        checkCrypto(gcry_cipher_decrypt(cipher_.get(), content.data(), content.size(), nullptr, 0));
        return true;
    }

private:
    static constexpr const char* GostSbox = "1.2.643.7.1.2.5.1.1";

    void prepare(ChunkPlace place)
    {
        if (const auto key = keys_.keyFor(place.index))
        {
            setCipherKey(cipher_, ByteView(key->bytes()).first(algorithm_.keySize));
            macKey_ = SecureBytes(ByteView(key->bytes()).last(MacKeySize));
        }
        // The counter is one big-endian number; each chunk of a key starts where the one before it ends at the latest.
        std::array<std::uint8_t, 16> counter{};
        std::uint64_t block = keys_.numberInGroup(place.index) * blocksPerChunk_;
        for (std::size_t byte = algorithm_.blockSize; block != 0; block >>= 8)
            counter[--byte] = static_cast<std::uint8_t>(block);
        checkCrypto(gcry_cipher_setctr(cipher_.get(), counter.data(), algorithm_.blockSize));
    }

    Digest tagOf(ChunkPlace place, ByteView content) const
    {
        const auto where = placeBytes(place);
        return hmacSha256(macKey_.bytes(), {where, content});
    }

    const Algorithm& algorithm_;
    std::uint64_t blocksPerChunk_;
    ChunkKeys keys_;
    CipherHandle cipher_;
    SecureBytes macKey_;
};

bool hasOcb(const Algorithm& algorithm)
{
    return algorithm.cipher == GCRY_CIPHER_AES256;
}

} // namespace

std::unique_ptr<ChunkCipher> createChunkCipher(const Algorithm& algorithm, ByteView fileKey, std::uint32_t chunkSize)
{
    if (hasOcb(algorithm))
        return std::make_unique<OcbChunks>(algorithm, fileKey, chunkSize);
    return std::make_unique<CounterChunks>(algorithm, fileKey, chunkSize);
}

std::size_t chunkTagSize(const Algorithm& algorithm)
{
    return hasOcb(algorithm) ? OcbTagSize : DigestSize;
}

} // namespace VaultCore
