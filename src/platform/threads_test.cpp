#include "platform/each_system.h"
#include "platform/threads.h"

#include <atomic>
#include <chrono>
#include <ctime>

namespace
{

class Threads : public EachSystem
{
protected:
    Platform::Threads& threads() { return system().threads; }
};

TEST_P(Threads, aThreadHasAnIdOfItsOwnThatIsNotZero)
{
    const std::uint32_t mine = threads().currentThreadId();
    std::uint32_t other = 0;
    threads().start([&] { other = threads().currentThreadId(); })->wait();
    EXPECT_NE(mine, 0u);
    EXPECT_NE(other, 0u);
    EXPECT_NE(mine, other);
    EXPECT_EQ(threads().currentThreadId(), mine);
}

TEST_P(Threads, waitReturnsOnlyAfterTheThreadHasEnded)
{
    const auto go = threads().createEvent();
    std::atomic<int> steps{0};
    const auto thread = threads().start(
        [&]
        {
            go->wait();
            ++steps;
        });
    EXPECT_EQ(steps, 0);
    go->set();
    thread->wait();
    EXPECT_EQ(steps, 1);
    thread->wait(); // once more returns at once
}

TEST_P(Threads, aThreadRunsOnWhenNobodyHoldsItAnyMore)
{
    const auto go = threads().createEvent();
    const auto done = threads().createEvent();
    threads().start(
        [&]
        {
            go->wait();
            done->set();
        });
    go->set();
    done->wait();
}

TEST_P(Threads, anEventLetsEveryoneThroughUntilItIsReset)
{
    const auto event = threads().createEvent();
    event->set();
    event->wait();
    event->wait();
    event->reset();

    std::atomic<bool> through{false};
    const auto waiting = threads().createEvent();
    const auto thread = threads().start(
        [&]
        {
            waiting->set();
            event->wait();
            through = true;
        });
    waiting->wait();
    EXPECT_FALSE(through);
    event->set();
    thread->wait();
    EXPECT_TRUE(through);
}

TEST_P(Threads, oneSetReleasesEveryThreadThatWaits)
{
    const auto event = threads().createEvent();
    std::atomic<int> released{0};
    const auto wait = [&]
    {
        event->wait();
        ++released;
    };
    const auto first = threads().start(wait);
    const auto second = threads().start(wait);
    event->set();
    first->wait();
    second->wait();
    EXPECT_EQ(released, 2);
}

TEST_P(Threads, enteringTheApartmentTwiceDoesNoHarm)
{
    threads()
        .start(
            [&]
            {
                threads().enterMultithreadedApartment();
                threads().enterMultithreadedApartment();
            })
        ->wait();
}

TEST_P(Threads, aThreadBeginsWithTheNormalPriority)
{
    int priority = Platform::PriorityErrorReturn;
    threads().start([&] { priority = threads().priority(threads().currentThread()); })->wait();
    EXPECT_EQ(priority, Platform::PriorityNormal);
}

TEST_P(Threads, theFunctionOfTheCurrentThreadIsNoThread)
{
    EXPECT_EQ(threads().priority(threads().currentThreadFunction()), Platform::PriorityErrorReturn);
    EXPECT_FALSE(threads().setPriority(threads().currentThreadFunction(), Platform::PriorityHighest));
}

TEST_P(Threads, whatIsNoPriorityIsNotSet)
{
    threads()
        .start(
            [&]
            {
                EXPECT_FALSE(threads().setPriority(threads().currentThread(), Platform::PriorityErrorReturn));
                EXPECT_EQ(threads().priority(threads().currentThread()), Platform::PriorityNormal);
            })
        ->wait();
}

INSTANTIATE_EACH_SYSTEM(Threads);

TEST(NativeThreads, timeIsWallClockTimeInSeconds)
{
    const std::int64_t before = std::time(nullptr);
    const std::int64_t now = Platform::nativeSystem().threads.time();
    EXPECT_GE(now, before);
    EXPECT_LE(now, before + 5);
}

TEST(NativeThreads, sleepWaitsAboutAsLongAsItIsTold)
{
    const auto start = std::chrono::steady_clock::now();
    Platform::nativeSystem().threads.sleep(40);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(25));
}

TEST(FakeThreads, onlySleepAndTheTestMoveTheClock)
{
    Fakes::FakePlatform fake;
    fake.threads.setTime(100);
    std::uint32_t slept = 0;
    fake.threads.onSleep = [&](std::uint32_t milliseconds) { slept += milliseconds; };
    fake.threads.sleep(600);
    EXPECT_EQ(fake.threads.time(), 100);
    fake.threads.sleep(400);
    EXPECT_EQ(fake.threads.time(), 101);
    EXPECT_EQ(slept, 1000u);
    EXPECT_EQ(fake.log.calls(), (std::vector<std::wstring>{L"sleep 600", L"sleep 400"}));
}

TEST(FakeThreads, aSystemWithoutThreadsLeftGivesNull)
{
    Fakes::FakePlatform fake;
    fake.threads.setFailing(true);
    EXPECT_EQ(fake.threads.start([] {}), nullptr);
}

} // namespace
