#include "statistics_testing/recorded_statistics.h"

#include <gtest/gtest.h>

#include <memory>

// What the programs under test report does not come among the records of whoever runs the tests.

namespace
{

class OwnState : public testing::Environment
{
public:
    void SetUp() override { records_ = std::make_unique<StatisticsTesting::RecordedStatistics>(); }
    void TearDown() override { records_.reset(); }

private:
    std::unique_ptr<StatisticsTesting::RecordedStatistics> records_;
};

const testing::Environment* const ownState = testing::AddGlobalTestEnvironment(new OwnState);

} // namespace
