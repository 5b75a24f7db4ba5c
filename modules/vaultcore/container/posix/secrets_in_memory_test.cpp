#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_folder.h"
#include "vaultcore/container/testing_rsa.h"
#include "vaultcore/encryption_job.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

// What is left of secrets and content in memory that is used for other things afterwards.

namespace VaultCore
{
namespace
{

/// A text that stands in memory only where a test has put it: it is kept in another form.
class Pattern
{
public:
    static constexpr std::size_t Size = 48;

    /// Each number gives another one, and none of them is a part of another.
    explicit Pattern(std::uint32_t number)
    {
        std::uint32_t state = number;
        for (std::uint8_t& byte : masked_)
        {
            state = state * 1664525 + 1013904223;
            byte = static_cast<std::uint8_t>(('A' + (state >> 24) % 26) ^ Mask);
        }
    }

    void putInto(std::span<std::uint8_t> out) const
    {
        for (std::size_t index = 0; index < out.size(); ++index)
            out[index] = masked_[index % Size] ^ Mask;
    }
    std::wstring text() const
    {
        std::wstring text(Size, L' ');
        std::transform(masked_.begin(), masked_.end(), text.begin(),
                       [](std::uint8_t byte) { return static_cast<wchar_t>(byte ^ Mask); });
        return text;
    }
    /// Are its bytes from the 16th to the 32nd where they would be? Freed memory is used for notes before them.
    bool isAt(const std::uint8_t* at) const
    {
        for (std::size_t index = 16; index < 32; ++index)
            if ((at[index] ^ Mask) != masked_[index])
                return false;
        return true;
    }

private:
    static constexpr std::uint8_t Mask = 0x5A;
    std::array<std::uint8_t, Size> masked_{};
};

/// How often the heap holds the pattern.
std::size_t onTheHeap(const Pattern& pattern)
{
    std::size_t count = 0;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
    {
        if (!line.ends_with("[heap]"))
            continue;
        std::size_t dash = 0;
        const auto* begin = reinterpret_cast<const std::uint8_t*>(std::stoull(line, &dash, 16));
        const auto* end = reinterpret_cast<const std::uint8_t*>(std::stoull(line.substr(dash + 1), nullptr, 16));
        for (; begin + Pattern::Size <= end; ++begin)
            count += pattern.isAt(begin) ? 1U : 0U;
    }
    return count;
}

class SecretsInMemory : public InFolder
{
protected:
    SecretsInMemory()
    {
        // The search finds what is there, or it would prove nothing.
        const Pattern known(1);
        auto room = std::make_unique<std::uint8_t[]>(Pattern::Size);
        known.putInto({room.get(), Pattern::Size});
        found_ = onTheHeap(known) > 0;
        wipe({room.get(), Pattern::Size});
    }
    void SetUp() override
    {
        if (!found_)
            GTEST_SKIP() << "the memory cannot be searched here";
    }

private:
    bool found_ = false;
};

TEST_F(SecretsInMemory, aPasswordIsNowhereOnTheHeap)
{
    const Pattern pattern(2);
    std::wstring text = pattern.text();
    const auto key = createPasswordKey(text);
    const Bytes container = seal(*key, Aes256, contentOf(10));
    EXPECT_EQ(unseal(container, *key->clone()), contentOf(10));
    EXPECT_EQ(onTheHeap(pattern), 0U);
}

TEST_F(SecretsInMemory, aSlotKeyThatRsaSealsAndOpensIsNowhereOnTheHeap)
{
    const Pattern pattern(3);
    SecureBytes secret(Pattern::Size);
    pattern.putInto(secret.bytes());
    const auto opened = openWithRsa(rsaPair().rsa, sealWithRsa(rsaPair().rsa, secret));
    ASSERT_TRUE(opened);
    EXPECT_TRUE(sameSecret(opened->bytes(), secret.bytes()));
    EXPECT_EQ(onTheHeap(pattern), 0U);
}

TEST_F(SecretsInMemory, aKeyFromAFileIsNowhereOnTheHeap)
{
    const Pattern pattern(4);
    KeyMaterial material;
    material.type = KeyTypeSymmetric;
    material.secret = SecureBytes(std::size_t{32});
    pattern.putInto(material.secret.bytes());
    const auto key = createKey(std::move(material));
    for (const std::uint32_t algorithm : AvailableAlgorithms)
        EXPECT_EQ(unseal(seal(*key, algorithm, contentOf(10)), *key), contentOf(10));
    EXPECT_EQ(onTheHeap(pattern), 0U);
}

TEST_F(SecretsInMemory, theContentOfAnEncryptedFileIsNowhereOnTheHeap)
{
    const Pattern pattern(5);
    const std::filesystem::path source = folder / "a";
    {
        std::array<std::uint8_t, 10 * Pattern::Size> room{};
        pattern.putInto(room);
        const int file = ::open(source.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        ASSERT_GE(file, 0);
        EXPECT_EQ(::write(file, room.data(), room.size()), static_cast<ssize_t>(room.size()));
        ::close(file);
        wipe(room);
    }
    const auto files = createFileSystem();
    for (const std::uint32_t algorithm : {Aes256, 16u})
    {
        EncryptionOrder order;
        order.key = symmetricKey();
        order.algorithm = algorithm;
        order.destiny = algorithm == Aes256 ? 0 : 1;
        EncryptionJob(*files, {}, order).run({wideOf(source)});
        ASSERT_TRUE(std::filesystem::exists(folder / "a.zel"));
        EXPECT_EQ(onTheHeap(pattern), 0U) << algorithm;
        std::filesystem::remove(folder / "a.zel");
    }
    EXPECT_FALSE(std::filesystem::exists(source));
}

TEST_F(SecretsInMemory, whatAContainerIsMadeOfIsNowhereOnTheHeapAfterwards)
{
    const Pattern pattern(6);
    SecureBytes content(3 * 4096 + 100);
    pattern.putInto(content.bytes());
    for (const std::uint32_t algorithm : {Aes256, 16u})
    {
        MemorySink sink;
        const auto session = startEncryptionWith(*symmetricKey(), algorithm, cheapParameters());
        {
            const auto writer = session->begin(sink, "", detailsOf(content.size()));
            writer->write(content.bytes().first(1000));
            writer->write(content.bytes().subspan(1000));
            writer->finish();
        }
        EXPECT_EQ(onTheHeap(pattern), 0U);
        {
            MemorySource source(sink.bytes);
            const auto reader = openContainer(source);
            ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
            while (!reader->read().empty())
                continue;
        }
        EXPECT_EQ(onTheHeap(pattern), 0U);
    }
}

} // namespace
} // namespace VaultCore
