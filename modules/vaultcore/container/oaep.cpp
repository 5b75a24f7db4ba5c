#include "vaultcore/container/oaep.h"

#include "vaultcore/container/crypto.h"

#include <functional>

namespace VaultCore
{
namespace
{

/// Adds to `target` the bytes that the mask function makes of `seed`. Done twice it is undone.
void mask(std::span<std::uint8_t> target, ByteView seed)
{
    std::array<std::uint8_t, 4> counter{};
    for (std::uint32_t number = 0; !target.empty(); ++number)
    {
        for (std::size_t byte = 0; byte < counter.size(); ++byte)
            counter[byte] = static_cast<std::uint8_t>(number >> (24 - 8 * byte));
        Digest digest = sha256(seed, counter);
        const std::span<std::uint8_t> part = target.first(std::min(target.size(), digest.size()));
        std::transform(part.begin(), part.end(), digest.begin(), part.begin(), std::bit_xor<>());
        target = target.subspan(part.size());
        wipe(digest);
    }
}

Digest digestOf(std::string_view label)
{
    return sha256(ByteView(reinterpret_cast<const std::uint8_t*>(label.data()), label.size()));
}

} // namespace

SecureBytes padForRsa(const SecureBytes& secret, std::string_view label, std::size_t size)
{
    if (size < 2 * DigestSize + 2 || secret.size() > size - 2 * DigestSize - 2)
        checkCrypto(gcry_error(GPG_ERR_TOO_LARGE));
    // A zero, the seed, and the data: digest of the label, zeros, a one, the secret.
    SecureBytes block(size);
    const std::span<std::uint8_t> seed = block.bytes().subspan(1, DigestSize);
    const std::span<std::uint8_t> data = block.bytes().subspan(1 + DigestSize);
    fillRandom(seed);
    const Digest labelDigest = digestOf(label);
    std::copy(labelDigest.begin(), labelDigest.end(), data.begin());
    const std::span<std::uint8_t> tail = data.last(secret.size() + 1);
    tail.front() = 1;
    std::copy(secret.bytes().begin(), secret.bytes().end(), tail.begin() + 1);
    mask(data, seed);
    mask(seed, data);
    return block;
}

std::optional<SecureBytes> unpadFromRsa(const SecureBytes& block, std::string_view label)
{
    if (block.size() < 2 * DigestSize + 2)
        return std::nullopt;
    SecureBytes open = block.copy();
    const std::span<std::uint8_t> seed = open.bytes().subspan(1, DigestSize);
    const std::span<std::uint8_t> data = open.bytes().subspan(1 + DigestSize);
    mask(seed, data);
    mask(data, seed);
    // All of it is looked at before anything is told, so that the answer tells nothing of where it went wrong.
    bool genuine = sameSecret(data.first(DigestSize), digestOf(label));
    genuine = (open.bytes().front() == 0) & genuine;
    std::size_t start = 0;
    for (std::size_t index = DigestSize; index < data.size(); ++index)
    {
        const bool before = start == 0;
        genuine = (!before | (data[index] <= 1)) & genuine;
        start = before & (data[index] == 1) ? index + 1 : start;
    }
    if (!genuine || start == 0)
        return std::nullopt;
    return SecureBytes(data.subspan(start));
}

} // namespace VaultCore
