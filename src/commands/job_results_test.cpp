#include "commands/job_results.h"

#include "bridges/progress_events_handler.h"
#include "fakes/fake_platform.h"
#include "fakes/recording_tracker.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Fakes;
using namespace JobRunner;

namespace
{

class JobResults : public testing::Test
{
protected:
    std::vector<std::wstring> tracked()
    {
        RecordingTracker tracker;
        trackJobResults(tracker, L"own", L"other", results);
        return tracker.calls();
    }

    FakePlatform platform;
    ProgressWindow window;
    ProgressEventsHandler results{&window};
};

using Calls = std::vector<std::wstring>;

} // namespace

TEST_F(JobResults, areThreeCountsInOrder)
{
    results.OnFileFinished(nullptr, nullptr, 0);
    results.OnFileFinished(nullptr, nullptr, 0);
    results.OnFileFinished(nullptr, nullptr, 5);
    results.OnFileProgress(7U << 20, 7U << 20);
    EXPECT_EQ(tracked(),
              (Calls{L"TrackEvent(own, processed_file_count, , 2)", L"TrackEvent(own, failed_file_count, , 1)",
                     L"TrackEvent(own, processed_total_size_mb, , 7)"}));
}

TEST_F(JobResults, cutTheLargestSizeToItsMebibytesWithoutLoss)
{
    constexpr std::uint64_t Largest = std::numeric_limits<std::uint64_t>::max();
    results.OnFileProgress(Largest, Largest);
    EXPECT_EQ(tracked().back(), L"TrackEvent(own, processed_total_size_mb, , 17592186044415)");
}

TEST_F(JobResults, ofACancelledJobEndInAnEventOfAnotherCategoryWhateverTheCounts)
{
    results.OnFileFinished(nullptr, nullptr, 5);
    window.requestCancel();
    results.OnFileProgress(1, 2);
    EXPECT_EQ(tracked(),
              (Calls{L"TrackEvent(own, processed_file_count, , 0)", L"TrackEvent(own, failed_file_count, , 1)",
                     L"TrackEvent(own, processed_total_size_mb, , 0)", L"TrackEvent(other, cancelled, , none)"}));
}

TEST_F(JobResults, ofAJobWhoseCancelNeverReachedTheEngineAreNotCancelled)
{
    window.requestCancel();
    EXPECT_EQ(tracked().size(), 3U);
}
