#include "watched_document.h"

#include "applications/association.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "windows/running_program.h"

#include <gtest/gtest.h>

#include <optional>

namespace EndToEnd
{

namespace
{

constexpr std::uint32_t LongestDelay = 1000;

/// An application that runs already and takes each document into a window on the thread that it has.
class SingleInstance : public testing::Test
{
protected:
    WatchedDocument::Result openWithRunning(const std::wstring& options)
    {
        running_.emplace(Applications::testApplication(), L"single --serve " + options + document_.logOption());
        document_.noted("serves");
        const auto result = document_.open(L"single");
        EXPECT_TRUE(result.opened);
        return result;
    }

    WatchedDocument document_;
    std::optional<RunningProgram> running_;
};

TEST_F(SingleInstance, thatDoesNotComeToTheFrontIsWaitedForUntilItsNewWindowCloses)
{
    const auto result = openWithRunning(L"--open 4000");
    ASSERT_TRUE(document_.isNoted("closed"));
    EXPECT_LE(result.returned - document_.noted("closed"), LongestDelay);
    EXPECT_TRUE(running_->isRunning());
}

TEST_F(SingleInstance, thatComesToTheFrontIsWaitedForUntilTheThreadOfItsWindowEnds)
{
    const auto result = openWithRunning(L"--front --open 3000 --stay 2000");
    ASSERT_TRUE(document_.isNoted("ends"));
    EXPECT_LE(result.returned - document_.noted("ends"), LongestDelay);
}

TEST(Association, isWhatTheSystemFindsUntilItEnds)
{
    const WatchedDocument document;
    Platform::Shell& shell = Platform::nativeSystem().shell;
    std::wstring executable;
    {
        const Applications::Association association(L".jobrunnertest", L"silent");
        EXPECT_GT(shell.findExecutable(document.path().wstring(), executable), Platform::FindExecutableFailure);
        EXPECT_EQ(executable, Applications::testApplication());
    }
    EXPECT_LE(shell.findExecutable(document.path().wstring(), executable), Platform::FindExecutableFailure);
}

// Its process has ended before anybody looks, so that the one that it has started belongs to nobody.
TEST(Launcher, thatHandsOnAtOnceIsWaitedForByTheWindowThatCameToTheFront)
{
    WatchedDocument document;
    const auto result = document.open(L"launch read 3000");
    EXPECT_TRUE(result.opened);
    ASSERT_TRUE(document.isNoted("released"));
    EXPECT_LE(result.returned - document.noted("released"), LongestDelay);
    EXPECT_GE(result.returned - result.started, 3000u);
}

} // namespace

} // namespace EndToEnd
