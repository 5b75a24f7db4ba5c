#include "systemutilities/registry/testing_scripted_registry.h"

#include "platform/utf16.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Calls = std::vector<std::wstring>;

class WritingAValue : public ScriptedKey
{
protected:
    Bytes textWith(std::wstring text, std::size_t nulls)
    {
        text.append(nulls, L'\0');
        return Platform::toUtf16(text);
    }
    Calls set(const std::wstring& typeAndSize)
    {
        const Calls expected{L"open 7 Key 0 f013f", L"set 101 v " + typeAndSize};
        return expected;
    }
};

TEST_F(WritingAValue, storesATextWithItsTerminator)
{
    key_->SetString(L"v", L"ab");
    EXPECT_EQ(registry_.written, (Bytes{'a', 0, 'b', 0, 0, 0}));
    EXPECT_EQ(calls(), set(L"1 6"));
    key_->SetString(L"v", L"");
    EXPECT_EQ(registry_.written, (Bytes{0, 0}));
    key_->SetString(L"v", L"\U0001F512");
    EXPECT_EQ(registry_.written, (Bytes{0x3D, 0xD8, 0x12, 0xDD, 0, 0}));
    key_->SetString(L"v", std::wstring(L"a\0b", 3));
    EXPECT_EQ(registry_.written, (Bytes{'a', 0, 0, 0, 'b', 0, 0, 0}));
}

TEST_F(WritingAValue, storesAnExpandableTextWithItsTerminator)
{
    key_->SetExpandString(L"v", L"%A%");
    EXPECT_EQ(registry_.written, textWith(L"%A%", 1));
    EXPECT_EQ(calls(), set(L"2 8"));
}

TEST_F(WritingAValue, storesAMultipleTextWithATerminatorEachAndOneMore)
{
    key_->SetMultiString(L"v", {L"one", L"two"});
    EXPECT_EQ(registry_.written, textWith(std::wstring(L"one\0two", 7), 2));
    EXPECT_EQ(calls(), set(L"7 18"));
    key_->SetMultiString(L"v", {});
    EXPECT_EQ(registry_.written, (Bytes{0, 0}));
    key_->SetMultiString(L"v", {L"a", L"", L"b"});
    EXPECT_EQ(registry_.written, textWith(std::wstring(L"a\0\0b", 4), 2));
}

TEST_F(WritingAValue, storesANumberWithTheSameBytesInBothTypes)
{
    key_->SetDword(L"v", 0x12345678, false);
    EXPECT_EQ(registry_.written, (Bytes{0x78, 0x56, 0x34, 0x12}));
    key_->SetDword(L"v", 0x12345678, true);
    EXPECT_EQ(registry_.written, (Bytes{0x78, 0x56, 0x34, 0x12}));
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 f013f", L"set 101 v 4 4", L"set 101 v 5 4"}));
}

TEST_F(WritingAValue, storesALongNumber)
{
    key_->SetQword(L"v", 0x0807060504030201);
    EXPECT_EQ(registry_.written, (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(calls(), set(L"11 8"));
}

TEST_F(WritingAValue, storesBytesAsTheyStand)
{
    key_->SetBinary(L"v", {3, 1, 2});
    EXPECT_EQ(registry_.written, (Bytes{3, 1, 2}));
    EXPECT_EQ(calls(), set(L"3 3"));
    key_->SetBinary(L"v", {});
    EXPECT_EQ(registry_.written, Bytes{});
}

TEST_F(WritingAValue, storesTheTargetOfALinkWithoutATerminator)
{
    key_->SetLinkTarget(L"v", L"\\R");
    EXPECT_EQ(registry_.written, (Bytes{'\\', 0, 'R', 0}));
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 8 f013f", L"set 101 v 6 4"}));
}

TEST_F(WritingAValue, opensTheKeyAsALinkForTheTypeOfLinksAlone)
{
    for (std::uint32_t type = 0; type < 13; ++type)
    {
        fake_.log.clear();
        makeKey()->SetRawValue(L"v", type, {1});
        EXPECT_EQ(calls()[0], type == 6 ? L"open 7 Key 8 f013f" : L"open 7 Key 0 f013f");
        EXPECT_TRUE(calls()[1].ends_with(L" v " + std::to_wstring(type) + L" 1"));
    }
}

TEST_F(WritingAValue, needsTheKey)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->SetDword(L"v", 1, false); }), 2u);
    EXPECT_EQ(calls(), Calls{L"open 7 Key 0 f013f"});
}

class DeletingAValue : public ScriptedKey
{
};

TEST_F(DeletingAValue, opensTheKeyForWritingAsItIsTold)
{
    key_->DeleteValue(L"v", false);
    key_->DeleteValue(L"w", true);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 f013f", L"deleteValue 101 v", L"close 101", L"open 7 Key 8 f013f",
                              L"deleteValue 102 w"}));
}

TEST_F(DeletingAValue, succeedsWhenThereIsNone)
{
    registry_.tell(L"deleteValue", 2);
    EXPECT_NO_THROW(key_->DeleteValue(L"v", false));
    registry_.tell(L"deleteValue", 3);
    EXPECT_EQ(errorOf("DeleteValue failed.", [&] { key_->DeleteValue(L"v", false); }), 3u);
}

TEST_F(DeletingAValue, failsWhenThereIsNoKey)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteValue(L"v", false); }), 2u);
}

class ListingValues : public ScriptedKey
{
protected:
    void hold(const std::wstring& name, std::uint32_t type, const Bytes& data)
    {
        registry_.tell(L"enumerateValue", {0, type, data, name});
        if (!data.empty())
            registry_.tell(L"enumerateValue", {0, type, data, name});
    }
};

TEST_F(ListingValues, asksForEachTwiceAndForAnEmptyOneOnce)
{
    hold(L"a", 4, {1, 2, 3, 4});
    hold(L"", 3, {});
    hold(std::wstring(300, L'n'), 1, {'x', 0});
    const std::vector<RegistryValue> values = key_->GetValues(false);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].name, L"a");
    EXPECT_EQ(values[0].type, 4u);
    EXPECT_EQ(values[0].data, (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(values[1].name, L"");
    EXPECT_EQ(values[1].type, 3u);
    EXPECT_EQ(values[1].data, Bytes{});
    EXPECT_EQ(values[2].name, std::wstring(300, L'n'));
    EXPECT_EQ(calls(),
              (Calls{L"open 7 Key 0 20119", L"enumerateValue 101 0 16383 size 0", L"enumerateValue 101 0 16383 into 4",
                     L"enumerateValue 101 1 16383 size 0", L"enumerateValue 101 2 16383 size 0",
                     L"enumerateValue 101 2 16383 into 2", L"enumerateValue 101 3 16383 size 0"}));
}

TEST_F(ListingValues, givesNoneWhenThereIsNoKey)
{
    registry_.tell(L"open", 2);
    EXPECT_TRUE(key_->GetValues(true).empty());
    EXPECT_EQ(calls(), Calls{L"open 7 Key 8 20119"});
}

TEST_F(ListingValues, skipsWhatMayNotBeSeenAndGoesOn)
{
    registry_.tell(L"enumerateValue", 5);
    hold(L"a", 4, {1});
    registry_.tell(L"enumerateValue", 5);
    hold(L"b", 4, {1});
    const std::vector<RegistryValue> values = key_->GetValues(false);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].name, L"a");
    EXPECT_EQ(values[1].name, L"b");
    EXPECT_EQ(calls().back(), L"enumerateValue 101 4 16383 size 0");
}

TEST_F(ListingValues, failsForAnyFailureOfTheSecondStep)
{
    for (const std::uint32_t result : {2u, 5u, 234u, 259u, 1018u})
    {
        registry_.tell(L"enumerateValue", {0, 4, {1}, L"a"});
        registry_.tell(L"enumerateValue", result);
        EXPECT_EQ(errorOf("RegEnumValue failed.", [&] { key_->GetValues(false); }), result);
    }
}

TEST_F(ListingValues, cutsOneThatShrinksBetweenTheTwoSteps)
{
    registry_.tell(L"enumerateValue", {0, 3, {1, 2, 3}, L"a"});
    registry_.tell(L"enumerateValue", {0, 3, {4}, L"a"});
    EXPECT_EQ(key_->GetValues(false).at(0).data, Bytes{4});
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
