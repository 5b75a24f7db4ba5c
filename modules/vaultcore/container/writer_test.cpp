#include "vaultcore/container/details.h"
#include "vaultcore/container/head.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_rsa.h"

#include <limits>
#include <stdexcept>

namespace VaultCore
{
namespace
{

constexpr std::uint64_t Greatest = std::numeric_limits<std::uint64_t>::max();

std::unique_ptr<EncryptionSession> newSession()
{
    return startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
}

TEST(ContainerWriter, refusesMoreThanWasAnnounced)
{
    MemorySink sink;
    const auto writer = newSession()->begin(sink, "", detailsOf(10));
    writer->write(contentOf(6));
    EXPECT_EQ(faultOf([&] { writer->write(contentOf(5)); }), ContainerFault::WrongSize);
}

TEST(ContainerWriter, refusesToEndWithLessThanWasAnnounced)
{
    MemorySink sink;
    const auto writer = newSession()->begin(sink, "", detailsOf(10));
    writer->write(contentOf(9));
    EXPECT_EQ(faultOf([&] { writer->finish(); }), ContainerFault::WrongSize);
}

TEST(ContainerWriter, leavesNoReadableContainerWithoutItsEnd)
{
    for (const std::size_t size : {std::size_t{10}, std::size_t{4096}, std::size_t{8192}})
    {
        MemorySink sink;
        const auto writer = newSession()->begin(sink, "", detailsOf(size));
        writer->write(contentOf(size));
        EXPECT_EQ(faultOf([&] { unseal(sink.bytes, *symmetricKey()); }), ContainerFault::Damaged) << size;
    }
}

TEST(ContainerWriter, endsOnce)
{
    MemorySink sink;
    const auto writer = newSession()->begin(sink, "", detailsOf(0));
    writer->finish();
    EXPECT_TRUE(faultOf([&] { writer->finish(); }));
    EXPECT_TRUE(faultOf([&] { writer->write({}); }));
    EXPECT_TRUE(unseal(sink.bytes, *symmetricKey()).empty());
}

class FailingSink final : public IByteSink
{
public:
    void write(ByteView) override
    {
        if (fails)
            throw std::runtime_error("full");
    }
    bool fails = false;
};

TEST(ContainerWriter, passesOnWhatTheSinkThrowsAndGoesNoFurther)
{
    FailingSink sink;
    const auto writer = newSession()->begin(sink, "", detailsOf(3 * 4096));
    sink.fails = true;
    EXPECT_THROW(writer->write(contentOf(2 * 4096)), std::runtime_error);
    sink.fails = false;
    EXPECT_EQ(faultOf([&] { writer->write(contentOf(4096)); }), ContainerFault::Damaged);
    EXPECT_EQ(faultOf([&] { writer->finish(); }), ContainerFault::Damaged);
}

TEST(ContainerWriter, takesSizesUpToTheGreatest)
{
    for (const std::uint64_t size : {Greatest, Greatest - 1, std::uint64_t{1} << 63})
    {
        MemorySink sink;
        const auto writer = newSession()->begin(sink, "", detailsOf(size));
        writer->write(contentOf(2 * 4096));
        EXPECT_EQ(faultOf([&] { writer->finish(); }), ContainerFault::WrongSize);

        MemorySource source(sink.bytes);
        const auto reader = openContainer(source);
        ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
        EXPECT_EQ(reader->details().size, size);
        EXPECT_EQ(reader->read().size(), 4096u);
        EXPECT_EQ(faultOf([&] { reader->read(); }), ContainerFault::Damaged);
    }
}

TEST(ContainerWriter, takesTextsUpToTheirLimits)
{
    const auto session = newSession();
    MemorySink sink;
    ContainerDetails details;
    details.extraText.assign(LargestDetails - 32, 'x');
    session->begin(sink, std::string(LargestRiddle, 'r'), details)->finish();
    MemorySource source(sink.bytes);
    const auto reader = openContainer(source);
    EXPECT_EQ(reader->riddle().size(), LargestRiddle);
    ASSERT_TRUE(reader->unlock(*symmetricKey(), *createDerivationCache()));
    EXPECT_EQ(reader->details().extraText, details.extraText);
}

TEST(ContainerWriter, refusesTextsBeyondTheirLimits)
{
    const auto session = newSession();
    MemorySink sink;
    const auto begin = [&](const std::string& riddle, const ContainerDetails& details)
    { return faultOf([&] { session->begin(sink, riddle, details); }); };
    EXPECT_EQ(begin(std::string(LargestRiddle + 1, 'r'), {}), ContainerFault::AbsurdParameters);
    ContainerDetails details;
    details.name.assign(LargestDetails - 31, 'x');
    EXPECT_EQ(begin("", details), ContainerFault::AbsurdParameters);
    details.name.assign(LargestDetails + 1, 'x');
    EXPECT_EQ(begin("", details), ContainerFault::AbsurdParameters);
    EXPECT_TRUE(sink.bytes.empty());
}

TEST(ContainerWriter, doesNotTellTheLengthOfAShortName)
{
    const auto session = newSession();
    const auto sizeWith = [&](const std::string& name)
    {
        MemorySink sink;
        ContainerDetails details;
        details.name = name;
        session->begin(sink, "", details)->finish();
        return sink.bytes.size();
    };
    EXPECT_EQ(sizeWith("a"), sizeWith("a rather long name.txt"));
}

TEST(EncryptionSession, outlivesTheKeyAndIsOutlivedByItsWriters)
{
    MemorySink sink;
    auto key = createPasswordKey(L"swordfish");
    auto session = startEncryptionWith(*key, Aes256, cheapParameters());
    key.reset();
    const auto writer = session->begin(sink, "", detailsOf(5));
    session.reset();
    writer->write(contentOf(5));
    writer->finish();
    EXPECT_EQ(unseal(sink.bytes, *createPasswordKey(L"swordfish")), contentOf(5));
}

TEST(StartEncryption, takesTheUsualParameters)
{
    EXPECT_EQ(usualParameters().argon2, UsualArgon2);
    const WritingParameters before = usualParameters();
    usualParameters() = cheapParameters();
    const auto session = startEncryption(*createPasswordKey(L"swordfish"), Aes256);
    usualParameters() = before;
    const Bytes container = sealWith(*session, contentOf(5));
    MemorySource source(container);
    EXPECT_EQ(readHead(source).head.slots.at(0).argon2, CheapArgon2);
}

TEST(Argon2Parameters, haveLimits)
{
    EXPECT_TRUE(withinLimits(UsualArgon2));
    EXPECT_TRUE(withinLimits(LargestArgon2));
    EXPECT_TRUE(withinLimits({8, 1, 1}));
    EXPECT_FALSE(withinLimits({7, 1, 1}));
    EXPECT_FALSE(withinLimits({31, 1, 4}));
    EXPECT_FALSE(withinLimits({64, 0, 1}));
    EXPECT_FALSE(withinLimits({64, 1, 0}));
}

TEST(DerivationCache, derivesOnceForAKeyAndItsSalt)
{
    const auto cache = createDerivationCache();
    int derivations = 0;
    const auto derive = [&]
    {
        ++derivations;
        return SecureBytes(Bytes{static_cast<std::uint8_t>(derivations)});
    };
    const auto remember = [&](const wchar_t* password, const Bytes& salt)
    { return cache->remember(*createPasswordKey(password), salt, derive).bytes()[0]; };
    EXPECT_EQ(remember(L"a", {1}), 1);
    EXPECT_EQ(remember(L"a", {1}), 1);
    EXPECT_EQ(remember(L"b", {1}), 2);
    EXPECT_EQ(remember(L"a", {2}), 3);
    EXPECT_EQ(remember(L"a", {1}), 1);
    EXPECT_EQ(derivations, 3);
}

TEST(DerivationCache, tellsKeyPairsApart)
{
    const auto cache = createDerivationCache();
    const Bytes salt{1};
    cache->remember(*rsaKey(KeyTypeRsaPair), salt, [] { return SecureBytes(Bytes{1}); });
    EXPECT_EQ(cache->remember(*otherRsaKey(), salt, [] { return SecureBytes(Bytes{2}); }).bytes()[0], 2);
    EXPECT_EQ(cache->remember(*rsaKey(KeyTypeRsaPair), salt, [] { return SecureBytes(Bytes{3}); }).bytes()[0], 1);
}

TEST(DerivationCache, forgetsTheOldestOfVeryMany)
{
    const auto cache = createDerivationCache();
    const auto key = symmetricKey();
    int derivations = 0;
    const auto remember = [&](std::uint8_t salt)
    {
        cache->remember(*key, Bytes{salt},
                        [&]
                        {
                            ++derivations;
                            return SecureBytes(std::size_t{1});
                        });
    };
    for (std::uint8_t salt = 0; salt <= 64; ++salt)
        remember(salt);
    remember(64);
    EXPECT_EQ(derivations, 65);
    remember(0);
    EXPECT_EQ(derivations, 66);
}

TEST(DerivationCache, keepsNothingOfADerivationThatFailed)
{
    const auto cache = createDerivationCache();
    const auto key = symmetricKey();
    EXPECT_THROW(cache->remember(*key, {}, []() -> SecureBytes { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_EQ(cache->remember(*key, {}, [] { return SecureBytes(Bytes{5}); }).bytes()[0], 5);
}

} // namespace
} // namespace VaultCore
