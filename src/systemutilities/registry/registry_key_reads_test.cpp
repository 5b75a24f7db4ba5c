#include "systemutilities/registry/testing_scripted_registry.h"

#include "platform/handles.h"
#include "platform/utf16.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Calls = std::vector<std::wstring>;
using Texts = std::vector<std::wstring>;

class ReadingAValue : public ScriptedKey
{
protected:
    /// The next value that is read: asked for its size, and then for its data.
    void hold(std::uint32_t type, const Bytes& data)
    {
        registry_.tell(L"query", {0, type, data});
        registry_.tell(L"query", {0, type, data});
    }
    /// The same, with a text as units.
    void hold(std::uint32_t type, const std::wstring& text) { hold(type, Platform::toUtf16(text)); }
    void holdTexts(const std::wstring& units) { hold(Platform::ValueMultiText, units); }

    Texts multiString() { return key_->GetMultiString(L"v", {L"default"}); }
};

TEST_F(ReadingAValue, asksForANumberWithItsTypeAndSize)
{
    registry_.tell(L"query", {0, 4, {0x78, 0x56, 0x34, 0x12}});
    EXPECT_EQ(key_->GetDword(L"v", 1), 0x12345678u);
    registry_.tell(L"query", {0, 11, {1, 2, 3, 4, 5, 6, 7, 8}});
    EXPECT_EQ(key_->GetQword(L"w", 1), 0x0807060504030201u);
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 20119", L"query 101 v 4 into 4", L"query 101 w 11 into 8"}));
}

TEST_F(ReadingAValue, givesTheDefaultOfANumberWhenKeyOrValueIsMissing)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
    registry_.tell(L"open", 2);
    EXPECT_EQ(key_->GetQword(L"v", 0x1234567890), 0x1234567890u);
    registry_.tell(L"query", 2);
    EXPECT_EQ(key_->GetDword(L"v", 78), 78u);
    registry_.tell(L"query", 2);
    EXPECT_EQ(key_->GetQword(L"v", 79), 79u);
}

TEST_F(ReadingAValue, takesANumberWhateverTheTypeThatComesBack)
{
    registry_.tell(L"query", {0, Platform::ValueText, {'1', 0, 0, 0}});
    EXPECT_EQ(key_->GetDword(L"v", 77), 0x31u);
    registry_.tell(L"query", {0, Platform::ValueBinary, {9, 0, 0, 0, 0, 0, 0, 1}});
    EXPECT_EQ(key_->GetQword(L"v", 77), 0x0100000000000009u);
}

TEST_F(ReadingAValue, fillsTheLowBytesOfANumberThatIsShorter)
{
    registry_.tell(L"query", {0, Platform::ValueDword, {7, 1}});
    EXPECT_EQ(key_->GetDword(L"v", 0xFFFFFFFF), 0x107u);
    registry_.tell(L"query", {0, Platform::ValueDword, {1, 2, 3, 4}});
    EXPECT_EQ(key_->GetQword(L"v", 0xFFFFFFFF), 0x04030201u);
}

TEST_F(ReadingAValue, failsForANumberThatIsLongerThanAsked)
{
    registry_.tell(L"query", 234);
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetDword(L"v", 1); }), 234u);
    registry_.tell(L"query", 234);
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetQword(L"v", 1); }), 234u);
}

TEST_F(ReadingAValue, asksForDataTwiceFirstForItsSize)
{
    hold(99, Bytes{1, 2, 3});
    std::uint32_t type = 0;
    Bytes data{9};
    EXPECT_TRUE(key_->GetRawValue(L"v", type, data));
    EXPECT_EQ(type, 99u);
    EXPECT_EQ(data, (Bytes{1, 2, 3}));
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 20119", L"query 101 v 0 size 0", L"query 101 v 99 into 3"}));
}

TEST_F(ReadingAValue, givesTypeAndDataOnlyWhenThereIsOne)
{
    std::uint32_t type = 88;
    Bytes data{9};
    registry_.tell(L"open", 2);
    EXPECT_FALSE(key_->GetRawValue(L"v", type, data));
    registry_.tell(L"query", 2);
    EXPECT_FALSE(key_->GetRawValue(L"v", type, data));
    registry_.tell(L"query", {0, 1, {1, 2}});
    registry_.tell(L"query", 2);
    EXPECT_FALSE(key_->GetRawValue(L"v", type, data));
    EXPECT_EQ(type, 88u);
    EXPECT_EQ(data, Bytes{9});
}

TEST_F(ReadingAValue, failsWhenItGrowsBetweenTheTwoQueries)
{
    std::uint32_t type = 0;
    Bytes data;
    registry_.tell(L"query", {0, 1, {1, 2}});
    registry_.tell(L"query", 234);
    EXPECT_EQ(errorOf("RegGetValue failed.", [&] { key_->GetRawValue(L"v", type, data); }), 234u);
}

TEST_F(ReadingAValue, isCutWhenItShrinksBetweenTheTwoQueries)
{
    registry_.tell(L"query", {0, 3, {1, 2, 3, 4}});
    registry_.tell(L"query", {0, 3, {5, 6}});
    EXPECT_EQ(key_->GetBinary(L"v"), (Bytes{5, 6}));
    registry_.tell(L"query", {0, 3, {}});
    registry_.tell(L"query", {0, 3, {5, 6}});
    EXPECT_EQ(key_->GetBinary(L"v"), Bytes{}); // what has grown from nothing is as it was
}

TEST_F(ReadingAValue, givesTheBytesOfAnyType)
{
    for (const std::uint32_t type : {0u, 1u, 3u, 4u, 6u, 7u, 11u, 4711u})
    {
        hold(type, Bytes{type > 3, 2, 3});
        EXPECT_EQ(key_->GetBinary(L"v"), (Bytes{type > 3, 2, 3}));
    }
    hold(3, Bytes{});
    EXPECT_EQ(key_->GetBinary(L"v"), Bytes{});
    registry_.tell(L"query", 2);
    EXPECT_EQ(key_->GetBinary(L"v"), Bytes{});
    registry_.tell(L"open", 2);
    EXPECT_EQ(makeKey()->GetBinary(L"v"), Bytes{});
}

TEST_F(ReadingAValue, givesATextOfTheTwoTypesOfTexts)
{
    hold(Platform::ValueText, std::wstring(L"plain\0", 6));
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"plain");
    hold(Platform::ValueExpandText, std::wstring(L"%TEMP%\0", 7));
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"%TEMP%");
}

TEST_F(ReadingAValue, givesTheDefaultTextForAnyOtherType)
{
    for (const std::uint32_t type : {0u, 3u, 4u, 5u, 6u, 7u, 11u})
    {
        hold(type, std::wstring(L"text\0", 5));
        EXPECT_EQ(key_->GetString(L"v", L"default"), L"default") << type;
    }
    registry_.tell(L"query", 2);
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"default");
    registry_.tell(L"open", 2);
    EXPECT_EQ(makeKey()->GetString(L"v", L"default"), L"default");
}

TEST_F(ReadingAValue, endsATextAtItsFirstNullOrWithTheData)
{
    hold(1, std::wstring(L"before\0after\0", 13));
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"before");
    hold(1, std::wstring(L"unended"));
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"unended");
    hold(1, Bytes{});
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"");
    hold(1, Bytes{0, 0});
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"");
}

TEST_F(ReadingAValue, dropsTheLastByteOfATextOfAnOddNumber)
{
    hold(1, Bytes{'a', 0, 'b', 0, 'c'});
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"ab");
    hold(1, Bytes{'a'});
    EXPECT_EQ(key_->GetString(L"v", L"default"), L"");
}

TEST_F(ReadingAValue, takesUnitsForCharactersOnEverySystem)
{
    hold(1, Bytes{0x3D, 0xD8, 0x12, 0xDD, 0, 0});
    EXPECT_EQ(key_->GetString(L"v", L""), L"\U0001F512");
    hold(7, Bytes{0x3D, 0xD8, 0x12, 0xDD, 0, 0, 0x00, 0x01, 0x01, 0x00, 0, 0, 0, 0});
    EXPECT_EQ(multiString(), (Texts{L"\U0001F512", L"\u0100\u0001"}));
}

TEST_F(ReadingAValue, splitsAMultipleTextAtItsNulls)
{
    holdTexts(std::wstring(L"one\0two\0three\0\0", 15));
    EXPECT_EQ(multiString(), (Texts{L"one", L"two", L"three"}));
    holdTexts(std::wstring(L"one\0\0", 5));
    EXPECT_EQ(multiString(), Texts{L"one"});
}

TEST_F(ReadingAValue, endsAMultipleTextAtTheSecondNullInARow)
{
    holdTexts(std::wstring(L"one\0\0two\0\0", 10));
    EXPECT_EQ(multiString(), Texts{L"one"});
    holdTexts(std::wstring(L"\0\0two\0\0", 7));
    EXPECT_EQ(multiString(), Texts{L""});
}

TEST_F(ReadingAValue, keepsAnEmptyTextAtTheStartOfAMultipleText)
{
    holdTexts(std::wstring(L"\0two\0\0", 6));
    EXPECT_EQ(multiString(), (Texts{L"", L"two"}));
}

TEST_F(ReadingAValue, takesOneNullForOneEmptyText)
{
    holdTexts(std::wstring(1, L'\0'));
    EXPECT_EQ(multiString(), Texts{L""});
    hold(7, Bytes{});
    EXPECT_EQ(multiString(), Texts{});
}

TEST_F(ReadingAValue, leavesOutTheLastOfAMultipleTextWhenNoNullEndsIt)
{
    holdTexts(std::wstring(L"one\0two", 7));
    EXPECT_EQ(multiString(), Texts{L"one"});
    holdTexts(std::wstring(L"one\0two\0", 8));
    EXPECT_EQ(multiString(), (Texts{L"one", L"two"}));
    holdTexts(L"one");
    EXPECT_EQ(multiString(), Texts{});
}

TEST_F(ReadingAValue, dropsTheLastByteOfAMultipleTextOfAnOddNumber)
{
    hold(7, Bytes{'a', 0, 0, 0, 0});
    EXPECT_EQ(multiString(), Texts{L"a"});
    hold(7, Bytes{'a', 0, 0, 0, 'b', 0, 0});
    EXPECT_EQ(multiString(), Texts{L"a"});
}

TEST_F(ReadingAValue, givesTheDefaultMultipleTextForAnyOtherType)
{
    for (const std::uint32_t type : {0u, 1u, 2u, 3u, 4u, 6u, 11u})
    {
        hold(type, std::wstring(L"one\0\0", 5));
        EXPECT_EQ(multiString(), Texts{L"default"}) << type;
    }
    registry_.tell(L"query", 2);
    EXPECT_EQ(multiString(), Texts{L"default"});
    registry_.tell(L"open", 2);
    key_ = makeKey();
    EXPECT_EQ(multiString(), Texts{L"default"});
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
