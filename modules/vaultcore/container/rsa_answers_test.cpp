#include "vaultcore/container/crypto.h"
#include "vaultcore/container/oaep.h"
#include "vaultcore/container/rsa.h"
#include "vaultcore/container/testing_hex.h"
#include "vaultcore/file_failure.h"

#include <gtest/gtest.h>

#include <utility>

namespace VaultCore
{
namespace
{

// The key of Wycheproof's rsa_oaep_3072_sha256_mgf1sha256 and the answer of its test 7, without a label.
constexpr std::string_view Modulus =
    "c6fe23792566023c265287c5ac6f71541c0994d11d059ee6403986efa21c24b51bd91d8862f9df79a4e328e3e27c83df260b25a9b43420af"
    "fc44b51e8d7525b6f29c372a405104732007527a62ed82fac73f4892a80e09682a41a58cd347017f3be7d801334f92d9321aafd53b51bffa"
    "bfc752cfccae0b1ee03bdaff9e428cc1c117f1ac96b4fe23f8c23e6381186a66fd59289339ae55c4bcdadbff84abdaa532240d4e1d28b2d0"
    "481dadd3b246557ca8fe18092817730b39e6ee378ffcc85b19ffdc916a9b991a6b66d4a9c7bab5f5e7a3722101142e7a4108c15d573b1528"
    "9e07e46eaea07b42c2abcba330e99554b4656165bb4c0db2b6393a07eca575c51a93c4e15bdb0f747909447e3efe34c67ca8954b530e56a2"
    "0a1b6d84d45ed1bcd3aa58ec06f184ee5857aaa819e1cca9a26f4e28d6b977d33916db9896d252d1afa762e287cb0d384cc75bfe53f4e922"
    "d02dd0a481c042e2d306b4b3c189371e575b25e0005a164cf69dd0976e4d5be476806ea6be6084e71ab4f5ac5c1b1203";
constexpr std::string_view PrivateExponent =
    "72ac6bb6d9a5726e454b5430c71125c6e9ad5fd42e1c5a18a8343e9d83d72214386b2308c0b8ec5ec6759dcfcd6a21f88b8ceaf46403923e"
    "b86ac3d14a8592e95de0462e14085c3f17db005dc4fac87b4a2d1ede5cf851d5745c8651a4438c0a4d746ad72e419207964728c301bf379a"
    "01c094e9693376f721137d3dc76ee47c9790fbd590b7d6a8d626e21b277ef17a4e4f7e0171c1146e1ec324fa97f30d3a1bae08f8d5f6e92c"
    "fc121665239c429167359e9650434b29d2015190356adfee12f25b341b08f12b7fec6379598af7d5cc24fe7f00de1d47133ce3ad8b6be1c9"
    "a854e33fb952e164ac6dd2a9052186ee144ee7dd986a8f03891d0da21ed78516dcdc2ac89cdddc8b544731d66f9d89bf17a50c6d987a598b"
    "02c938dc36521b881ea994e4c8fb2ba8fd001f73335d4dd1bdbe177d3093cf3883657c9ff944e8f5c9cde548b7c1b0741929b0d74977ecda"
    "694d940aefd9d2fc75323e0b3a114b99feaf3e2518f5158d1fd9d953aa20af158e67d27e2ce2f18d97fd02f369981979";
constexpr std::string_view Prime1 =
    "f5eca16e0e83696b0ed9ac8a812545daba55f20a964c4e6343604a7f2be2860fce9fa16a1cc92120939deb88dff68550383ead851fac07ad"
    "1b2e8a9b2bb69525d96ceabb7ee83ce50f08d649107f449a14521a6893f3f3c5c5a703b2fc28bfcfe261a4f7f450558080deaeaab651c7a9"
    "ae586c1e7f5c52cda93e40aac908e4e3357984fc116af9cbe9539bc7a8d3b351a73ea5c2413d1da2e0b448b454670aca89ffe73b1401e9b8"
    "554fc3f23d6c904623251a1d29962ca9b26d973345bc4c5f";
constexpr std::string_view Prime2 =
    "cf25446f59cf512919ddbfcfa2d9670495ad92b6f295d61032057f9da6dbefc4510a623c2b47a5220082a3bc42af1a144f98c9ee4fdae41b"
    "e0ec501ccc94b2b0640191099b355611160deb327e8ace018b898025ef470e4373ec1d97f669e298e1d845c6553c0a546ccb168d5b510dbe"
    "6018fd4ed9a3545f9bdb81968f4a6d7c790e5c34729a8efb496086fa1300249ab8b28f38951d7bee1c127ac3c4d0bd596edee1e9d17781db"
    "b8227d7b5d76ce8b8bce03c5d339b9757981610848c55cdd";
constexpr std::string_view SealedWithoutLabel =
    "0351794ac968e26863bfa67aa4d602c725b79ca9a4cd907a9e03c7575b975bfd99fa491b5bc3f93e1eac5b48d95090e10a29d9e4edce709c"
    "74886ee2d5067bcabab044e239cb4c23e1ffa8a8666fbdc706ecf49225697fb6f1a095e20dcca49090548d9fd0b8533b090823a76ce6c8c8"
    "a139a20b3e930a8d2ef8d868fd92c086c06a86c172e40e76f9920a6de6ab2fbff2cbe029b685dbc20da94e84442050b0128200446bf227ec"
    "a935e1bfa8c89ec3454ea3a82cc792a2512d8513f2ddaf172e35e735ad69a5f892ad0c216e84ea9e92129d8272db269173cbc525e61fdfa5"
    "533e2e69a4670ed95f4958c684476c208002667fc7f687260eb54d9cea88bbfeb7b6d7aa640cf0ad0af22ecae17034c762bf832a9e8ef090"
    "926c5ad4fe6a15b6e5ef69da001bb7fbc608bc024bcf38e157dbb57974169bdf302ec177e48d15a1d0c919d9b8862cd91d454a96df1c7205"
    "61928e282b9e922d0d8218d65b74bb740cb7cf7455e97a5e6bba07424382c31c37549d7f29bf7e2e23093ee861dce0ef";

/// The bytes 0 to 31 with the label of the containers, sealed by OpenSSL 3.0.
constexpr std::string_view SealedElsewhere =
    "44a089926be32d06da75b0e099dc70386f4d615308537c837edc0536a4aacf17859ac7dc6ad711cf855b38504cf6a68faedefeb2cc177297"
    "03cc11c7b342e982105522f563dd1626cd31ef670d202ae9865fbedfe18224c45ede0775684dc5ef0a62219d1b68a26d3735bb69e8bc25de"
    "c621d9595fc2bdf7e852bbd80260fd35944e416201daf222db9ac8ba87f6063602db8c41996f3ff42be27358d3511743383dc4b6207b0e7a"
    "c664d66a34ba40f04d16a7619d4ffc4d4e0b46b54569323bc47d8155b4946b409b8a2569b358215ce3a254ef252574b2b026c50890b086bb"
    "8ce0c98a081a31b93d06d4d87fec040bda29f0087dc6d83ef49c34aeec6d8ba3fe702b4fa194d5e2c0e1644b40f1e8476e8634af1f664688"
    "a53db558baed870b1f9816389dbe0284a559c9162b3d27957fc82eb1837c9ba1f8ddef3138322b57ecc5fb7868da49a1d36a977a6d7a124f"
    "36940a1e9d028a7c5b279990167cef9fbacaf744acdeebc9c2f9b97f7e0e89639ba4789af188b1a134050158cb8f28a9";

RsaNumbers numbers()
{
    RsaNumbers rsa;
    rsa.modulus = hex(Modulus);
    rsa.exponent = RsaExponent;
    rsa.privateExponent = SecureBytes(hex(PrivateExponent));
    rsa.prime1 = SecureBytes(hex(Prime1));
    rsa.prime2 = SecureBytes(hex(Prime2));
    return rsa;
}

Bytes firstBytes(std::uint8_t count)
{
    Bytes bytes;
    for (std::uint8_t byte = 0; byte < count; ++byte)
        bytes.push_back(byte);
    return bytes;
}

TEST(RsaAnswers, haveASoundKey)
{
    EXPECT_TRUE(isSoundRsaKey(numbers()));
}

RsaNumbers publicNumbers()
{
    RsaNumbers rsa;
    rsa.modulus = hex(Modulus);
    rsa.exponent = RsaExponent;
    return rsa;
}

/// With an exponent of 1 the sealed key would be the key.
TEST(SoundRsaKey, hasTheOneExponent)
{
    EXPECT_TRUE(isSoundRsaKey(publicNumbers()));
    for (const std::uint32_t exponent : {0u, 1u, 3u, 65536u, 65539u, 0xFFFFFFFFu})
    {
        RsaNumbers rsa = publicNumbers();
        rsa.exponent = exponent;
        EXPECT_FALSE(isSoundRsaKey(rsa)) << exponent;
    }
}

TEST(SoundRsaKey, hasAnOddModulusThatUsesItsWholeSize)
{
    RsaNumbers rsa = publicNumbers();
    rsa.modulus.front() &= 0x7F;
    EXPECT_FALSE(isSoundRsaKey(rsa));
    rsa = publicNumbers();
    rsa.modulus.back() ^= 1;
    EXPECT_FALSE(isSoundRsaKey(rsa));
    rsa = publicNumbers();
    rsa.modulus.erase(rsa.modulus.begin());
    EXPECT_FALSE(isSoundRsaKey(rsa));
}

/// `exponent` and one less than `prime`: the same exponent to this prime, and another one to the other.
SecureBytes exponentForOnePrime(ByteView exponent, ByteView prime)
{
    SecureBytes sum(exponent);
    unsigned carry = 0;
    for (std::size_t back = 1; back <= sum.size(); ++back)
    {
        const unsigned added = back <= prime.size() ? prime[prime.size() - back] - (back == 1 ? 1u : 0u) : 0u;
        const unsigned digit = sum.bytes()[sum.size() - back] + added + carry;
        sum.bytes()[sum.size() - back] = static_cast<std::uint8_t>(digit);
        carry = digit >> 8;
    }
    return sum;
}

TEST(SoundRsaKey, hasAPrivateExponentThatFitsBothPrimes)
{
    for (const bool first : {true, false})
    {
        RsaNumbers rsa = numbers();
        rsa.privateExponent =
            exponentForOnePrime(rsa.privateExponent.bytes(), (first ? rsa.prime1 : rsa.prime2).bytes());
        EXPECT_FALSE(isSoundRsaKey(rsa)) << first;
    }
}

TEST(SoundRsaKey, hasTheModulusOfItsPrimes)
{
    RsaNumbers rsa = numbers();
    rsa.modulus[200] ^= 1;
    EXPECT_FALSE(isSoundRsaKey(rsa));
}

TEST(RsaAnswers, whatAnotherProgramSealedIsOpened)
{
    const auto opened = openWithRsa(numbers(), hex(SealedElsewhere));
    ASSERT_TRUE(opened);
    EXPECT_EQ(Bytes(opened->bytes().begin(), opened->bytes().end()), firstBytes(32));
}

TEST(RsaAnswers, eitherPrimeMayComeFirst)
{
    RsaNumbers rsa = numbers();
    const Bytes sealed = hex(SealedElsewhere);
    // With the larger one first a short cut of the calculation can go wrong, by chance, in one of fifty.
    for (int round = 0; round < 150; ++round)
        ASSERT_TRUE(openWithRsa(rsa, sealed)) << round;
    std::swap(rsa.prime1, rsa.prime2);
    EXPECT_TRUE(openWithRsa(rsa, sealed));
}

TEST(RsaAnswers, anotherLabelIsRefused)
{
    EXPECT_FALSE(openWithRsa(numbers(), hex(SealedWithoutLabel)));
}

/// The block of the answer, by the RSA operation alone.
SecureBytes blockOfTheAnswer()
{
    const RsaNumbers rsa = numbers();
    const auto number = [](ByteView bytes)
    {
        gcry_mpi_t made = nullptr;
        checkCrypto(gcry_mpi_scan(&made, GCRYMPI_FMT_USG, bytes.data(), bytes.size(), nullptr));
        return made;
    };
    gcry_mpi_t modulus = number(rsa.modulus);
    gcry_mpi_t exponent = number(rsa.privateExponent.bytes());
    gcry_mpi_t sealed = number(hex(SealedWithoutLabel));
    gcry_mpi_powm(sealed, sealed, exponent, modulus);
    SecureBytes block(RsaSmallModulus);
    std::size_t size = 0;
    // It begins with a zero.
    checkCrypto(gcry_mpi_print(GCRYMPI_FMT_USG, block.bytes().data() + 1, block.size() - 1, &size, sealed));
    EXPECT_EQ(size, block.size() - 1);
    for (gcry_mpi_t used : {modulus, exponent, sealed})
        gcry_mpi_release(used);
    return block;
}

TEST(RsaAnswers, thePaddingIsThatOfTheAnswer)
{
    const SecureBytes block = blockOfTheAnswer();
    const auto opened = unpadFromRsa(block, "");
    ASSERT_TRUE(opened);
    EXPECT_EQ(Bytes(opened->bytes().begin(), opened->bytes().end()),
              hex("e0e1e2e3e4e5e6e7e8e9eaebecedeeeff0f1f2f3f4f5f6f7f8f9fafbfcfdfeff"));
    EXPECT_FALSE(unpadFromRsa(block, "x"));
}

TEST(RsaPadding, refusesEachBlockThatWasChanged)
{
    const SecureBytes secret(firstBytes(32));
    const SecureBytes block = padForRsa(secret, "label", RsaSmallModulus);
    ASSERT_TRUE(unpadFromRsa(block, "label"));
    for (std::size_t at = 0; at < block.size() - 32; ++at)
    {
        SecureBytes changed = block.copy();
        changed.bytes()[at] ^= 1;
        const auto opened = unpadFromRsa(changed, "label");
        EXPECT_FALSE(opened && sameSecret(opened->bytes(), secret.bytes())) << at;
        EXPECT_FALSE(opened) << at;
    }
}

TEST(RsaPadding, takesSecretsThatFit)
{
    constexpr std::size_t Most = RsaSmallModulus - 66;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, Most})
    {
        const auto opened = unpadFromRsa(padForRsa(SecureBytes(Bytes(size, 1)), "", RsaSmallModulus), "");
        ASSERT_TRUE(opened) << size;
        EXPECT_EQ(opened->size(), size);
    }
    EXPECT_THROW(padForRsa(SecureBytes(Bytes(Most + 1, 1)), "", RsaSmallModulus), FileFailure);
    EXPECT_THROW(padForRsa(SecureBytes(), "", 65), FileFailure);
    EXPECT_FALSE(unpadFromRsa(SecureBytes(Bytes(65)), ""));
    EXPECT_FALSE(unpadFromRsa(SecureBytes(Bytes(RsaSmallModulus)), ""));
}

TEST(RsaAnswers, aSealedSecretIsOpenedAndNeverTheSameTwice)
{
    const SecureBytes secret(firstBytes(32));
    const Bytes first = sealWithRsa(numbers(), secret);
    EXPECT_EQ(first.size(), RsaSmallModulus);
    EXPECT_NE(first, sealWithRsa(numbers(), secret));
    const auto opened = openWithRsa(numbers(), first);
    ASSERT_TRUE(opened);
    EXPECT_TRUE(sameSecret(opened->bytes(), secret.bytes()));
}

} // namespace
} // namespace VaultCore
