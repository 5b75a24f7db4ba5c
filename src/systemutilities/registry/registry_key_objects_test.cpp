#include "systemutilities/registry/testing_scripted_registry.h"

#include "platform/handles.h"
#include "platform/utf16.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Calls = std::vector<std::wstring>;

const std::wstring WriteLink64 = L"open 7 Key 8 f013f";

class ListingSubKeys : public ScriptedKey
{
protected:
    void hold(const std::wstring& name) { registry_.tell(L"enumerateKey", {0, 0, {}, name}); }
};

TEST_F(ListingSubKeys, asksForEachWithRoomFor260Characters)
{
    hold(L"a");
    hold(std::wstring(255, L'n'));
    EXPECT_EQ(key_->GetSubKeys(), (std::vector<std::wstring>{L"a", std::wstring(255, L'n')}));
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 20119", L"enumerateKey 101 0 260", L"enumerateKey 101 1 260",
                              L"enumerateKey 101 2 260"}));
}

TEST_F(ListingSubKeys, givesNoneWhenThereIsNoKey)
{
    registry_.tell(L"open", 2);
    EXPECT_TRUE(key_->GetSubKeys().empty());
    EXPECT_EQ(calls(), Calls{L"open 7 Key 0 20119"});
}

TEST_F(ListingSubKeys, skipsWhatMayNotBeSeenAndGoesOn)
{
    registry_.tell(L"enumerateKey", 5);
    hold(L"a");
    registry_.tell(L"enumerateKey", 5);
    registry_.tell(L"enumerateKey", 5);
    hold(L"b");
    EXPECT_EQ(key_->GetSubKeys(), (std::vector<std::wstring>{L"a", L"b"}));
    EXPECT_EQ(calls().back(), L"enumerateKey 101 5 260");
}

class DeletingASubKey : public ScriptedKey
{
protected:
    std::wstring pathOfLink(const std::wstring& path, const std::wstring& subKey)
    {
        fake_.log.clear();
        registry_.tell(L"open", 5);
        const auto key = CreateRegistryKey(7, path, true);
        EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key->DeleteSubKey(subKey, true); }), 5u);
        const std::wstring call = calls().at(0);
        const std::size_t start = std::wstring(L"open 7 ").size();
        return call.substr(start, call.rfind(L" 8 20219") - start);
    }
};

TEST_F(DeletingASubKey, opensThisKeyForWriting)
{
    key_->DeleteSubKey(L"A\\B", false);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 f013f", L"deleteSubKey 101 A\\B"}));
}

TEST_F(DeletingASubKey, succeedsWhenThereIsNone)
{
    registry_.tell(L"deleteSubKey", 2);
    EXPECT_NO_THROW(key_->DeleteSubKey(L"A", false));
    registry_.tell(L"open", 2);
    key_ = makeKey();
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteSubKey(L"A", false); }), 2u);
}

TEST_F(DeletingASubKey, thatIsALinkGoesThroughAnObjectWithThe32BitView)
{
    key_->GetDword(L"v", 0);
    fake_.log.clear();
    key_->DeleteSubKey(L"A", true);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key\\A 8 20219", L"enumerateValue 102 0 16383 size 0", L"close 102",
                              L"open 7 Key\\A 8 f023f", L"load ntdll.dll", L"find ZwDeleteKey", L"ZwDeleteKey 103",
                              L"unload", L"close 103"}));
}

TEST_F(DeletingASubKey, thatIsALinkHasToExist)
{
    registry_.tell(L"open", 2);
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteSubKey(L"A", true); }), 2u);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key\\A 8 20219", L"open 7 Key\\A 8 f023f"}));
}

TEST_F(DeletingASubKey, thatIsALinkIsFoundWithOneBackslashOnEverySystem)
{
    EXPECT_EQ(pathOfLink(L"Key", L"A"), L"Key\\A");
    EXPECT_EQ(pathOfLink(L"Key\\", L"A"), L"Key\\A");
    EXPECT_EQ(pathOfLink(L"Key", L"\\A"), L"Key\\A");
    EXPECT_EQ(pathOfLink(L"Key\\", L"\\A"), L"Key\\A");
    EXPECT_EQ(pathOfLink(L"Key\\\\", L"\\\\A"), L"Key\\\\\\A");
    EXPECT_EQ(pathOfLink(L"", L"A"), L"A");
    EXPECT_EQ(pathOfLink(L"Key", L""), L"Key");
    EXPECT_EQ(pathOfLink(L"Key/", L"/A"), L"Key/\\/A");
}

class DeletingTheKeyItself : public ScriptedKey
{
};

TEST_F(DeletingTheKeyItself, deletesItsValuesAndThenTheKeyOpenedAsALink)
{
    for (const wchar_t* name : {L"a", L"b"})
    {
        registry_.tell(L"enumerateValue", {0, 6, {1, 0}, name});
        registry_.tell(L"enumerateValue", {0, 6, {1, 0}, name});
    }
    key_->DeleteKey();
    EXPECT_EQ(calls(),
              (Calls{L"open 7 Key 8 20119", L"enumerateValue 101 0 16383 size 0", L"enumerateValue 101 0 16383 into 2",
                     L"enumerateValue 101 1 16383 size 0", L"enumerateValue 101 1 16383 into 2",
                     L"enumerateValue 101 2 16383 size 0", L"close 101", WriteLink64, L"deleteValue 102 a",
                     L"deleteValue 102 b", L"load ntdll.dll", L"find ZwDeleteKey", L"ZwDeleteKey 102", L"unload"}));
    key_.reset();
    EXPECT_EQ(calls().back(), L"close 102");
}

TEST_F(DeletingTheKeyItself, usesTheHandleThatIsOpenForWritingAsALink)
{
    key_->SetLinkTarget(L"v", L"x");
    fake_.log.clear();
    key_->DeleteKey();
    EXPECT_EQ(calls(), (Calls{L"enumerateValue 101 0 16383 size 0", L"load ntdll.dll", L"find ZwDeleteKey",
                              L"ZwDeleteKey 101", L"unload"}));
}

TEST_F(DeletingTheKeyItself, stopsAtAValueThatCannotBeDeleted)
{
    registry_.tell(L"enumerateValue", {0, 6, {}, L"a"});
    registry_.tell(L"deleteValue", 5);
    EXPECT_EQ(errorOf("DeleteValue failed.", [&] { key_->DeleteKey(); }), 5u);
    EXPECT_EQ(calls().back(), L"deleteValue 102 a");
}

TEST_F(DeletingTheKeyItself, failsWhenThereIsNone)
{
    registry_.tell(L"open", 2);
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->DeleteKey(); }), 2u);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 8 20119", WriteLink64}));
}

TEST_F(DeletingTheKeyItself, turnsTwoStatusesIntoErrorsAndPassesTheOthers)
{
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> errors = {
        {0xC0000022, 5}, {0xC0000008, 6}, {0xC0000121, 0xC0000121}, {0xC0000034, 0xC0000034}, {1, 1}};
    for (const auto& [status, error] : errors)
    {
        registry_.tell(L"ZwDeleteKey", status);
        EXPECT_EQ(errorOf("ZwDeleteKey failed.", [&] { key_->DeleteKey(); }), error);
        EXPECT_EQ(calls().back(), L"unload");
    }
}

TEST_F(DeletingTheKeyItself, failsWithTheLastErrorWithoutTheFunction)
{
    ntdll_.finds = false;
    EXPECT_EQ(errorOf("Can't get address of ZwDeleteKey.", [&] { key_->DeleteKey(); }), 127u);
    EXPECT_EQ(calls().back(), L"unload");
    ntdll_.loads = false;
    EXPECT_EQ(errorOf("Can't load ntdll.dll.", [&] { key_->DeleteKey(); }), 126u);
    EXPECT_EQ(calls().back(), L"load ntdll.dll");
}

class LinksOfAKey : public ScriptedKey
{
protected:
    void hold(const std::wstring& name, std::uint32_t type, const Bytes& data)
    {
        registry_.tell(L"enumerateValue", {0, type, data, name});
        if (!data.empty())
            registry_.tell(L"enumerateValue", {0, type, data, name});
    }
    using Links = std::vector<std::pair<std::wstring, std::wstring>>;
};

TEST_F(LinksOfAKey, areItsValuesOfThatTypeReadFromTheLinkItself)
{
    hold(L"text", 1, Platform::toUtf16(L"no"));
    hold(L"SymbolicLinkValue", 6, Platform::toUtf16(L"\\REGISTRY\\A"));
    hold(L"number", 4, {1, 0, 0, 0});
    hold(L"other", 6, Platform::toUtf16(L"\\B"));
    EXPECT_EQ(key_->GetLinks(), (Links{{L"SymbolicLinkValue", L"\\REGISTRY\\A"}, {L"other", L"\\B"}}));
    EXPECT_EQ(calls()[0], L"open 7 Key 8 20119");
}

TEST_F(LinksOfAKey, areCutToHalfTheLengthOfTheirData)
{
    hold(L"odd", 6, {'a', 0, 'b', 0, 'c'});
    hold(L"ended", 6, {'a', 0, 0, 0});
    hold(L"inner", 6, {'a', 0, 0, 0, 'b', 0});
    hold(L"none", 6, {});
    EXPECT_EQ(key_->GetLinks(), (Links{{L"odd", L"ab"},
                                       {L"ended", std::wstring(L"a\0", 2)},
                                       {L"inner", std::wstring(L"a\0b", 3)},
                                       {L"none", L""}}));
}

TEST_F(LinksOfAKey, areNoneWithoutAKey)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(key_->GetLinks(), Links{});
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
