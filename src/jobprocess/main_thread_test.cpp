#include "jobprocess/main_thread.h"

#include "bridges/module_factories.h"
#include "commands/command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "interfaces/process/exception.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace JobRunner
{

namespace
{

const std::wstring JobFile = L"C:\\Temp\\job.json";

class MainThreadTest : public testing::Test
{
protected:
    MainThreadTest()
    {
        setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
        setVaultCoreFactory(Fakes::FakeEngine::createFactory);
        system_.shell.arguments = {L"C:\\Suite\\bin\\JobRunner.exe", JobFile};
        system_.shell.files = {JobFile};
    }
    ~MainThreadTest() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    Fakes::JobAnswers& job() { return documents_.documents[JobFile]; }

    /// Text of the failure of a run, empty for none.
    std::wstring run()
    {
        try
        {
            MainThread(tracker_).run();
            return L"";
        }
        catch (const Exception& failure)
        {
            return failure.text;
        }
    }

    std::vector<std::wstring> tracked() { return tracker_->calls(); }
    bool jobFileExists() { return system_.shell.files.count(JobFile) != 0; }
    std::size_t count(const std::wstring& call)
    {
        const auto all = system_.log.calls();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), call));
    }

    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeZelPlatform documents_{system_.log};
    Fakes::FakeEngine engine_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

TEST_F(MainThreadTest, withoutAnArgumentItTellsThatItIsInternal)
{
    system_.shell.arguments.resize(1);
    EXPECT_EQ(run(), L"This application should not be called directly. It is designed for internal purposes.");
    EXPECT_EQ(count(L"createWindow JobRunner_MessageWindow JobRunner MessageWindow"), 0u);
}

TEST_F(MainThreadTest, aJobFileThatDoesNotLoadIsNamedAndStays)
{
    EXPECT_EQ(run(), L"Cannot load configuration file: " + JobFile);
    EXPECT_TRUE(jobFileExists());
}

TEST_F(MainThreadTest, aJobWithoutAKindIsReleasedAndItsFileDeleted)
{
    job();
    EXPECT_EQ(run(), L"Unknown type of the thread operation in configuration file");
    EXPECT_FALSE(jobFileExists());
    EXPECT_EQ(count(L"document.Release"), 1u);
    EXPECT_TRUE(tracked().empty());
}

TEST_F(MainThreadTest, onlyTheFirstArgumentCounts)
{
    job().wipe = true;
    system_.shell.arguments.push_back(L"C:\\Temp\\other.json");
    EXPECT_EQ(run(), L"");
    EXPECT_FALSE(jobFileExists());
}

TEST_F(MainThreadTest, aJobFileThatCannotBeDeletedIsNoFailure)
{
    job().wipe = true;
    system_.shell.files.clear();
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(count(L"deleteFile " + JobFile), 1u);
}

TEST_F(MainThreadTest, aDeclinedJobEndsInOrder)
{
    job().wipe = true;
    system_.messageBoxes.answer(Platform::BoxAnswerNo);
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(tracked(), (std::vector<std::wstring>{L"TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)",
                                                    L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
                                                    L"TrackViewEvent(user_cancelled, , none)"}));
    EXPECT_EQ(engine_.startedWith, nullptr);
    EXPECT_EQ(count(L"document.Release"), 1u);
    EXPECT_EQ(count(L"postQuit"), 1u);
    EXPECT_EQ(count(L"send 2023"), 1u);
}

TEST_F(MainThreadTest, aWholeWipeReportsItsCounts)
{
    job().wipe = true;
    job().deletionMethod = 2;
    system_.messageBoxes.answer(Platform::BoxAnswerYes);
    engine_.files = {{L"a.txt", 3 << 20, 0}, {L"b.txt", 5, 1}};
    views_.factory.fileErrorAnswers = {1};
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(engine_.liveObjects(), 0);
    EXPECT_EQ(tracked(),
              (std::vector<std::wstring>{L"TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)",
                                         L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
                                         L"TrackViewEvent(err_file_error, Access is denied., none)",
                                         L"TrackViewEvent(set_user_action_skip, , none)",
                                         L"TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)",
                                         L"TrackEvent(winzel wipe usage statistics, processed_file_count, , 1)",
                                         L"TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)",
                                         L"TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 3)"}));
}

TEST_F(MainThreadTest, theModulesObjectsAreReleasedOnEachWayOut)
{
    run();
    job();
    run();
    job().wipe = true;
    run();
    EXPECT_EQ(count(L"store.Release"), 3u);
    EXPECT_EQ(count(L"zelplatform.Release"), 3u);
}

} // namespace

} // namespace JobRunner
