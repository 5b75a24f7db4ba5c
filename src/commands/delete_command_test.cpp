#include "bridges/module_factories.h"
#include "commands/delete_command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_views.h"
#include "fakes/observed_events.h"
#include "fakes/recording_tracker.h"
#include "fakes/slot_of.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring View = L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))";
const std::wstring Question = L"Are you sure you want to securely delete items?";

std::wstring wipeEvent(const std::wstring& rest)
{
    return L"TrackEvent(winzel wipe usage statistics, " + rest + L")";
}

/// A job over engine, documents, views and system in memory. All of them write into the log of the system.
class ADeletion : public testing::Test
{
protected:
    ADeletion()
    {
        setVaultCoreFactory(&FakeEngine::createFactory);
        answers.wipe = true;
        answers.deletionMethod = 2;
        answers.files = {L"C:\\a.txt", L"C:\\b.txt"};
    }
    ~ADeletion() override { setVaultCoreFactory(nullptr); }

    ReleasePtr<ZelPlatform::IJobRunnerDocument> document()
    {
        return ReleasePtr<ZelPlatform::IJobRunnerDocument>(new FakeDocument(log, answers));
    }

    /// Made and run as the process does it; the log then holds the run alone.
    void run()
    {
        DeleteCommand command(document(), &gui, tracker);
        log.clear();
        command.Run();
        calls = log.calls();
    }

    void runConfirmed()
    {
        platform.messageBoxes.answer(Platform::BoxAnswerYes);
        run();
    }

    FakePlatform platform;
    FakeViews views;
    CallLog& log = platform.log;
    FakeGuiEvents gui{log};
    FakeEngine engine{log};
    std::shared_ptr<RecordingTracker> tracker = std::make_shared<RecordingTracker>(log);
    JobAnswers answers;
    std::vector<std::wstring> calls; ///< of the last run
};

} // namespace

TEST_F(ADeletion, runsInThisOrder)
{
    engine.files = {{L"C:\\a.txt", 3U << 20, 0}};
    runConfirmed();
    const std::vector<std::wstring> expected{
        View,
        L"messageBox " + Question,
        L"createFactory",
        L"factory.CreateDeleter",
        L"factory.CreateOperationEvents",
        L"factory.CreateDeletionOptions",
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"options.SetMethod(2)",
        L"deleter.Start",
        L"deleter.IsFinished",
        wipeEvent(L"use_op_wipe, , none"),
        wipeEvent(L"processed_file_count, , 1"),
        wipeEvent(L"failed_file_count, , 0"),
        wipeEvent(L"processed_total_size_mb, , 3"),
        L"options.Release",
        L"events.Release",
        L"deleter.Release",
        L"factory.Release",
    };
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADeletion, asksWithYesAndNoAndTheQuestionIcon)
{
    run();
    const std::vector<ShownBox> expected{{Question, L"Securely Delete Items", 36}};
    EXPECT_EQ(platform.messageBoxes.boxes(), expected);
}

TEST_F(ADeletion, thatTheUserDeclinesReportsOnlyThatAndMakesNothing)
{
    platform.messageBoxes.answer(Platform::BoxAnswerNo);
    run();
    const std::vector<std::wstring> expected{View, L"messageBox " + Question,
                                             L"TrackViewEvent(user_cancelled, , none)"};
    EXPECT_EQ(calls, expected);
}

TEST_F(ADeletion, runsOnlyAtAnAnswerOfYes)
{
    platform.messageBoxes.answer(Platform::BoxAnswerOk);
    run();
    EXPECT_EQ(log.callsOf(L"createFactory").size(), 0U);
    EXPECT_EQ(tracker->calls().back(), L"TrackViewEvent(user_cancelled, , none)");
}

TEST_F(ADeletion, asksAboutAnEmptyListTooAndLetsTheEngineDecide)
{
    answers.files.clear();
    runConfirmed();
    EXPECT_EQ(platform.messageBoxes.boxes().size(), 1U);
    const std::vector<std::wstring> expected{
        View, wipeEvent(L"use_op_wipe, , none"), wipeEvent(L"processed_file_count, , 0"),
        wipeEvent(L"failed_file_count, , 0"), wipeEvent(L"processed_total_size_mb, , 0")};
    EXPECT_EQ(tracker->calls(), expected);
}

TEST_F(ADeletion, sleepsOnceForEachQuestionThatTheEngineAnswersWithNo)
{
    engine.questionsUntilFinished = 3;
    runConfirmed();
    const std::vector<std::wstring> expected{L"sleep 200", L"sleep 200", L"sleep 200"};
    EXPECT_EQ(log.callsOf(L"sleep"), expected);
    EXPECT_EQ(log.callsOf(L"deleter.IsFinished").size(), 4U);
}

TEST_F(ADeletion, doesNotSleepWhenTheEngineIsFinishedAtTheFirstQuestion)
{
    runConfirmed();
    EXPECT_TRUE(log.callsOf(L"sleep").empty());
}

TEST_F(ADeletion, givesTheMethodToTheEngineAsItStands)
{
    for (const std::uint32_t method : {0U, 1U, 2U, 3U, 4294967295U})
    {
        answers.deletionMethod = method;
        runConfirmed();
        EXPECT_EQ(log.callsOf(L"options.SetMethod").at(0), L"options.SetMethod(" + std::to_wstring(method) + L")");
    }
}

TEST_F(ADeletion, isAWipeAtMethodTwoAndOtherwiseADelete)
{
    engine.files = {{L"C:\\a.txt", 1, 0}};
    for (const std::uint32_t method : {0U, 1U, 2U, 3U, 4294967295U})
    {
        answers.deletionMethod = method;
        runConfirmed();
        const bool wipe = method == 2;
        EXPECT_EQ(views.factory.progressViews.back()->operation(), wipe ? 5 : 4) << method;
        EXPECT_EQ(tracker->calls().at(0), View);
        EXPECT_EQ(tracker->calls().at(1), wipeEvent(wipe ? L"use_op_wipe, , none" : L"use_op_delete, , none"));
    }
}

TEST_F(ADeletion, startsTheEngineWithTheListOfTheDocument)
{
    FakeDocument* const job = new FakeDocument(log, answers);
    platform.messageBoxes.answer(Platform::BoxAnswerYes);
    DeleteCommand command(ReleasePtr<ZelPlatform::IJobRunnerDocument>(job), &gui, tracker);
    command.Run();
    EXPECT_EQ(engine.startedWith, job->GetFileList());
    EXPECT_EQ(log.callsOf(L"list.Release").size(), 0U);
}

TEST_F(ADeletion, cutsTheSizeToWholeMebibytes)
{
    engine.files = {{L"C:\\a.txt", 1'048'575, 0}};
    runConfirmed();
    EXPECT_EQ(tracker->calls().back(), wipeEvent(L"processed_total_size_mb, , 0"));
    engine.files = {{L"C:\\a.txt", std::uint64_t{5'000'000} << 20, 0}, {L"C:\\b.txt", 1'048'576, 0}};
    runConfirmed();
    EXPECT_EQ(tracker->calls().back(), wipeEvent(L"processed_total_size_mb, , 5000001"));
}

TEST_F(ADeletion, thatIsCancelledReportsItsCountsAndThenTheCancelUnderTheEncryptionCategory)
{
    engine.files = {{L"C:\\a.txt", 2U << 20, 0}, {L"C:\\b.txt", 4U << 20, 0}, {L"C:\\c.txt", 8U << 20, 0}};
    engine.script = [this](const EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        callbacks.progress->OnFileProgress(2U << 20, 2U << 20);
        callbacks.overall->OnFileFinished(nullptr, nullptr, 0);
        views.factory.lastProgressView->onCancel();
        EXPECT_EQ(callbacks.progress->OnFileProgress(1, 4U << 20), 0);
        callbacks.overall->OnOperationFinished();
    };
    runConfirmed();
    const std::vector<std::wstring> expected{View,
                                             wipeEvent(L"use_op_wipe, , none"),
                                             wipeEvent(L"processed_file_count, , 1"),
                                             wipeEvent(L"failed_file_count, , 0"),
                                             wipeEvent(L"processed_total_size_mb, , 2"),
                                             L"TrackEvent(winzel encryption usage statistics, cancelled, , none)"};
    EXPECT_EQ(tracker->calls(), expected);
}

TEST_F(ADeletion, thatIsStoppedInTheDestinyStageIsNotReportedAsCancelled)
{
    engine.script = [this](const EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        views.factory.lastProgressView->onCancel();
        EXPECT_EQ(callbacks.destiny->OnFileProgress(1, 2), 0);
        callbacks.overall->OnOperationFinished();
    };
    runConfirmed();
    EXPECT_EQ(tracker->calls().back(), wipeEvent(L"processed_total_size_mb, , 0"));
}

TEST_F(ADeletion, reportsItsCountsWhenEveryFileFails)
{
    engine.files = {{L"C:\\a.txt", 10, 1}, {L"C:\\b.txt", 10, 1}};
    gui.fileErrorAnswers = {1, 1};
    runConfirmed();
    const std::vector<std::wstring> expected{
        View, wipeEvent(L"use_op_wipe, , none"), wipeEvent(L"processed_file_count, , 0"),
        wipeEvent(L"failed_file_count, , 2"), wipeEvent(L"processed_total_size_mb, , 0")};
    EXPECT_EQ(tracker->calls(), expected);
}

TEST_F(ADeletion, asksAboutAFileUntilItSucceedsOrIsSkippedOrEndsTheJob)
{
    engine.files = {{L"C:\\a.txt", 10, 2}, {L"C:\\b.txt", 10, 1}, {L"C:\\c.txt", 10, 1}, {L"C:\\d.txt", 10, 0}};
    gui.fileErrorAnswers = {0, 0, 1, 2};
    runConfirmed();
    const auto questions = gui.fileErrors();
    ASSERT_EQ(questions.size(), 4U);
    EXPECT_EQ(questions[0], (FileErrorQuestion{L"", L"", L"C:\\a.txt", L"", L"Access is denied."}));
    EXPECT_EQ(questions[1].source, L"C:\\a.txt");
    EXPECT_EQ(questions[2].source, L"C:\\b.txt");
    EXPECT_EQ(questions[3].source, L"C:\\c.txt");
    EXPECT_EQ(tracker->calls().at(2), wipeEvent(L"processed_file_count, , 1"));
    EXPECT_EQ(tracker->calls().at(3), wipeEvent(L"failed_file_count, , 2"));
}

TEST_F(ADeletion, showsItsProgressAndClosesItAtTheEnd)
{
    engine.files = {{L"C:\\a.txt", 100, 0}};
    runConfirmed();
    const ProgressViewLog& view = *views.factory.progressViews.back();
    EXPECT_FALSE(view.open());
    EXPECT_EQ(view.count(L"show"), 1U);
    EXPECT_EQ(view.last(L"setTotalBytes"), L"100");
    EXPECT_EQ(view.calls().back(), L"close");
}

TEST_F(ADeletion, takesListAndMethodInItsConstructorAndAsksNoMoreInTheRun)
{
    DeleteCommand command(document(), &gui, tracker);
    const std::vector<std::wstring> expected{L"document.GetFileList", L"document.GetDeletionMethod"};
    EXPECT_EQ(log.calls(), expected);
    runConfirmed();
    EXPECT_TRUE(log.callsOf(L"document.Get").empty());
}

TEST_F(ADeletion, endsHandlerThenTrackerThenWindowThenDocument)
{
    ObservedEvents observed(platform);
    // Left open on purpose: the window's end shows in the log through its view.
    engine.script = [](const EngineCallbacks& callbacks) { callbacks.overall->OnOperationStarted(); };
    platform.messageBoxes.answer(Platform::BoxAnswerYes);
    EventTrackerPtr copy(new RecordingTracker(log),
                         [this](RecordingTracker* recording)
                         {
                             log.add(views.factory.progressViews.back()->open() ? L"tracker.dropped, window open"
                                                                                : L"tracker.dropped, window closed");
                             delete recording;
                         });
    std::unique_ptr<Command> command = std::make_unique<DeleteCommand>(document(), &gui, std::move(copy));
    command->Run();
    ASSERT_TRUE(views.factory.progressViews.back()->open());
    log.clear();
    command.reset();
    const std::vector<std::wstring> expected{L"event.destroyed", L"tracker.dropped, window open", L"document.Release"};
    EXPECT_EQ(log.calls(), expected);
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

TEST_F(ADeletion, releasesTheEngineInOrderWhenAnExceptionLeavesTheRun)
{
    engine.onStart = [] { throw std::runtime_error("start"); };
    platform.messageBoxes.answer(Platform::BoxAnswerYes);
    DeleteCommand command(document(), &gui, tracker);
    log.clear();
    EXPECT_THROW(command.Run(), std::runtime_error);
    const auto all = log.calls();
    ASSERT_GE(all.size(), 4U);
    const std::vector<std::wstring> end(all.end() - 4, all.end());
    const std::vector<std::wstring> expected{L"options.Release", L"events.Release", L"deleter.Release",
                                             L"factory.Release"};
    EXPECT_EQ(end, expected);
    EXPECT_EQ(tracker->calls().size(), 1U);
}

TEST_F(ADeletion, letsADerivedCommandReplaceTheQuestion)
{
    struct Unasked final : DeleteCommand
    {
        using DeleteCommand::DeleteCommand;
        bool ConfirmDeletion() override { return true; }
        static std::size_t questionSlot() { return slotOf(&Unasked::ConfirmDeletion); }
    };
    Unasked command(document(), &gui, tracker);
    command.Run();
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
    EXPECT_EQ(tracker->calls().size(), 5U);
    // Behind the two entries of the destructor and the run.
    EXPECT_EQ(slotOf(&Command::Run), 2U);
    EXPECT_EQ(Unasked::questionSlot(), 3U);
}

TEST_F(ADeletion, canRunOnAThreadOfItsOwn)
{
    engine.files = {{L"C:\\a.txt", 1000, 0}};
    engine.questionsUntilFinished = 5;
    platform.messageBoxes.answer(Platform::BoxAnswerYes);
    DeleteCommand command(document(), &gui, tracker);
    std::thread job([&] { command.Run(); });
    job.join();
    EXPECT_EQ(tracker->calls().at(2), wipeEvent(L"processed_file_count, , 1"));
}
