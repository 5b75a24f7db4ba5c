#include "jobprocess/main_thread.h"

#include "bridges/module_factories.h"
#include "commands/command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "interfaces/process/exception.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace JobRunner
{

namespace
{

const std::wstring JobFile = L"C:\\Temp\\job.json";

class MainThreadTest : public testing::Test
{
protected:
    MainThreadTest()
    {
        setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
        setVaultCoreFactory(Fakes::FakeEngine::createFactory);
        system_.shell.arguments = {L"C:\\Suite\\bin\\JobRunner.exe", JobFile};
        system_.shell.files = {JobFile};
    }
    ~MainThreadTest() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    Fakes::JobAnswers& job() { return documents_.documents[JobFile]; }

    /// Text of the failure of a run, empty for none.
    std::wstring run()
    {
        try
        {
            MainThread(tracker_).run();
            return L"";
        }
        catch (const Exception& failure)
        {
            return failure.text;
        }
    }

    std::vector<std::wstring> tracked() { return tracker_->calls(); }
    bool jobFileExists() { return system_.shell.files.count(JobFile) != 0; }
    std::size_t count(const std::wstring& call)
    {
        const auto all = system_.log.calls();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), call));
    }

    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeZelPlatform documents_{system_.log};
    Fakes::FakeEngine engine_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

TEST_F(MainThreadTest, withoutAnArgumentItTellsThatItIsInternal)
{
    system_.shell.arguments.resize(1);
    EXPECT_EQ(run(), L"This application should not be called directly. It is designed for internal purposes.");
    EXPECT_EQ(count(L"createWindow JobRunner_MessageWindow JobRunner MessageWindow"), 0u);
}

TEST_F(MainThreadTest, aJobFileThatDoesNotLoadIsNamedAndStays)
{
    EXPECT_EQ(run(), L"Cannot load configuration file: " + JobFile);
    EXPECT_TRUE(jobFileExists());
}

TEST_F(MainThreadTest, aJobWithoutAKindIsReleasedAndItsFileDeleted)
{
    job();
    EXPECT_EQ(run(), L"Unknown type of the thread operation in configuration file");
    EXPECT_FALSE(jobFileExists());
    EXPECT_EQ(count(L"document.Release"), 1u);
    EXPECT_TRUE(tracked().empty());
}

TEST_F(MainThreadTest, onlyTheFirstArgumentCounts)
{
    job().wipe = true;
    system_.shell.arguments.push_back(L"C:\\Temp\\other.json");
    EXPECT_EQ(run(), L"");
    EXPECT_FALSE(jobFileExists());
}

TEST_F(MainThreadTest, aJobFileThatCannotBeDeletedIsNoFailure)
{
    job().wipe = true;
    system_.shell.files.clear();
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(count(L"deleteFile " + JobFile), 1u);
}

TEST_F(MainThreadTest, aDeclinedJobEndsInOrder)
{
    job().wipe = true;
    system_.messageBoxes.answer(Platform::BoxAnswerNo);
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(tracked(), (std::vector<std::wstring>{L"TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)",
                                                    L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
                                                    L"TrackViewEvent(user_cancelled, , none)"}));
    EXPECT_EQ(engine_.startedWith, nullptr);
    EXPECT_EQ(count(L"document.Release"), 1u);
    EXPECT_EQ(count(L"postQuit"), 1u);
    EXPECT_EQ(count(L"send 2023"), 1u);
}

TEST_F(MainThreadTest, aWholeWipeReportsItsCounts)
{
    job().wipe = true;
    job().deletionMethod = 2;
    system_.messageBoxes.answer(Platform::BoxAnswerYes);
    engine_.files = {{L"a.txt", 3 << 20, 0}, {L"b.txt", 5, 1}};
    views_.factory.fileErrorAnswers = {1};
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(engine_.liveObjects(), 0);
    EXPECT_EQ(tracked(),
              (std::vector<std::wstring>{L"TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)",
                                         L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
                                         L"TrackViewEvent(err_file_error, Access is denied., none)",
                                         L"TrackViewEvent(set_user_action_skip, , none)",
                                         L"TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)",
                                         L"TrackEvent(winzel wipe usage statistics, processed_file_count, , 1)",
                                         L"TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)",
                                         L"TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 3)"}));
}

TEST_F(MainThreadTest, theModulesObjectsAreReleasedOnEachWayOut)
{
    run();
    job();
    run();
    job().wipe = true;
    run();
    EXPECT_EQ(count(L"store.Release"), 3u);
    EXPECT_EQ(count(L"zelplatform.Release"), 3u);
}

/// Answers the dialogs from a script and notes the thread.
class ScriptedDialogs final : public IModalDialogs
{
public:
    bool showEncryptionPassword(EncryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        encryption = request;
        if (!confirm)
            return false;
        request = {L"secret", L"", 14, 1, L"riddle"};
        return true;
    }
    int showDecryptionPassword(DecryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        decryption = request;
        if (confirm)
        {
            request.passwordOut = L"secret";
            request.keyFileOut = L"k.zelkey";
        }
        return confirm ? 0 : 1;
    }
    int showFileError(const FileErrorRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        error = request;
        return 1;
    }

    bool confirm = true;
    std::uint32_t thread = 0;
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
};

class BridgeTest : public testing::Test
{
protected:
    /// Makes the window on this thread, runs `work` on another, and pumps until the window is closed.
    template <class Work> void bridge(Work work)
    {
        ASSERT_TRUE(window_.create());
        std::thread other(
            [&]
            {
                work(window_);
                window_.close();
            });
        system_.messages.runLoop();
        other.join();
    }

    Fakes::FakePlatform system_;
    ScriptedDialogs dialogs_;
    MessageWindow window_{dialogs_};
    const std::uint32_t firstThread_ = system_.threads.currentThreadId();
};

TEST_F(BridgeTest, aCallFromAnotherThreadRunsOnTheFirstAndBringsItsAnswersBack)
{
    bridge(
        [&](MessageWindow& window)
        {
            EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
            EXPECT_TRUE(window.showEncryptionPassword(request));
            EXPECT_EQ(request.password, L"secret");
            EXPECT_EQ(request.algorithm, 14u);
            EXPECT_EQ(request.destiny, 1u);
            EXPECT_EQ(request.riddle, L"riddle");
            DecryptionPasswordRequest decryption{L"f.zel", L"", L"", 1, nullptr, L"", L""};
            EXPECT_EQ(window.showDecryptionPassword(decryption), 0);
            EXPECT_EQ(decryption.keyFileOut, L"k.zelkey");
            FileErrorRequest error{L"t", L"h", L"s", L"z", L"m"};
            EXPECT_EQ(window.showFileError(error), 1);
        });
    EXPECT_EQ(dialogs_.thread, firstThread_);
    EXPECT_EQ(dialogs_.encryption.destiny, 2u);
    EXPECT_EQ(dialogs_.decryption.fileName, L"f.zel");
    EXPECT_EQ(dialogs_.error.target, L"z");
    EXPECT_EQ(system_.log.callsOf(L"send"),
              (std::vector<std::wstring>{L"send 2024", L"send 2025", L"send 2026", L"send 2023"}));
}

TEST_F(BridgeTest, aCallOnTheFirstThreadSendsNothing)
{
    ASSERT_TRUE(window_.create());
    EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
    EXPECT_TRUE(window_.showEncryptionPassword(request));
    EXPECT_EQ(request.password, L"secret");
    FileErrorRequest error;
    EXPECT_EQ(window_.showFileError(error), 1);
    EXPECT_TRUE(system_.log.callsOf(L"send").empty());
}

TEST_F(BridgeTest, aCancelledPasswordLeavesTheRequestAsItWas)
{
    dialogs_.confirm = false;
    bridge(
        [&](MessageWindow& window)
        {
            EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
            EXPECT_FALSE(window.showEncryptionPassword(request));
            EXPECT_TRUE(request.password.empty());
            EXPECT_EQ(request.algorithm, 3u);
            DecryptionPasswordRequest decryption{L"f", L"", L"", 0, nullptr, L"", L""};
            EXPECT_EQ(window.showDecryptionPassword(decryption), 1);
            EXPECT_TRUE(decryption.passwordOut.empty());
        });
}

TEST_F(BridgeTest, aWindowThatCannotBeMadeUnregistersItsClass)
{
    system_.messages.failCreateWindow = true;
    EXPECT_FALSE(window_.create());
    EXPECT_EQ(system_.log.callsOf(L"unregisterClass").size(), 1u);
}

TEST_F(BridgeTest, aClassThatCannotBeRegisteredMakesNoWindow)
{
    system_.messages.failRegisterClass = true;
    EXPECT_FALSE(window_.create());
    EXPECT_TRUE(system_.log.callsOf(L"createWindow").empty());
}

TEST_F(BridgeTest, withoutAWindowACallFromAnotherThreadAnswersNothingAtOnce)
{
    FileErrorRequest error;
    EXPECT_EQ(window_.showFileError(error), 0);
    EXPECT_EQ(dialogs_.thread, 0u);
}

class FileErrorDialogTest : public testing::Test
{
protected:
    int ask(const FileErrorRequest& request) { return ModalDialogs(tracker_).showFileError(request); }
    std::vector<std::wstring> told() { return views_.factory.fileErrors.back()->calls; }

    Fakes::FakeViews views_;
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

using Calls = std::vector<std::wstring>;

TEST_F(FileErrorDialogTest, anEmptyTitleKeepsTheDialogsOwnTexts)
{
    ask({L"", L"header", L"a", L"b", L"broken"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setTarget b", L"setMessage broken", L"doModal"}));
}

TEST_F(FileErrorDialogTest, aTitleBringsItsHeaderEvenWhenThatIsEmpty)
{
    ask({L"title", L"", L"a", L"b", L"broken"});
    EXPECT_EQ(told(), (Calls{L"setTitle title", L"setHeader ", L"setSource a", L"setTarget b", L"setMessage broken",
                             L"doModal"}));
}

TEST_F(FileErrorDialogTest, anEqualTargetIsLeftOutAndACaseDifferenceIsNoEquality)
{
    ask({L"", L"", L"a", L"a", L"m"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setMessage m", L"doModal"}));
    ask({L"", L"", L"a", L"A", L"m"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setTarget A", L"setMessage m", L"doModal"}));
}

TEST_F(FileErrorDialogTest, eachAnswerIsReportedAfterTheError)
{
    const std::pair<int, const wchar_t*> answers[] = {
        {0, L"set_user_action_try"}, {1, L"set_user_action_skip"}, {2, L"set_user_action_abort"}};
    for (const auto& [answer, action] : answers)
    {
        tracker_->clear();
        views_.factory.fileErrorAnswers = {answer};
        EXPECT_EQ(ask({L"", L"", L"a", L"a", L"broken"}), answer);
        EXPECT_EQ(tracker_->calls(), (Calls{L"TrackViewEvent(err_file_error, broken, none)",
                                            L"TrackViewEvent(" + std::wstring(action) + L", , none)"}));
    }
}

TEST_F(FileErrorDialogTest, anyOtherAnswerSendsNoSecondEvent)
{
    views_.factory.fileErrorAnswers = {7};
    EXPECT_EQ(ask({L"", L"", L"a", L"a", L"broken"}), 7);
    EXPECT_EQ(tracker_->calls().size(), 1u);
}

} // namespace

} // namespace JobRunner
