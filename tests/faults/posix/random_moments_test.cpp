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
    const auto worked = std::max(attempts.cleanRun().worked, attempts.cleanRun().worked);
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<std::int64_t> moment(0, worked.count());
    const int moments = isFullRun() ? 80 : 4;
    int killed = 0;
    for (int count = 0; count < moments && !HasFailure(); ++count)
        killed += attempts.disturb({}, 0, 's', microseconds(moment(random))).code == Killed ? 1 : 0;
    EXPECT_GT(killed, moments / 4) << "it was over each time";
}

INSTANTIATE_TEST_SUITE_P(OfAJob, ARandomMoment, testing::ValuesIn(ScenarioNames),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
