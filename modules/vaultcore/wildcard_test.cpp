#include "vaultcore/wildcard.h"

#include <gtest/gtest.h>
#include <string>

using VaultCore::isPattern;
using VaultCore::matchesPattern;

TEST(IsPattern, isTrueForAStarOrAQuestionMark)
{
    EXPECT_TRUE(isPattern(L"*.txt"));
    EXPECT_TRUE(isPattern(L"a?"));
    EXPECT_FALSE(isPattern(L"[a].txt"));
    EXPECT_FALSE(isPattern(L""));
}

TEST(MatchesPattern, takesAStarForAnyCharactersAndForNone)
{
    EXPECT_TRUE(matchesPattern(L"a.txt", L"*.txt"));
    EXPECT_TRUE(matchesPattern(L".txt", L"*.txt"));
    EXPECT_TRUE(matchesPattern(L"a.b.txt", L"a*t"));
    EXPECT_TRUE(matchesPattern(L"abc", L"abc*"));
    EXPECT_TRUE(matchesPattern(L"", L"*"));
    EXPECT_TRUE(matchesPattern(L"aXbXbc", L"a*bc"));
    EXPECT_FALSE(matchesPattern(L"a.text", L"*.txt"));
    EXPECT_FALSE(matchesPattern(L"a.txt2", L"*.txt"));
}

TEST(MatchesPattern, takesAQuestionMarkForExactlyOneCharacter)
{
    EXPECT_TRUE(matchesPattern(L"a1", L"a?"));
    EXPECT_FALSE(matchesPattern(L"a", L"a?"));
    EXPECT_FALSE(matchesPattern(L"a12", L"a?"));
}

TEST(MatchesPattern, takesStarDotStarForEveryName)
{
    EXPECT_TRUE(matchesPattern(L"name", L"*.*"));
    EXPECT_TRUE(matchesPattern(L"name.txt", L"*.*"));
    EXPECT_FALSE(matchesPattern(L"name", L"n*.*"));
}

TEST(MatchesPattern, ofManyStarsEndsSoon)
{
    EXPECT_FALSE(matchesPattern(std::wstring(5000, L'a'), L"*a*a*a*a*a*a*a*a*b"));
}
