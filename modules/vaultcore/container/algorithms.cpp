#include "vaultcore/container/algorithms.h"

#include "vaultcore/container/container.h"
#include "vaultcore/crypto_library.h"

#include <array>
#include <gcrypt.h>

namespace VaultCore
{
namespace
{

constexpr std::array<Algorithm, 17> Algorithms{{
    {L"DESX", 0, 0, 0},
    {L"BLOWFISH-448", GCRY_CIPHER_BLOWFISH, 56, 8},
    {L"3-DES", GCRY_CIPHER_3DES, 24, 8},
    {L"AES-256", GCRY_CIPHER_AES256, 32, 16},
    {L"RC2", GCRY_CIPHER_RFC2268_128, 16, 8},
    {L"DIAMOND2", 0, 0, 0},
    {L"TEA-128", 0, 0, 0},
    {L"SAFER-128", 0, 0, 0},
    {L"3-WAY", 0, 0, 0},
    {L"GOST-256", GCRY_CIPHER_GOST28147, 32, 8},
    {L"SHARK", 0, 0, 0},
    {L"CAST256E", 0, 0, 0},
    {L"SQUARE", 0, 0, 0},
    {L"SKIPJACK80", 0, 0, 0},
    {L"TWOFISH", GCRY_CIPHER_TWOFISH, 32, 16},
    {L"MARS-448", 0, 0, 0},
    {L"SERPENT", GCRY_CIPHER_SERPENT256, 32, 16},
}};

} // namespace

const Algorithm* findAlgorithm(std::uint32_t id)
{
    if (id >= Algorithms.size() || Algorithms[id].cipher == 0 || !prepareCryptoLibrary())
        return nullptr;
    // A library can be built without some of its ciphers.
    return gcry_cipher_test_algo(Algorithms[id].cipher) == 0 ? &Algorithms[id] : nullptr;
}

std::optional<std::wstring> missingAlgorithm(std::uint32_t algorithm)
{
    if (algorithm >= Algorithms.size())
        return L"The encryption algorithm number " + std::to_wstring(algorithm) + L" is not known.";
    if (findAlgorithm(algorithm) == nullptr)
        return L"The encryption algorithm " + std::wstring(Algorithms[algorithm].name) +
               L" is not available in this engine.";
    return std::nullopt;
}

} // namespace VaultCore
