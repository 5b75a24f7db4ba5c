#include "panekit/link_text.h"

#include <gtest/gtest.h>

namespace Panekit
{

namespace
{

constexpr int LineHeight = 13;

/// Every character is ten wide.
int tenEach(const std::wstring& text)
{
    return static_cast<int>(text.size()) * 10;
}

FlowedText flow(const std::wstring& text, int width)
{
    return flowText(parseLinks(text), width, LineHeight, tenEach);
}

} // namespace

TEST(ParseLinks, splitsTextAtItsAnchors)
{
    const std::vector<TextRun> expected = {{L"See ", L""}, {L"Set Riddle", L"riddle"}, {L".", L""}};
    EXPECT_EQ(parseLinks(L"See <a href=\"riddle\">Set Riddle</a>."), expected);
}

TEST(ParseLinks, takesOneAnchorAlone)
{
    const std::vector<TextRun> expected = {{L"AES 256", L"algorithm_AES 256"}};
    EXPECT_EQ(parseLinks(L"<a href=\"algorithm_AES 256\">AES 256</a>"), expected);
}

TEST(ParseLinks, takesSeveralAnchorsInAnyCaseAndQuotes)
{
    const std::vector<TextRun> expected = {{L"one", L"1"}, {L" ", L""}, {L"two", L"2"}};
    EXPECT_EQ(parseLinks(L"<a href='1'>one</a> <A class=\"x\" HREF=\"2\">two</A>"), expected);
}

TEST(ParseLinks, leavesWhatIsNoWholeAnchorAsItStands)
{
    for (const wchar_t* const text : {L"a < b & c > d", L"<a href=\"x\">open", L"<a name=\"x\">none</a>",
                                      L"<a href=\"x>unclosed</a>", L"<a href=x>bare</a>", L"<a "})
    {
        const std::vector<TextRun> expected = {{text, L""}};
        EXPECT_EQ(parseLinks(text), expected);
    }
}

TEST(ParseLinks, leavesOtherElementsAndAnUnfinishedTagAsTheyStand)
{
    for (const wchar_t* const text : {L"<abbr href=\"x\">y</a>", L"<a href=\"x\" </a> z>"})
    {
        const std::vector<TextRun> expected = {{text, L""}};
        EXPECT_EQ(parseLinks(text), expected);
    }
}

TEST(ParseLinks, takesAnAnchorAfterABrokenOne)
{
    const std::vector<TextRun> expected = {{L"<a b>", L""}, {L"c", L"d"}};
    EXPECT_EQ(parseLinks(L"<a b><a href=\"d\">c</a>").back(), expected.back());
}

TEST(ParseLinks, givesNothingForNoText)
{
    EXPECT_TRUE(parseLinks(L"").empty());
}

TEST(PlainText, leavesTheAnchorsOut)
{
    EXPECT_EQ(plainText(parseLinks(L"a <a href=\"b\">c</a> d")), L"a c d");
}

TEST(FlowText, keepsTextOnOneLineWithoutALimit)
{
    const FlowedText flowed = flow(L"one two three", 0);
    EXPECT_EQ(flowed.width, 130);
    EXPECT_EQ(flowed.height, LineHeight);
}

TEST(FlowText, wrapsBetweenWordsAndDropsTheSpace)
{
    const FlowedText flowed = flow(L"one two three", 70);
    EXPECT_EQ(flowed.width, 70);
    EXPECT_EQ(flowed.height, 2 * LineHeight);
    EXPECT_EQ(flowed.pieces.back().text, L"three");
    EXPECT_EQ(flowed.pieces.back().x, 0);
    EXPECT_EQ(flowed.pieces.back().y, LineHeight);
}

TEST(FlowText, leavesASpaceOutThatWouldStartTheText)
{
    const FlowedText flowed = flow(L" one", 70);
    ASSERT_EQ(flowed.pieces.size(), 1u);
    EXPECT_EQ(flowed.pieces[0].x, 0);
}

TEST(FlowText, wrapsWithinAWordThatIsTooWide)
{
    const FlowedText flowed = flow(L"ab 1234567", 30);
    EXPECT_LE(flowed.width, 30);
    EXPECT_EQ(flowed.height, 4 * LineHeight);
    std::wstring together;
    for (const TextPiece& piece : flowed.pieces)
        together += piece.text;
    EXPECT_EQ(together, L"ab 1234567");
}

TEST(FlowText, givesEachLineACharacterHoweverNarrowItIs)
{
    EXPECT_EQ(flow(L"abc", 1).height, 3 * LineHeight);
}

TEST(FlowText, breaksAtANewline)
{
    EXPECT_EQ(flow(L"a\nb\n\nc", 0).height, 4 * LineHeight);
}

TEST(FlowText, hasTheHeightOfOneLineWhenItIsEmpty)
{
    EXPECT_EQ(flow(L"", 100).height, LineHeight);
    EXPECT_EQ(flow(L"", 100).width, 0);
}

TEST(FlowText, letsALinkGoOverTwoLines)
{
    const FlowedText flowed = flow(L"<a href=\"x\">one two</a>", 40);
    EXPECT_EQ(flowed.pieces.front().run, flowed.pieces.back().run);
    EXPECT_EQ(flowed.height, 2 * LineHeight);
}

} // namespace Panekit
