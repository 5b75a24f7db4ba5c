#include "engine/engine_orders.h"
#include "engine/faulty_file_system.h"
#include "engine/forgetful_file_system.h"
#include "oracle/full_run.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <new>

// The engine on a disk whose first, second, third ... operation fails, until a run has none left to fail.

namespace
{

using namespace Faults;
using VaultCore::FailureCause;

struct Cause
{
    const char* name;
    std::optional<FailureCause> cause;
};

constexpr Cause Causes[] = {{"full", FailureCause::Full},         {"device", FailureCause::Device},
                            {"denied", FailureCause::Denied},     {"inUse", FailureCause::InUse},
                            {"noMemory", FailureCause::NoMemory}, {"badAlloc", std::nullopt}};

class AFaultyDisk : public testing::TestWithParam<std::tuple<const char*, Cause>>
{
protected:
    static void TearDownTestSuite() { std::printf("%zu runs on a faulty disk\n", runs_); }

    /// Fails each operation in turn.
    void failEach(bool fromThereOn, int tries)
    {
        // In a short run each job and cause begin elsewhere.
        const long stride = isFullRun() ? 1 : 61;
        for (long step = 1 + series_++ * 5 % stride;; step += stride)
        {
            if (!failAt({step, fromThereOn, std::get<1>(GetParam()).cause}, tries) || HasFailure())
                return;
        }
    }

private:
    /// Memory that the language cannot have outside of the work on a file ends the process in its crash filter.
    JobReport runUntilMemoryEnds(FaultyFileSystem& faulty, int tries)
    {
        told_ = {};
        job_.onTold = [&](const Told& now) { told_ = now; };
        try
        {
            return job_.run(faulty, tries);
        }
        catch (const std::bad_alloc&)
        {
            return {told_, 0, {}, false};
        }
    }

    /// False when the run came to its end before.
    bool failAt(const Fault& fault, int tries)
    {
        ++runs_;
        ForgetfulFileSystem disk(order_.before);
        FaultyFileSystem faulty(disk, fault);
        const JobReport report = runUntilMemoryEnds(faulty, tries);
        const auto operations = faulty.operations();
        const bool reached = static_cast<long>(operations.size()) >= fault.step;
        const std::string what = std::to_string(fault.step) + " of " + std::to_string(operations.size()) + ": " +
                                 (reached ? operations[static_cast<std::size_t>(fault.step) - 1] : "nothing");
        EXPECT_TRUE(report.finished || !fault.cause) << what;
        const Files between = disk.files();
        EXPECT_EQ(textOf(complaints(order_, between, report.told)), "") << what;
        EXPECT_TRUE(reached || doneOf(order_, between) == order_.works.size()) << what;
        job_.run(disk);
        EXPECT_EQ(textOf(complaintsAtEnd(order_, between, disk.files())), "") << what;
        return reached;
    }

    const Order order_ = engineOrder(std::get<0>(GetParam()));
    EngineJob job_{order_, L""};
    /// Of the run up to now.
    Told told_;
    static inline std::size_t runs_ = 0;
    static inline long series_ = 0;
};

TEST_P(AFaultyDisk, mayFailOnceAnywhere)
{
    failEach(false, 0);
}

TEST_P(AFaultyDisk, mayFailOnceAnywhereAndIsTriedAgain)
{
    failEach(false, 1);
}

TEST_P(AFaultyDisk, mayFailFromAnywhereOn)
{
    failEach(true, 0);
}

INSTANTIATE_TEST_SUITE_P(OfAJob, AFaultyDisk,
                         testing::Combine(testing::ValuesIn(EngineOrderNames), testing::ValuesIn(Causes)),
                         [](const auto& param)
                         { return std::string(std::get<0>(param.param)) + "_" + std::get<1>(param.param).name; });

} // namespace
