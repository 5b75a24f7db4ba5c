#include "platform/registry.h"

#include "platform/handles.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace Platform
{

namespace
{

constexpr wchar_t Folder[] = L"Software\\JobRunnerTests";

/// A key of the tests' own, seen by the plain calls of the system as well.
class NativeRegistry : public testing::Test
{
protected:
    void SetUp() override
    {
        removeAll();
        ASSERT_EQ(registry_.createKey(CurrentUser, path_, 0, KeyAllAccess | KeyView32, key_), ErrorSuccess);
    }
    void TearDown() override
    {
        EXPECT_EQ(registry_.closeKey(key_), ErrorSuccess);
        removeAll();
    }

    void removeAll() const
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
        RegDeleteKeyW(HKEY_CURRENT_USER, Folder); // unless others are in it
    }

    Registry& registry_ = nativeSystem().registry;
    const std::wstring path_ = Folder + (L"\\platform" + std::to_wstring(GetCurrentProcessId()));
    RegistryHandle key_ = ClosedKey;
};

TEST_F(NativeRegistry, hasTheRootsOfTheSystem)
{
    EXPECT_EQ(reinterpret_cast<HKEY>(CurrentUser), HKEY_CURRENT_USER);
    EXPECT_EQ(reinterpret_cast<HKEY>(LocalMachine), HKEY_LOCAL_MACHINE);
}

TEST_F(NativeRegistry, writesWhatTheSystemReads)
{
    const std::uint32_t number = 0x12345678;
    EXPECT_EQ(registry_.setValue(key_, L"v", ValueDword, &number, sizeof(number)), ErrorSuccess);
    DWORD read = 0;
    DWORD size = sizeof(read);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path_.c_str(), L"v", RRF_RT_REG_DWORD, nullptr, &read, &size), 0);
    EXPECT_EQ(read, number);
}

TEST_F(NativeRegistry, readsWhatTheSystemWrites)
{
    const DWORD number = 0x12345678;
    EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path_.c_str(), L"v", REG_DWORD, &number, sizeof(number)), 0);
    std::uint32_t type = 0;
    std::uint32_t read = 0;
    std::uint32_t size = sizeof(read);
    EXPECT_EQ(registry_.queryValue(key_, L"v", type, &read, size), ErrorSuccess);
    EXPECT_EQ(type, ValueDword);
    EXPECT_EQ(read, number);
}

TEST_F(NativeRegistry, leavesTheHandleAsItWasWhenAKeyCannotBeOpened)
{
    RegistryHandle opened = 4711;
    EXPECT_EQ(registry_.openKey(key_, L"none", 0, KeyRead, opened), ErrorFileNotFound);
    EXPECT_EQ(opened, 4711);
    EXPECT_EQ(registry_.createKey(ClosedKey, L"none", 0, KeyRead, opened), ErrorInvalidHandle);
    EXPECT_EQ(opened, 4711);
}

} // namespace

} // namespace Platform
