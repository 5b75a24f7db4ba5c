#include "vaultcore/container/testing_damage.h"

namespace VaultCore
{
namespace
{

/// Puts a container together from the chunks of others.
class Chunks : public testing::TestWithParam<std::uint32_t>
{
protected:
    Chunks() : session_(startEncryptionWith(*key, GetParam(), cheapParameters(Chunk)))
    {
        container = sealWith(*session_, content);
        sibling = sealWith(*session_, content);
    }

    std::size_t tag() const { return GetParam() == Aes256 ? AesTag : DigestSize; }
    Bytes head() const { return part(container, 0, detailsAt(KeyKind::Symmetric)); }
    /// 0 is the details, 4 the last.
    Bytes chunk(const Bytes& from, std::size_t number) const
    {
        const std::size_t start = detailsAt(KeyKind::Symmetric);
        if (number == 0)
            return part(from, start, 256 + tag());
        const std::size_t at = start + 256 + tag() + (number - 1) * (Chunk + tag());
        return part(from, at, std::min(Chunk + tag(), from.size() - at));
    }
    Bytes built(const std::vector<Bytes>& parts) const
    {
        Bytes all = head();
        for (const Bytes& bytes : parts)
            all.insert(all.end(), bytes.begin(), bytes.end());
        return all;
    }
    void expectDamaged(const Bytes& changed)
    {
        const Reading reading = readAll(changed, *key, *cache);
        EXPECT_EQ(reading.fault, ContainerFault::Damaged);
        expectGenuineBeginning(reading.content, content);
    }

    const std::unique_ptr<Key> key = symmetricKey();
    const std::unique_ptr<DerivationCache> cache = createDerivationCache();
    const Bytes content = contentOf(ContentSize);
    Bytes container;
    Bytes sibling;

private:
    static Bytes part(const Bytes& from, std::size_t at, std::size_t size)
    {
        const auto begin = from.begin() + static_cast<std::ptrdiff_t>(at);
        return {begin, begin + static_cast<std::ptrdiff_t>(size)};
    }
    std::unique_ptr<EncryptionSession> session_;
};

TEST_P(Chunks, ofTheContainerItselfMakeItWholeAgain)
{
    const auto own = [this](std::size_t number) { return chunk(container, number); };
    const Bytes whole = built({own(0), own(1), own(2), own(3), own(4)});
    EXPECT_EQ(whole, container);
    EXPECT_EQ(readAll(whole, *key, *cache).content, content);
}

TEST_P(Chunks, areRefusedWhenSwappedRepeatedOrDropped)
{
    const auto own = [this](std::size_t number) { return chunk(container, number); };
    expectDamaged(built({own(0), own(2), own(1), own(3), own(4)}));
    expectDamaged(built({own(0), own(1), own(3), own(2), own(4)}));
    expectDamaged(built({own(0), own(1), own(1), own(3), own(4)}));
    expectDamaged(built({own(0), own(1), own(2), own(3), own(3), own(4)}));
    expectDamaged(built({own(0), own(2), own(3), own(4)}));
    expectDamaged(built({own(0), own(1), own(3), own(4)}));
    expectDamaged(built({own(0), own(1), own(2), own(4)}));
    expectDamaged(built({own(1), own(2), own(3), own(4)}));
    expectDamaged(built({own(0), own(1), own(2), own(3), own(4), own(4)}));
}

TEST_P(Chunks, areRefusedWhenTheContainerEndsBetweenThem)
{
    std::vector<Bytes> parts;
    for (std::size_t number = 0; number < 4; ++number)
    {
        expectDamaged(built(parts));
        parts.push_back(chunk(container, number));
    }
    expectDamaged(built(parts));
}

TEST_P(Chunks, ofASiblingOfTheSameJobAreRefused)
{
    for (std::size_t foreign = 0; foreign < 5; ++foreign)
    {
        std::vector<Bytes> parts;
        for (std::size_t number = 0; number < 5; ++number)
            parts.push_back(chunk(number == foreign ? sibling : container, number));
        expectDamaged(built(parts));
    }
}

TEST_P(Chunks, doNotFollowTheHeadOfASibling)
{
    Bytes changed = sibling;
    const Bytes own = head();
    std::copy(own.begin(), own.end(), changed.begin());
    expectDamaged(changed);
}

INSTANTIATE_TEST_SUITE_P(DamagedContainer, Chunks, testing::Values(Aes256, 2u, 16u));

} // namespace
} // namespace VaultCore
