#include "posix/attempt.h"

#include <cstdio>

namespace Faults
{
namespace
{

/// Tells at the end how much was tried.
class Tally : public testing::Environment
{
public:
    void TearDown() override
    {
        std::printf("%zu disturbed runs of the program, %zu left temporary files, %zu an empty file of a wipe\n", runs,
                    withTemporaries, withMeaningless);
    }
    static inline std::size_t runs = 0;
    static inline std::size_t withTemporaries = 0;
    static inline std::size_t withMeaningless = 0;
};

const testing::Environment* const tally = testing::AddGlobalTestEnvironment(new Tally);

void count(const Files& between)
{
    ++Tally::runs;
    Tally::withTemporaries += hasTemporaries(between) ? 1U : 0U;
    for (const auto& [path, content] : between)
        Tally::withMeaningless += isMeaningless(path) ? 1U : 0U;
}

std::string textOf(const Trapping& trapping, const Ended& ended)
{
    const auto step = static_cast<std::size_t>(trapping.step);
    const std::string call = step > 0 && step <= ended.calls.size() ? ended.calls[step - 1] : "";
    return trapping.deed + " " + std::to_string(trapping.step) + " (error " + std::to_string(trapping.error) + ") " +
           call + "\n" + ended.shown;
}

} // namespace

Ended Attempts::cleanRun()
{
    putFiles(place_.files(), scenario_.order.before);
    Ended ended = scenario_.run(place_);
    EXPECT_EQ(ended.code, 0) << ended.shown;
    const Files after = filesBelow(place_.files());
    EXPECT_EQ(textOf(complaintsAtEnd(scenario_.order, scenario_.order.before, after)), "") << ended.shown;
    EXPECT_EQ(doneOf(scenario_.order, after), scenario_.order.works.size());
    EXPECT_TRUE(ended.told.has_value()) << "nothing was reported";
    return ended;
}

Ended Attempts::disturb(const Trapping& trapping, int code, char answer,
                        std::optional<std::chrono::microseconds> killedAfter)
{
    putFiles(place_.files(), scenario_.order.before);
    Ended ended = scenario_.run(place_, trapping, answer, killedAfter);
    const std::string what = textOf(trapping, ended);
    // At the end by a kill, other threads may have counted calls that they had no time to write down.
    const bool reached = ended.code == Killed || static_cast<long>(ended.calls.size()) >= trapping.step;
    EXPECT_TRUE(killedAfter || ended.code == (reached ? code : 0)) << ended.code << '\n' << what;
    judge(ended, what);
    // What has ended by itself and left nothing would only be found done, or done again.
    if (isFullRun() || ended.code != 0 || hasTemporaries(between_))
        runAgain(what);
    return ended;
}

void Attempts::judge(const Ended& ended, const std::string& what)
{
    between_ = filesBelow(place_.files());
    count(between_);
    EXPECT_EQ(textOf(complaints(scenario_.order, between_, ended.told)), "") << what;
}

void Attempts::runAgain(const std::string& what)
{
    const Ended ended = scenario_.run(place_);
    EXPECT_EQ(ended.code, 0) << what << ended.shown;
    EXPECT_EQ(textOf(complaintsAtEnd(scenario_.order, between_, filesBelow(place_.files()))), "") << what << "then:\n"
                                                                                                  << ended.shown;
}

} // namespace Faults
