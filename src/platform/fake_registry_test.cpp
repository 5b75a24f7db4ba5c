#include "fakes/fake_platform.h"

#include "platform/registry_names.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

/// What other tests rely on when they play failures.
class FakeRegistryTest : public testing::Test
{
protected:
    std::uint32_t open(const std::wstring& path, std::uint32_t options = 0)
    {
        return registry_.openKey(CurrentUser, path, options, KeyRead, key_);
    }

    Fakes::FakePlatform platform_;
    Fakes::FakeRegistry& registry_ = platform_.registry;
    RegistryHandle key_ = ClosedKey;
};

} // namespace

TEST_F(FakeRegistryTest, logsWhatItIsAskedButNotWhatATestSetsUp)
{
    registry_.putDword(L"Software\\ZEL", L"Day", 31);
    EXPECT_EQ(platform_.log.calls(), std::vector<std::wstring>{});
    EXPECT_EQ(registry_.openKey(CurrentUser, L"Software", OptionOpenLink, KeyRead | KeyView32, key_), 0u);
    RegistryHandle below = ClosedKey;
    EXPECT_EQ(registry_.createKey(key_, L"ZEL", 0, KeyAllAccess, below), 0u);
    std::uint32_t type = 0;
    std::uint32_t value = 0;
    std::uint32_t size = sizeof value;
    EXPECT_EQ(registry_.queryValue(below, L"Day", type, &value, size), 0u);
    EXPECT_EQ(value, 31u);
    EXPECT_EQ(registry_.queryValue(below, L"Day", type, nullptr, size), 0u);
    EXPECT_EQ(registry_.setValue(below, L"Day", ValueDword, &value, 4), 0u);
    std::wstring name;
    EXPECT_EQ(registry_.enumerateKey(below, 0, 260, name), ErrorNoMoreItems);
    EXPECT_EQ(registry_.enumerateValue(below, 0, 16383, name, type, nullptr, size), 0u);
    EXPECT_EQ(registry_.deleteValue(below, L"Day"), 0u);
    EXPECT_EQ(registry_.closeKey(below), 0u);
    EXPECT_EQ(registry_.closeKey(below), ErrorInvalidHandle);
    EXPECT_EQ(registry_.deleteSubKey(key_, L"ZEL"), 0u);
    EXPECT_EQ(platform_.log.calls(),
              (std::vector<std::wstring>{
                  L"openKey HKCU\\Software 0x8 0x20219", L"createKey HKCU\\Software\\ZEL 0x0 0xF003F",
                  L"queryValue HKCU\\Software\\ZEL Day 4", L"queryValue HKCU\\Software\\ZEL Day null",
                  L"setValue HKCU\\Software\\ZEL Day 4 4", L"enumerateKey HKCU\\Software\\ZEL 0 260",
                  L"enumerateValue HKCU\\Software\\ZEL 0 16383 null", L"deleteValue HKCU\\Software\\ZEL Day",
                  L"closeKey HKCU\\Software\\ZEL", L"closeKey closed", L"deleteSubKey HKCU\\Software\\ZEL"}));
}

TEST_F(FakeRegistryTest, countsTheHandlesThatNobodyHasClosed)
{
    registry_.add(L"Software");
    registry_.addLink(L"link", L"Software");
    EXPECT_EQ(registry_.openHandles(), 0u);
    EXPECT_EQ(open(L"link"), 0u);
    EXPECT_EQ(registry_.openHandles(), 1u);
    EXPECT_EQ(registry_.closeKey(key_), 0u);
    EXPECT_EQ(registry_.openHandles(), 0u);
}

TEST_F(FakeRegistryTest, failsAsATestWishes)
{
    registry_.add(L"one");
    registry_.fail(L"openKey", 21);
    EXPECT_EQ(open(L"one"), 21u);
    registry_.succeed();
    registry_.failCall(L"openKey", 1, 22);
    EXPECT_EQ(open(L"one"), 0u);
    EXPECT_EQ(open(L"one"), 22u);
    EXPECT_EQ(open(L"one"), 0u);
    std::wstring name;
    registry_.add(L"two");
    registry_.failIndex(L"enumerateKey", 0, ErrorAccessDenied);
    EXPECT_EQ(registry_.enumerateKey(CurrentUser, 0, 260, name), ErrorAccessDenied);
    EXPECT_EQ(registry_.enumerateKey(CurrentUser, 1, 260, name), 0u);
    EXPECT_EQ(name, L"two");
}

TEST_F(FakeRegistryTest, deniesAKeyWhateverTheCaseOfItsName)
{
    registry_.add(L"Software\\ZEL\\below");
    registry_.deny(L"Software\\ZEL");
    EXPECT_EQ(open(L"software\\zel"), ErrorAccessDenied);
    EXPECT_EQ(registry_.createKey(CurrentUser, L"Software\\ZEL", 0, KeyRead, key_), ErrorAccessDenied);
    EXPECT_EQ(registry_.deleteSubKey(CurrentUser, L"Software\\ZEL"), ErrorAccessDenied);
    EXPECT_EQ(open(L"Software"), 0u);
    EXPECT_EQ(registry_.openKey(key_, L"ZEL", 0, KeyRead, key_), ErrorAccessDenied);
}

TEST_F(FakeRegistryTest, aKeyCanVanishUnderAnOpenHandle)
{
    registry_.putText(L"one\\two", L"name", L"text");
    EXPECT_EQ(registry_.value(L"one\\two", L"NAME")->data.size(), 10u);
    EXPECT_EQ(open(L"one\\two"), 0u);
    registry_.remove(L"one");
    EXPECT_FALSE(registry_.has(L"one"));
    EXPECT_FALSE(registry_.value(L"one\\two", L"name"));
    EXPECT_EQ(registry_.deleteSubKey(key_, L"x"), ErrorKeyDeleted);
}

TEST_F(FakeRegistryTest, takesOnlyTheFunctionThatBelongsToTheCall)
{
    constexpr std::uint32_t StatusEntryPointNotFound = 0xC0000139;
    registry_.add(L"one");
    EXPECT_EQ(registry_.openKey(CurrentUser, L"one", 0, KeyAllAccess, key_), 0u);
    const ModuleHandle module = platform_.processes.loadModule(L"ntdll.dll");
    void* const query = platform_.processes.findFunction(module, "NtQueryKey");
    void* const remove = platform_.processes.findFunction(module, "ZwDeleteKey");
    std::uint32_t needed = 0;
    EXPECT_EQ(registry_.queryKey(remove, key_, 3, nullptr, 0, needed), StatusEntryPointNotFound);
    EXPECT_EQ(registry_.deleteKeyObject(query, key_), StatusEntryPointNotFound);
    EXPECT_EQ(registry_.deleteKeyObject(remove, key_), 0u);
}

TEST_F(FakeRegistryTest, aModuleOrAFunctionCanBeMissingAndTheLastErrorTellsIt)
{
    platform_.processes.missing.insert("ZwDeleteKey");
    const ModuleHandle module = platform_.processes.loadModule(L"ntdll.dll");
    EXPECT_EQ(platform_.processes.findFunction(module, "ZwDeleteKey"), nullptr);
    EXPECT_EQ(platform_.handles.lastError(), 127u);
    platform_.processes.missingModules.insert(L"ntdll.dll");
    EXPECT_EQ(platform_.processes.loadModule(L"ntdll.dll"), nullptr);
    EXPECT_EQ(platform_.handles.lastError(), 126u);
}

TEST(RegistryNames, aTextIsCutAtItsFirstNullAndComesBack)
{
    EXPECT_EQ(registryUnits(std::wstring(L"a\0b", 3)), u"a");
    EXPECT_EQ(registryUnits(L"\U0001F512"), u"\U0001F512");
    EXPECT_EQ(registryText(u"\u00E9\U0001F512"), L"\u00E9\U0001F512");
}

TEST(RegistryNames, lettersAreFoldedInEachAlphabetAndNothingElseIs)
{
    EXPECT_EQ(foldedName(u"AZ@[`{ \u00C0\u00DE\u00D7\u00F7\u00DF\u0100\u0130\u0131\u0139\u0178\u017D"),
              u"az@[`{ \u00E0\u00FE\u00D7\u00F7\u00DF\u0101\u0130\u0131\u013A\u0178\u017E");
    EXPECT_EQ(foldedName(u"\u0386\u0388\u038C\u038E\u0391\u03A9\u03A2"), u"\u03AC\u03AD\u03CC\u03CD\u03B1\u03C9\u03A2");
    EXPECT_EQ(foldedName(u"\u0400\u040F\u0410\u042F\u0460\u048A\u04C0"), u"\u0450\u045F\u0430\u044F\u0461\u048B\u04C0");
    EXPECT_EQ(foldedName(u"\u0531\u0556\u1E00\u1E9E\u1EA0\uFF21"), u"\u0561\u0586\u1E01\u1E9E\u1EA1\uFF41");
    for (std::uint32_t unit = 1; unit < 0x10000; ++unit)
    {
        const std::u16string once = foldedName(std::u16string(1, static_cast<char16_t>(unit)));
        EXPECT_EQ(foldedName(once), once) << unit;
    }
}
