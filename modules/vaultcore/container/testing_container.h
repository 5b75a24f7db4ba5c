#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/container.h"
#include "vaultcore/container/key_material.h"
#include "vaultcore/container/writer.h"

#include <gtest/gtest.h>
#include <numeric>

// What the tests of the containers share: bytes in memory, cheap parameters, keys.

namespace VaultCore
{

/// Cheap enough for many derivations.
inline constexpr Argon2Parameters CheapArgon2{64, 1, 1};
inline constexpr std::uint32_t Aes256 = 3;
inline constexpr std::array<std::uint32_t, 7> AvailableAlgorithms{1, 2, 3, 4, 9, 14, 16};

class MemorySink final : public IByteSink
{
public:
    void write(ByteView more) override { bytes.insert(bytes.end(), more.begin(), more.end()); }
    Bytes bytes;
};

class MemorySource final : public IByteSource
{
public:
    explicit MemorySource(ByteView bytes) : left_(bytes) {}
    std::size_t read(std::span<std::uint8_t> out) override
    {
        const std::size_t size = std::min(out.size(), left_.size());
        std::copy_n(left_.begin(), size, out.begin());
        left_ = left_.subspan(size);
        return size;
    }

private:
    ByteView left_;
};

/// Bytes that repeat only after a long way.
inline Bytes contentOf(std::size_t size)
{
    Bytes bytes(size);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : bytes)
    {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

inline ContainerDetails detailsOf(std::uint64_t size)
{
    return {"report.txt", size, 132539328000000000, 132539000000000000, "for nobody else"};
}

inline WritingParameters cheapParameters(std::uint32_t chunkSize = 4096)
{
    return {CheapArgon2, chunkSize};
}

inline Bytes sealWith(EncryptionSession& session, ByteView content, const std::string& riddle = "riddle")
{
    MemorySink sink;
    const auto writer = session.begin(sink, riddle, detailsOf(content.size()));
    writer->write(content);
    writer->finish();
    return sink.bytes;
}

inline Bytes seal(const Key& key, std::uint32_t algorithm, ByteView content, std::uint32_t chunkSize = 4096)
{
    return sealWith(*startEncryptionWith(key, algorithm, cheapParameters(chunkSize)), content);
}

/// The whole content of a container. Throws `WrongKey` for a key that does not fit.
inline Bytes unseal(ByteView container, const Key& key, DerivationCache& cache)
{
    MemorySource source(container);
    const auto reader = openContainer(source);
    if (!reader->unlock(key, cache))
        throw ContainerFailure{ContainerFault::WrongKey, L""};
    Bytes content;
    for (ByteView piece = reader->read(); !piece.empty(); piece = reader->read())
        content.insert(content.end(), piece.begin(), piece.end());
    return content;
}

inline Bytes unseal(ByteView container, const Key& key)
{
    return unseal(container, key, *createDerivationCache());
}

inline std::unique_ptr<Key> symmetricKey(std::uint8_t first = 0)
{
    Bytes bytes(32);
    std::iota(bytes.begin(), bytes.end(), first);
    KeyMaterial material;
    material.type = KeyTypeSymmetric;
    material.secret = SecureBytes(bytes);
    return createKey(std::move(material));
}

/// What is thrown by an action, or nothing.
template <class Action> std::optional<ContainerFailure> failureOf(Action action)
{
    try
    {
        action();
    }
    catch (const ContainerFailure& failure)
    {
        return failure;
    }
    return std::nullopt;
}

template <class Action> std::optional<ContainerFault> faultOf(Action action)
{
    const auto failure = failureOf(action);
    return failure ? std::optional(failure->fault) : std::nullopt;
}

} // namespace VaultCore
