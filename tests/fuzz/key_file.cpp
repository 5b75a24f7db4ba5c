#include "vaultcore/container/key_file.h"

#include "fuzz/reader.h"
#include "interfaces/vaultcore/exception.h"
#include "vaultcore/container/crypto.h"
#include "vaultcore/container/golden_data.h"
#include "vaultcore/container/new_key.h"
#include "vaultcore/container/rsa.h"
#include "vaultcore/container/testing_hex.h"

namespace Fuzz
{
namespace
{

using namespace VaultCore;

constexpr std::size_t HeaderSize = 16;
constexpr std::size_t LeastSize = HeaderSize + DigestSize;

void checkKey(const KeyMaterial& key)
{
    expect(key.type >= KeyTypeSymmetric && key.type <= KeyTypeRsaPair, "a key file holds no password");
    expect(key.secret.size() == (key.type == KeyTypeSymmetric ? SymmetricKeySize : 0), "a symmetric key has its size");
    if (key.type == KeyTypeSymmetric)
        return;
    const std::size_t size = key.rsa.modulus.size();
    const std::size_t secretSize = key.type == KeyTypePublicRsa ? 0 : size;
    expect(size == RsaSmallModulus || size == RsaLargeModulus, "a modulus has its size");
    expect(key.rsa.privateExponent.size() == secretSize, "a public key has no private exponent, the others have one");
    expect(key.rsa.prime1.size() == secretSize / 2 && key.rsa.prime2.size() == secretSize / 2, "primes are half");
}

bool readKeyFile(ByteView input)
{
    if (input.size() > LargestKeyFile)
        return false;
    try
    {
        const KeyMaterial key = decodeKeyFile(input);
        checkKey(key);
        const SecureBytes again = encodeKeyFile(key);
        expect(Bytes(again.bytes().begin(), again.bytes().end()) == Bytes(input.begin(), input.end()),
               "a key that is written again is the same file");
        return true;
    }
    catch (const VaultCore::Exception&)
    {
        return false;
    }
}

void repairKeyFile(std::span<std::uint8_t> input)
{
    if (input.size() < LeastSize)
        return;
    const std::size_t payload = input.size() - LeastSize;
    ByteWriter(input.subspan(HeaderSize - 4)).u32(static_cast<std::uint32_t>(payload));
    const Digest digest = sha256(input.first(HeaderSize + payload));
    std::copy(digest.begin(), digest.end(), input.end() - DigestSize);
}

Bytes fileOf(const KeyMaterial& key)
{
    const SecureBytes bytes = encodeKeyFile(key);
    return {bytes.bytes().begin(), bytes.bytes().end()};
}

std::vector<Bytes> keyFileSeeds()
{
    const Bytes pair = hex(GoldenKeyFile);
    std::vector<Bytes> seeds{pair};
    const KeyMaterial key = decodeKeyFile(pair);
    seeds.push_back(fileOf(halfOf(key, KeyTypePrivateRsa)));
    seeds.push_back(fileOf(halfOf(key, KeyTypePublicRsa)));
    seeds.push_back(fileOf(newSymmetricKey()));
    return seeds;
}

const Registered registered({"key_file", readKeyFile, keyFileSeeds, repairKeyFile});

} // namespace
} // namespace Fuzz
