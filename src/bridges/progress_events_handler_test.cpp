#include "bridges/dcd_progress_handler.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/observed_events.h"
#include "fakes/slot_of.h"
#include "interfaces/release_ptr.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

using namespace Fakes;
using namespace JobRunner;

namespace
{

class AProgressBridge : public testing::Test
{
protected:
    ProgressViewLog& view() { return *views.factory.progressViews.back(); }
    std::size_t sleeps() { return platform.log.callsOf(L"sleep 200").size(); }
    /// The user clicks Resume during the sleep of that number.
    void resumeAtSleep(int number)
    {
        platform.threads.onSleep = [this, number, count = 0](std::uint32_t) mutable
        {
            if (++count == number)
                window.togglePause();
        };
    }

    FakePlatform platform;
    FakeViews views;
    ProgressWindow window;
    ProgressEventsHandler bridge{&window};
};

/// Keeps what it was asked and answers what it is told to.
class RecordingDestiny final : public IFileDestinyEvents
{
public:
    int OnDestinyProgress(std::uint64_t doneBytes, std::uint64_t totalBytes) override
    {
        done = doneBytes;
        total = totalBytes;
        return answer;
    }

    std::uint64_t done = 99;
    std::uint64_t total = 99;
    int answer = 0;
};

} // namespace

TEST(AFileDestinyHandler, forwardsBothNumbersAndTheAnswerUnchanged)
{
    RecordingDestiny destiny;
    FileDestinyHandler handler(&destiny);
    constexpr std::uint64_t Large = std::numeric_limits<std::uint64_t>::max();
    destiny.answer = 1;
    EXPECT_EQ(handler.OnFileProgress(0x123456789ABCDEFU, Large), 1);
    EXPECT_EQ(destiny.done, 0x123456789ABCDEFU);
    EXPECT_EQ(destiny.total, Large);
}

TEST(AFileDestinyHandler, forwardsAZeroTotalAndLetsTheAnswerDecide)
{
    RecordingDestiny destiny;
    FileDestinyHandler handler(&destiny);
    EXPECT_EQ(handler.OnFileProgress(0, 0), 0);
    EXPECT_EQ(destiny.total, 0U);
    destiny.answer = 5;
    EXPECT_EQ(handler.OnFileProgress(0, 0), 5);
}

TEST_F(AProgressBridge, startsWithoutResults)
{
    EXPECT_EQ(bridge.processedFiles(), 0);
    EXPECT_EQ(bridge.failedFiles(), 0);
    EXPECT_EQ(bridge.processedBytes(), 0U);
    EXPECT_FALSE(bridge.isCancelled());
}

TEST_F(AProgressBridge, givesItsPartsToTheEngineInOrder)
{
    CallLog log;
    FakeEngine engine(log);
    ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(engine));
    bridge.AttachProgress(events.get(), 5);
    const std::vector<std::wstring> expected{L"events.SetFileListBuilderEvents", L"events.SetOverallProgressEvents",
                                             L"events.SetFileProgressEvents", L"events.SetDestinyProgressEvents"};
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(events->callbacks.fileList, &bridge);
    EXPECT_EQ(events->callbacks.overall, &bridge);
    EXPECT_EQ(events->callbacks.progress, &bridge);
}

TEST_F(AProgressBridge, givesTheEngineAnotherObjectForTheDestinyStage)
{
    CallLog log;
    FakeEngine engine(log);
    ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(engine));
    bridge.AttachProgress(events.get(), 5);
    EXPECT_NE(events->callbacks.destiny, events->callbacks.progress);
    // A stop in that stage comes from the bridge and does not mark the job: it was the other call.
    window.requestCancel();
    EXPECT_EQ(events->callbacks.destiny->OnFileProgress(1, 1), 0);
    EXPECT_FALSE(bridge.isCancelled());
    EXPECT_EQ(bridge.processedBytes(), 0U);
}

TEST_F(AProgressBridge, opensTheWindowWithTheStoredOperationAndClosesIt)
{
    CallLog log;
    FakeEngine engine(log);
    ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(engine));
    bridge.AttachProgress(events.get(), 4);
    bridge.OnOperationStarted();
    EXPECT_EQ(view().operation(), 4);
    EXPECT_TRUE(view().open());
    bridge.OnOperationFinished();
    EXPECT_FALSE(view().open());
}

TEST_F(AProgressBridge, signalsItsStartAndTakesItBackInEachOperation)
{
    ObservedEvents observed(platform);
    {
        ProgressEventsHandler observedBridge(&window);
        EXPECT_TRUE(platform.log.calls().empty());
        observedBridge.OnOperationStarted();
        observedBridge.OnOperationFinished();
        observedBridge.OnOperationStarted();
        observedBridge.OnOperationFinished();
    }
    const std::vector<std::wstring> expected{L"event.set", L"event.reset", L"event.set", L"event.reset",
                                             L"event.destroyed"};
    EXPECT_EQ(platform.log.calls(), expected);
    EXPECT_EQ(views.factory.progressViews.size(), 2U);
}

TEST_F(AProgressBridge, holdsTheFileListUntilTheWindowExists)
{
    std::thread engine([&] { bridge.OnFileListBuilt(7, 1000); });
    bridge.OnOperationStarted();
    engine.join();
    EXPECT_EQ(view().last(L"setTotalBytes"), L"1000");
}

TEST_F(AProgressBridge, alwaysGoesOnAtAnEntryOfTheList)
{
    window.requestCancel();
    EXPECT_EQ(bridge.OnFileListEntry(0, 0, 0), 1);
    EXPECT_EQ(bridge.OnFileListEntry(1, 2, 3), 1);
}

TEST_F(AProgressBridge, storesTheNameOfAFileUntilTheNextReport)
{
    bridge.OnOperationStarted();
    view().clear();
    bridge.OnFileStarted(L"a.txt");
    EXPECT_TRUE(view().calls().empty());
    bridge.OnFileProgress(50, 100);
    EXPECT_EQ(view().last(L"setFileProgress").substr(0, 5), L"a.txt");
}

TEST_F(AProgressBridge, makesOneReportToTheWindowForEachOfTheEngine)
{
    bridge.OnOperationStarted();
    view().clear();
    for (std::uint64_t done = 1; done <= 25; ++done)
        bridge.OnFileProgress(done, 1000);
    EXPECT_EQ(view().count(L"setFileProgress"), 25U);
}

TEST_F(AProgressBridge, countsFilesByTheirErrorAndMovesTheTotalOn)
{
    bridge.OnOperationStarted();
    bridge.OnFileProgress(100, 100);
    bridge.OnFileFinished(nullptr, nullptr, 0);
    EXPECT_EQ(view().last(L"setElapsedBytes"), L"100");
    bridge.OnFileFinished(&bridge, L"Access is denied.", 5);
    bridge.OnFileFinished(nullptr, L"", 0xFFFFFFFF);
    EXPECT_EQ(bridge.processedFiles(), 1);
    EXPECT_EQ(bridge.failedFiles(), 2);
}

TEST_F(AProgressBridge, addsTheSizeOfAFileThatReachedItsEnd)
{
    EXPECT_EQ(bridge.OnFileProgress(99, 100), 1);
    EXPECT_EQ(bridge.processedBytes(), 0U);
    EXPECT_EQ(bridge.OnFileProgress(100, 100), 1);
    EXPECT_EQ(bridge.processedBytes(), 100U);
}

TEST_F(AProgressBridge, countsAFileTwiceThatIsReportedCompleteTwice)
{
    bridge.OnFileProgress(100, 100);
    bridge.OnFileProgress(100, 100);
    EXPECT_EQ(bridge.processedBytes(), 200U);
}

TEST_F(AProgressBridge, takesAnEmptyFileAsCompleteAndAddsNothing)
{
    bridge.OnFileProgress(7, 7);
    EXPECT_EQ(bridge.OnFileProgress(0, 0), 1);
    EXPECT_EQ(bridge.processedBytes(), 7U);
}

TEST_F(AProgressBridge, doesNotSleepWithoutAPause)
{
    bridge.OnFileProgress(1, 2);
    bridge.OnDestinyProgress(1, 2);
    EXPECT_EQ(sleeps(), 0U);
}

TEST_F(AProgressBridge, holdsTheEngineInStepsOf200MillisecondsWhilePaused)
{
    window.togglePause();
    resumeAtSleep(3);
    EXPECT_EQ(bridge.OnFileProgress(100, 100), 1);
    EXPECT_EQ(sleeps(), 3U);
    EXPECT_EQ(platform.log.callsOf(L"sleep").size(), 3U);
    EXPECT_EQ(bridge.processedBytes(), 100U);
}

TEST_F(AProgressBridge, reportsAndCountsBeforeItWaits)
{
    window.togglePause();
    std::uint64_t countedWhileWaiting = 0;
    platform.threads.onSleep = [&](std::uint32_t)
    {
        countedWhileWaiting = bridge.processedBytes();
        window.togglePause();
    };
    bridge.OnFileProgress(100, 100);
    EXPECT_EQ(countedWhileWaiting, 100U);
}

TEST_F(AProgressBridge, pausesAtTheNextReportAndNotBefore)
{
    bridge.OnFileProgress(1, 100);
    window.togglePause();
    bridge.OnFileStarted(L"b.txt");
    bridge.OnFileFinished(nullptr, nullptr, 0);
    EXPECT_EQ(sleeps(), 0U);
    resumeAtSleep(1);
    bridge.OnFileProgress(2, 100);
    EXPECT_EQ(sleeps(), 1U);
}

TEST_F(AProgressBridge, seesACancelOnlyAfterThePause)
{
    window.togglePause();
    window.requestCancel();
    resumeAtSleep(2);
    EXPECT_EQ(bridge.OnFileProgress(1, 100), 0);
    EXPECT_EQ(sleeps(), 2U);
    EXPECT_TRUE(bridge.isCancelled());
}

TEST_F(AProgressBridge, tellsTheEngineToStopAfterACancelAndStillCountsTheReport)
{
    window.requestCancel();
    EXPECT_FALSE(bridge.isCancelled());
    EXPECT_EQ(bridge.OnFileProgress(100, 100), 0);
    EXPECT_TRUE(bridge.isCancelled());
    EXPECT_EQ(bridge.processedBytes(), 100U);
}

TEST_F(AProgressBridge, stopsTheDestinyStageWithoutMarkingTheJobAsCancelled)
{
    EXPECT_EQ(bridge.OnDestinyProgress(1, 2), 1);
    window.requestCancel();
    EXPECT_EQ(bridge.OnDestinyProgress(2, 2), 0);
    EXPECT_FALSE(bridge.isCancelled());
    EXPECT_EQ(bridge.processedBytes(), 0U);
}

TEST_F(AProgressBridge, waitsInTheDestinyStageToo)
{
    window.togglePause();
    resumeAtSleep(2);
    EXPECT_EQ(bridge.OnDestinyProgress(1, 2), 1);
    EXPECT_EQ(sleeps(), 2U);
}

TEST_F(AProgressBridge, reportsTheDestinyStageAsTheSecondHalfOfAFile)
{
    window.setHalfFileMode(true);
    bridge.OnOperationStarted();
    bridge.OnFileProgress(100, 100);
    EXPECT_EQ(view().last(L"setFileProgress").find(L"wiping"), std::wstring::npos);
    bridge.OnDestinyProgress(100, 100);
    EXPECT_NE(view().last(L"setFileProgress").find(L"100 wiping"), std::wstring::npos);
}

TEST_F(AProgressBridge, keepsItsResultsAfterTheEnd)
{
    bridge.OnOperationStarted();
    bridge.OnFileProgress(10, 10);
    bridge.OnFileFinished(nullptr, nullptr, 0);
    bridge.OnOperationFinished();
    EXPECT_EQ(bridge.processedFiles(), 1);
    EXPECT_EQ(bridge.processedBytes(), 10U);
}

TEST_F(AProgressBridge, hasItsOwnOperationsRightBehindThoseOfItsFirstBase)
{
    // Four of the base, two entries of the destructor.
    EXPECT_EQ(slotOf(&ProgressEventsHandler::OnOperationFinished), 3U);
    EXPECT_EQ(slotOf(&ProgressEventsHandler::AttachProgress), 6U);
}

TEST_F(AProgressBridge, hasItsBasesInOrder)
{
    const auto place = [](const auto* base) { return reinterpret_cast<std::uintptr_t>(base); };
    EXPECT_EQ(place(&bridge), place(static_cast<VaultCore::IOverallProgressEvents*>(&bridge)));
    EXPECT_LT(place(&bridge), place(static_cast<VaultCore::IFileListBuilderEvents*>(&bridge)));
    EXPECT_LT(place(static_cast<VaultCore::IFileListBuilderEvents*>(&bridge)),
              place(static_cast<VaultCore::IFileProgressEvents*>(&bridge)));
    EXPECT_LT(place(static_cast<VaultCore::IFileProgressEvents*>(&bridge)),
              place(static_cast<IFileDestinyEvents*>(&bridge)));
}

class ADoubleClickBridge : public AProgressBridge
{
protected:
    DcdProgressHandler last{&window};
};

TEST_F(ADoubleClickBridge, readsAsSucceededWithAnEmptyTextWithoutAnyFile)
{
    EXPECT_TRUE(last.lastFileSucceeded());
    EXPECT_EQ(last.lastFileText(), L"");
}

TEST_F(ADoubleClickBridge, keepsTheOutcomeOfAFileAndCountsItToo)
{
    last.OnFileFinished(nullptr, L"Access is denied.", 5);
    EXPECT_FALSE(last.lastFileSucceeded());
    EXPECT_EQ(last.lastFileText(), L"Access is denied.");
    EXPECT_EQ(last.failedFiles(), 1);
}

TEST_F(ADoubleClickBridge, tellsOfTheLastFileOnly)
{
    last.OnFileFinished(nullptr, L"Access is denied.", 5);
    last.OnFileFinished(nullptr, L"C:\\b.txt", 0);
    EXPECT_TRUE(last.lastFileSucceeded());
    EXPECT_EQ(last.lastFileText(), L"C:\\b.txt");
    EXPECT_EQ(last.failedFiles(), 1);
    EXPECT_EQ(last.processedFiles(), 1);
}

TEST_F(ADoubleClickBridge, looksAfterASuccessWithAnEmptyTextAsItDidBeforeAnyFile)
{
    last.OnFileFinished(nullptr, L"Access is denied.", 5);
    last.OnFileFinished(nullptr, L"", 0);
    EXPECT_TRUE(last.lastFileSucceeded());
    EXPECT_EQ(last.lastFileText(), L"");
}

TEST_F(ADoubleClickBridge, takesANullTextAsEmpty)
{
    last.OnFileFinished(nullptr, L"Access is denied.", 5);
    last.OnFileFinished(nullptr, nullptr, 5);
    EXPECT_FALSE(last.lastFileSucceeded());
    EXPECT_EQ(last.lastFileText(), L"");
}

TEST_F(ADoubleClickBridge, isDestroyedThroughItsBaseWithTheTextItKept)
{
    // The text is longer than a string holds in itself, so that a leak shows under the sanitizer.
    std::unique_ptr<ProgressEventsHandler> base = std::make_unique<DcdProgressHandler>(&window);
    base->OnFileFinished(nullptr, L"The process cannot access the file because it is in use.", 32);
    ASSERT_NE(dynamic_cast<DcdProgressHandler*>(base.get()), nullptr);
    EXPECT_TRUE(std::has_virtual_destructor_v<ProgressEventsHandler>);
    base.reset();
}
