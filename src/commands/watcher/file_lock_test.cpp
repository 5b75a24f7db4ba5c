#include "commands/watcher/file_lock.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

const wchar_t* const Document = L"C:\\Docs\\report.txt";
const wchar_t* const Probe = L"open C:\\Docs\\report.txt 2147483648 0 3 0";

class AFileLock : public testing::Test
{
protected:
    AFileLock() { platform.files.files[Document] = {}; }

    FakeFile& document() { return platform.files.files[Document]; }
    void lockFrom(std::int64_t begin, std::int64_t end)
    {
        platform.threads.at(begin, [this] { document().isLocked = true; });
        platform.threads.at(end, [this] { document().isLocked = false; });
    }
    bool failsWith(std::uint32_t error)
    {
        document().error = error;
        return IsFileLocked(Document);
    }
    std::size_t probes() const { return platform.log.callsOf(Probe).size(); }
    /// Milliseconds that a cycle took, with a minus when it gave false.
    std::int64_t cycle(std::uint32_t limit)
    {
        const bool proves = WaitForFileLockCycle(Document, limit);
        return proves ? platform.threads.elapsed() : -platform.threads.elapsed();
    }

    FakePlatform platform;
};

TEST_F(AFileLock, isProbedByOneOpenForThisProcessAlone)
{
    EXPECT_FALSE(IsFileLocked(Document));
    EXPECT_EQ(platform.log.calls(), (Calls{L"priority function", L"setPriority current 2", Probe,
                                           L"close file C:\\Docs\\report.txt", L"setPriority current 2147483647"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(AFileLock, leavesTheThreadAtTheHighestPriorityFromTheFirstProbeOn)
{
    platform.threads.currentPriority = -1;
    IsFileLocked(Document);
    EXPECT_EQ(platform.threads.currentPriority, Platform::PriorityHighest);
}

TEST_F(AFileLock, isSeenInASharingViolationAForbiddenAndAMissingFile)
{
    EXPECT_TRUE(failsWith(32));
    EXPECT_TRUE(failsWith(5));
    EXPECT_TRUE(failsWith(2));
    platform.files.files.clear();
    EXPECT_TRUE(IsFileLocked(Document));
    EXPECT_EQ(platform.log.callsOf(L"close"), Calls());
    EXPECT_EQ(platform.log.calls().back(), L"setPriority current 2147483647");
}

TEST_F(AFileLock, isNotSeenInAnyOtherFailureWhichStaysTheLastError)
{
    for (const std::uint32_t error : {1U, 3U, 4U, 6U, 31U, 33U, 53U, 123U})
    {
        platform.handles.setLastError(0);
        EXPECT_FALSE(failsWith(error)) << error;
        EXPECT_EQ(platform.handles.lastError(), error);
    }
}

TEST_F(AFileLock, putsTheErrorOfItsProbeBackBehindThatOfThePriority)
{
    constexpr std::uint32_t InvalidParameter = 87;
    platform.threads.onPriorityFailure = [this] { platform.handles.setLastError(InvalidParameter); };
    failsWith(3);
    EXPECT_EQ(platform.handles.lastError(), 3U);
    for (const std::uint32_t error : {0U, 2U, 5U, 32U})
    {
        failsWith(error);
        EXPECT_EQ(platform.handles.lastError(), InvalidParameter) << error;
    }
}

TEST_F(AFileLock, isLookedForAtOnceAndEveryHundredMilliseconds)
{
    EXPECT_EQ(cycle(500), -500);
    EXPECT_EQ(probes(), 5U);
    EXPECT_EQ(platform.log.callsOf(L"sleep"), Calls(5, L"sleep 100"));
    EXPECT_TRUE(platform.log.callsOf(L"findFirstChange").empty());
}

TEST_F(AFileLock, isLookedForOnceWithoutALimit)
{
    EXPECT_EQ(cycle(0), 0);
    EXPECT_EQ(probes(), 1U);
}

TEST_F(AFileLock, isLookedForInWholeHundreds)
{
    EXPECT_EQ(cycle(99), 0);
    EXPECT_EQ(probes(), 1U);
    EXPECT_EQ(cycle(199), -100);
    EXPECT_EQ(probes(), 2U);
    EXPECT_EQ(cycle(5099), -5100);
    EXPECT_EQ(probes(), 52U);
}

TEST_F(AFileLock, thatComesWithTheLastProbeIsSeen)
{
    lockFrom(400, 5000);
    EXPECT_EQ(cycle(500), 5500);
}

TEST_F(AFileLock, thatComesBehindTheLastProbeIsNotSeen)
{
    lockFrom(401, 5000);
    EXPECT_EQ(cycle(500), -500);
}

TEST_F(AFileLock, isWatchedInItsOwnFolderForNamesAttributesAndWrites)
{
    lockFrom(0, 100);
    cycle(500);
    EXPECT_EQ(platform.log.callsOf(L"findFirstChange"), (Calls{L"findFirstChange C:\\Docs\\ 21"}));
    EXPECT_EQ(platform.log.callsOf(L"findClose"), (Calls{L"findCloseChange notification"}));
    EXPECT_EQ(platform.log.callsOf(L"wait"), (Calls{L"wait notification 100"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(AFileLock, isWaitedForFirstAndLookedAtAfterwards)
{
    document().isLocked = true;
    platform.threads.at(50, [this] { document().isLocked = false; });
    EXPECT_EQ(cycle(500), -600);
    // Seen locked, 100 ms on the notification, free, and five times more.
    EXPECT_EQ(probes(), 7U);
    EXPECT_EQ(platform.log.callsOf(L"sleep"), Calls(5, L"sleep 100"));
}

TEST_F(AFileLock, thatIsTakenAgainDuringTheFreeTimeBeginsTheWaitAnew)
{
    lockFrom(0, 1000);
    lockFrom(1450, 4000);
    EXPECT_EQ(cycle(500), 4500);
}

TEST_F(AFileLock, thatIsTakenAgainBehindTheFifthFreeProbeComesTooLate)
{
    lockFrom(0, 1000);
    lockFrom(1501, 9000);
    EXPECT_EQ(cycle(500), -1500);
}

TEST_F(AFileLock, provesAnApplicationFromThreeAndAHalfSecondsOnWithTheFreeTimeAndTheTimeBefore)
{
    lockFrom(400, 3000);
    EXPECT_EQ(cycle(500), 3500);
}

TEST_F(AFileLock, provesNothingWhenAllTookLess)
{
    // Free at 2900, and 500 more.
    lockFrom(0, 2900);
    EXPECT_EQ(cycle(500), -3400);
}

TEST_F(AFileLock, provesNothingWhenOneMillisecondIsMissing)
{
    // The changed folder lets the lock be probed every millisecond.
    platform.files.onOpen = [this] { platform.threads.advance(document().isLocked ? 1 : 0); };
    lockFrom(0, 2999);
    platform.threads.at(50, [this] { platform.files.change(L"C:\\Docs\\other"); });
    EXPECT_EQ(cycle(500), -3499);
}

TEST_F(AFileLock, isTimedBeforeTheNotificationIsClosed)
{
    platform.files.onCloseChange = [this] { platform.threads.advance(1000); };
    lockFrom(0, 2900);
    EXPECT_EQ(cycle(500), -4400);
}

TEST_F(AFileLock, isTimedAcrossTheEndOfTheTickCount)
{
    platform.threads.firstTick = 0xFFFFFFFFU - 1000;
    lockFrom(0, 3000);
    EXPECT_EQ(cycle(500), 3500);
}

TEST_F(AFileLock, isPolledWithoutAPauseOnceTheFolderHasChanged)
{
    // The notification is never armed again: each probe follows the one before at once.
    platform.files.onOpen = [this] { platform.threads.advance(1); };
    lockFrom(0, 4000);
    platform.threads.at(150, [this] { platform.files.change(L"C:\\Docs\\~lock.tmp"); });
    EXPECT_GT(cycle(500), 3500);
    EXPECT_GT(probes(), 3800U);
}

TEST_F(AFileLock, isPolledEveryHundredMillisecondsWithoutANotification)
{
    for (const Platform::Handle none : {Platform::InvalidHandle, Platform::Handle(nullptr)})
    {
        FakePlatform other;
        other.files.files[Document].isLocked = true;
        other.files.insteadOfNotification = none;
        other.threads.at(4000, [&] { other.files.files[Document].isLocked = false; });
        EXPECT_TRUE(WaitForFileLockCycle(Document, 500));
        EXPECT_EQ(other.threads.elapsed(), 4500);
        EXPECT_EQ(other.log.callsOf(L"sleep"), Calls(45, L"sleep 100"));
        EXPECT_TRUE(other.log.callsOf(L"wait").empty());
        EXPECT_TRUE(other.log.callsOf(L"findClose").empty());
    }
}

TEST_F(AFileLock, isWaitedForWhileTheFileIsMissing)
{
    document().isLocked = true;
    platform.threads.at(500, [this] { platform.files.files.erase(Document); });
    platform.threads.at(8000, [this] { platform.files.files[Document] = {}; });
    EXPECT_EQ(cycle(500), 8500);
}

TEST_F(AFileLock, ofAFileThatNeverComesBackIsWaitedForWithoutALimit)
{
    platform.files.files.clear();
    EXPECT_THROW(cycle(500), WaitsForEver);
    EXPECT_GT(platform.threads.elapsed(), platform.threads.patience);
}

TEST_F(AFileLock, ofAFolderInPlaceOfAFileIsWaitedForWithoutALimit)
{
    document().isFolder = true;
    EXPECT_THROW(cycle(500), WaitsForEver);
}

TEST_F(AFileLock, ofANameWithoutAFolderIsWatchedInNoFolder)
{
    platform.files.files[L"report.txt"].isLocked = true;
    platform.threads.at(200, [this] { platform.files.files[L"report.txt"].isLocked = false; });
    EXPECT_FALSE(WaitForFileLockCycle(L"report.txt", 500));
    EXPECT_EQ(platform.log.callsOf(L"findFirstChange"), (Calls{L"findFirstChange  21"}));
}

} // namespace
