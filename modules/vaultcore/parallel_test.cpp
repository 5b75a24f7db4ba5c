#include "vaultcore/parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace VaultCore
{
namespace
{

TEST(InParallel, doesEachOnce)
{
    std::vector<std::atomic<int>> calls(1000);
    inParallel(calls.size(), [&](std::size_t i) { ++calls[i]; });
    for (const auto& count : calls)
        EXPECT_EQ(count, 1);
}

TEST(InParallel, doesNothingForNone)
{
    inParallel(0, [](std::size_t) { ADD_FAILURE(); });
}

TEST(InParallel, worksOnSeveralAtATime)
{
    // Each of the two waits for the other.
    std::atomic<int> there = 0;
    inParallel(2,
               [&](std::size_t)
               {
                   ++there;
                   while (there < 2)
                       std::this_thread::yield();
               });
    EXPECT_EQ(there, 2);
}

TEST(InParallel, throwsTheFirstExceptionAndBeginsNothingMore)
{
    std::atomic<int> calls = 0;
    const auto work = [&](std::size_t)
    {
        ++calls;
        throw std::runtime_error("refused");
    };
    EXPECT_THROW(inParallel(1000, work), std::runtime_error);
    EXPECT_LE(calls, 4);
}

TEST(InParallel, worksOnTheCallersThreadToo)
{
    std::mutex mutex;
    std::set<std::thread::id> threads;
    std::atomic<int> there = 0;
    inParallel(4,
               [&](std::size_t)
               {
                   ++there;
                   while (there < 4)
                       std::this_thread::yield();
                   const std::lock_guard lock(mutex);
                   threads.insert(std::this_thread::get_id());
               });
    EXPECT_EQ(threads.size(), 4U);
    EXPECT_TRUE(threads.contains(std::this_thread::get_id()));
}

} // namespace
} // namespace VaultCore
