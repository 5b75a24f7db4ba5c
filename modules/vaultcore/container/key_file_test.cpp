#include "vaultcore/container/key_file.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/small_file.h"
#include "vaultcore/container/testing_folder.h"
#include "vaultcore/container/testing_rsa.h"
#include "vaultcore/file_failure.h"

#include "interfaces/vaultcore/exception.h"

namespace VaultCore
{
namespace
{

Bytes plainBytes(const SecureBytes& secret)
{
    return {secret.bytes().begin(), secret.bytes().end()};
}

/// What the user is told about a key file of these bytes; empty when it is taken.
std::wstring refusalOf(ByteView bytes)
try
{
    decodeKeyFile(bytes);
    return L"";
}
catch (const Exception& exception)
{
    return exception.GetText();
}

/// Bytes with a checksum that fits them, as someone makes them who knows the format.
Bytes withChecksum(Bytes bytes)
{
    const Digest digest = sha256(ByteView(bytes).first(bytes.size() - DigestSize));
    std::copy(digest.begin(), digest.end(), bytes.end() - static_cast<std::ptrdiff_t>(DigestSize));
    return bytes;
}

Bytes symmetricFile()
{
    return plainBytes(encodeKeyFile(newSymmetricKey()));
}

constexpr std::size_t VersionAt = 8;
constexpr std::size_t TypeAt = 10;
constexpr std::size_t LengthAt = 12;
constexpr std::size_t PayloadAt = 16;

TEST(KeyFile, givesBackASymmetricKey)
{
    const KeyMaterial key = newSymmetricKey();
    const KeyMaterial read = decodeKeyFile(encodeKeyFile(key).bytes());
    EXPECT_EQ(read.type, KeyTypeSymmetric);
    EXPECT_EQ(plainBytes(read.secret), plainBytes(key.secret));
}

TEST(KeyFile, givesBackAnRsaPairAndItsHalves)
{
    for (const int type : {KeyTypePublicRsa, KeyTypePrivateRsa, KeyTypeRsaPair})
    {
        const KeyMaterial key = type == KeyTypeRsaPair ? rsaPair().copy() : halfOf(rsaPair(), type);
        const KeyMaterial read = decodeKeyFile(encodeKeyFile(key).bytes());
        EXPECT_EQ(read.type, type);
        EXPECT_EQ(read.rsa.modulus, key.rsa.modulus);
        EXPECT_EQ(read.rsa.exponent, 65537u);
        EXPECT_EQ(plainBytes(read.rsa.privateExponent), plainBytes(key.rsa.privateExponent));
        EXPECT_EQ(plainBytes(read.rsa.prime1), plainBytes(key.rsa.prime1));
        EXPECT_EQ(plainBytes(read.rsa.prime2), plainBytes(key.rsa.prime2));
    }
}

TEST(KeyFile, ofThePublicHalfHoldsNoSecret)
{
    const Bytes file = plainBytes(encodeKeyFile(halfOf(rsaPair(), KeyTypePublicRsa)));
    EXPECT_EQ(file.size(), PayloadAt + 2 + 4 + RsaSmallModulus + DigestSize);
    const Bytes prime = plainBytes(rsaPair().rsa.prime1);
    EXPECT_EQ(std::search(file.begin(), file.end(), prime.begin(), prime.end()), file.end());
}

TEST(KeyFile, isRefusedWithAnyByteChanged)
{
    const Bytes whole = symmetricFile();
    for (std::size_t index = 0; index < whole.size(); ++index)
    {
        Bytes changed = whole;
        changed[index] ^= 0x01;
        EXPECT_NE(refusalOf(changed), L"") << index;
    }
}

TEST(KeyFile, isRefusedAtAnyShorterLength)
{
    const Bytes whole = symmetricFile();
    EXPECT_EQ(refusalOf({}), L"The key file is empty.");
    for (std::size_t size = 1; size < whole.size(); ++size)
        EXPECT_EQ(refusalOf(ByteView(whole).first(size)), L"The key file is incomplete.") << size;
}

TEST(KeyFile, isRefusedWithBytesBehindIt)
{
    Bytes longer = symmetricFile();
    longer.push_back(0);
    EXPECT_EQ(refusalOf(longer), L"The key file is damaged.");
}

TEST(KeyFile, tellsWhatIsWrong)
{
    Bytes file = symmetricFile();
    file[0] = 'x';
    EXPECT_EQ(refusalOf(file), L"The file is no key file.");
    file = symmetricFile();
    file[VersionAt] = 7;
    EXPECT_EQ(refusalOf(file), L"The key file has the version 7, which this engine does not know.");
    file = symmetricFile();
    file[PayloadAt] ^= 0x80;
    EXPECT_EQ(refusalOf(file), L"The key file is damaged.");
    for (const int type : {0, 5, 255})
    {
        file = symmetricFile();
        file[TypeAt] = static_cast<std::uint8_t>(type);
        EXPECT_EQ(refusalOf(withChecksum(file)), L"The key file holds a key of a kind that this engine does not know.");
    }
}

TEST(KeyFile, isRefusedWhenItsLengthLies)
{
    for (const int length : {0, 31, 33, 64, 255})
    {
        Bytes file = symmetricFile();
        file[LengthAt] = static_cast<std::uint8_t>(length);
        EXPECT_NE(refusalOf(withChecksum(file)), L"") << length;
    }
    Bytes file = symmetricFile();
    std::fill_n(file.begin() + LengthAt, 4, std::uint8_t{0xFF});
    EXPECT_EQ(refusalOf(withChecksum(file)), L"The key file is incomplete.");
}

TEST(KeyFile, isRefusedWhenItsPayloadIsThatOfAnotherType)
{
    Bytes file = symmetricFile();
    file[TypeAt] = KeyTypeRsaPair;
    EXPECT_EQ(refusalOf(withChecksum(file)), L"The key file is damaged.");
    file = plainBytes(encodeKeyFile(halfOf(rsaPair(), KeyTypePublicRsa)));
    file[TypeAt] = KeyTypePrivateRsa;
    EXPECT_EQ(refusalOf(withChecksum(file)), L"The key file is damaged.");
}

TEST(KeyFile, isRefusedWhenItsNumbersDoNotBelongTogether)
{
    const Bytes whole = plainBytes(encodeKeyFile(rsaPair()));
    const std::size_t modulus = PayloadAt + 2 + 4;
    const std::size_t exponent = modulus + RsaSmallModulus;
    const std::size_t prime1 = exponent + RsaSmallModulus;
    const std::size_t prime2 = prime1 + RsaSmallModulus / 2;
    for (const std::size_t place : {modulus + 5, exponent + 5, prime1 + 5, prime2 + 5, PayloadAt + 2})
    {
        Bytes file = whole;
        file[place] ^= 0x10;
        EXPECT_NE(refusalOf(withChecksum(file)).find(L"RSA key"), std::wstring::npos) << place;
    }
    for (const std::size_t place : {prime1, prime2})
    {
        Bytes file = whole;
        std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(place), RsaSmallModulus / 2, std::uint8_t{0});
        EXPECT_NE(refusalOf(withChecksum(file)).find(L"RSA key"), std::wstring::npos) << place;
    }
}

TEST(KeyFile, isRefusedWithAnRsaKeyOfAnotherSize)
{
    KeyMaterial small;
    small.type = KeyTypePublicRsa;
    small.rsa.modulus.assign(2048 / 8, 0xFF);
    small.rsa.exponent = RsaExponent;
    EXPECT_NE(refusalOf(encodeKeyFile(small).bytes()).find(L"3072 or 4096 bits"), std::wstring::npos);
}

class LoadKeyFile : public InFolder
{
protected:
    static std::wstring refusalOf(const std::filesystem::path& path)
    try
    {
        loadKeyFile(wideOf(path));
        return L"";
    }
    catch (const Exception& exception)
    {
        return exception.GetText();
    }
};

TEST_F(LoadKeyFile, readsWhatWasWritten)
{
    const std::filesystem::path path = folder / u8"\u043A\u043B\u044E\u0447.zelkey";
    writeSecretFile(wideOf(path), encodeKeyFile(newSymmetricKey()).bytes());
    EXPECT_EQ(loadKeyFile(wideOf(path))->GetKeyType(), KeyTypeSymmetric);
}

TEST_F(LoadKeyFile, tellsAFileThatIsNotThere)
{
    EXPECT_EQ(refusalOf(folder / "none.zelkey"), L"The file does not exist.");
    EXPECT_EQ(refusalOf(folder / "none" / "none.zelkey"), L"The file does not exist.");
    EXPECT_NE(refusalOf(""), L"");
}

TEST_F(LoadKeyFile, tellsAFolder)
{
    EXPECT_EQ(refusalOf(folder), L"The key file is a folder.");
}

TEST_F(LoadKeyFile, tellsAnEmptyFile)
{
    EXPECT_EQ(refusalOf(put("empty.zelkey", "")), L"The key file is empty.");
}

TEST_F(LoadKeyFile, tellsAnotherKindOfFile)
{
    EXPECT_EQ(refusalOf(put("text.zelkey", "only a text")), L"The file is no key file.");
}

TEST_F(LoadKeyFile, readsNoLargeFile)
{
    const std::string largest(LargestKeyFile, 'x');
    EXPECT_EQ(refusalOf(put("largest.zelkey", largest)), L"The file is no key file.");
    EXPECT_EQ(refusalOf(put("large.zelkey", largest + "x")), L"The file is too large for a key file.");
}

TEST_F(LoadKeyFile, makesCopiesThatOutliveTheOriginal)
{
    const std::filesystem::path path = folder / "pair.zelkey";
    writeSecretFile(wideOf(path), encodeKeyFile(rsaPair()).bytes());
    auto key = loadKeyFile(wideOf(path));
    const auto copy = key->clone();
    key.reset();
    EXPECT_EQ(copy->GetKeyType(), KeyTypeRsaPair);
    EXPECT_EQ(plainBytes(copy->material().rsa.prime2), plainBytes(rsaPair().rsa.prime2));
}

TEST_F(LoadKeyFile, findsThatASecretFileIsNeverReplaced)
{
    const std::filesystem::path path = put("there.zelkey", "mine");
    EXPECT_THROW(writeSecretFile(wideOf(path), Bytes(3)), FileFailure);
    EXPECT_EQ(contentOfFile(path), "mine");
}

TEST(PasswordKey, isTheTextInUtf8)
{
    const auto key = createPasswordKey(L"p\u00E4\u20AC" + std::wstring(L"\U0001F511"));
    EXPECT_EQ(key->GetKeyType(), Key::TypePassword);
    const Bytes expected{'p', 0xC3, 0xA4, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x94, 0x91};
    EXPECT_EQ(plainBytes(key->material().secret), expected);
    EXPECT_EQ(plainBytes(key->clone()->material().secret), expected);
    EXPECT_TRUE(createPasswordKey(L"")->material().secret.empty());
}

} // namespace
} // namespace VaultCore
