#include "vaultcore/keymaker/key_maker.h"

#include "vaultcore/container/key.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_folder.h"

namespace VaultCore
{
namespace
{

class MakeKeys : public InFolder
{
protected:
    std::wstring file(const char* name) const { return wideOf(folder / name); }
    std::wstring message;
};

TEST_F(MakeKeys, makesASymmetricKey)
{
    ASSERT_EQ(makeKeys({L"symmetric", file("one.zelkey")}, message), 0);
    EXPECT_NE(message.find(L"one.zelkey"), std::wstring::npos);
    ASSERT_EQ(makeKeys({L"symmetric", file("two.zelkey")}, message), 0);
    EXPECT_EQ(loadKeyFile(file("one.zelkey"))->GetKeyType(), KeyTypeSymmetric);
    EXPECT_NE(contentOfFile(folder / "one.zelkey"), contentOfFile(folder / "two.zelkey"));
}

TEST_F(MakeKeys, makesThreeFilesOfOneRsaKey)
{
    const std::vector<std::wstring> names{file("public.zelkey"), file("private.zelkey"), file("pair.zelkey")};
    ASSERT_EQ(makeKeys({L"rsa", names[0], names[1], names[2]}, message, RsaSmallModulus), 0);
    const auto publicHalf = loadKeyFile(names[0]);
    const auto privateHalf = loadKeyFile(names[1]);
    const auto pair = loadKeyFile(names[2]);
    EXPECT_EQ(publicHalf->GetKeyType(), KeyTypePublicRsa);
    EXPECT_EQ(privateHalf->GetKeyType(), KeyTypePrivateRsa);
    EXPECT_EQ(pair->GetKeyType(), KeyTypeRsaPair);
    const Bytes content = contentOf(100);
    EXPECT_EQ(unseal(seal(*publicHalf, Aes256, content), *privateHalf), content);
    EXPECT_EQ(unseal(seal(*publicHalf, Aes256, content), *pair), content);
}

TEST_F(MakeKeys, neverReplacesAFile)
{
    put("mine.zelkey", "mine");
    EXPECT_EQ(makeKeys({L"symmetric", file("mine.zelkey")}, message), 1);
    EXPECT_NE(message.find(L"There is such a file already."), std::wstring::npos);
    EXPECT_EQ(contentOfFile(folder / "mine.zelkey"), "mine");
}

TEST_F(MakeKeys, tellsHowItIsCalled)
{
    for (const std::vector<std::wstring>& arguments : std::vector<std::vector<std::wstring>>{
             {}, {L"symmetric"}, {L"other", L"x"}, {L"rsa", L"a", L"b"}, {L"symmetric", L"a", L"b"}})
    {
        EXPECT_EQ(makeKeys(arguments, message), 2);
        EXPECT_EQ(message.find(L"make_key symmetric"), 0u);
    }
}

} // namespace
} // namespace VaultCore
