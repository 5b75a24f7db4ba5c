#include "windows/file_error/file_error_window.h"

#include "fakes/fake_views.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

struct FileErrorWindowTest : testing::Test
{
    Fakes::FakeViewFactory factory;
};

} // namespace

TEST_F(FileErrorWindowTest, forwardsEachTextToItsView)
{
    FileErrorWindow window(factory.createFileErrorWindowView());
    window.setTitle(L"title");
    window.setHeader(L"header");
    window.setMessage(L"message");
    window.setSource(L"source");
    window.setTarget(L"target");
    EXPECT_EQ(factory.fileErrors[0]->calls, (Calls{L"setTitle title", L"setHeader header", L"setMessage message",
                                                   L"setSource source", L"setTarget target"}));
}

TEST_F(FileErrorWindowTest, givesTheAnswerOfTheView)
{
    factory.fileErrorAnswers = {FileErrorTryAgain, FileErrorSkipFile, FileErrorAbortJob};
    for (const int answer : {FileErrorTryAgain, FileErrorSkipFile, FileErrorAbortJob})
        EXPECT_EQ(FileErrorWindow(factory.createFileErrorWindowView()).doModal(), answer);
}

TEST_F(FileErrorWindowTest, ownsItsView)
{
    std::weak_ptr<Fakes::FileErrorRecord> record;
    {
        FileErrorWindow window(factory.createFileErrorWindowView());
        record = factory.fileErrors[0];
        factory.fileErrors.clear();
        EXPECT_FALSE(record.expired());
    }
    EXPECT_TRUE(record.expired());
}
