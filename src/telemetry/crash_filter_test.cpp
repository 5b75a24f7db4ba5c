#include "telemetry/crash_filter.h"

#include "telemetry/testing_tracker.h"

#include "systemutilities/win32_exception.h"

namespace Halden::ZEL::Telemetry
{

namespace
{

constexpr Platform::ExceptionRecord Fault{Platform::ExceptionAccessViolation, 0x00401000};

class ACrash : public TrackerTest
{
protected:
    ACrash() { InstallCrashFilter(L"jobrunner"); }
    /// No test leaves a tracker that knows its fakes.
    ~ACrash() override
    {
        platform.statistics.installed = false;
        CreateEventTracker();
    }

    void start()
    {
        CreateEventTracker();
        platform.log.clear();
    }

    const Fakes::ShownBox box{L"Application has crashed!", L"jobrunner", 48};
    const Calls report{
        L"SetDimension(1, 6.13)", L"SendView(jobrunner, App Crash)",
        L"SetDimension(1, 6.13)", L"SendViewEvent(jobrunner, crash_module, Crash in Module, -99999)",
        L"SetDimension(1, 6.13)", L"SendViewEvent(jobrunner, EXCEPTION_ACCESS_VIOLATION, Crash Code, -99999)",
        L"SetDimension(1, 6.13)", L"SendViewEvent(jobrunner, crash_address, Crash Address, 4198400)",
        L"SetDimension(1, 6.13)", L"SendEvent(jobrunner, winzel crash statistics, jobrunner, , -99999)"};
};

TEST_F(ACrash, isReportedThenToldToTheUserAndEndsTheProcess)
{
    start();
    EXPECT_EQ(platform.crashes.crash(Fault), 1);
    EXPECT_EQ(told(), report);
    EXPECT_EQ(platform.messageBoxes.boxes(), std::vector{box});
    EXPECT_TRUE(platform.log.calls().back().starts_with(L"messageBox"));
}

TEST_F(ACrash, isToldToTheUserWithoutATrackerToo)
{
    platform.statistics.onCall = [](const std::wstring&) { throw std::runtime_error("no tracker comes of it"); };
    EXPECT_THROW(CreateEventTracker(), std::runtime_error);
    platform.statistics.onCall = nullptr;
    ASSERT_EQ(GetEventTracker(), nullptr);
    EXPECT_EQ(platform.crashes.crash(Fault), 1);
    EXPECT_EQ(platform.messageBoxes.boxes(), std::vector{box});
}

TEST_F(ACrash, isToldToTheUserWithoutAClientToo)
{
    platform.statistics.installed = false;
    start();
    EXPECT_EQ(platform.crashes.crash(Fault), 1);
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(platform.messageBoxes.boxes(), std::vector{box});
}

TEST_F(ACrash, isReportedInFullWithUsageStatisticsDisabled)
{
    set(L"SendUsageStat", 0);
    start();
    platform.crashes.crash(Fault);
    EXPECT_EQ(told(), report);
    EXPECT_TRUE(GetEventTracker()->IsUsageStatisticsDisabled());
}

TEST_F(ACrash, isToldToTheUserAloneWithCrashReportsDisabled)
{
    set(L"SendCrashReports", 0);
    start();
    EXPECT_EQ(platform.crashes.crash(Fault), 1);
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(platform.messageBoxes.boxes(), std::vector{box});
}

TEST_F(ACrash, becomesTheCurrentView)
{
    start();
    GetEventTracker()->TrackView({L"jobrunner", L"wipe"}, L"Wipe Thread (JobRunner)");
    platform.crashes.crash(Fault);
    EXPECT_EQ(GetEventTracker()->GetViewState().title, L"App Crash");
    EXPECT_EQ(GetEventTracker()->GetViewState().path, std::vector<std::wstring>{L"jobrunner"});
}

TEST_F(ACrash, ofTheLanguageIsAnUnknownException)
{
    start();
    platform.crashes.crash({0xE06D7363, 0x00401000});
    EXPECT_EQ(told().at(5), L"SendViewEvent(jobrunner, UNKNOWN_EXCEPTION, Crash Code, -99999)");
}

TEST_F(ACrash, inTheUpperHalfOfTheMemoryHasANegativeAddress)
{
    constexpr int Bits = static_cast<int>(sizeof(std::uintptr_t)) * 8;
    constexpr std::uintptr_t UpperHalf = std::uintptr_t{1} << (Bits - 1);
    start();
    platform.crashes.crash({Platform::ExceptionAccessViolation, UpperHalf});
    const std::wstring value = Bits == 32 ? L"-2147483648" : L"-9223372036854775808";
    EXPECT_EQ(told().at(7), L"SendViewEvent(jobrunner, crash_address, Crash Address, " + value + L")");
}

TEST_F(ACrash, namesTheModuleThatTheFilterWasInstalledFor)
{
    InstallCrashFilter(L"other");
    start();
    platform.crashes.crash(Fault);
    EXPECT_EQ(told().at(1), L"SendView(other, App Crash)");
    EXPECT_EQ(told().back(), L"SendEvent(other, winzel crash statistics, other, , -99999)");
    EXPECT_EQ(platform.messageBoxes.boxes().at(0).caption, L"other");
    InstallCrashFilter(L"jobrunner");
}

TEST_F(ACrash, letsGoOfTheTrackerBehindTheBox)
{
    start();
    const EventTrackerPtr tracked = GetEventTracker();
    platform.crashes.crash(Fault);
    EXPECT_EQ(tracked.use_count(), 2);
}

TEST_F(ACrash, whoseOptOutCannotBeReadRaisesAnotherOne)
{
    start();
    platform.registry.fail(L"openKey", Platform::ErrorAccessDenied);
    EXPECT_THROW(platform.crashes.crash(Fault), SystemUtilities::Win32Exception);
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
}

} // namespace

} // namespace Halden::ZEL::Telemetry
