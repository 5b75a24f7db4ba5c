#include "vaultcore/container/algorithms.h"
#include "vaultcore/container/crypto.h"
#include "vaultcore/container/derivation.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_hex.h"

namespace VaultCore
{
namespace
{

Bytes bytesOf(const SecureBytes& secret)
{
    return {secret.bytes().begin(), secret.bytes().end()};
}

Bytes bytesOf(const Digest& digest)
{
    return {digest.begin(), digest.end()};
}

/// A published pair of blocks under a key of the size that the containers use.
struct Answer
{
    std::uint32_t algorithm;
    const char* key;
    const char* plain;
    const char* encrypted;
};

class EachCipher : public testing::TestWithParam<Answer>
{
};

/// In counter mode the key stream is the encryption of the counter, so a block of zeros shows the published answer.
TEST_P(EachCipher, encryptsTheCounterAsPublished)
{
    const Algorithm* algorithm = findAlgorithm(GetParam().algorithm);
    ASSERT_NE(algorithm, nullptr);
    const Bytes key = hex(GetParam().key);
    ASSERT_EQ(key.size(), algorithm->keySize);
    const CipherHandle cipher = openCipher(algorithm->cipher, GCRY_CIPHER_MODE_CTR);
    setCipherKey(cipher, key);
    const Bytes counter = hex(GetParam().plain);
    ASSERT_EQ(counter.size(), algorithm->blockSize);
    checkCrypto(gcry_cipher_setctr(cipher.get(), counter.data(), counter.size()));
    Bytes block(counter.size());
    checkCrypto(gcry_cipher_encrypt(cipher.get(), block.data(), block.size(), nullptr, 0));
    EXPECT_EQ(block, hex(GetParam().encrypted));
}

INSTANTIATE_TEST_SUITE_P(
    KnownAnswers, EachCipher,
    testing::Values(
        // The author's list of vectors.
        Answer{1,
               "f0e1d2c3b4a5968778695a4b3c2d1e0f001122334455667704689104c2fd3b2f584023641aba61761f1f1f1f0e0e0e0e"
               "ffffffffffffffff",
               "fedcba9876543210", "c04504012e4e1f53"},
        // NIST SP 800-67, appendix B.
        Answer{2, "0123456789abcdef23456789abcdef01456789abcdef0123", "5468652071756663", "a826fd8ce53b855f"},
        // FIPS 197, appendix C.3.
        Answer{3, "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f",
               "00112233445566778899aabbccddeeff", "8ea2b7ca516745bfeafc49904b496089"},
        // RFC 2268, section 5, with 128 effective bits.
        Answer{4, "88bca90e90875a7f0f79c384627bafb2", "0000000000000000", "2269552ab0f85ca6"},
        // The authors' paper, intermediate values for 256 bits.
        Answer{14, "0123456789abcdeffedcba987654321000112233445566778899aabbccddeeff",
               "00000000000000000000000000000000", "37527be0052334b89f0cfccae87cfa20"},
        // NESSIE, set 1, vector 0.
        Answer{16, "8000000000000000000000000000000000000000000000000000000000000000",
               "00000000000000000000000000000000", "a223aa1288463c0e2be38ebd825616c0"}));

/// RFC 8891, appendix A, has the same cipher with its words of four bytes the other way round.
TEST(KnownAnswers, gostIsThatOfRfc8891WithItsWordsReversed)
{
    const CipherHandle cipher = openCipher(GCRY_CIPHER_GOST28147, GCRY_CIPHER_MODE_CTR);
    checkCrypto(gcry_cipher_ctl(cipher.get(), GCRYCTL_SET_SBOX, const_cast<char*>("1.2.643.7.1.2.5.1.1"), 0));
    Bytes key = hex("ffeeddccbbaa99887766554433221100f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
    for (auto word = key.begin(); word != key.end(); word += 4)
        std::reverse(word, word + 4);
    setCipherKey(cipher, key);
    Bytes counter = hex("fedcba9876543210");
    std::reverse(counter.begin(), counter.end());
    checkCrypto(gcry_cipher_setctr(cipher.get(), counter.data(), counter.size()));
    Bytes block(counter.size());
    checkCrypto(gcry_cipher_encrypt(cipher.get(), block.data(), block.size(), nullptr, 0));
    std::reverse(block.begin(), block.end());
    EXPECT_EQ(block, hex("4ee901e5c2d8ca3d"));
}

Bytes ocb(const CipherHandle& cipher, std::uint32_t number, ByteView extra, ByteView plain)
{
    std::array<std::uint8_t, 12> nonce{};
    nonce[10] = static_cast<std::uint8_t>(number >> 8);
    nonce[11] = static_cast<std::uint8_t>(number);
    checkCrypto(gcry_cipher_setiv(cipher.get(), nonce.data(), nonce.size()));
    if (!extra.empty())
        checkCrypto(gcry_cipher_authenticate(cipher.get(), extra.data(), extra.size()));
    checkCrypto(gcry_cipher_final(cipher.get()));
    Bytes sealed(plain.size() + 16);
    checkCrypto(gcry_cipher_encrypt(cipher.get(), sealed.data(), plain.size(), plain.data(), plain.size()));
    checkCrypto(gcry_cipher_gettag(cipher.get(), sealed.data() + plain.size(), 16));
    return sealed;
}

/// RFC 7253, appendix A: one value that depends on messages of many lengths.
TEST(KnownAnswers, aes256InOcbModeIsThatOfRfc7253)
{
    const CipherHandle cipher = openCipher(GCRY_CIPHER_AES256, GCRY_CIPHER_MODE_OCB);
    Bytes key(32);
    key.back() = 128;
    setCipherKey(cipher, key);
    Bytes all;
    const auto append = [&all](const Bytes& more) { all.insert(all.end(), more.begin(), more.end()); };
    for (std::uint32_t index = 0; index < 128; ++index)
    {
        const Bytes text(index);
        append(ocb(cipher, 3 * index + 1, text, text));
        append(ocb(cipher, 3 * index + 2, {}, text));
        append(ocb(cipher, 3 * index + 3, text, {}));
    }
    EXPECT_EQ(ocb(cipher, 385, all, {}), hex("d90eb8e9c977c88b79dd793d7ffa161c"));
}

TEST(KnownAnswers, sha256IsThatOfFips180)
{
    EXPECT_EQ(bytesOf(sha256(viewOf("abc"))), hex("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
}

TEST(KnownAnswers, hmacIsThatOfRfc4231)
{
    EXPECT_EQ(bytesOf(hmacSha256(Bytes(20, 0x0b), viewOf("Hi There"))),
              hex("b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7"));
    EXPECT_EQ(bytesOf(hmacSha256(viewOf("Jefe"), viewOf("what do ya want for nothing?"))),
              hex("5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"));
    EXPECT_EQ(bytesOf(hmacSha256(Bytes(131, 0xaa), viewOf("Test Using Larger Than Block-Size Key - Hash Key First"))),
              hex("60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"));
}

/// RFC 5869, appendix A.1 and A.3.
TEST(KnownAnswers, keyExpansionIsThatOfRfc5869)
{
    const Bytes key = hex("077709362c2e32df0ddc3f0dc47bba6390b6c73bb50f9c3122ec844ad7c2b3e5");
    EXPECT_EQ(bytesOf(expandKey(key, "", hex("f0f1f2f3f4f5f6f7f8f9"), 42)),
              hex("3cb25f25faacd57a90434f64d0362f2a2d2d0a90cf1a5a4c5db02d56ecc4c5bf34007208d5b887185865"));
    const Bytes other = hex("19ef24a32c717b167f33a91d6f648bdf96596776afdb6377ac434c1c293ccb04");
    EXPECT_EQ(bytesOf(expandKey(other, "", {}, 42)),
              hex("8da4e775a563c18f715f802a063c5a31b8a11f5c5ee1879ec3454e5f3c738d2d9d201395faa4b61a96c8"));
}

TEST(KnownAnswers, keyExpansionPutsThePurposeBeforeTheContext)
{
    const Bytes key(32, 7);
    EXPECT_EQ(bytesOf(expandKey(key, "ab", viewOf("cd"), 80)), bytesOf(expandKey(key, "abcd", {}, 80)));
}

/// The vectors that come with the authors' own program.
TEST(KnownAnswers, argon2idIsThatOfItsAuthors)
{
    const auto derive = [](const Argon2Parameters& parameters)
    { return bytesOf(deriveFromPassword(viewOf("password"), viewOf("somesalt"), parameters)); };
    EXPECT_EQ(derive({256, 2, 1}), hex("9dfeb910e80bad0311fee20f9c0e2b12c17987b4cac90c2ef54d5b3021c68bfe"));
    EXPECT_EQ(derive({256, 2, 2}), hex("6d093c501fd5999645e0ea3bf620d7b8be7fd2db59c20d9fff9539da2bf57037"));
    EXPECT_EQ(derive({65536, 2, 1}), hex("09316115d5cf24ed5a15a31a3ba326e5cf32edc24702987c02b6566f61913cf7"));
}

/// RFC 9106, section 5.3, which uses a secret and extra data that the containers have no need of.
TEST(KnownAnswers, argon2idIsThatOfRfc9106)
{
    const std::array<unsigned long, 4> parameters{32, 3, 32, 4};
    const Bytes password(32, 1), salt(16, 2), secret(8, 3), extra(12, 4);
    gcry_kdf_hd_t handle = nullptr;
    checkCrypto(gcry_kdf_open(&handle, GCRY_KDF_ARGON2, GCRY_KDF_ARGON2ID, parameters.data(), parameters.size(),
                              password.data(), password.size(), salt.data(), salt.size(), secret.data(), secret.size(),
                              extra.data(), extra.size()));
    checkCrypto(gcry_kdf_compute(handle, nullptr));
    Bytes derived(32);
    checkCrypto(gcry_kdf_final(handle, derived.size(), derived.data()));
    gcry_kdf_close(handle);
    EXPECT_EQ(derived, hex("0d640df58d78766c08c037a34a8b53c9d01ef0452d75b65eb52520e96b01e659"));
}

class EachAvailableCipher : public testing::TestWithParam<std::uint32_t>
{
};

/// libgcrypt has other code for many blocks at once than for a single one.
TEST_P(EachAvailableCipher, givesTheSameForManyBlocksAsOneByOne)
{
    const Algorithm* algorithm = findAlgorithm(GetParam());
    ASSERT_NE(algorithm, nullptr);
    const bool ocbMode = GetParam() == Aes256;
    const CipherHandle cipher = openCipher(algorithm->cipher, ocbMode ? GCRY_CIPHER_MODE_OCB : GCRY_CIPHER_MODE_CTR);
    setCipherKey(cipher, contentOf(algorithm->keySize));
    const Bytes plain = contentOf(64 * 1024);
    const auto encrypt = [&](std::size_t piece)
    {
        const Bytes start(ocbMode ? 12 : algorithm->blockSize, 1);
        checkCrypto(ocbMode ? gcry_cipher_setiv(cipher.get(), start.data(), start.size())
                            : gcry_cipher_setctr(cipher.get(), start.data(), start.size()));
        Bytes out(plain.size());
        for (std::size_t done = 0; done < plain.size(); done += piece)
        {
            if (ocbMode && done + piece == plain.size())
                checkCrypto(gcry_cipher_final(cipher.get()));
            checkCrypto(gcry_cipher_encrypt(cipher.get(), out.data() + done, piece, plain.data() + done, piece));
        }
        return out;
    };
    EXPECT_EQ(encrypt(plain.size()), encrypt(algorithm->blockSize));
}

INSTANTIATE_TEST_SUITE_P(KnownAnswers, EachAvailableCipher, testing::ValuesIn(AvailableAlgorithms));

TEST(MissingAlgorithm, namesWhatTheEngineLacks)
{
    const std::vector<std::pair<std::uint32_t, std::wstring>> lacking{
        {0, L"DESX"},   {5, L"DIAMOND2"},  {6, L"TEA-128"}, {7, L"SAFER-128"},   {8, L"3-WAY"},
        {10, L"SHARK"}, {11, L"CAST256E"}, {12, L"SQUARE"}, {13, L"SKIPJACK80"}, {15, L"MARS-448"},
    };
    for (const auto& [id, name] : lacking)
    {
        ASSERT_TRUE(missingAlgorithm(id)) << id;
        EXPECT_NE(missingAlgorithm(id)->find(L" " + name + L" "), std::wstring::npos) << id;
        EXPECT_EQ(faultOf([&] { startEncryption(*symmetricKey(), id); }), ContainerFault::UnknownAlgorithm);
    }
    for (const std::uint32_t id : AvailableAlgorithms)
        EXPECT_FALSE(missingAlgorithm(id)) << id;
}

TEST(MissingAlgorithm, tellsANumberOutsideTheTable)
{
    EXPECT_EQ(missingAlgorithm(17), L"The encryption algorithm number 17 is not known.");
    EXPECT_TRUE(missingAlgorithm(0xFFFFFFFF));
}

} // namespace
} // namespace VaultCore
