#include "bridges/events_handler.h"
#include "bridges/file_conflict_events_handler.h"
#include "bridges/progress_events_handler.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/slot_of.h"
#include "interfaces/release_ptr.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

class AHandler : public testing::Test
{
protected:
    FakePlatform platform;
    FakeViews views;
    ProgressWindow window;
    CallLog log;
    FakeGuiEvents gui;
    FakeEngine engine{log};
    ReleasePtr<FakeOperationEvents> events{new FakeOperationEvents(engine)};
    EventsHandler handler{&window, &gui};
};

} // namespace

TEST_F(AHandler, attachesTheProgressFirstAndTheConflictsLast)
{
    handler.AttachEvents(events.get(), 5);
    const std::vector<std::wstring> expected{L"events.SetFileListBuilderEvents", L"events.SetOverallProgressEvents",
                                             L"events.SetFileProgressEvents", L"events.SetDestinyProgressEvents",
                                             L"events.SetFileConflictEvents"};
    EXPECT_EQ(log.calls(), expected);
}

TEST_F(AHandler, opensTheWindowOfTheAttachedOperation)
{
    handler.AttachEvents(events.get(), 5);
    events->callbacks.overall->OnOperationStarted();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 5);
    events->callbacks.overall->OnOperationFinished();
}

TEST_F(AHandler, givesTheResultsThatTheEngineReported)
{
    handler.AttachEvents(events.get(), 4);
    events->callbacks.overall->OnFileFinished(nullptr, nullptr, 0);
    events->callbacks.overall->OnFileFinished(nullptr, nullptr, 1);
    events->callbacks.progress->OnFileProgress(8, 8);
    EXPECT_EQ(handler.progress().processedFiles(), 1);
    EXPECT_EQ(handler.progress().failedFiles(), 1);
    EXPECT_EQ(handler.progress().processedBytes(), 8U);
}

TEST_F(AHandler, tellsTheConflictsOfTheOperation)
{
    handler.AttachEvents(events.get(), 3);
    events->callbacks.conflict->OnFileError(L"a", L"b", L"c");
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
}

TEST_F(AHandler, hasItsOneOperationBehindItsDestructor)
{
    EXPECT_EQ(slotOf(&EventsHandler::AttachEvents), 2U);
}

namespace
{

class AFileConflict : public testing::Test
{
protected:
    int askWithAnswer(int answer)
    {
        gui.fileErrorAnswers = {answer};
        return conflict.OnFileError(L"C:\\a.txt", L"C:\\b.txt", L"Access is denied.");
    }

    FakePlatform platform;
    FakeViews views;
    ProgressWindow window;
    FakeGuiEvents gui;
    FileConflictEventsHandler conflict{&window, &gui};
};

} // namespace

TEST_F(AFileConflict, isAnsweredWithTheCodeOfTheChoice)
{
    EXPECT_EQ(askWithAnswer(0), 0);
    EXPECT_EQ(askWithAnswer(1), 2);
    EXPECT_EQ(askWithAnswer(2), 4);
}

TEST_F(AFileConflict, repeatsAtAnAnswerThatIsNoneOfTheThree)
{
    EXPECT_EQ(askWithAnswer(3), 0);
    EXPECT_EQ(askWithAnswer(-1), 0);
    EXPECT_EQ(askWithAnswer(4), 0);
}

TEST_F(AFileConflict, mayBeRepeatedAsOftenAsTheUserLikes)
{
    for (int time = 0; time < 100; ++time)
        EXPECT_EQ(askWithAnswer(0), 0);
    EXPECT_EQ(gui.fileErrors().size(), 100U);
}

TEST_F(AFileConflict, leavesTheWindowItsOwnTextsUnlessTheJobDecrypts)
{
    for (const int operation : {0, 1, 2, 4, 5})
    {
        conflict.setOperation(operation);
        askWithAnswer(1);
        const FileErrorQuestion expected{L"", L"", L"C:\\a.txt", L"C:\\b.txt", L"Access is denied."};
        EXPECT_EQ(gui.fileErrors().back(), expected) << operation;
    }
}

TEST_F(AFileConflict, hasTextsOfItsOwnWhenTheJobDecrypts)
{
    conflict.setOperation(3);
    askWithAnswer(1);
    const FileErrorQuestion expected{
        L"File Problem", L"Please choose what to do with this problem. Repeat or abort operation, skip file.",
        L"C:\\a.txt", L"C:\\b.txt", L"Access is denied."};
    EXPECT_EQ(gui.fileErrors().back(), expected);
}

TEST_F(AFileConflict, passesEmptyTextsOnAsTheyStand)
{
    conflict.OnFileError(L"", L"", L"");
    EXPECT_EQ(gui.fileErrors().back(), FileErrorQuestion{});
}

TEST_F(AFileConflict, hidesTheProgressWhileTheQuestionIsShown)
{
    window.openWindow(4);
    window.reportFileProgress(1, 2);
    ProgressViewLog& view = *views.factory.progressViews.back();
    ASSERT_FALSE(view.hidden());
    bool hiddenDuringTheQuestion = false;
    gui.whileFileErrorIsShown = [&] { hiddenDuringTheQuestion = view.hidden(); };
    askWithAnswer(1);
    EXPECT_TRUE(hiddenDuringTheQuestion);
    EXPECT_FALSE(view.hidden());
}

TEST_F(AFileConflict, stopsTheStopwatchForTheTimeOfTheQuestion)
{
    window.openWindow(4);
    platform.threads.advance(3'000);
    gui.whileFileErrorIsShown = [&] { platform.threads.advance(60'000); };
    askWithAnswer(1);
    platform.threads.advance(2'000);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(views.factory.progressViews.back()->last(L"setElapsedTime"), L"5");
}

TEST_F(AFileConflict, ofTheOtherKindIsAnsweredWithZeroAndAsksNobody)
{
    EXPECT_EQ(conflict.OnFileConflict(1, 2), 0);
    EXPECT_TRUE(gui.calls().empty());
}
