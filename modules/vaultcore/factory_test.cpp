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

TEST_F(FactoryTest, saysInPlainTextThatItCannotEncrypt)
{
    try
    {
        factory->CreateEncryptor();
        FAIL() << "no exception";
    }
    catch (const Exception& exception)
    {
        EXPECT_STREQ(exception.GetText(), L"This engine cannot encrypt.");
    }
}

TEST_F(FactoryTest, refusesEverythingElseThatIsNoRemoval)
{
    EXPECT_THROW(factory->CreatePasswordKey(L"secret"), Exception);
    EXPECT_THROW(factory->LoadKeyFile(L"key"), Exception);
    EXPECT_THROW(factory->CreateEncryptionOptions(), Exception);
    EXPECT_THROW(factory->CreateSfxOptions(), Exception);
    EXPECT_THROW(factory->CreateDecryptionOptions(), Exception);
    EXPECT_THROW(factory->CreateDecryptor(), Exception);
}

} // namespace
} // namespace VaultCore
