#include "platform/each_system.h"
#include "platform/threads.h"
#include "platform/utf8.h"
#include "statistics_testing/installed_component.h"
#include "statistics_testing/recorded_statistics.h"

#include <chrono>
#include <functional>
#include <optional>
#include <thread>

namespace
{

using StatisticsTesting::Component;
using Client = std::unique_ptr<Platform::StatisticsClient>;
using Factory = std::unique_ptr<Platform::StatisticsFactory>;
using Calls = std::vector<std::wstring>;

/// What the program asks for: any server, wherever it runs.
constexpr std::uint32_t EveryContext = 23;
constexpr std::uint32_t OtherProcess = 4;

class Statistics : public EachSystem
{
protected:
    void SetUp() override { install(Component::Shipped); }

    void install(Component component)
    {
        if (GetParam() == Kind::Fake)
            return installFake(component);
        if (!recorded_)
            recorded_.emplace();
        installed_.reset();
        installed_.emplace(component);
    }
    /// Takes the component away from those who look for it from now on.
    void remove()
    {
        installed_.reset();
        if (GetParam() == Kind::Fake)
            fake().statistics.installed = false;
    }

    /// In a thread of its own that has entered the multithreaded apartment, as the program's threads have.
    void inApartment(const std::function<void()>& action)
    {
        std::thread(
            [&]
            {
                system().threads.enterMultithreadedApartment();
                action();
            })
            .join();
    }

    Platform::StatisticsResult createFactory(Factory& factory, std::uint32_t context = EveryContext)
    {
        return system().statistics.createFactory(context, factory);
    }
    /// Nothing when a step fails.
    Client createClient()
    {
        Factory factory;
        Client client;
        if (createFactory(factory) >= 0)
            factory->createClient(1, L"https://host/p", L"https://host/", L"tag", client);
        return client;
    }

    /// What the component was told.
    Calls calls()
    {
        Calls told;
        if (GetParam() == Kind::Native)
        {
            for (const std::string& call : recorded_->calls())
                told.push_back(Platform::fromUtf8(call));
            return told;
        }
        const std::wstring start = L"statistics.";
        for (const std::wstring& call : fake().log.callsOf(start))
            if (!call.starts_with(start + L"CoCreate") && !call.starts_with(start + L"Release"))
                told.push_back(call.substr(start.size()));
        return told;
    }
    const std::wstring created = L"CreateClient(1, https://host/p, https://host/, tag)";

private:
    void installFake(Component component)
    {
        auto& statistics = fake().statistics;
        statistics.installed = component != Component::Vanished;
        if (component == Component::Refusing)
            statistics.results[L"CreateClient"] = Fakes::FakeStatistics::Failure;
        statistics.clientResult = component == Component::Failing ? Fakes::FakeStatistics::Failure : 0;
    }

    std::optional<StatisticsTesting::RecordedStatistics> recorded_;
    std::optional<StatisticsTesting::InstalledComponent> installed_;
};

TEST_P(Statistics, aClientIsToldEveryCall)
{
    inApartment(
        [this]
        {
            const Client client = createClient();
            ASSERT_TRUE(client);
            EXPECT_GE(client->setUserId(L"user"), 0);
            EXPECT_GE(client->setClientId(L"client"), 0);
            EXPECT_GE(client->setDimension(5, L"yes"), 0);
            EXPECT_GE(client->sendView(L"a/b", L"Title"), 0);
            EXPECT_GE(client->sendViewEvent(L"a/b", L"do", L"it", -1), 0);
            EXPECT_GE(client->sendEvent(L"", L"category", L"do", L"it", 1LL << 40), 0);
            EXPECT_GE(client->flush(), 0);
        });
    EXPECT_EQ(calls(), (Calls{created, L"SetUserId(user)", L"SetClientId(client)", L"SetDimension(5, yes)",
                              L"SendView(a/b, Title)", L"SendViewEvent(a/b, do, it, -1)",
                              L"SendEvent(, category, do, it, 1099511627776)", L"Flush()"}));
}

TEST_P(Statistics, aTextIsAnyTextAndMayBeEmpty)
{
    inApartment(
        [this]
        {
            const Client client = createClient();
            ASSERT_TRUE(client);
            client->sendView(L"", L"");
            client->sendView(L"\u00fc/\u20ac", L"\U0001F511 \"\\\n");
            client->setUserId(std::wstring(5000, L'x'));
        });
    EXPECT_EQ(calls(), (Calls{created, L"SendView(, )", L"SendView(\u00fc/\u20ac, \U0001F511 \"\\\n)",
                              L"SetUserId(" + std::wstring(5000, L'x') + L")"}));
}

TEST_P(Statistics, aMissingComponentIsAFailure)
{
    install(Component::Vanished);
    inApartment(
        [this]
        {
            Factory factory;
            EXPECT_LT(createFactory(factory), 0);
            EXPECT_FALSE(factory);
        });
}

TEST_P(Statistics, theComponentIsNotOfAnotherProcess)
{
    inApartment(
        [this]
        {
            Factory factory;
            EXPECT_LT(createFactory(factory, OtherProcess), 0);
            EXPECT_FALSE(factory);
        });
}

TEST_P(Statistics, aClientThatCannotBeMadeIsAFailure)
{
    install(Component::Refusing);
    inApartment(
        [this]
        {
            Factory factory;
            ASSERT_GE(createFactory(factory), 0);
            Client client;
            EXPECT_LT(factory->createClient(1, L"e", L"s", L"t", client), 0);
            EXPECT_FALSE(client);
        });
}

TEST_P(Statistics, thereIsOneKindOfClients)
{
    inApartment(
        [this]
        {
            Factory factory;
            ASSERT_GE(createFactory(factory), 0);
            Client client;
            EXPECT_EQ(factory->createClient(2, L"e", L"s", L"t", client), Fakes::FakeStatistics::InvalidArgument);
            EXPECT_FALSE(client);
            EXPECT_GE(factory->createClient(1, L"e", L"s", L"t", client), 0);
            EXPECT_TRUE(client);
        });
}

TEST_P(Statistics, aCallThatFailsSaysSo)
{
    install(Component::Failing);
    inApartment(
        [this]
        {
            const Client client = createClient();
            ASSERT_TRUE(client);
            EXPECT_LT(client->setUserId(L""), 0);
            EXPECT_LT(client->setClientId(L""), 0);
            EXPECT_LT(client->setDimension(1, L""), 0);
            EXPECT_LT(client->sendView(L"", L""), 0);
            EXPECT_LT(client->sendViewEvent(L"", L"", L"", 0), 0);
            EXPECT_LT(client->sendEvent(L"", L"", L"", L"", 0), 0);
            EXPECT_LT(client->flush(), 0);
        });
}

TEST_P(Statistics, aClientOutlivesItsFactoryAndTheRemovalOfTheComponent)
{
    inApartment(
        [this]
        {
            const Client client = createClient();
            ASSERT_TRUE(client);
            remove();
            EXPECT_GE(client->sendView(L"a", L"b"), 0);
        });
    EXPECT_EQ(calls(), (Calls{created, L"SendView(a, b)"}));
}

TEST_P(Statistics, aClientServesSeveralThreads)
{
    constexpr int Each = 20;
    inApartment(
        [this]
        {
            const Client client = createClient();
            ASSERT_TRUE(client);
            const auto send = [&](const std::wstring& name)
            {
                system().threads.enterMultithreadedApartment();
                for (int count = 0; count < Each; ++count)
                    EXPECT_GE(client->sendView(name, L"T"), 0);
            };
            std::thread first(send, L"first");
            std::thread job(send, L"job");
            first.join();
            job.join();
        });
    const Calls told = calls();
    EXPECT_EQ(std::count(told.begin(), told.end(), L"SendView(first, T)"), Each);
    EXPECT_EQ(std::count(told.begin(), told.end(), L"SendView(job, T)"), Each);
}

INSTANTIATE_EACH_SYSTEM(Statistics);

TEST(NativeStatistics, aClientThatHangsKeepsItsCallerAsLong)
{
    const StatisticsTesting::RecordedStatistics recorded;
    const StatisticsTesting::InstalledComponent installed(Component::Hanging);
    std::thread(
        [&]
        {
            auto& system = Platform::nativeSystem();
            system.threads.enterMultithreadedApartment();
            Factory factory;
            Client client;
            ASSERT_GE(system.statistics.createFactory(EveryContext, factory), 0);
            ASSERT_GE(factory->createClient(1, L"e", L"s", L"t", client), 0);
            const auto start = std::chrono::steady_clock::now();
            EXPECT_GE(client->flush(), 0);
            EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
        })
        .join();
    EXPECT_EQ(recorded.calls(), (std::vector<std::string>{"CreateClient(1, e, s, t)", "Flush()"}));
}

} // namespace
