#include "posix/attempt.h"

#include <algorithm>
#include <cerrno>

// The real program, ended or failed at each call of the C library by which it reads or changes its user's files.

namespace
{

using namespace Faults;

/// What a disk, or another program, answers in the place of a success. EBUSY is what Windows calls a sharing violation.
constexpr int Errors[] = {ENOSPC, EIO, EACCES, EBUSY, ENOMEM};

bool movesBytes(const std::string& call)
{
    return call.starts_with("read ") || call.starts_with("write ") || call.starts_with("pwrite ");
}

class EveryCall : public testing::TestWithParam<const char*>
{
protected:
    /// Calls `attempt` with the number of every call, or of so many spread over them all, until one is not reached.
    template <class Attempt> void forCalls(std::size_t some, Attempt attempt)
    {
        const std::size_t stride = isFullRun() ? 1 : std::max<std::size_t>(1, calls.size() / some);
        const std::size_t first = isFullRun() ? 1 : 1 + series_++ * 37 % stride;
        for (std::size_t step = first; isFullRun() || step <= calls.size(); step += stride)
        {
            const Ended ended = attempt(static_cast<long>(step));
            if (ended.calls.size() < step || testing::Test::HasFailure())
                break;
        }
    }

    /// The same for those that can be done by half.
    template <class Attempt> void forMoves(std::size_t some, Attempt attempt)
    {
        std::vector<long> moves;
        for (std::size_t number = 1; number <= calls.size(); ++number)
        {
            if (movesBytes(calls[number - 1]))
                moves.push_back(static_cast<long>(number));
        }
        const std::size_t stride = isFullRun() ? 1 : std::max<std::size_t>(1, moves.size() / some);
        for (std::size_t at = isFullRun() ? 0 : series_++ * 37 % stride; at < moves.size(); at += stride)
        {
            attempt(moves[at]);
            if (testing::Test::HasFailure())
                break;
        }
    }

    /// Every error has its turn, over all the calls.
    static int errorOf(long step) { return Errors[static_cast<std::size_t>(step) % std::size(Errors)]; }

    Attempts attempts{scenario(GetParam())};
    const std::vector<std::string> calls = attempts.callsOfCleanRun();

private:
    /// Each series of a short run begins elsewhere.
    static inline std::size_t series_ = 0;
};

TEST_P(EveryCall, mayBeTheLastOne)
{
    forCalls(5, [&](long step) { return attempts.disturb({"end", step, 0}, Killed); });
}

TEST_P(EveryCall, mayBeTheLastOneAndHalfDone)
{
    forMoves(3, [&](long step) { return attempts.disturb({"tear", step, 0}, Killed); });
}

TEST_P(EveryCall, mayFailOnce)
{
    forCalls(5, [&](long step) { return attempts.disturb({"once", step, errorOf(step)}, 0); });
}

TEST_P(EveryCall, mayFailOnceAndIsTriedAgain)
{
    forCalls(2, [&](long step) { return attempts.disturb({"once", step, errorOf(step + 1)}, 0, 't'); });
}

TEST_P(EveryCall, mayFailFromThereOn)
{
    forCalls(5, [&](long step) { return attempts.disturb({"on", step, errorOf(step + 2)}, 0); });
}

TEST_P(EveryCall, mayReadOrWriteLessThanItWasAskedFor)
{
    forMoves(2,
             [&](long step)
             {
                 const Ended ended = attempts.disturb({"short", step, 0}, 0);
                 const Order& order = attempts.scenario().order;
                 EXPECT_EQ(doneOf(order, attempts.between()), order.works.size()) << ended.shown;
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
    const auto write = std::find_if(clean.calls.begin(), clean.calls.end(),
                                    [](const auto& call) { return call.starts_with("write "); });
    ASSERT_NE(write, clean.calls.end());
    putFiles(place.files(), job.order.before);
    const Ended ended = job.run(place, {"once", write - clean.calls.begin() + 1, ENOSPC});
    EXPECT_NE(ended.shown.find("There is no space left on the disk."), std::string::npos) << ended.shown;
    ASSERT_TRUE(ended.told.has_value());
    EXPECT_EQ(ended.told->failed, 1U);
    EXPECT_EQ(ended.told->processed, job.order.works.size() - 1);
}

} // namespace
