#include "jobprocess/program.h"

#include "bridges/module_factories.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "platform/message_box.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace JobRunner
{

namespace
{

bool startZelPlatform(const wchar_t*)
{
    return true;
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

class ProgramTest : public testing::Test
{
protected:
    ~ProgramTest() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    void addModules()
    {
        auto& modules = system_.modules;
        modules.addExport(folder_ + L"zelplatform.dll", "initialize", startZelPlatform);
        modules.addExport(folder_ + L"zelplatform.dll", "createFactory", Fakes::FakeZelPlatform::createFactory);
        modules.addExport(folder_ + L"zelplatform.dll", "uninitialize", endModule);
        modules.addExport(folder_ + L"vaultcore.dll", "initialize", startModule);
        modules.addExport(folder_ + L"vaultcore.dll", "createFactory", Fakes::FakeEngine::createFactory);
        modules.addExport(folder_ + L"vaultcore.dll", "uninitialize", endModule);
        modules.addExport(folder_ + L"panekit.dll", "initialize", startControls);
    }

    /// Where a call stands in the log; the log's size when it does not.
    std::size_t position(const std::wstring& start)
    {
        const auto calls = system_.log.calls();
        const auto found =
            std::find_if(calls.begin(), calls.end(), [&](const auto& call) { return call.starts_with(start); });
        return static_cast<std::size_t>(found - calls.begin());
    }

    const std::wstring folder_ = L"C:\\Suite\\bin\\";
    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeZelPlatform documents_{system_.log};
    Fakes::FakeEngine engine_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>(system_.log);
};

using Boxes = std::vector<Fakes::ShownBox>;
using Calls = std::vector<std::wstring>;

TEST_F(ProgramTest, aMissingModuleIsToldWithTheNamesOfTwoOthers)
{
    addModules();
    system_.modules.remove(folder_ + L"panekit.dll");
    EXPECT_EQ(runJobProcess(tracker_), 1);
    EXPECT_EQ(system_.messageBoxes.boxes(), (Boxes{{L"Cannot initialize ZelPlatform/VaultCore", L"Job Runner", 0x40}}));
    EXPECT_EQ(tracker_->calls(), (Calls{L"TrackView(jobrunner, JobRunner.exe)", L"TrackViewEvent(start_module, , none)",
                                        L"TrackViewEvent(error, Cannot initialize ZelPlatform/VaultCore, none)"}));
}

TEST_F(ProgramTest, withoutAnArgumentTheModulesAreLoadedAndUnloadedBeforeTheBox)
{
    addModules();
    EXPECT_EQ(runJobProcess(tracker_), 1);
    EXPECT_EQ(system_.log.callsOf(L"load").size(), 3u);
    EXPECT_EQ(system_.log.callsOf(L"unload").size(), 3u);
    const std::size_t box = position(L"messageBox This application should not be called directly.");
    EXPECT_LT(position(L"unload C:\\Suite\\bin\\panekit.dll"), position(L"TrackViewEvent(error"));
    EXPECT_LT(position(L"TrackViewEvent(error"), box);
    EXPECT_LT(box, system_.log.calls().size());
    EXPECT_EQ(system_.messageBoxes.boxes().front().caption, L"Job Runner");
}

TEST_F(ProgramTest, aDeclinedJobStillExitsWithZeroAndUnloadsAfterTheCommandIsGone)
{
    addModules();
    system_.shell.arguments.push_back(L"C:\\j.json");
    documents_.documents[L"C:\\j.json"].wipe = true;
    system_.messageBoxes.answer(Platform::BoxAnswerNo);
    EXPECT_EQ(runJobProcess(tracker_), 0);
    EXPECT_LT(position(L"document.Release"), position(L"unload C:\\Suite\\bin\\vaultcore.dll"));
    EXPECT_LT(position(L"unload C:\\Suite\\bin\\panekit.dll"), system_.log.calls().size());
}

TEST_F(ProgramTest, aJobInWhichEveryFileFailsExitsWithZero)
{
    addModules();
    system_.shell.arguments.push_back(L"C:\\j.json");
    documents_.documents[L"C:\\j.json"].wipe = true;
    system_.messageBoxes.answer(Platform::BoxAnswerYes);
    engine_.files = {{L"a", 1, 1}};
    views_.factory.fileErrorAnswers = {2};
    EXPECT_EQ(runJobProcess(tracker_), 0);
    EXPECT_EQ(position(L"TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)") <
                  system_.log.calls().size(),
              true);
}

} // namespace

} // namespace JobRunner
