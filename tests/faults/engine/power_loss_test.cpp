#include "engine/engine_orders.h"
#include "engine/forgetful_file_system.h"
#include "oracle/full_run.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <random>

// The engine on a disk that keeps only what was flushed, and loses its power behind each change.

namespace
{

using namespace Faults;

/// The disk, and what had been told by then.
struct Moment
{
    DiskModel disk;
    Told told;
};

class ALossOfPower : public testing::TestWithParam<const char*>
{
protected:
    static void TearDownTestSuite() { std::printf("%zu losses of power\n", losses_); }

    std::vector<Moment> moments()
    {
        std::vector<Moment> found;
        Told told;
        ForgetfulFileSystem files(order_.before);
        files.onChange = [&](const DiskModel& disk) { found.push_back({disk, told}); };
        job_.onTold = [&](const Told& now)
        {
            told = now;
            if (!found.empty())
                found.push_back({found.back().disk, told});
        };
        const JobReport report = job_.run(files);
        EXPECT_EQ(doneOf(order_, files.files()), order_.works.size());
        EXPECT_EQ(report.told.failed, 0U);
        job_.onTold = [](const Told&) {};
        return found;
    }

    /// What was removed may be there again: a removal is not flushed.
    void judge(const Moment& moment, const Files& survivors, const std::string& what)
    {
        ++losses_;
        EXPECT_EQ(textOf(complaints(order_, survivors)), "") << what;
        EXPECT_GE(withResults(order_, survivors), moment.told.processed) << what;
        ForgetfulFileSystem files(survivors);
        job_.run(files);
        EXPECT_EQ(textOf(complaintsAtEnd(order_, survivors, files.files())), "") << what;
    }

    const Order order_ = engineOrder(GetParam());

private:
    EngineJob job_{order_, L""};
    static inline std::size_t losses_ = 0;
};

TEST_P(ALossOfPower, leavesEveryFileWhole)
{
    const std::vector<Moment> all = moments();
    std::mt19937 random(7);
    for (std::size_t number = 0; number < all.size() && !HasFailure(); ++number)
    {
        const std::string what = "behind change " + std::to_string(number + 1) + " of " + std::to_string(all.size());
        judge(all[number], all[number].disk.survivors([] { return false; }), what + ", nothing arrived");
        if (isFullRun())
            judge(all[number], all[number].disk.survivors([] { return true; }), what + ", all arrived");
        for (int again = 0; again < (isFullRun() ? 30 : 1); ++again)
        {
            std::bernoulli_distribution arrives(0.1 + 0.8 * std::generate_canonical<double, 32>(random));
            judge(all[number], all[number].disk.survivors([&] { return arrives(random); }), what + ", some arrived");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(DuringAJob, ALossOfPower, testing::ValuesIn(EngineOrderNames),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
