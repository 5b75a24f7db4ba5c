#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace
{

using Client = std::unique_ptr<Platform::StatisticsClient>;
using Factory = std::unique_ptr<Platform::StatisticsFactory>;
using Calls = std::vector<std::wstring>;

constexpr std::uint32_t EveryContext = 23;

TEST(FakeStatistics, everyCallIsInTheLogAndCanBeWatched)
{
    Fakes::FakePlatform fake;
    fake.statistics.installed = true;
    fake.statistics.results[L"SendView"] = -7;
    std::vector<std::wstring> watched;
    fake.statistics.onCall = [&](const std::wstring& call) { watched.push_back(call); };
    {
        Factory factory;
        Client client;
        fake.system().statistics.createFactory(EveryContext, factory);
        factory->createClient(1, L"e", L"s", L"t", client);
        EXPECT_EQ(client->sendView(L"a/b", L"c"), -7);
        EXPECT_EQ(client->sendEvent(L"p", L"c", L"a", L"", -99999), 0);
        client.reset();
    }
    EXPECT_EQ(fake.log.calls(), (Calls{L"statistics.CoCreateInstance(23)", L"statistics.CreateClient(1, e, s, t)",
                                       L"statistics.SendView(a/b, c)", L"statistics.SendEvent(p, c, a, , -99999)",
                                       L"statistics.ReleaseClient()", L"statistics.ReleaseFactory()"}));
    EXPECT_EQ(watched, fake.log.calls());
}

TEST(FakeStatistics, aClientMayOutliveIt)
{
    Client client;
    {
        Fakes::FakePlatform fake;
        fake.statistics.installed = true;
        Factory factory;
        fake.system().statistics.createFactory(EveryContext, factory);
        factory->createClient(1, L"e", L"s", L"t", client);
    }
    EXPECT_EQ(client->flush(), 0);
}

} // namespace
