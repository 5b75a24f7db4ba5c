#include "statistics/win32/com_testing.h"
#include "statistics_testing/recorded_statistics.h"

#include <climits>

// The DLL as COM uses it, through its exports alone.

namespace StatisticsModule
{
namespace
{

using Calls = std::vector<std::string>;

/// Identifiers that this class knows nothing of.
constexpr GUID Unknown{0x12345678, 1, 2, {1, 2, 3, 4, 5, 6, 7, 8}};

class TheComClass : public testing::Test
{
protected:
    /// The operation at `slot` of an object, as one who knows nothing but its table calls it.
    template <class... Arguments> static HRESULT callSlot(IUnknown* object, std::size_t slot, Arguments... arguments)
    {
        using Operation = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, Arguments...);
        void** const table = *reinterpret_cast<void***>(object);
        return reinterpret_cast<Operation>(table[slot])(object, arguments...);
    }
    Com<IStatisticsClient> makeClient()
    {
        auto client = module.makeClient();
        recorded.clear();
        return client;
    }
    static BSTR plain(const Text& text) { return text; }

    StatisticsTesting::RecordedStatistics recorded;
    LoadedModule module;
};

} // namespace

TEST_F(TheComClass, keepsEveryCall)
{
    const auto factory = module.makeFactory();
    IStatisticsClient* made = nullptr;
    ASSERT_EQ(factory->CreateClient(1, Text(L"https://e/p"), Text(L"https://e/"), Text(L"tag"), &made), S_OK);
    const Com<IStatisticsClient> client(made);
    EXPECT_EQ(client->SetUserId(Text(L"user")), S_OK);
    EXPECT_EQ(client->SetClientId(Text(L"client")), S_OK);
    EXPECT_EQ(client->SetDimension(1, Text(L"6.13")), S_OK);
    EXPECT_EQ(client->SendView(Text(L"a/b"), Text(L"Title")), S_OK);
    EXPECT_EQ(client->SendViewEvent(Text(L"a/b"), Text(L"do"), Text(L"it"), 7), S_OK);
    EXPECT_EQ(client->SendEvent(Text(L"a/b"), Text(L"c"), Text(L"do"), Text(L"it"), NoEventValue), S_OK);
    EXPECT_EQ(client->Flush(), S_OK);
    EXPECT_EQ(recorded.calls(), (Calls{"CreateClient(1, https://e/p, https://e/, tag)", "SetUserId(user)",
                                       "SetClientId(client)", "SetDimension(1, 6.13)", "SendView(a/b, Title)",
                                       "SendViewEvent(a/b, do, it, 7)", "SendEvent(a/b, c, do, it, none)", "Flush()"}));
}

TEST_F(TheComClass, answersByTheNumbersOfItsOperations)
{
    const Text one(L"1");
    const Text two(L"2");
    const Text three(L"3");
    const Text four(L"4");
    const auto factory = module.makeFactory();
    IUnknown* made = nullptr;
    ASSERT_EQ(callSlot(factory.get(), 3, LONG{1}, plain(one), plain(two), plain(three), &made), S_OK);
    const Com<IUnknown> client(made);
    EXPECT_LT(callSlot(client.get(), 3), 0) << "nobody calls this one";
    callSlot(client.get(), 4, plain(one));
    callSlot(client.get(), 5, plain(one));
    callSlot(client.get(), 6, LONG{6}, plain(one));
    callSlot(client.get(), 7, plain(one), plain(two));
    callSlot(client.get(), 8, plain(one), plain(two), plain(three), LLONG_MIN);
    callSlot(client.get(), 9, plain(one), plain(two), plain(three), plain(four), LLONG_MAX);
    callSlot(client.get(), 10);
    EXPECT_EQ(recorded.calls(),
              (Calls{"CreateClient(1, 1, 2, 3)", "SetUserId(1)", "SetClientId(1)", "SetDimension(6, 1)",
                     "SendView(1, 2)", "SendViewEvent(1, 2, 3, -9223372036854775808)",
                     "SendEvent(1, 2, 3, 4, 9223372036854775807)", "Flush()"}));
}

TEST_F(TheComClass, takesANullTextAsAnEmptyOne)
{
    EXPECT_EQ(makeClient()->SendView(nullptr, nullptr), S_OK);
    EXPECT_EQ(recorded.calls(), Calls{"SendView(, )"});
}

TEST_F(TheComClass, keepsTheNullsInAText)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(makeClient()->SetUserId(Text(L"a\0b"sv)), S_OK);
    EXPECT_EQ(recorded.calls(), Calls{std::string("SetUserId(a\0b)"sv)});
}

TEST_F(TheComClass, isTheOnlyOneOfTheDll)
{
    void* object = this;
    EXPECT_EQ(module.getClassObject(Unknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(module.getClassObject(guidOf(FactoryClass), IID_IClassFactory, nullptr), E_POINTER);
    object = this;
    EXPECT_EQ(module.getClassObject(guidOf(FactoryClass), Unknown, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

TEST_F(TheComClass, isNotAggregated)
{
    const auto classFactory = module.makeClassFactory();
    void* object = this;
    EXPECT_EQ(classFactory->CreateInstance(classFactory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
}

TEST_F(TheComClass, refusesWhatItCannotMake)
{
    const auto classFactory = module.makeClassFactory();
    EXPECT_EQ(classFactory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    void* object = this;
    EXPECT_EQ(classFactory->CreateInstance(nullptr, Unknown, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);

    const auto factory = module.makeFactory();
    const Text text(L"");
    EXPECT_EQ(factory->CreateClient(1, text, text, text, nullptr), E_POINTER);
    for (const LONG kind : {0L, 2L, -1L, LONG_MAX, LONG_MIN})
    {
        auto* client = reinterpret_cast<IStatisticsClient*>(this);
        EXPECT_EQ(factory->CreateClient(kind, text, text, text, &client), E_INVALIDARG);
        EXPECT_EQ(client, nullptr);
    }
    EXPECT_TRUE(recorded.calls().empty());
}

TEST_F(TheComClass, answersForItsInterfacesAndNoOther)
{
    const auto factory = module.makeFactory();
    const auto client = makeClient();
    void* object = nullptr;
    for (const GUID& id : {GUID(IID_IUnknown), guidOf(FactoryInterface)})
    {
        ASSERT_EQ(factory->QueryInterface(id, &object), S_OK);
        EXPECT_EQ(object, factory.get());
        factory->Release();
    }
    ASSERT_EQ(client->QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(object, client.get());
    client->Release();
    for (IUnknown* const known : {static_cast<IUnknown*>(factory.get()), static_cast<IUnknown*>(client.get())})
    {
        object = this;
        EXPECT_EQ(known->QueryInterface(IID_IClassFactory, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(known->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    }
    EXPECT_EQ(client->QueryInterface(guidOf(FactoryInterface), &object), E_NOINTERFACE);
}

TEST_F(TheComClass, countsReferences)
{
    for (IUnknown* const object :
         {static_cast<IUnknown*>(module.makeFactory().release()), static_cast<IUnknown*>(module.makeClient().release()),
          static_cast<IUnknown*>(module.makeClassFactory().release())})
    {
        EXPECT_EQ(object->AddRef(), 2U);
        void* same = nullptr;
        ASSERT_EQ(object->QueryInterface(IID_IUnknown, &same), S_OK);
        EXPECT_EQ(object->AddRef(), 4U);
        EXPECT_EQ(object->Release(), 3U);
        EXPECT_EQ(object->Release(), 2U);
        EXPECT_EQ(object->Release(), 1U);
        EXPECT_EQ(object->Release(), 0U);
    }
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

TEST_F(TheComClass, keepsTheDllWhileSomethingOfItIsInUse)
{
    EXPECT_EQ(module.canUnloadNow(), S_OK);
    auto classFactory = module.makeClassFactory();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE);
    EXPECT_EQ(classFactory->LockServer(TRUE), S_OK);
    EXPECT_EQ(classFactory->LockServer(FALSE), S_OK);
    EXPECT_EQ(classFactory->LockServer(TRUE), S_OK);
    classFactory.reset();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE) << "it is locked";
    module.makeClassFactory()->LockServer(FALSE);
    EXPECT_EQ(module.canUnloadNow(), S_OK);

    auto client = module.makeClient();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE) << "a client outlives what made it";
    client.reset();
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

TEST_F(TheComClass, makesNoClientWithoutAJournal)
{
    // A folder is where the journal should be.
    std::filesystem::create_directories(recorded.file());
    const Text text(L"");
    auto* client = reinterpret_cast<IStatisticsClient*>(this);
    EXPECT_EQ(module.makeFactory()->CreateClient(1, text, text, text, &client), E_FAIL);
    EXPECT_EQ(client, nullptr);
}

} // namespace StatisticsModule
