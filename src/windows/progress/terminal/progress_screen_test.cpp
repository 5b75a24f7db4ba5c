#include "windows/progress/terminal/progress_screen.h"

#include <gtest/gtest.h>

using namespace JobRunner;

namespace
{
using Lines = std::vector<std::wstring>;
} // namespace

TEST(ProgressScreen, startsWithTheTextsOfTheTemplate)
{
    const std::wstring empty = L'[' + std::wstring(50, L' ') + L']';
    EXPECT_EQ(ProgressScreen().lines(0, true),
              (Lines{L"Progress Window", L"First progress bar:", empty, L"Second progress bar:", empty,
                     L"Elapsed Time: n/a          Elapsed Bytes: n/a", L"Time Left: n/a             Bytes Left: n/a",
                     L"Speed: n/a                 Total Bytes: n/a", L"[c] Cancel  [p] Pause"}));
}

TEST(ProgressScreen, showsEachTextWhereItsNameStands)
{
    ProgressScreen screen;
    ProgressChanges changes;
    changes.title = L"title";
    changes.fileText = L"file";
    changes.totalText = L"total";
    changes.elapsedTime = L"1";
    changes.timeLeft = L"2";
    changes.speed = L"3";
    changes.elapsedBytes = L"4";
    changes.bytesLeft = L"5";
    changes.totalBytes = L"6";
    screen.apply(changes);
    screen.apply(ProgressChanges());
    const std::wstring empty = L'[' + std::wstring(50, L' ') + L']';
    EXPECT_EQ(screen.lines(0, false),
              (Lines{L"title", L"file", empty, L"total", empty, L"Elapsed Time: 1            Elapsed Bytes: 4",
                     L"Time Left: 2               Bytes Left: 5", L"Speed: 3                   Total Bytes: 6"}));
    EXPECT_EQ(screen.summary(), L"title: file, total");
}

TEST(ProgressScreen, isHiddenAtFirst)
{
    ProgressScreen screen;
    EXPECT_FALSE(screen.visible());
    ProgressChanges changes;
    changes.visible = true;
    screen.apply(changes);
    EXPECT_TRUE(screen.visible());
}

TEST(ProgressScreen, fillsTheBarsByTheirPercent)
{
    ProgressScreen screen;
    ProgressChanges changes;
    changes.filePosition = 50;
    changes.totalPosition = 1000;
    screen.apply(changes);
    EXPECT_EQ(screen.lines(0, false)[2], L'[' + std::wstring(25, L'#') + std::wstring(25, L' ') + L']');
    EXPECT_EQ(screen.lines(0, false)[4], L'[' + std::wstring(50, L'#') + L']');
    changes.filePosition = -2147483647 - 1;
    screen.apply(changes);
    EXPECT_EQ(screen.lines(0, false)[2], L'[' + std::wstring(50, L' ') + L']');
}

TEST(ProgressScreen, movesTheBarOfAnUnknownTotal)
{
    ProgressScreen screen;
    ProgressChanges changes;
    changes.marquee = true;
    screen.apply(changes);
    EXPECT_NE(screen.lines(0, false)[4], screen.lines(1, false)[4]);
    EXPECT_EQ(screen.lines(0, false)[4], screen.lines(50, false)[4]);
}

TEST(ProgressScreen, offersNoCancelWhilePaused)
{
    ProgressScreen screen;
    ProgressChanges changes;
    changes.paused = true;
    screen.apply(changes);
    EXPECT_EQ(screen.lines(0, true).back(), L"[p] Resume");
}

TEST(ProgressScreen, leavesOutATitleThatIsEmpty)
{
    ProgressScreen screen;
    ProgressChanges changes;
    changes.title = L"";
    changes.fileText = L"a (1.00%)";
    screen.apply(changes);
    EXPECT_EQ(screen.lines(0, false)[0], L"a (1.00%)");
    EXPECT_EQ(screen.summary(), L"a (1.00%), Second progress bar:");
}
