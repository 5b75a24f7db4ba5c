#include "jobprocess/main_thread.h"
#include "platform/system_with.h"

#include "bridges/module_factories.h"
#include "commands/command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>

namespace JobRunner
{

namespace
{

const std::wstring JobFile = L"C:\\Temp\\job.json";

/// Threads whose wait shows in the log, as "thread.wait".
class ObservedThreads final : public Fakes::FakeThreads
{
public:
    explicit ObservedThreads(Fakes::CallLog& log) : FakeThreads(log), log_(log) {}

    std::unique_ptr<Platform::Thread> start(std::function<void()> procedure) override
    {
        auto thread = FakeThreads::start(std::move(procedure));
        return thread ? std::make_unique<ObservedThread>(log_, std::move(thread)) : nullptr;
    }

private:
    class ObservedThread final : public Platform::Thread
    {
    public:
        ObservedThread(Fakes::CallLog& log, std::unique_ptr<Platform::Thread> thread)
            : log_(log), thread_(std::move(thread))
        {
        }
        void wait() override
        {
            thread_->wait();
            log_.add(L"thread.wait");
        }

    private:
        Fakes::CallLog& log_;
        std::unique_ptr<Platform::Thread> thread_;
    };

    Fakes::CallLog& log_;
};

/// A window system that can make no window. Its loop has nothing that ends it, so the test does: when the job thread
/// has tried to close the window, or at once.
class WindowlessMessages final : public Platform::Messages
{
public:
    explicit WindowlessMessages(Fakes::CallLog& log) : log_(log) {}

    bool registerClass(const std::wstring&) override { return false; }
    void unregisterClass(const std::wstring&) override {}
    Platform::WindowHandle createWindow(const std::wstring&, const std::wstring&, Platform::WindowProcedure&) override
    {
        return nullptr;
    }
    void destroyWindow(Platform::WindowHandle) override {}
    std::intptr_t defaultProcedure(Platform::WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t) override
    {
        return 0;
    }
    std::intptr_t send(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t, std::intptr_t) override
    {
        EXPECT_EQ(window, nullptr);
        log_.add(L"send " + std::to_wstring(message));
        if (message == WM_JOB_CLOSE)
            closed_.set_value();
        return 0;
    }
    void postQuit() override {}
    bool dispatchOne() override { return false; }
    void runLoop() override
    {
        log_.add(L"runLoop");
        if (waitsForTheJob)
            closed_.get_future().wait();
    }

    bool waitsForTheJob = true;

private:
    Fakes::CallLog& log_;
    std::promise<void> closed_;
};

class MainThreadRun : public testing::Test
{
protected:
    MainThreadRun()
    {
        setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
        setVaultCoreFactory(Fakes::FakeEngine::createFactory);
        Platform::setPlatform(&observed_);
        system_.shell.arguments = {L"C:\\Suite\\bin\\JobRunner.exe", JobFile};
        documents_.documents[JobFile].wipe = true;
    }
    ~MainThreadRun() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    /// The calls of these names alone, in order.
    std::vector<std::wstring> ordered(const std::vector<std::wstring>& names)
    {
        auto calls = system_.log.calls();
        std::erase_if(calls,
                      [&](const std::wstring& call) {
                          return std::none_of(names.begin(), names.end(),
                                              [&](const std::wstring& name) { return call.starts_with(name); });
                      });
        return calls;
    }

    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeZelPlatform documents_{system_.log};
    Fakes::FakeEngine engine_{system_.log};
    ObservedThreads threads_{system_.log};
    Platform::System observed_ = Platform::systemWith(system_.system(), threads_);
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>(system_.log);
};

using Calls = std::vector<std::wstring>;

TEST_F(MainThreadRun, makesTheCommandThenTheWindowThenTheThreadAndWaitsForItAfterTheLoop)
{
    MainThread main(tracker_);
    EXPECT_TRUE(system_.log.calls().empty());
    main.run();
    EXPECT_EQ(ordered({L"deleteFile", L"zelplatform.Release", L"registerClass", L"createWindow", L"startThread",
                       L"destroyWindow", L"thread.wait", L"document.Release"}),
              (Calls{L"deleteFile " + JobFile, L"zelplatform.Release", L"registerClass JobRunner_MessageWindow",
                     L"createWindow JobRunner_MessageWindow JobRunner MessageWindow", L"startThread", L"destroyWindow",
                     L"thread.wait", L"document.Release"}));
    EXPECT_EQ(system_.log.callsOf(L"runLoop").size(), 1U);
}

TEST_F(MainThreadRun, entersTheApartmentOnTheJobThreadBeforeTheJob)
{
    MainThread(tracker_).run();
    EXPECT_EQ(
        ordered({L"startThread", L"enterMultithreadedApartment", L"TrackView(", L"TrackViewEvent(user", L"send"}),
        (Calls{L"startThread", L"enterMultithreadedApartment", L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
               L"TrackViewEvent(user_cancelled, , none)", L"send 2023"}));
}

TEST_F(MainThreadRun, reportsTheKindOfTheJobBeforeTheCommandAsksItsDocument)
{
    MainThread(tracker_).run();
    EXPECT_EQ(ordered({L"document.", L"TrackViewEvent(jobrunner"}),
              (Calls{L"document.IsEncryption", L"document.IsSfxEncryption", L"document.IsDecryption",
                     L"document.IsDoubleClickDecryption", L"document.IsWipe",
                     L"TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)", L"document.GetFileList",
                     L"document.GetDeletionMethod", L"document.Release"}));
}

TEST_F(MainThreadRun, asksTheKindsOnlyUntilTheFirstThatIsTrue)
{
    documents_.documents[JobFile].doubleClickDecryption = true;
    EXPECT_ANY_THROW(MainThread(tracker_).run());
    EXPECT_EQ(ordered({L"document.Is"}), (Calls{L"document.IsEncryption", L"document.IsSfxEncryption",
                                                L"document.IsDecryption", L"document.IsDoubleClickDecryption"}));
}

TEST_F(MainThreadRun, deletesTheJobFileAfterTheLoadAndReleasesTheStoreBeforeTheFactory)
{
    const std::vector<std::wstring> names = {L"zelplatform.", L"store.", L"deleteFile"};
    const std::wstring load = L"store.LoadJobDocument(" + JobFile + L")";
    MainThread(tracker_).run();
    EXPECT_EQ(ordered(names), (Calls{L"zelplatform.createFactory", L"zelplatform.CreateJobDocumentStore", load,
                                     L"deleteFile " + JobFile, L"store.Release", L"zelplatform.Release"}));
    system_.log.clear();
    documents_.documents.clear();
    EXPECT_ANY_THROW(MainThread(tracker_).run());
    EXPECT_EQ(ordered(names), (Calls{L"zelplatform.createFactory", L"zelplatform.CreateJobDocumentStore", load,
                                     L"store.Release", L"zelplatform.Release"}));
}

TEST_F(MainThreadRun, doesTheJobWithoutAWindowToo)
{
    // Intended: nothing is reported. Each dialog answers 0, which repeats the file until it succeeds.
    WindowlessMessages messages(system_.log);
    Platform::System windowless = Platform::systemWith(observed_, messages);
    Platform::setPlatform(&windowless);
    system_.messageBoxes.answer(Platform::BoxAnswerYes);
    engine_.files = {{L"a.txt", 1, 2}};
    MainThread(tracker_).run();
    EXPECT_EQ(system_.log.callsOf(L"send"), (Calls{L"send 2026", L"send 2026", L"send 2023"}));
    EXPECT_EQ(tracker_->calls().at(3), L"TrackEvent(winzel wipe usage statistics, processed_file_count, , 1)");
    EXPECT_EQ(system_.log.callsOf(L"thread.wait").size(), 1U);
    EXPECT_EQ(system_.messageBoxes.boxes().size(), 1U);
}

TEST_F(MainThreadRun, entersTheLoopWithoutAJobThreadToo)
{
    // Intended: a thread that cannot be started is not noticed; outside of this test nothing ends the loop.
    WindowlessMessages messages(system_.log);
    messages.waitsForTheJob = false;
    Platform::System windowless = Platform::systemWith(observed_, messages);
    Platform::setPlatform(&windowless);
    threads_.setFailing(true);
    MainThread(tracker_).run();
    EXPECT_EQ(ordered({L"startThread", L"runLoop", L"thread.wait", L"document.Release"}),
              (Calls{L"startThread", L"runLoop", L"document.Release"}));
    EXPECT_TRUE(system_.messageBoxes.boxes().empty());
}

} // namespace

} // namespace JobRunner
