#pragma once

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_rsa.h"

// Where the parts of a container lie, and what the tests do to them.

namespace VaultCore
{

inline constexpr std::uint32_t Chunk = 4096;
inline constexpr std::size_t ContentSize = 3 * Chunk + 100;
inline constexpr std::size_t ChecksumSize = 16;
inline constexpr std::size_t AesTag = 16;

// Where the parts of a head with the riddle "riddle" and one slot lie.
inline constexpr std::size_t VersionAt = 8;
inline constexpr std::size_t AlgorithmAt = 10;
inline constexpr std::size_t ChunkSizeAt = 12;
inline constexpr std::size_t DetailsSizeAt = 16;
inline constexpr std::size_t RiddleSizeAt = 20;
inline constexpr std::size_t SlotsSizeAt = 24;
inline constexpr std::size_t RiddleAt = 28;
inline constexpr std::size_t SlotAt = RiddleAt + 6;
inline constexpr std::size_t SaltAt = SlotAt + 4;
inline constexpr std::size_t CheckAt = SaltAt + 32;
inline constexpr std::size_t NonceAt = CheckAt + 16;
inline constexpr std::size_t WrappedAt = NonceAt + 12;
inline constexpr std::size_t WrapTagAt = WrappedAt + 32;
inline constexpr std::size_t KindPartAt = WrapTagAt + 16;

enum class KeyKind
{
    Password,
    Symmetric,
    Rsa,
};

inline std::size_t slotEnd(KeyKind kind)
{
    switch (kind)
    {
    case KeyKind::Password:
        return KindPartAt + 12;
    case KeyKind::Rsa:
        return KindPartAt + 16 + RsaSmallModulus;
    case KeyKind::Symmetric:
        break;
    }
    return KindPartAt;
}

inline std::size_t detailsAt(KeyKind kind)
{
    return slotEnd(kind) + ChecksumSize + DigestSize;
}

/// Sizes of the chunks behind the head of an AES container of `ContentSize` bytes.
inline constexpr std::size_t DetailsChunk = 256 + AesTag;
inline constexpr std::size_t FullChunk = Chunk + AesTag;

inline std::unique_ptr<Key> keyOf(KeyKind kind)
{
    switch (kind)
    {
    case KeyKind::Password:
        return createPasswordKey(L"swordfish");
    case KeyKind::Rsa:
        return rsaKey(KeyTypeRsaPair);
    case KeyKind::Symmetric:
        break;
    }
    return symmetricKey();
}

/// What becomes of an attempt to read a container to its end.
struct Reading
{
    std::optional<ContainerFault> fault;
    /// What was handed out before.
    Bytes content;
};

inline Reading readAll(ByteView container, const Key& key, DerivationCache& cache)
{
    Reading reading;
    reading.fault = faultOf(
        [&]
        {
            MemorySource source(container);
            const auto reader = openContainer(source);
            if (!reader->unlock(key, cache))
                throw ContainerFailure{ContainerFault::WrongKey, L""};
            for (ByteView piece = reader->read(); !piece.empty(); piece = reader->read())
                reading.content.insert(reading.content.end(), piece.begin(), piece.end());
        });
    return reading;
}

/// What was handed out has to be the beginning of what was sealed, whatever was done to the rest.
inline void expectGenuineBeginning(const Bytes& handedOut, const Bytes& content)
{
    ASSERT_LE(handedOut.size(), content.size());
    EXPECT_TRUE(std::equal(handedOut.begin(), handedOut.end(), content.begin()));
}

/// The head's checksum made fit again, as by someone who knows the format and not the key.
inline Bytes withChecksum(Bytes container, std::size_t end)
{
    const Digest digest = sha256(ByteView(container).first(end));
    std::copy_n(digest.begin(), ChecksumSize, container.begin() + static_cast<std::ptrdiff_t>(end));
    return container;
}

} // namespace VaultCore
