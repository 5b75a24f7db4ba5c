#include "fakes/fake_platform.h"
#include "platform/platform.h"
#include "telemetry/i_event_tracker.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::wstring>;

class RunProgram : public testing::Test
{
protected:
    /// No test leaves a tracker that knows its fakes.
    ~RunProgram() override
    {
        system_.statistics.installed = false;
        Halden::ZEL::Telemetry::CreateEventTracker();
    }

    /// What happens up to the first event.
    Calls started()
    {
        Calls calls;
        for (const std::wstring& call : system_.log.calls())
        {
            if (call == L"enterMultithreadedApartment" || call == L"setUnhandledExceptionFilter" ||
                call.starts_with(L"statistics.Co") || call.starts_with(L"statistics.Send") || call.starts_with(L"load"))
                calls.push_back(call.substr(0, call.find_first_of(L"( ")));
        }
        return calls;
    }

    Fakes::FakePlatform system_;
};

TEST_F(RunProgram, entersTheApartmentThenMakesTheTrackerThenInstallsTheFilterThenReportsTheStart)
{
    system_.statistics.installed = true;
    EXPECT_EQ(runProgram(nullptr), 1);
    const Calls calls = started();
    ASSERT_GE(calls.size(), 5U);
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + 5),
              (Calls{L"enterMultithreadedApartment", L"statistics.CoCreateInstance", L"setUnhandledExceptionFilter",
                     L"statistics.SendView", L"statistics.SendViewEvent"}));
    EXPECT_EQ(system_.log.callsOf(L"statistics.SendView(").at(0), L"statistics.SendView(jobrunner, JobRunner.exe)");
    EXPECT_EQ(system_.log.callsOf(L"statistics.SendViewEvent(").at(0),
              L"statistics.SendViewEvent(jobrunner, start_module, , -99999)");
}

TEST_F(RunProgram, tellsOfACrashUnderTheNameOfTheProcess)
{
    EXPECT_EQ(runProgram(nullptr), 1);
    system_.crashes.crash({Platform::ExceptionAccessViolation, 1});
    EXPECT_EQ(system_.messageBoxes.boxes().back(), (Fakes::ShownBox{L"Application has crashed!", L"jobrunner", 48}));
}

TEST_F(RunProgram, doesTheSameWithoutAStatisticsClient)
{
    EXPECT_EQ(runProgram(nullptr), 1);
    EXPECT_EQ(system_.log.callsOf(L"statistics."), Calls{L"statistics.CoCreateInstance(23)"});
    EXPECT_EQ(system_.messageBoxes.boxes(),
              (std::vector<Fakes::ShownBox>{{L"Cannot initialize ZelPlatform/VaultCore", L"Job Runner", 0x40}}));
}

} // namespace

} // namespace JobRunner
