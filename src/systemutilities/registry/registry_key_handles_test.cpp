#include "systemutilities/registry/i_registry_key.h"
#include "systemutilities/registry/testing_failure.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace Halden::SystemUtilities::Registry
{

namespace
{

/// Which handles stay open, and what may not be had.
class AKeyInMemory : public testing::Test
{
protected:
    std::unique_ptr<IRegistryKey> makeKey() { return CreateRegistryKey(Platform::CurrentUser, L"Key", true); }
    std::size_t openHandles() { return platform_.registry.openHandles(); }

    Fakes::FakePlatform platform_;
    std::unique_ptr<IRegistryKey> key_ = makeKey();
};

TEST_F(AKeyInMemory, leavesNoHandleOpenAfterReadsAndWrites)
{
    key_->Create(false);
    key_.reset();
    EXPECT_EQ(openHandles(), 0u);
    key_ = makeKey();
    key_->GetDword(L"v", 1);
    key_->SetDword(L"v", 1, false);
    key_->CreateSubKey(L"s", false);
    EXPECT_TRUE(key_->Exists(false));
    key_->GetSubKeys();
    key_->DeleteSubKey(L"s", false);
    EXPECT_EQ(openHandles(), 1u);
    key_.reset();
    makeKey()->DeleteKey();
    EXPECT_EQ(openHandles(), 0u);
}

TEST_F(AKeyInMemory, leavesAHandleOpenForEachReadOfTheOtherKind)
{
    platform_.registry.add(L"Key");
    key_->GetValues(false);
    key_->GetValues(true);
    key_->GetValues(false);
    EXPECT_EQ(openHandles(), 3u);
    key_.reset();
    EXPECT_EQ(openHandles(), 2u);
}

TEST_F(AKeyInMemory, leavesTheHandleBeforeCreateOpen)
{
    key_->Create(false);
    key_->Create(false);
    key_.reset();
    EXPECT_EQ(openHandles(), 1u);
}

TEST_F(AKeyInMemory, failsToBeReadOrWrittenWithoutAccess)
{
    platform_.registry.add(L"Key");
    platform_.registry.deny(L"Key");
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->Exists(false); }), 5u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->GetDword(L"v", 1); }), 5u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->SetDword(L"v", 1, false); }), 5u);
    EXPECT_EQ(errorOf("RegCreateKey failed.", [&] { key_->Create(false); }), 5u);
    platform_.registry.succeed();
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
}

TEST_F(AKeyInMemory, listsWhatIsBehindAnEntryThatMayNotBeSeen)
{
    for (const wchar_t* name : {L"a", L"b", L"c"})
    {
        platform_.registry.add(std::wstring(L"Key\\") + name);
        platform_.registry.putDword(L"Key", name, 1);
    }
    platform_.registry.failIndex(L"enumerateKey", 1, 5);
    platform_.registry.failIndex(L"enumerateValue", 0, 5);
    EXPECT_EQ(key_->GetSubKeys(), (std::vector<std::wstring>{L"a", L"c"}));
    const auto values = key_->GetValues(false);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].name, L"b");
    EXPECT_EQ(values[1].name, L"c");
}

TEST_F(AKeyInMemory, failsToBeListedWhenANameOfAValueHasNoRoom)
{
    platform_.registry.putDword(L"Key", std::wstring(16382, L'n'), 1);
    EXPECT_EQ(key_->GetValues(false).at(0).name.size(), 16382u);
    platform_.registry.putDword(L"Key", std::wstring(16383, L'm'), 1);
    EXPECT_EQ(errorOf("RegEnumValue failed.", [&] { key_->GetValues(false); }), 234u);
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
