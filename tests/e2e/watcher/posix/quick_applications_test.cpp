#include "watched_document.h"

#include <gtest/gtest.h>

namespace EndToEnd
{

namespace
{

// Without windows an application shows only as a process, half a second after its start. One that has ended by then
// is not seen, and the document is probed for five seconds more.
TEST(AnApplicationThatEndsWithinHalfASecond, isNotSeenAtAll)
{
    WatchedDocument document;
    const auto result = document.open(L"hold 200");
    EXPECT_TRUE(result.opened);
    const std::uint32_t waited = result.returned - document.noted("ends");
    EXPECT_GE(waited, 5500u);
    EXPECT_LE(waited, 7000u);
}

// What it starts is left to this process as its child.
TEST(ALauncherThatHandsOnAtOnce, isNotSeenButItsApplicationIs)
{
    WatchedDocument document;
    const auto result = document.open(L"launch read 3000");
    EXPECT_TRUE(result.opened);
    ASSERT_TRUE(document.isNoted("released"));
    EXPECT_LE(result.returned - document.noted("released"), 1000u);
}

TEST(ALauncherOfALauncher, isFollowedToTheLastApplication)
{
    WatchedDocument document;
    const auto result = document.open(L"launch 900 launch 500 launch 300 read 1500");
    EXPECT_TRUE(result.opened);
    ASSERT_TRUE(document.isNoted("released"));
    EXPECT_LE(result.returned - document.noted("released"), 1000u);
}

} // namespace

} // namespace EndToEnd
