#include "platform/platform.h"
#include "platform/threads.h"
#include "schedules/explore.h"
#include "schedules/scheduler.h"

#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>

using namespace Schedules;

// The explorer has to find what was put there for it to find.

namespace
{

constexpr double Seconds = 20;

/// Runs two threads beside each other on one object of a class.
template <class Planted, class One, class Other>
std::string runBoth(Choices& choices, One one, Other other, std::string (*check)(Planted&) = nullptr)
{
    // Threads that never end keep it.
    const auto planted = std::make_shared<Planted>();
    std::string wrong;
    const Outcome outcome = Scheduler::run(choices,
                                           [planted, one, other](Scheduler& scheduler)
                                           {
                                               const auto first = scheduler.start([=] { one(*planted); });
                                               const auto second = scheduler.start([=] { other(*planted); });
                                               scheduler.join(first);
                                               scheduler.join(second);
                                           });
    if (outcome.end != End::Complete)
        return (outcome.end == End::Deadlock ? "deadlock\n" : "endless\n") + outcome.story;
    return check ? check(*planted) : wrong;
}

/// Its two locks are taken in two orders.
struct TwoOrders
{
    void forth()
    {
        const std::lock_guard outer(one);
        const std::lock_guard inner(other);
    }
    void back()
    {
        const std::lock_guard outer(other);
        const std::lock_guard inner(one);
    }

    std::mutex one;
    std::mutex other;
};

std::string runTwoOrders(Choices& choices)
{
    return runBoth<TwoOrders>(
        choices, [](TwoOrders& planted) { planted.forth(); }, [](TwoOrders& planted) { planted.back(); });
}

/// Looks for its news in one hold of the lock and waits in the next: what comes in between wakes nobody.
struct ForgetfulMailbox
{
    void put()
    {
        const std::lock_guard guard(lock);
        news = true;
        changed.notify_all();
    }
    void take()
    {
        {
            const std::lock_guard guard(lock);
            if (news)
                return;
        }
        std::unique_lock guard(lock);
        changed.wait(guard);
    }

    std::mutex lock;
    std::condition_variable changed;
    bool news = false;
};

std::string runMailbox(Choices& choices)
{
    return runBoth<ForgetfulMailbox>(
        choices, [](ForgetfulMailbox& planted) { planted.put(); }, [](ForgetfulMailbox& planted) { planted.take(); });
}

/// Reads its number in one hold of the lock and writes it in the next.
struct LossyCounter
{
    void add()
    {
        int seen = 0;
        {
            const std::lock_guard guard(lock);
            seen = number;
        }
        const std::lock_guard guard(lock);
        number = seen + 1;
    }

    std::mutex lock;
    int number = 0;
};

std::string runCounter(Choices& choices)
{
    const auto add = [](LossyCounter& planted) { planted.add(); };
    return runBoth<LossyCounter>(choices, add, add,
                                 [](LossyCounter& planted)
                                 { return std::string(planted.number == 2 ? "" : "a sum is lost"); });
}

/// Waits as it should.
struct Mailbox : ForgetfulMailbox
{
    void take()
    {
        std::unique_lock guard(lock);
        changed.wait(guard, [this] { return news; });
    }
};

std::string runRightMailbox(Choices& choices)
{
    return runBoth<Mailbox>(
        choices, [](Mailbox& mailbox) { mailbox.put(); }, [](Mailbox& mailbox) { mailbox.take(); });
}

} // namespace

TEST(Explorer, findsADeadlockOfTwoLocks)
{
    const Exploration found = exploreAll(runTwoOrders, 1, Counted::Preemptions, Seconds);
    EXPECT_NE(found.failure.find("deadlock"), std::string::npos) << found.schedules << " schedules";
    EXPECT_NE(found.failure.find("waits for lock"), std::string::npos) << found.failure;
}

TEST(Explorer, needsAPreemptionForTheDeadlockOfTwoLocks)
{
    const Exploration found = exploreAll(runTwoOrders, 0, Counted::Preemptions, Seconds);
    EXPECT_EQ(found.completeWithin, 0U);
    EXPECT_EQ(found.failure, "");
}

TEST(Explorer, findsALostWakeUp)
{
    const Exploration found = exploreAll(runMailbox, 1, Counted::Preemptions, Seconds);
    EXPECT_NE(found.failure.find("waits for condition"), std::string::npos) << found.schedules << " schedules";
}

TEST(Explorer, findsThemWithinABoundOfDeviationsToo)
{
    EXPECT_NE(exploreAll(runTwoOrders, 2, Counted::Deviations, Seconds).failure, "");
    EXPECT_NE(exploreAll(runMailbox, 2, Counted::Deviations, Seconds).failure, "");
}

TEST(Explorer, findsThemAtRandomToo)
{
    for (const auto run : {runTwoOrders, runMailbox, runCounter})
    {
        const auto withSeed = [run](unsigned seed)
        {
            RandomChoices choices(seed);
            return run(choices);
        };
        EXPECT_NE(exploreSeeds(withSeed, Seconds).failure, "");
    }
}

TEST(Explorer, repeatsAScheduleByWhatWasTold)
{
    for (const auto run : {runTwoOrders, runMailbox, runCounter})
    {
        const std::string failure = exploreAll(run, 1, Counted::Preemptions, Seconds).failure;
        const std::size_t begin = failure.find('"') + 1;
        ToldChoices told(failure.substr(begin, failure.find('"', begin) - begin));
        EXPECT_NE(run(told), "") << failure;
        ToldChoices plain("");
        EXPECT_EQ(run(plain), "");
    }
}

TEST(Explorer, runsOneSeedInOneWay)
{
    const auto story = [](unsigned seed)
    {
        RandomChoices choices(seed);
        runRightMailbox(choices);
        return choices.text();
    };
    for (unsigned seed = 1; seed < 50; ++seed)
        EXPECT_EQ(story(seed), story(seed));
}

TEST(Explorer, hasNothingToSayAgainstWhatIsRight)
{
    const Exploration found = exploreAll(runRightMailbox, 3, Counted::Preemptions, Seconds);
    EXPECT_EQ(found.completeWithin, 3U);
    EXPECT_EQ(found.failure, "");
    EXPECT_GT(found.schedules, 5U);
}

TEST(Explorer, endsALoopThatWaitsForNothing)
{
    AllChoices choices(0, Counted::Preemptions);
    const Outcome outcome = Scheduler::run(choices,
                                           [](Scheduler& scheduler)
                                           {
                                               for (;;)
                                                   scheduler.sleep(200);
                                           });
    EXPECT_EQ(outcome.end, End::Endless);
}

TEST(Explorer, letsTimePassWhenNobodyHasAnythingElseToDo)
{
    AllChoices choices(0, Counted::Preemptions);
    std::string order;
    const auto sleeper = [&order](Scheduler& scheduler, char name, std::uint32_t time)
    {
        scheduler.sleep(time);
        order += name;
    };
    Scheduler::run(choices,
                   [&](Scheduler& scheduler)
                   {
                       const auto late = scheduler.start([&] { sleeper(scheduler, 'b', 1000); });
                       const auto early = scheduler.start([&] { sleeper(scheduler, 'a', 10); });
                       scheduler.join(late);
                       scheduler.join(early);
                       EXPECT_EQ(scheduler.now(), 1000);
                   });
    EXPECT_EQ(order, "ab");
}
