#include "watched_document.h"

#include <gtest/gtest.h>

// The whole watcher with real applications. It must not return before the application has let go of what is watched,
// nor more than a second later.

namespace EndToEnd
{

namespace
{

constexpr std::uint32_t LongestDelay = 1000;

class WatchedDocuments : public testing::Test
{
protected:
    void open(const std::wstring& arguments)
    {
        result_ = document_.open(arguments);
        EXPECT_TRUE(result_.opened);
    }

    /// The application wrote `what` down, and the watcher returned within a second behind that.
    void expectReturnAfter(const std::string& what)
    {
        ASSERT_TRUE(document_.isNoted(what)) << "the watcher has not waited for it";
        EXPECT_LE(result_.returned - document_.noted(what), LongestDelay);
    }

    /// Milliseconds that the watcher took.
    std::uint32_t taken() const { return result_.returned - result_.started; }

    WatchedDocument document_;
    WatchedDocument::Result result_;
};

TEST_F(WatchedDocuments, areWaitedForWhileTheyAreHeldThoughTheApplicationRunsOn)
{
    open(L"hold 4000 --stay 3000");
    expectReturnAfter("released");
    EXPECT_FALSE(document_.isNoted("ends"));
    document_.noted("ends");
}

TEST_F(WatchedDocuments, areWaitedForUntilTheApplicationEndsWhenTheyAreNotAlone)
{
    document_.addNeighbour("another letter.txt");
    open(L"hold 4000 --stay 1500");
    expectReturnAfter("ends");
}

TEST_F(WatchedDocuments, areAloneBesideFilesOfWork)
{
    document_.addNeighbour("~letter.lock");
    document_.addNeighbour("letter.BAK");
    document_.addNeighbour("letter.tmp");
    open(L"hold 4000 --stay 3000");
    expectReturnAfter("released");
    EXPECT_FALSE(document_.isNoted("ends"));
    document_.noted("ends");
}

TEST_F(WatchedDocuments, thatAreOnlyReadAreWaitedForUntilTheApplicationEnds)
{
    open(L"read 3000");
    expectReturnAfter("released");
    EXPECT_GE(taken(), 3000u);
}

TEST_F(WatchedDocuments, thatALauncherHandsOnAreWaitedForUntilTheLastApplicationEnds)
{
    open(L"launch 1500 read 3000");
    expectReturnAfter("released");
    EXPECT_GE(taken(), 4500u);
}

TEST_F(WatchedDocuments, thatNobodyIsSeenToTakeAreWaitedForByProbesAlone)
{
    open(L"silent");
    const std::uint32_t waited = result_.returned - document_.noted("released");
    // Half a second for a window to come to the front, half for a lock, five for another.
    EXPECT_GE(waited, 5800u);
    EXPECT_LE(waited, 7000u);
}

TEST_F(WatchedDocuments, thatAreReplacedBySavingAreWaitedForUntilTheyAreFree)
{
    open(L"save 2500");
    expectReturnAfter("released");
    EXPECT_EQ(contentOf(document_.path()), "Dear reader and more");
}

TEST_F(WatchedDocuments, areFreeWhenTheApplicationCrashes)
{
    open(L"crash 4000");
    expectReturnAfter("released");
}

TEST_F(WatchedDocuments, areFreeWhenTheApplicationCrashesSoon)
{
    open(L"crash 1000");
    expectReturnAfter("released");
}

TEST_F(WatchedDocuments, thatAreClosedSoonWithTheApplicationAreNotWaitedForLonger)
{
    open(L"hold 800");
    expectReturnAfter("ends");
}

TEST_F(WatchedDocuments, thatAreClosedSoonAreWaitedForUntilTheApplicationEnds)
{
    open(L"hold 1000 --stay 2000");
    expectReturnAfter("ends");
}

TEST_F(WatchedDocuments, ofNoApplicationAreNotOpened)
{
    result_ = document_.openUnknown();
    EXPECT_FALSE(result_.opened);
    EXPECT_LE(taken(), LongestDelay);
    EXPECT_EQ(contentOf(document_.path()), "Dear reader");
}

} // namespace

} // namespace EndToEnd
