#include "posix/attempt.h"

#include <random>

// The real program, ended from outside at random moments of its work.

namespace
{

using namespace Faults;
using std::chrono::microseconds;

class ARandomMoment : public testing::TestWithParam<const char*>
{
};

TEST_P(ARandomMoment, mayBeTheLastOne)
{
    Attempts attempts(scenario(GetParam()));
    const auto begin = std::chrono::steady_clock::now();
    attempts.callsOfCleanRun();
    const auto whole =
        std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - begin).count();
    std::mt19937 random(static_cast<std::uint32_t>(GetParam()[0]) + static_cast<std::uint32_t>(whole));
    std::uniform_int_distribution<std::int64_t> moment(0, whole);
    const int moments = isFullRun() ? 80 : 3;
    int killed = 0;
    for (int count = 0; count < moments && !HasFailure(); ++count)
        killed += attempts.disturb({}, 0, 's', microseconds(moment(random))).code == Killed ? 1 : 0;
    EXPECT_GT(killed, isFullRun() ? moments / 4 : 0) << "it was over each time";
}

INSTANTIATE_TEST_SUITE_P(OfAJob, ARandomMoment, testing::ValuesIn(ScenarioNames),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
