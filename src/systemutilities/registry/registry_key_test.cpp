#include "systemutilities/registry/testing_registry_key.h"

#include "platform/handles.h"

#include <algorithm>

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Texts = std::vector<std::wstring>;

class ARegistryKey : public EachRegistryKey
{
};

TEST_P(ARegistryKey, isNothingUntilItIsCreated)
{
    EXPECT_FALSE(key_->Exists(false));
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
    EXPECT_EQ(key_->GetQword(L"v", 78), 78u);
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"default");
    EXPECT_EQ(key_->GetMultiString(L"v", {L"default"}), Texts{L"default"});
    EXPECT_TRUE(key_->GetBinary(L"v").empty());
    EXPECT_TRUE(key_->GetSubKeys().empty());
    EXPECT_TRUE(key_->GetValues(false).empty());
    EXPECT_TRUE(key_->GetLinks().empty());
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->SetDword(L"v", 1, false); }), 2u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteValue(L"v", false); }), 2u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->CreateSubKey(L"s", false); }), 2u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteSubKey(L"s", false); }), 2u);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteKey(); }), 2u);
    EXPECT_EQ(errorOf("Can't open key to get full NT path", [&] { key_->GetNtPath(); }), 2u);
    EXPECT_FALSE(key_->Exists(false));

    key_->Create(false);
    EXPECT_TRUE(key_->Exists(false));
    EXPECT_TRUE(makeKey()->Exists(true));
}

TEST_P(ARegistryKey, keepsAValueOfEachType)
{
    key_->Create(false);
    key_->SetString(L"text", L"a\u20AC\U0001F512");
    key_->SetExpandString(L"expand", L"%TEMP%");
    key_->SetMultiString(L"multi", {L"one", L"", L"two"});
    key_->SetMultiString(L"none", {});
    key_->SetDword(L"number", 0x12345678, false);
    key_->SetDword(L"big", 0x12345678, true);
    key_->SetQword(L"long", 0xFEDCBA9876543210);
    key_->SetBinary(L"bytes", {3, 0, 1});
    key_->SetBinary(L"empty", {});
    key_->SetRawValue(L"own", 4711, {9});

    const auto other = makeKey();
    EXPECT_EQ(other->GetString(L"text", L""), L"a\u20AC\U0001F512");
    EXPECT_EQ(other->GetString(L"expand", L""), L"%TEMP%");
    EXPECT_EQ(other->GetMultiString(L"multi", {}), Texts{L"one"});
    EXPECT_EQ(other->GetMultiString(L"none", {}), Texts{L""});
    EXPECT_EQ(other->GetDword(L"number", 0), 0x12345678u);
    EXPECT_EQ(other->GetDword(L"big", 0), 0x12345678u);
    EXPECT_EQ(other->GetQword(L"long", 0), 0xFEDCBA9876543210u);
    EXPECT_EQ(other->GetBinary(L"bytes"), (Bytes{3, 0, 1}));
    EXPECT_EQ(other->GetBinary(L"empty"), Bytes{});
    std::uint32_t type = 0;
    Bytes data;
    EXPECT_TRUE(other->GetRawValue(L"own", type, data));
    EXPECT_EQ(type, 4711u);
    EXPECT_EQ(data, Bytes{9});
    EXPECT_TRUE(other->GetRawValue(L"big", type, data));
    EXPECT_EQ(type, Platform::ValueDwordBigEndian);
    EXPECT_EQ(data, (Bytes{0x78, 0x56, 0x34, 0x12}));
}

TEST_P(ARegistryKey, readsANumberFromAnyTypeThatIsShortEnough)
{
    key_->Create(false);
    key_->SetString(L"text", L"1");
    EXPECT_EQ(key_->GetDword(L"text", 0), 0x31u);
    key_->SetString(L"text", L"12");
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetDword(L"text", 0); }), 234u);
    EXPECT_EQ(key_->GetQword(L"text", 0), 0x320031u);
    key_->SetBinary(L"bytes", Bytes(9, 1));
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetQword(L"bytes", 0); }), 234u);
    key_->SetBinary(L"bytes", {7, 1});
    EXPECT_EQ(key_->GetDword(L"bytes", 0xFFFFFFFF), 0x107u);
}

TEST_P(ARegistryKey, givesTheDefaultTextForAnotherType)
{
    key_->Create(false);
    key_->SetDword(L"number", 0x610061, false);
    EXPECT_EQ(key_->GetString(L"number", L"default"), L"default");
    EXPECT_EQ(key_->GetMultiString(L"number", {L"default"}), Texts{L"default"});
}

TEST_P(ARegistryKey, readsTextsThatAreNotWholeOrNotEnded)
{
    key_->Create(false);
    key_->SetRawValue(L"odd", Platform::ValueText, {'a', 0, 'b', 0, 'c'});
    EXPECT_EQ(key_->GetString(L"odd", L""), L"ab");
    EXPECT_EQ(key_->GetBinary(L"odd"), (Bytes{'a', 0, 'b', 0, 'c'}));
    key_->SetString(L"inner", std::wstring(L"a\0b", 3));
    EXPECT_EQ(key_->GetString(L"inner", L""), L"a");
    EXPECT_EQ(key_->GetBinary(L"inner").size(), 8u);
    key_->SetRawValue(L"list", Platform::ValueMultiText, {'a', 0, 0, 0, 'b', 0});
    EXPECT_EQ(key_->GetMultiString(L"list", {}), Texts{L"a"});
}

TEST_P(ARegistryKey, deletesAValueOnceAndThenAgainWithoutFailing)
{
    key_->Create(false);
    key_->SetDword(L"v", 1, false);
    key_->DeleteValue(L"v", false);
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
    EXPECT_NO_THROW(key_->DeleteValue(L"v", false));
}

TEST_P(ARegistryKey, findsNamesWhateverTheirCaseAndUpToTheFirstNull)
{
    key_->Create(false);
    key_->SetDword(L"Name", 1, false);
    EXPECT_EQ(key_->GetDword(L"nAME", 77), 1u);
    key_->SetDword(std::wstring(L"cut\0off", 7), 2, false);
    EXPECT_EQ(key_->GetDword(L"cut", 77), 2u);
    key_->SetDword(L"", 3, false);
    EXPECT_EQ(key_->GetDword(L"", 77), 3u);
}

TEST_P(ARegistryKey, listsItsValues)
{
    const std::wstring longName(300, L'n');
    key_->Create(false);
    key_->SetDword(L"number", 7, false);
    key_->SetBinary(longName, {});
    key_->SetString(L"", L"x");
    std::vector<RegistryValue> values = key_->GetValues(false);
    std::sort(values.begin(), values.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].name, L"");
    EXPECT_EQ(values[0].type, Platform::ValueText);
    EXPECT_EQ(values[0].data, (Bytes{'x', 0, 0, 0}));
    EXPECT_EQ(values[1].name, longName);
    EXPECT_EQ(values[1].type, Platform::ValueBinary);
    EXPECT_EQ(values[1].data, Bytes{});
    EXPECT_EQ(values[2].name, L"number");
    EXPECT_EQ(values[2].data, (Bytes{7, 0, 0, 0}));
    EXPECT_EQ(makeKey()->GetValues(true).size(), 3u);
}

TEST_P(ARegistryKey, listsMakesAndDeletesTheKeysBelowIt)
{
    const std::wstring longName(255, L'n');
    key_->Create(false);
    key_->CreateSubKey(L"one\\inner", false);
    key_->CreateSubKey(L"two", false);
    key_->CreateSubKey(L"two", false);
    key_->CreateSubKey(longName, false);
    Texts names = key_->GetSubKeys();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{longName, L"one", L"two"}));

    errorOf("RegDeleteKey failed.", [&] { key_->DeleteSubKey(L"one", false); });
    key_->DeleteSubKey(L"one\\inner", false);
    key_->DeleteSubKey(L"one", false);
    EXPECT_NO_THROW(key_->DeleteSubKey(L"one", false));
    key_->DeleteSubKey(longName, false);
    EXPECT_EQ(key_->GetSubKeys(), Texts{L"two"});
}

TEST_P(ARegistryKey, failsOnceItHasVanishedWhileItWasOpen)
{
    key_->Create(false);
    key_->SetDword(L"v", 1, false);
    CreateRegistryKey(Platform::CurrentUser, path_, false)->DeleteSubKey(L"key", false);
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetDword(L"v", 0); }), Platform::ErrorKeyDeleted);
    EXPECT_EQ(errorOf("RegSetKeyValue failed.", [&] { key_->SetDword(L"v", 1, false); }), Platform::ErrorKeyDeleted);
    EXPECT_EQ(errorOf("GetSubKeys failed.", [&] { key_->GetSubKeys(); }), Platform::ErrorKeyDeleted);
    EXPECT_EQ(errorOf("RegEnumValue failed.", [&] { key_->GetValues(false); }), Platform::ErrorKeyDeleted);
    EXPECT_EQ(errorOf("RegCreateKey failed.", [&] { key_->CreateSubKey(L"s", false); }), Platform::ErrorKeyDeleted);
    EXPECT_FALSE(key_->Exists(false));
    EXPECT_EQ(makeKey()->GetDword(L"v", 77), 77u);
    key_->Create(false);
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
}

TEST_P(ARegistryKey, isDeletedWithItsValues)
{
    key_->Create(false);
    const auto below = makeKey(L"below");
    below->Create(false);
    below->SetDword(L"a", 1, false);
    below->SetDword(L"b", 2, false);
    below->DeleteKey();
    EXPECT_FALSE(makeKey(L"below")->Exists(false));
    EXPECT_TRUE(key_->Exists(false));
}

TEST_P(ARegistryKey, isNotDeletedWithKeysBelowIt)
{
    key_->Create(false);
    key_->SetDword(L"v", 1, false);
    key_->CreateSubKey(L"below", false);
    errorOf("ZwDeleteKey failed.", [&] { makeKey()->DeleteKey(); });
    EXPECT_TRUE(makeKey(L"below")->Exists(false));
    EXPECT_EQ(makeKey()->GetDword(L"v", 77), 77u); // its values are gone before that is seen
}

TEST_P(ARegistryKey, tellsItsPathInTheKernel)
{
    key_->Create(false);
    const std::wstring path = key_->GetNtPath();
    EXPECT_TRUE(path.starts_with(L"\\"));
    EXPECT_TRUE(path.ends_with(path_ + L"\\key"));
}

class ALinkKey : public EachRegistryKey
{
protected:
    void SetUp() override
    {
        EachRegistryKey::SetUp();
        target_ = makeKey(L"target");
        link_ = makeKey(L"link");
        key_->Create(false);
        target_->Create(false);
        target_->SetDword(L"v", 5, false);
        target_->CreateSubKey(L"below", false);
        link_->Create(true);
        link_->SetLinkTarget(L"SymbolicLinkValue", target_->GetNtPath());
        link_ = makeKey(L"link");
    }
    void TearDown() override
    {
        target_.reset();
        link_.reset();
        EachRegistryKey::TearDown();
    }

    std::unique_ptr<IRegistryKey> target_;
    std::unique_ptr<IRegistryKey> link_;
};

TEST_P(ALinkKey, leadsToItsTarget)
{
    EXPECT_EQ(link_->GetDword(L"v", 77), 5u);
    EXPECT_EQ(link_->GetSubKeys(), Texts{L"below"});
    link_->SetDword(L"w", 6, false);
    EXPECT_EQ(makeKey(L"target")->GetDword(L"w", 77), 6u);
    EXPECT_EQ(link_->GetNtPath(), target_->GetNtPath());
}

TEST_P(ALinkKey, tellsWhereItLeadsTo)
{
    const auto links = link_->GetLinks();
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].first, L"SymbolicLinkValue");
    EXPECT_EQ(links[0].second, target_->GetNtPath());
    EXPECT_TRUE(target_->GetLinks().empty());
}

TEST_P(ALinkKey, isThereItselfWhenItsTargetIsNot)
{
    target_->DeleteSubKey(L"below", false);
    target_->DeleteKey();
    EXPECT_TRUE(link_->Exists(true));
    EXPECT_FALSE(link_->Exists(false));
    EXPECT_EQ(link_->GetDword(L"v", 77), 77u);
    EXPECT_EQ(link_->GetLinks().size(), 1u);
    link_->DeleteKey();
    EXPECT_FALSE(link_->Exists(true));
}

TEST_P(ALinkKey, isDeletedWithoutItsTarget)
{
    link_->DeleteKey();
    EXPECT_FALSE(makeKey(L"link")->Exists(true));
    EXPECT_EQ(makeKey(L"target")->GetDword(L"v", 77), 5u);
}

TEST_P(ALinkKey, isDeletedFromTheKeyAboveIt)
{
    key_->DeleteSubKey(L"link", true);
    EXPECT_FALSE(makeKey(L"link")->Exists(true));
    EXPECT_EQ(makeKey(L"target")->GetDword(L"v", 77), 5u);
}

INSTANTIATE_EACH_SYSTEM(ARegistryKey);
INSTANTIATE_EACH_SYSTEM(ALinkKey);

} // namespace

} // namespace Halden::SystemUtilities::Registry
