#include "platform/statistics.h"

#include "platform/platform.h"
#include "platform/threads.h"
#include "statistics_testing/installed_component.h"
#include "statistics_testing/recorded_statistics.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

constexpr std::uint32_t EveryContext = 23;

} // namespace

TEST(TheComponentOnWindows, getsTheNullsInAText)
{
    using namespace std::string_literals;
    const StatisticsTesting::RecordedStatistics recorded;
    const StatisticsTesting::InstalledComponent installed(StatisticsTesting::Component::Shipped);
    std::thread(
        []
        {
            auto& system = Platform::nativeSystem();
            system.threads.enterMultithreadedApartment();
            std::unique_ptr<Platform::StatisticsFactory> factory;
            std::unique_ptr<Platform::StatisticsClient> client;
            ASSERT_GE(system.statistics.createFactory(EveryContext, factory), 0);
            ASSERT_GE(factory->createClient(1, L"", L"\0s"s, L"t", client), 0);
            client->sendView(L"a\0b"s, L"");
        })
        .join();
    EXPECT_EQ(recorded.calls(), (std::vector<std::string>{"CreateClient(1, , \0s, t)"s, "SendView(a\0b, )"s}));
}
