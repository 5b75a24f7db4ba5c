#include "commands/dc_delete_sub_command.h"

#include "commands/testing_support.h"
#include "fakes/observed_events.h"

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring Document = L"C:\\a.txt";

std::wstring usage(const std::wstring& rest)
{
    return L"TrackEvent(winzel wipe usage statistics, " + rest + L")";
}

class ACleanStep : public JobFixture
{
protected:
    DcDeleteSubCommand& run()
    {
        step = std::make_unique<DcDeleteSubCommand>(Document, &gui, tracker);
        step->Run();
        return *step;
    }

    std::unique_ptr<DcDeleteSubCommand> step;
};

/// A plain deletion that has no document to start from.
struct WithoutADocument final : DeleteCommand
{
    WithoutADocument(IGuiEvents* gui, EventTrackerPtr tracker, VaultCore::IFileList* files)
        : DeleteCommand(gui, std::move(tracker))
    {
        files_ = files;
    }
};

} // namespace

TEST_F(ACleanStep, wipesItsDocumentWithoutAQuestion)
{
    engine.files = {{Document, 3U << 20}};
    run();
    step.reset();
    const Calls expected{
        L"createFactory",
        L"factory.CreateFileList",
        L"list.Add(C:\\a.txt)",
        L"factory.Release",
        L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
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
        usage(L"use_op_wipe, , none"),
        usage(L"processed_file_count, , 1"),
        usage(L"failed_file_count, , 0"),
        usage(L"processed_total_size_mb, , 3"),
        L"options.Release",
        L"events.Release",
        L"deleter.Release",
        L"factory.Release",
        L"list.Release",
    };
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ACleanStep, givesTheEngineItsOwnListWithTheDocument)
{
    Calls given;
    engine.onStart = [&]
    {
        for (int index = 0; index < engine.startedWith->GetCount(); ++index)
            given.emplace_back(engine.startedWith->GetItem(index));
    };
    run();
    EXPECT_EQ(given, Calls{Document});
}

TEST_F(ACleanStep, showsTheProgressOfAWipe)
{
    engine.files = {{Document, 10}};
    run();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 5);
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

TEST_F(ACleanStep, tellsWhetherItsDocumentFailed)
{
    EXPECT_TRUE(run().succeeded());
    engine.files = {{Document, 10, 1}};
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(run().succeeded());
}

TEST_F(ACleanStep, hasNoTextsOfItsOwnForAFileThatFails)
{
    engine.files = {{Document, 10, 1}};
    gui.fileErrorAnswers = {2};
    run();
    EXPECT_EQ(gui.fileErrors().at(0), (FileErrorQuestion{L"", L"", Document, L"", L"Access is denied."}));
}

TEST_F(ACleanStep, endsItsListThenHandlerThenTracker)
{
    ObservedEvents observed(platform);
    EventTrackerPtr copy(new RecordingTracker(log),
                         [this](RecordingTracker* recording)
                         {
                             log.add(L"tracker.dropped");
                             delete recording;
                         });
    std::unique_ptr<Command> command = std::make_unique<DcDeleteSubCommand>(Document, &gui, std::move(copy));
    command->Run();
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(), (Calls{L"list.Release", L"event.destroyed", L"tracker.dropped"}));
}

TEST_F(ACleanStep, releasesItsListWhenItsHandlerCannotBeMade)
{
    ObservedEvents observed(platform);
    observed.threads.eventsLeft = 2;
    EXPECT_THROW(DcDeleteSubCommand(Document, &gui, tracker), std::runtime_error);
    Calls order = log.calls();
    std::erase_if(order,
                  [](const std::wstring& call) { return !call.starts_with(L"list.") && !call.starts_with(L"event."); });
    // The handler of the base has gone before the other one is made.
    EXPECT_EQ(order, (Calls{L"list.Add(C:\\a.txt)", L"event.destroyed", L"event.destroyed", L"list.Release"}));
}

TEST_F(ACleanStep, ofTheBaseWithoutADocumentAsksAndIsAWipe)
{
    FakeFileList files(log, false);
    platform.messageBoxes.answer(Platform::BoxAnswerYes);
    {
        WithoutADocument command(&gui, tracker, &files);
        command.Run();
    }
    EXPECT_EQ(platform.messageBoxes.boxes().size(), 1U);
    EXPECT_TRUE(log.contains(L"options.SetMethod(2)"));
    EXPECT_EQ(engine.startedWith, &files);
    EXPECT_TRUE(log.callsOf(L"list.").empty());
}
