#include "telemetry/testing_tracker.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

/// Asked before any test runs, when nothing has made a tracker yet.
const EventTrackerPtr atStart = GetEventTracker();

const std::wstring Created =
    L"CreateClient(1, https://statistics.halden.example/visitors/visitors.php, https://statistics.halden.example/, "
    L"winzel)";

class Connecting : public TrackerTest
{
protected:
    void store(const std::wstring& name, std::uint32_t type, const std::wstring& text)
    {
        makeSettings();
        settings()->SetRawValue(name, type, Platform::toUtf16(text));
    }
};

TEST_F(Connecting, asksForAClientOfTheSuite)
{
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told(), (Calls{L"CoCreateInstance(23)", Created}));
}

TEST_F(Connecting, handsOnTheIdentifiersThatAreStored)
{
    store(L"uid", Platform::ValueText, L"user");
    store(L"cid", Platform::ValueText, L"client");
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told(), (Calls{L"CoCreateInstance(23)", Created, L"SetUserId(user)", L"SetClientId(client)"}));
}

TEST_F(Connecting, handsOnTheOneIdentifierThatIsStored)
{
    store(L"cid", Platform::ValueText, L"client");
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told().back(), L"SetClientId(client)");
    EXPECT_EQ(told().size(), 3U);
}

TEST_F(Connecting, doesNothingMoreOnceThereIsAClient)
{
    store(L"uid", Platform::ValueText, L"user");
    connected();
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
    EXPECT_TRUE(platform.log.calls().empty());
}

TEST_F(Connecting, failsWithoutTheComponentAndCanBeTriedAgain)
{
    platform.statistics.installed = false;
    EXPECT_FALSE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told(), Calls{L"CoCreateInstance(23)"});
    platform.statistics.installed = true;
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
}

TEST_F(Connecting, letsGoOfAFactoryThatMakesNoClient)
{
    store(L"uid", Platform::ValueText, L"user");
    platform.statistics.results[L"CreateClient"] = Fakes::FakeStatistics::Failure;
    EXPECT_FALSE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told(), (Calls{L"CoCreateInstance(23)", Created, L"ReleaseFactory()"}));
    tracker.TrackView({L"jobrunner"}, L"title");
    EXPECT_EQ(told().size(), 3U);
}

TEST_F(Connecting, holdsTheFactoryAndReleasesItBehindTheClient)
{
    {
        EventTracker brief;
        EXPECT_TRUE(brief.ConnectStatisticsClient());
        platform.log.clear();
    }
    EXPECT_EQ(told(), (Calls{L"ReleaseClient()", L"ReleaseFactory()"}));
}

// An identifier is any text; what stands behind its first null does not belong to it.

TEST_F(Connecting, takesAnIdentifierUpToItsFirstNull)
{
    store(L"uid", Platform::ValueText, std::wstring(L"us\0er\0", 6));
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"us");
}

TEST_F(Connecting, takesAnIdentifierWithoutANullWhole)
{
    store(L"uid", Platform::ValueText, L"user");
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"user");
}

TEST_F(Connecting, looksNeitherAtTheTypeNorAtTheFormOfAnIdentifier)
{
    store(L"uid", Platform::ValueBinary, L"{any text} \x00E9");
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"{any text} \x00E9");
}

TEST_F(Connecting, leavesOutHalfACharacterAtTheEndOfAnIdentifier)
{
    makeSettings();
    settings()->SetRawValue(L"uid", Platform::ValueText, {'a', 0, 'b'});
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"a");
}

TEST_F(Connecting, findsNoIdentifierWhereThereIsNoKeyOrValueOrText)
{
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"");
    makeSettings();
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"");
    store(L"uid", Platform::ValueText, L"");
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"");
}

TEST_F(Connecting, leavesNoKeyOpenWhenAnIdentifierCannotBeRead)
{
    store(L"uid", Platform::ValueText, L"user");
    for (const int call : {0, 1})
    {
        platform.registry.failCall(L"queryValue", call, Platform::ErrorAccessDenied);
        EXPECT_EQ(ReadClientIdentifier(L"uid"), L"") << call;
        EXPECT_EQ(platform.registry.openHandles(), 0U) << call;
        platform.registry.succeed();
    }
    EXPECT_EQ(ReadClientIdentifier(L"uid"), L"user");
    EXPECT_EQ(platform.registry.openHandles(), 0U);
}

TEST_F(Connecting, asksForAnIdentifierWithTheAccessOfAReaderAndWithoutAView)
{
    makeSettings();
    platform.log.clear();
    ReadClientIdentifier(L"uid");
    const Calls opened = platform.log.callsOf(L"openKey");
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_NE(opened[0].find(L"20019"), std::wstring::npos) << opened[0].size();
}

TEST_F(Connecting, goesOnWithoutIdentifiersThatNobodyMaySee)
{
    store(L"uid", Platform::ValueText, L"user");
    platform.registry.fail(L"openKey", Platform::ErrorAccessDenied);
    EXPECT_TRUE(tracker.ConnectStatisticsClient());
    EXPECT_EQ(told().back(), Created);
}

using TheProcessesTracker = TrackerTest;

TEST_F(TheProcessesTracker, isNotThereBeforeItIsCreated)
{
    EXPECT_EQ(atStart, nullptr);
}

TEST_F(TheProcessesTracker, isTheOneThatWasCreatedLast)
{
    const EventTrackerPtr made = CreateEventTracker();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(GetEventTracker(), made);
    EXPECT_EQ(GetEventTracker(), made);
}

TEST_F(TheProcessesTracker, isNeverReusedAndLivesOnOnlyInTheCopiesOfOthers)
{
    const EventTrackerPtr first = CreateEventTracker();
    const EventTrackerPtr second = CreateEventTracker();
    EXPECT_NE(first, second);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(GetEventTracker(), second);
}

TEST_F(TheProcessesTracker, isConnectedAfreshEachTimeOnceTheOldOneIsGone)
{
    CreateEventTracker();
    platform.log.clear();
    CreateEventTracker();
    EXPECT_EQ(told(), (Calls{L"ReleaseClient()", L"ReleaseFactory()", L"CoCreateInstance(23)", Created}));
}

TEST_F(TheProcessesTracker, isMadeWithoutAComponentToo)
{
    platform.statistics.installed = false;
    EXPECT_NE(CreateEventTracker(), nullptr);
}

} // namespace

} // namespace Halden::ZEL::Telemetry
