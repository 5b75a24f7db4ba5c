#include "interfaces/vaultcore/file_list.h"
#include "interfaces/zelplatform/factory.h"

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>

namespace ZelPlatform
{
namespace
{

/// Number of a virtual function in its table, from 0, as this compiler notes it in a pointer to a member.
template <class Member> std::size_t slotOf(Member member)
{
    std::size_t parts[2] = {};
    static_assert(sizeof(member) == sizeof(parts));
    std::memcpy(parts, &member, sizeof(member));
    return (parts[0] - 1) / sizeof(void*);
}

TEST(Slots, ofTheFactoryKeepTheirPlace)
{
    EXPECT_EQ(slotOf(&IFactory::Release), 0U);
    EXPECT_EQ(slotOf(&IFactory::CreateJobDocumentStore), 2U);
}

TEST(Slots, ofTheStoreKeepTheirPlace)
{
    EXPECT_EQ(slotOf(&IJobDocumentStore::Release), 0U);
    EXPECT_EQ(slotOf(&IJobDocumentStore::LoadJobDocument), 1U);
    EXPECT_EQ(slotOf(&IJobDocumentStore::SaveSfxComment), 3U);
}

TEST(Slots, ofTheDocumentKeepTheirPlace)
{
    EXPECT_EQ(slotOf(&IJobRunnerDocument::Release), 0U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::GetFileList), 1U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::IsDecryption), 3U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::IsDoubleClickDecryption), 4U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::IsEncryption), 5U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::IsSfxEncryption), 6U);
    EXPECT_EQ(slotOf(&IJobRunnerDocument::IsWipe), 7U);
}

TEST(Slots, ofTheKindsKeepTheirPlace)
{
    EXPECT_EQ(slotOf(&IEncryptorThreadDocument::GetAlgorithm), 0U);
    EXPECT_EQ(slotOf(&IEncryptorThreadDocument::GetDestiny), 4U);
    EXPECT_EQ(slotOf(&IEncryptorThreadDocument::GetExtraText), 5U);
    EXPECT_EQ(slotOf(&IEncryptorSfxThreadDocument::GetDestiny), 4U);
    EXPECT_EQ(slotOf(&IEncryptorSfxThreadDocument::GetSfxComment), 6U);
    EXPECT_EQ(slotOf(&IDecryptorThreadDocument::GetDecryptionPath), 0U);
    EXPECT_EQ(slotOf(&IDecryptorThreadDocument::GetDecryptionMode), 1U);
    EXPECT_EQ(slotOf(&IDeleterThreadDocument::GetDeletionMethod), 0U);
}

TEST(Slots, ofTheFileListKeepTheirPlace)
{
    EXPECT_EQ(slotOf(&VaultCore::IFileList::Release), 0U);
    EXPECT_EQ(slotOf(&VaultCore::IFileList::Add), 1U);
    EXPECT_EQ(slotOf(&VaultCore::IFileList::GetCount), 3U);
    EXPECT_EQ(slotOf(&VaultCore::IFileList::GetItem), 4U);
}

} // namespace
} // namespace ZelPlatform
