#include "vaultcore/factory.h"

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/exception.h"

#include <gtest/gtest.h>

namespace VaultCore
{
namespace
{

class FactoryTest : public testing::Test
{
protected:
    ReleasePtr<IFactory> factory{new Factory};
};

TEST_F(FactoryTest, makesListsThatKeepTheirEntriesInOrder)
{
    const ReleasePtr<IFileList> list(factory->CreateFileList());
    EXPECT_EQ(list->GetCount(), 0);
    list->Add(L"one");
    list->Add(L"two");
    EXPECT_EQ(list->GetCount(), 2);
    EXPECT_STREQ(list->GetItem(0), L"one");
    EXPECT_STREQ(list->GetItem(1), L"two");
}

TEST_F(FactoryTest, makesListsThatAnswerNullOutsideOfThem)
{
    const ReleasePtr<IFileList> list(factory->CreateFileList());
    list->Add(nullptr);
    EXPECT_STREQ(list->GetItem(0), L"");
    EXPECT_EQ(list->GetItem(1), nullptr);
    EXPECT_EQ(list->GetItem(-1), nullptr);
}

TEST_F(FactoryTest, makesTheObjectsOfARemoval)
{
    const ReleasePtr<IDeleter> deleter(factory->CreateDeleter());
    const ReleasePtr<IDeletionOptions> options(factory->CreateDeletionOptions());
    const ReleasePtr<IOperationEvents> events(factory->CreateOperationEvents());
    const ReleasePtr<IDecryptionEvents> decryptionEvents(factory->CreateDecryptionEvents());
    EXPECT_FALSE(deleter->IsFinished());
    EXPECT_NE(options, nullptr);
    EXPECT_NE(events, nullptr);
    EXPECT_NE(decryptionEvents, nullptr);
}

TEST_F(FactoryTest, makesTheObjectsOfAnEncryption)
{
    const ReleasePtr<IEncryptor> encryptor(factory->CreateEncryptor());
    const ReleasePtr<IEncryptionOptions> options(factory->CreateEncryptionOptions());
    const ReleasePtr<ISfxOptions> sfxOptions(factory->CreateSfxOptions());
    EXPECT_FALSE(encryptor->IsFinished());
    EXPECT_NE(options, nullptr);
    EXPECT_NE(sfxOptions, nullptr);
}

TEST_F(FactoryTest, makesPasswordKeysAndRefusesAKeyFileThatIsNotThere)
{
    const ReleasePtr<IKey> key(factory->CreatePasswordKey(L"secret"));
    EXPECT_EQ(key->GetKeyType(), 0);
    EXPECT_THROW(factory->LoadKeyFile(L"there is no such file"), Exception);
    EXPECT_THROW(factory->LoadKeyFile(nullptr), Exception);
}

} // namespace
} // namespace VaultCore
