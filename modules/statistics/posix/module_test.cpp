#include "fakes/slot_of.h"
#include "interfaces/release_ptr.h"
#include "interfaces/statistics/posix/statistics_client.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "statistics_testing/installed_component.h"
#include "statistics_testing/recorded_statistics.h"

#include <climits>

namespace StatisticsModule
{
namespace
{

constexpr std::int32_t NullPointerResult = -2147467261;
constexpr std::int32_t InvalidArgumentResult = -2147024809;

/// The module as the program gets it: by its export alone.
class TheModule : public testing::Test
{
protected:
    void SetUp() override
    {
        module_ = modules().load(StatisticsTesting::shippedModule().wstring());
        ASSERT_TRUE(module_);
        create = reinterpret_cast<CreateStatisticsFactoryFunction>(
            modules().findExport(module_, CreateStatisticsFactoryName));
        ASSERT_TRUE(create);
    }
    void TearDown() override { modules().unload(module_); }

    static Platform::Modules& modules() { return Platform::nativeSystem().modules; }

    ReleasePtr<IStatisticsClientFactory> makeFactory()
    {
        IStatisticsClientFactory* factory = nullptr;
        EXPECT_EQ(create(&factory), 0);
        return ReleasePtr<IStatisticsClientFactory>(factory);
    }
    ReleasePtr<IStatisticsClient> makeClient()
    {
        IStatisticsClient* client = nullptr;
        EXPECT_EQ(makeFactory()->CreateClient(1, L"E", L"S", L"T", &client), 0);
        recorded.clear();
        return ReleasePtr<IStatisticsClient>(client);
    }

    StatisticsTesting::RecordedStatistics recorded;
    CreateStatisticsFactoryFunction create = nullptr;

private:
    Platform::ModuleHandle module_ = nullptr;
};

} // namespace

TEST_F(TheModule, keepsEveryCall)
{
    const auto factory = makeFactory();
    IStatisticsClient* made = nullptr;
    ASSERT_EQ(factory->CreateClient(1, L"https://e/p", L"https://e/", L"tag", &made), 0);
    const ReleasePtr<IStatisticsClient> client(made);
    EXPECT_EQ(client->SetUserId(L"user"), 0);
    EXPECT_EQ(client->SetClientId(L"client"), 0);
    EXPECT_EQ(client->SetDimension(1, L"6.13"), 0);
    EXPECT_EQ(client->SendView(L"a/b", L"Title"), 0);
    EXPECT_EQ(client->SendViewEvent(L"a/b", L"do", L"it", 7), 0);
    EXPECT_EQ(client->SendEvent(L"a/b", L"c", L"do", L"it", NoEventValue), 0);
    EXPECT_EQ(client->Flush(), 0);
    EXPECT_EQ(recorded.calls(), (std::vector<std::string>{
                                    "CreateClient(1, https://e/p, https://e/, tag)", "SetUserId(user)",
                                    "SetClientId(client)", "SetDimension(1, 6.13)", "SendView(a/b, Title)",
                                    "SendViewEvent(a/b, do, it, 7)", "SendEvent(a/b, c, do, it, none)", "Flush()"}));
}

TEST_F(TheModule, answersByTheNumbersOfItsOperations)
{
    using T = IStatisticsClient;
    const std::vector<std::size_t> slots{Fakes::slotOf(&T::AddRef),      Fakes::slotOf(&T::Release),
                                         Fakes::slotOf(&T::NotCalled1),  Fakes::slotOf(&T::SetUserId),
                                         Fakes::slotOf(&T::SetClientId), Fakes::slotOf(&T::SetDimension),
                                         Fakes::slotOf(&T::SendView),    Fakes::slotOf(&T::SendViewEvent),
                                         Fakes::slotOf(&T::SendEvent),   Fakes::slotOf(&T::Flush)};
    EXPECT_EQ(slots, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(Fakes::slotOf(&IStatisticsClientFactory::CreateClient), 2U);

    const auto client = makeClient();
    EXPECT_LT((client.get()->*Fakes::memberAt<std::int32_t (T::*)()>(2))(), 0) << "nobody calls this one";
    (client.get()->*Fakes::memberAt<std::int32_t (T::*)(const wchar_t*)>(4))(L"id");
    EXPECT_EQ(recorded.calls(), std::vector<std::string>{"SetClientId(id)"});
}

TEST_F(TheModule, takesANullTextAsAnEmptyOne)
{
    EXPECT_EQ(makeClient()->SendView(nullptr, nullptr), 0);
    EXPECT_EQ(recorded.calls(), std::vector<std::string>{"SendView(, )"});
}

TEST_F(TheModule, countsReferences)
{
    const auto client = makeClient();
    EXPECT_EQ(client->AddRef(), 2U);
    EXPECT_EQ(client->AddRef(), 3U);
    EXPECT_EQ(client->Release(), 2U);
    EXPECT_EQ(client->Release(), 1U);
}

TEST_F(TheModule, refusesWhatItCannotMake)
{
    EXPECT_EQ(create(nullptr), NullPointerResult);
    const auto factory = makeFactory();
    EXPECT_EQ(factory->CreateClient(1, L"", L"", L"", nullptr), NullPointerResult);
    for (const std::int32_t kind : {0, 2, -1, INT_MAX, INT_MIN})
    {
        auto* client = reinterpret_cast<IStatisticsClient*>(factory.get());
        EXPECT_EQ(factory->CreateClient(kind, L"", L"", L"", &client), InvalidArgumentResult);
        EXPECT_EQ(client, nullptr);
    }
    EXPECT_TRUE(recorded.calls().empty());
}

TEST_F(TheModule, makesNoClientWithoutAJournal)
{
    std::ofstream(recorded.file().parent_path()) << "a file where the folder should be";
    auto* client = reinterpret_cast<IStatisticsClient*>(this);
    EXPECT_LT(makeFactory()->CreateClient(1, L"", L"", L"", &client), 0);
    EXPECT_EQ(client, nullptr);
}

TEST_F(TheModule, hasNoOtherExport)
{
    const auto module = modules().load(StatisticsTesting::shippedModule().wstring());
    EXPECT_EQ(modules().findExport(module, "_ZN16StatisticsModule15userJournalFileB5cxx11Ev"), nullptr);
    EXPECT_EQ(modules().findExport(module, "_ZN16StatisticsModule15userJournalFileEv"), nullptr);
    modules().unload(module);
}

} // namespace StatisticsModule
