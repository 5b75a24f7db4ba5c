#include "systemutilities/registry/i_registry_key.h"

#include "fakes/fake_platform.h"
#include "fakes/slot_of.h"

#include <gtest/gtest.h>

#include <new>

namespace
{

bool hasNoMemory = false;

} // namespace

/// Allocation that gives null instead of an exception, which a test can make fail.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (hasNoMemory)
        return nullptr;
    try
    {
        return ::operator new(size);
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

namespace Halden::SystemUtilities::Registry
{

namespace
{

TEST(IRegistryKey, hasItsOperationsInThisOrderBehindTheTwoEntriesOfTheDestructor)
{
    using Fakes::slotOf;
    EXPECT_EQ(slotOf(&IRegistryKey::Exists), 2u);
    EXPECT_EQ(slotOf(&IRegistryKey::Create), 3u);
    EXPECT_EQ(slotOf(&IRegistryKey::DeleteKey), 4u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetString), 5u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetMultiString), 6u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetDword), 7u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetQword), 8u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetBinary), 9u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetString), 10u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetMultiString), 11u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetDword), 12u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetBinary), 13u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetQword), 14u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetExpandString), 15u);
    EXPECT_EQ(slotOf(&IRegistryKey::DeleteValue), 16u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetLinkTarget), 17u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetLinks), 18u);
    EXPECT_EQ(slotOf(&IRegistryKey::SetRawValue), 19u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetRawValue), 20u);
    EXPECT_EQ(slotOf(&IRegistryKey::CreateSubKey), 21u);
    EXPECT_EQ(slotOf(&IRegistryKey::DeleteSubKey), 22u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetSubKeys), 23u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetValues), 24u);
    EXPECT_EQ(slotOf(&IRegistryKey::GetNtPath), 25u);
}

TEST(CreateRegistryKey, asksTheRegistryForNothing)
{
    Fakes::FakePlatform platform;
    const auto key = CreateRegistryKey(Platform::CurrentUser, L"Software", false);
    EXPECT_NE(key, nullptr);
    EXPECT_TRUE(platform.log.calls().empty());
}

TEST(CreateRegistryKey, givesNullWithoutMemory)
{
    hasNoMemory = true;
    const auto key = CreateRegistryKey(Platform::CurrentUser, L"Software", false);
    hasNoMemory = false;
    EXPECT_EQ(key, nullptr);
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
