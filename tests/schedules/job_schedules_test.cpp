#include "schedules/explore.h"
#include "schedules/hooked_locks.h"
#include "schedules/job_stage.h"
#include "schedules/staged_dialogs.h"

#include <condition_variable>
#include <cstdio>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

using namespace Schedules;

namespace
{

struct NamedPlan
{
    const char* name;
    JobPlan plan;
};

std::ostream& operator<<(std::ostream& out, const NamedPlan& named)
{
    return out << named.name;
}

StagedFile file(const wchar_t* name, int reports, int failures = 0)
{
    StagedFile made;
    made.name = name;
    made.reports = reports;
    made.failures = failures;
    return made;
}

StagedFile lockedFile(const wchar_t* name)
{
    StagedFile made = file(name, 1);
    made.locked = true;
    return made;
}

StagedFile wipedFile(const wchar_t* name)
{
    StagedFile made = file(name, 1);
    made.destinyReports = 1;
    return made;
}

JobPlan planOf(JobKind kind, std::vector<StagedFile> files, std::vector<Act> acts)
{
    JobPlan plan;
    plan.kind = kind;
    plan.engine.files = std::move(files);
    if (!acts.empty())
        plan.users.push_back(std::move(acts));
    return plan;
}

JobPlan pausedAndGoneOnWith()
{
    return planOf(JobKind::Encrypt, {file(L"a", 2)}, {Act::Pause, Act::Resume});
}

JobPlan slowWork()
{
    JobPlan plan = pausedAndGoneOnWith();
    plan.engine.files[0].workTime = 1000;
    return plan;
}

JobPlan cancelledJob()
{
    return planOf(JobKind::Encrypt, {file(L"a", 2)}, {Act::Cancel});
}

JobPlan pausedAndThenCancelled()
{
    return planOf(JobKind::Wipe, {file(L"a", 2)}, {Act::Pause, Act::Resume, Act::HastyCancel});
}

JobPlan hastyClicks()
{
    return planOf(JobKind::Encrypt, {file(L"a", 1)}, {Act::PauseTwice, Act::Key, Act::HastyCancel});
}

JobPlan cancelledInTheSecondStage()
{
    return planOf(JobKind::EncryptAndWipe, {wipedFile(L"a")}, {Act::Cancel});
}

JobPlan fileErrorWhilePausing()
{
    JobPlan plan = planOf(JobKind::Wipe, {file(L"a", 1, 2)}, {Act::PauseTwice});
    plan.answers.fileErrors[L"a"] = {0, 1};
    return plan;
}

JobPlan wrongPasswordFirst()
{
    JobPlan plan = planOf(JobKind::Decrypt, {lockedFile(L"a")}, {});
    plan.answers.passwords = {AnswerWrongPassword};
    return plan;
}

JobPlan twoPromptsAtOnce()
{
    JobPlan plan = planOf(JobKind::Decrypt, {lockedFile(L"a"), file(L"b", 1, 1)}, {});
    plan.engine.asksAhead = true;
    return plan;
}

JobPlan twoPromptsInARow()
{
    JobPlan plan = twoPromptsAtOnce();
    plan.dialogsWithLoop = false;
    return plan;
}

JobPlan reportsDuringAPrompt()
{
    JobPlan plan = planOf(JobKind::Encrypt, {file(L"a", 2), file(L"b", 1, 1)}, {Act::Cancel});
    plan.engine.asksAhead = true;
    return plan;
}

JobPlan listAheadOfTheWindow()
{
    JobPlan plan = planOf(JobKind::Encrypt, {file(L"a", 1)}, {Act::HastyCancel});
    plan.engine.listOnOwnThread = true;
    return plan;
}

JobPlan declined()
{
    JobPlan plan = planOf(JobKind::Wipe, {file(L"a", 1)}, {Act::Cancel});
    plan.answers.declines = true;
    return plan;
}

const NamedPlan Plans[] = {
    {"pausedAndGoneOnWith", pausedAndGoneOnWith()},
    {"slowWork", slowWork()},
    {"cancelled", cancelledJob()},
    {"pausedAndThenCancelled", pausedAndThenCancelled()},
    {"hastyClicks", hastyClicks()},
    {"cancelledInTheSecondStage", cancelledInTheSecondStage()},
    {"fileErrorWhilePausing", fileErrorWhilePausing()},
    {"wrongPasswordFirst", wrongPasswordFirst()},
    {"twoPromptsAtOnce", twoPromptsAtOnce()},
    {"twoPromptsInARow", twoPromptsInARow()},
    {"reportsDuringAPrompt", reportsDuringAPrompt()},
    {"listAheadOfTheWindow", listAheadOfTheWindow()},
    {"declined", declined()},
};

unsigned boundOfDeviations()
{
    return static_cast<unsigned>(secondsFor("JOBRUNNER_SCHEDULE_BOUND", 1));
}

/// Ends the program when threads that run freely never end.
class Watchdog
{
public:
    Watchdog() : thread_([this] { watch(); }) {}
    ~Watchdog()
    {
        {
            const std::lock_guard guard(lock_);
            done_ = true;
        }
        changed_.notify_all();
        thread_.join();
    }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    void sees(unsigned seed)
    {
        const std::lock_guard guard(lock_);
        seed_ = seed;
        ++runs_;
    }

private:
    void watch()
    {
        std::unique_lock guard(lock_);
        for (std::size_t before = 0;; before = runs_)
        {
            if (changed_.wait_for(guard, std::chrono::seconds(60), [this] { return done_; }))
                return;
            if (runs_ != before)
                continue;
            std::fprintf(stderr, "the run of seed %u is blocked for good\n", seed_);
            std::abort();
        }
    }

    std::mutex lock_;
    std::condition_variable changed_;
    bool done_ = false;
    unsigned seed_ = 0;
    std::size_t runs_ = 0;
    std::thread thread_;
};

} // namespace

class SmallJob : public testing::TestWithParam<NamedPlan>
{
};

INSTANTIATE_TEST_SUITE_P(JobSchedules, SmallJob, testing::ValuesIn(Plans),
                         [](const auto& named) { return named.param.name; });

TEST_P(SmallJob, endsInOrderInEverySchedule)
{
    const JobPlan& plan = GetParam().plan;
    const Exploration exploration =
        exploreAll([&plan](Choices& choices) { return runJob(plan, choices); }, boundOfDeviations(),
                   Counted::Deviations, secondsFor("JOBRUNNER_SCHEDULE_SECONDS", 2));
    std::fputs(toldOf(exploration).c_str(), stdout);
    EXPECT_EQ(exploration.failure, "");
}

TEST(JobSchedules, endInOrderWhateverHappensInThem)
{
    const Exploration exploration = exploreSeeds(
        [](unsigned seed)
        {
            RandomChoices choices(seed);
            return runJob(randomPlan(seed), choices);
        },
        secondsFor("JOBRUNNER_SCHEDULE_SECONDS", 10));
    std::fputs(toldOf(exploration).c_str(), stdout);
    EXPECT_EQ(exploration.failure, "");
}

// Under the scheduler one thread's turn comes after another's, so that a sanitizer sees no race there. Here it can.
TEST(JobSchedules, endInOrderWithThreadsThatRunFreely)
{
    Watchdog watchdog;
    const Exploration exploration = exploreSeeds(
        [&watchdog](unsigned seed)
        {
            watchdog.sees(seed);
            delayAtLocks(seed);
            return runJobFreely(randomPlan(seed));
        },
        secondsFor("JOBRUNNER_SCHEDULE_SECONDS", 5));
    delayAtLocks(0);
    std::fputs(toldOf(exploration).c_str(), stdout);
    EXPECT_EQ(exploration.failure, "");
}
