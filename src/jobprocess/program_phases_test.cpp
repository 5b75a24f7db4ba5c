#include "jobprocess/program.h"

#include "bridges/module_factories.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_platform.h"
#include "fakes/recording_tracker.h"
#include "interfaces/process/exception.h"
#include "platform/platform.h"
#include "telemetry/i_event_tracker.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace JobRunner
{

namespace
{

// Run by the exports of the documents' module.
std::function<void()> onInitialize;
std::function<void()> onUninitialize;

bool startZelPlatform(const wchar_t*)
{
    if (onInitialize)
        onInitialize();
    return true;
}
void endZelPlatform()
{
    if (onUninitialize)
        onUninitialize();
}
int startModule()
{
    return 1;
}
int startControls(const wchar_t*)
{
    return 1;
}
void endModule() {}
VaultCore::IFactory* createFactory()
{
    return nullptr;
}

class ProgramPhases : public testing::Test
{
protected:
    ProgramPhases()
    {
        const std::wstring folder = L"C:\\Suite\\bin\\";
        system_.modules.addExport(folder + L"zelplatform.dll", "initialize", startZelPlatform);
        system_.modules.addExport(folder + L"zelplatform.dll", "createFactory", Fakes::FakeZelPlatform::createFactory);
        system_.modules.addExport(folder + L"zelplatform.dll", "uninitialize", endZelPlatform);
        system_.modules.addExport(folder + L"vaultcore.dll", "initialize", startModule);
        system_.modules.addExport(folder + L"vaultcore.dll", "createFactory", createFactory);
        system_.modules.addExport(folder + L"vaultcore.dll", "uninitialize", endModule);
        system_.modules.addExport(folder + L"panekit.dll", "initialize", startControls);
        system_.shell.arguments.push_back(L"C:\\j.json");
        documents_.documents[L"C:\\j.json"].wipe = true;
    }
    ~ProgramPhases() override
    {
        onInitialize = nullptr;
        onUninitialize = nullptr;
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    Fakes::FakePlatform system_;
    Fakes::FakeZelPlatform documents_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

TEST_F(ProgramPhases, copyTheTrackerOnlyBetweenTheStartAndTheEndOfTheModules)
{
    const Halden::ZEL::Telemetry::EventTrackerPtr tracker = tracker_;
    const long before = tracker.use_count();
    long atStart = 0;
    long atEnd = 0;
    onInitialize = [&] { atStart = tracker.use_count(); };
    onUninitialize = [&] { atEnd = tracker.use_count(); };
    EXPECT_EQ(runJobProcess(tracker), 0);
    EXPECT_EQ(atStart, before);
    EXPECT_EQ(atEnd, before);
}

TEST_F(ProgramPhases, tellNothingBeforeTheModulesButTheStart)
{
    std::vector<std::wstring> told;
    onInitialize = [&] { told = tracker_->calls(); };
    EXPECT_EQ(runJobProcess(tracker_), 0);
    EXPECT_EQ(told, (std::vector<std::wstring>{L"TrackView(jobrunner, JobRunner.exe)",
                                               L"TrackViewEvent(start_module, , none)"}));
}

TEST_F(ProgramPhases, letAnyOtherExceptionPass)
{
    onInitialize = [] { throw std::runtime_error("initialize"); };
    EXPECT_THROW(runJobProcess(tracker_), std::runtime_error);
    EXPECT_TRUE(system_.messageBoxes.boxes().empty());
    EXPECT_EQ(tracker_->calls().size(), 2U);
}

/// Fails in the first report with what the start-up would show to the user.
class FailingTracker final : public Fakes::RecordingTracker
{
public:
    void TrackView(const std::vector<std::wstring>&, const std::wstring&) override { throw Exception{L"the view"}; }
};

TEST_F(ProgramPhases, guardOnlyTheModulesAndTheJobAndNotTheReportOfTheStart)
{
    EXPECT_THROW(runJobProcess(std::make_shared<FailingTracker>()), Exception);
    EXPECT_TRUE(system_.messageBoxes.boxes().empty());
    EXPECT_TRUE(system_.log.callsOf(L"load").empty());
}

TEST_F(ProgramPhases, enterTheApartmentBeforeAnythingElse)
{
    system_.modules.remove(L"C:\\Suite\\bin\\zelplatform.dll");
    EXPECT_EQ(runProgram(nullptr), 1);
    EXPECT_EQ(system_.log.calls().front(), L"enterMultithreadedApartment");
    EXPECT_EQ(system_.log.callsOf(L"enterMultithreadedApartment").size(), 1U);
    EXPECT_EQ(system_.messageBoxes.boxes().size(), 1U);
    EXPECT_NE(Halden::ZEL::Telemetry::GetEventTracker(), nullptr);
}

} // namespace

} // namespace JobRunner
