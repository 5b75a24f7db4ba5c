#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace
{

using Platform::BoxIconInformation;
using Platform::BoxIconQuestion;
using Platform::BoxOk;
using Platform::BoxYesNo;

TEST(FakeMessageBoxes, everyBoxIsRecordedWithItsTexts)
{
    Fakes::FakePlatform fake;
    Platform::platform().messageBoxes.show(L"text", L"caption", BoxOk | BoxIconInformation);
    EXPECT_EQ(fake.messageBoxes.boxes(), (std::vector<Fakes::ShownBox>{{L"text", L"caption", 0x40}}));
    EXPECT_TRUE(fake.log.contains(L"messageBox text"));
}

TEST(FakeMessageBoxes, scriptedAnswersComeInOrderAndThenTheCautiousOne)
{
    Fakes::FakePlatform fake;
    fake.messageBoxes.answer(Platform::BoxAnswerYes);
    EXPECT_EQ(fake.messageBoxes.show(L"", L"", BoxYesNo | BoxIconQuestion), Platform::BoxAnswerYes);
    EXPECT_EQ(fake.messageBoxes.show(L"", L"", BoxYesNo | BoxIconQuestion), Platform::BoxAnswerNo);
    EXPECT_EQ(fake.messageBoxes.show(L"", L"", BoxOk), Platform::BoxAnswerOk);
}

} // namespace
