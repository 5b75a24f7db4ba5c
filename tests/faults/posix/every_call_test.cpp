#include "posix/attempt.h"

#include <algorithm>
#include <cerrno>

// The real program, ended or failed at each call of the C library by which it reads or changes its user's files.

namespace
{

using namespace Faults;

/// What a disk, or another program, answers in the place of a success. The last but one is what Windows calls a sharing
/// violation.
constexpr int Errors[] = {ENOSPC, EIO, EACCES, EBUSY, ENOMEM};

class EveryCall : public testing::TestWithParam<const char*>
{
protected:
    /// Calls `attempt` with the number of every call, or of a few spread over them all, until one is not reached.
    template <class Attempt> void forCalls(std::size_t some, Attempt attempt)
    {
        const std::size_t stride = isFullRun() ? 1 : std::max<std::size_t>(1, calls.size() / some);
        // Each series begins elsewhere, so that together they meet most calls even in a short run.
        const std::size_t first = isFullRun() ? 1 : 1 + series_++ * 7 % stride;
        for (std::size_t step = first;; step += stride)
        {
            const Ended ended = attempt(static_cast<long>(step));
            if (ended.calls.size() < step || testing::Test::HasFailure())
                break;
        }
    }

    Attempts attempts{scenario(GetParam())};
    const std::vector<std::string> calls = attempts.callsOfCleanRun();

private:
    std::size_t series_ = 0;
};

TEST_P(EveryCall, mayBeTheLastOne)
{
    forCalls(5, [&](long step) { return attempts.disturb({"end", step, 0}, Killed); });
}

TEST_P(EveryCall, mayBeTheLastOneAndHalfDone)
{
    forCalls(3, [&](long step) { return attempts.disturb({"tear", step, 0}, Killed); });
}

TEST_P(EveryCall, mayFailOnce)
{
    for (const int error : Errors)
        forCalls(1, [&](long step) { return attempts.disturb({"once", step, error}, 0); });
}

TEST_P(EveryCall, mayFailOnceAndIsTriedAgain)
{
    for (const int error : Errors)
        forCalls(1, [&](long step) { return attempts.disturb({"once", step, error}, 0, 't'); });
}

TEST_P(EveryCall, mayFailFromThereOn)
{
    for (const int error : Errors)
        forCalls(1, [&](long step) { return attempts.disturb({"on", step, error}, 0); });
}

TEST_P(EveryCall, mayReadOrWriteLessThanItWasAskedFor)
{
    forCalls(2,
             [&](long step)
             {
                 const Ended ended = attempts.disturb({"short", step, 0}, 0);
                 EXPECT_EQ(doneOf(attempts.scenario().order, attempts.between()), attempts.scenario().order.works.size())
                     << ended.shown;
                 return ended;
             });
}

INSTANTIATE_TEST_SUITE_P(OfAJob, EveryCall, testing::ValuesIn(ScenarioNames),
                         [](const auto& name) { return std::string(name.param); });

// Otherwise nothing would be proved by any of them.
TEST(TheTrap, seesTheCallsThatCount)
{
    const std::vector<std::string> calls = Attempts(scenario("encryptAndWipe")).callsOfCleanRun();
    for (const std::string name : {"open ", "read ", "write ", "pwrite ", "fsync ", "renameat2 ", "ftruncate ",
                                    "unlinkat ", "fchmod ", "futimens ", "close "})
    {
        EXPECT_TRUE(std::any_of(calls.begin(), calls.end(), [&](const auto& call) { return call.starts_with(name); }))
            << name;
    }
}

TEST(TheTrap, letsACallFailAndTheProgramTellsIt)
{
    const Workplace place;
    const Scenario& job = scenario("encryptAndKeep");
    putFiles(place.files(), job.order.before);
    const Ended clean = job.run(place);
    const auto write =
        std::find_if(clean.calls.begin(), clean.calls.end(), [](const auto& call) { return call.starts_with("write "); });
    ASSERT_NE(write, clean.calls.end());
    putFiles(place.files(), job.order.before);
    const Ended ended = job.run(place, {"once", write - clean.calls.begin() + 1, ENOSPC});
    EXPECT_NE(ended.shown.find("There is no space left on the disk."), std::string::npos) << ended.shown;
    ASSERT_TRUE(ended.told.has_value());
    EXPECT_EQ(ended.told->failed, 1U);
    EXPECT_EQ(ended.told->processed, 3U);
}

} // namespace
