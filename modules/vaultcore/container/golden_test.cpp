#include "vaultcore/container/golden_data.h"
#include "vaultcore/container/key_file.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_hex.h"

namespace VaultCore
{
namespace
{

constexpr std::size_t GoldenSize = 20;

/// Encrypted files and keys that users have: these bytes have to open for ever.
TEST(GoldenContainer, opensWithItsPassword)
{
    EXPECT_EQ(unseal(hex(GoldenPassword), *createPasswordKey(L"swordfish")), contentOf(GoldenSize));
}

TEST(GoldenContainer, opensWithItsSymmetricKey)
{
    EXPECT_EQ(unseal(hex(GoldenSymmetric), *symmetricKey()), contentOf(GoldenSize));
}

TEST(GoldenContainer, opensWithItsKeyFile)
{
    const auto key = createKey(decodeKeyFile(hex(GoldenKeyFile)));
    EXPECT_EQ(key->GetKeyType(), KeyTypeRsaPair);
    EXPECT_EQ(unseal(hex(GoldenRsa), *key), contentOf(GoldenSize));
    EXPECT_EQ(unseal(seal(*key, Aes256, contentOf(10)), *key), contentOf(10));
}

} // namespace
} // namespace VaultCore
