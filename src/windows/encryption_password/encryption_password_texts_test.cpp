#include "windows/encryption_password/encryption_password_state.h"
#include "windows/encryption_password/encryption_password_texts.h"

#include <gtest/gtest.h>

using namespace JobRunner;

TEST(EncryptionPasswordTexts, namesEachAlgorithmByItsNumber)
{
    const std::vector<std::wstring> names = {L"DESX",     L"BLOWFISH-448", L"3-DES",     L"AES-256",    L"RC2",
                                             L"DIAMOND2", L"TEA-128",      L"SAFER-128", L"3-WAY",      L"GOST-256",
                                             L"SHARK",    L"CAST256E",     L"SQUARE",    L"SKIPJACK80", L"TWOFISH",
                                             L"MARS-448", L"SERPENT"};
    ASSERT_EQ(AlgorithmNames.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(algorithmName(static_cast<int>(i)), names[i]);
    EXPECT_EQ(algorithmName(-1), L"");
    EXPECT_EQ(algorithmName(17), L"");
}

TEST(EncryptionPasswordTexts, theAlgorithmsNameIsInItsLinkTwice)
{
    EXPECT_EQ(algorithmLink(3), L"<a href=\"algorithm_AES-256\">AES-256</a>");
}

TEST(EncryptionPasswordTexts, eachDestinyHasItsSentenceAndALink)
{
    EXPECT_EQ(destinyText(0), L"Keep original files (do not delete). <a href=\"changedestiny\">Change</a>");
    EXPECT_EQ(destinyText(1), L"Delete original files after encryption. <a href=\"changedestiny\">Change</a>");
    EXPECT_EQ(destinyText(2), L"Wipe original files after encryption. <a href=\"changedestiny\">Change</a>");
}

TEST(EncryptionPasswordTexts, fiveClicksOnTheOriginLinkFromDeleteEndOnKeep)
{
    int destiny = 1;
    for (int click = 0; click < 5; ++click)
        destiny = nextDestiny(destiny);
    EXPECT_EQ(destiny, 0);
}

TEST(EncryptionPasswordTexts, theRiddleGoesIntoItsLinkAsItStands)
{
    EXPECT_EQ(riddleLink(L""), L"<a href=\"riddle\">Set Riddle</a>");
    EXPECT_EQ(riddleLink(L"a <b> \"c\""), L"<a href=\"riddle\">a <b> \"c\"</a>");
}

TEST(EncryptionPasswordTexts, aLinkIsKnownByItsWordInThisOrder)
{
    EXPECT_EQ(linkOf(L"changedestiny"), EncryptionLink::Destiny);
    EXPECT_EQ(linkOf(L"algorithm_AES-256"), EncryptionLink::Algorithm);
    EXPECT_EQ(linkOf(L"riddle"), EncryptionLink::Riddle);
    EXPECT_EQ(linkOf(L"sfxcomment"), EncryptionLink::SfxComment);
    EXPECT_EQ(linkOf(L"x changedestiny"), EncryptionLink::None);
    EXPECT_EQ(linkOf(L""), EncryptionLink::None);
    EXPECT_EQ(linkOf(L"my sfxcomment"), EncryptionLink::SfxComment);
    EXPECT_EQ(linkOf(L"my sfxcomment riddle"), EncryptionLink::Riddle);
    EXPECT_EQ(linkOf(L"riddle algorithm_"), EncryptionLink::Algorithm);
}

TEST(EncryptionPasswordTexts, namesEachRowOfTheSection)
{
    EXPECT_STREQ(EncryptionText::AlgorithmCaption, L"Algorithm:");
    EXPECT_STREQ(EncryptionText::RiddleCaption, L"Riddle:");
    EXPECT_STREQ(EncryptionText::SfxCommentCaption, L"Sfx Comment:");
    EXPECT_STREQ(EncryptionText::SfxCommentLink, L"<a href=\"sfxcomment\">Change Sfx Description</a>");
    EXPECT_EQ(linkOf(L"sfxcomment"), EncryptionLink::SfxComment);
}

TEST(EncryptionPasswordState, startsWithDeleteAndAes)
{
    const EncryptionPasswordState state;
    EXPECT_EQ(state.destiny, 1);
    EXPECT_EQ(state.algorithm, 3);
    EXPECT_FALSE(state.sfxCommentDefault);
    EXPECT_FALSE(state.passwordMode());
    EXPECT_FALSE(state.sectionOpen());
}

TEST(EncryptionPasswordState, theButtonSwitchesTheSectionAndOffersTheOther)
{
    EncryptionPasswordState state;
    state.section = SectionCollapsed;
    EXPECT_STREQ(state.sectionButton(), L"More >>");
    state.section = state.otherSection();
    EXPECT_TRUE(state.sectionOpen());
    EXPECT_STREQ(state.sectionButton(), L"<< Less");
    state.section = state.otherSection();
    EXPECT_EQ(state.section, SectionCollapsed);
}

TEST(EncryptionPasswordState, theFirstItemOfTheInputChoiceIsThePassword)
{
    EncryptionPasswordState state;
    EXPECT_TRUE(state.changeInputMode(EncryptionPasswordState::modeOfItem(0)));
    EXPECT_TRUE(state.passwordMode());
    EXPECT_FALSE(state.changeInputMode(PasswordInput));
    EXPECT_TRUE(state.changeInputMode(EncryptionPasswordState::modeOfItem(1)));
    EXPECT_EQ(state.inputMode, KeyFileInput);
    EXPECT_EQ(state.inputItem(), 1);
}
