#include "bridges/module_factories.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "interfaces/process/exception.h"
#include "jobprocess/main_thread.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::wstring>;

const std::wstring JobFile = L"C:\\Temp\\job.json";
const std::wstring KeyFile = L"C:\\k.zelkey";

/// Jobs of all kinds from their configuration file to their end, over engine, documents, views and system in memory.
class AJob : public testing::Test
{
protected:
    AJob()
    {
        setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
        setVaultCoreFactory(Fakes::FakeEngine::createFactory);
        system.shell.arguments = {L"C:\\Suite\\bin\\JobRunner.exe", JobFile};
        system.shell.files = {JobFile};
    }
    ~AJob() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    /// Text of the failure of a run, empty for none.
    std::wstring run()
    {
        tracker->clear();
        try
        {
            MainThread(tracker).run();
            return L"";
        }
        catch (const Exception& failure)
        {
            return failure.text;
        }
    }

    /// The events of the last run behind the one of the job's kind.
    Calls trackedBehindTheKind()
    {
        const Calls tracked = tracker->calls();
        return tracked.empty() ? Calls{} : Calls(tracked.begin() + 1, tracked.end());
    }

    std::size_t count(const std::wstring& call) { return system.log.callsOf(call).size(); }

    Fakes::FakePlatform system;
    Fakes::FakeViews views;
    Fakes::FakeZelPlatform documents{system.log};
    Fakes::FakeEngine engine{system.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker = std::make_shared<Fakes::RecordingTracker>();
    Fakes::JobAnswers& job = documents.documents[JobFile];
};

std::wstring kindEvent(const std::wstring& label)
{
    return L"TrackViewEvent(jobrunner, " + label + L", none)";
}

bool typeSecret(Fakes::FakeEncryptionPasswordView& view)
{
    view.type(L"secret", L"secret");
    return view.proceed();
}

/// One kind: what a document says of itself, the label that is reported, and the first view of its command.
struct Kind
{
    bool Fakes::JobAnswers::*says;
    std::wstring label;
    Calls firstView;
};

/// In the order of the questions.
const std::vector<Kind> Kinds{
    {&Fakes::JobAnswers::encryption,
     L"getxml_set_operation_encryption",
     {L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))"}},
    {&Fakes::JobAnswers::sfxEncryption,
     L"getxml_set_operation_sfxencryption",
     {L"TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))"}},
    {&Fakes::JobAnswers::decryption,
     L"getxml_set_operation_decryption",
     {L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))"}},
    {&Fakes::JobAnswers::doubleClickDecryption,
     L"getxml_set_operation_dblclk_decryption",
     {L"TrackView(jobrunner/dblclk, Double Click File Thread (JobRunner))"}},
    {&Fakes::JobAnswers::wipe, L"getxml_set_operation_wipe", {L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))"}}};

class AJobOfSeveralKinds : public AJob, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(AJobOfSeveralKinds, isOfTheFirstInOrder)
{
    job.files = {L"a.zel"};
    for (std::size_t index = GetParam(); index < Kinds.size(); ++index)
        job.*Kinds[index].says = true;
    run();
    const Calls tracked = tracker->calls();
    const Kind& first = Kinds[GetParam()];
    EXPECT_EQ(tracked.at(0), kindEvent(first.label));
    EXPECT_EQ(Calls(tracked.begin() + 1, tracked.begin() + (tracked.size() > 1 ? 2 : 1)), first.firstView);
}

INSTANTIATE_TEST_SUITE_P(FromEachKindOn, AJobOfSeveralKinds, testing::Range<std::size_t>(0, 5));

TEST_F(AJob, ofADoubleClickOnSeveralFilesTellsItsKindBeforeItIsRefused)
{
    job.doubleClickDecryption = true;
    for (const Calls& files : {Calls{}, Calls{L"a.zel", L"b.zel"}})
    {
        job.files = files;
        system.log.clear();
        EXPECT_EQ(run(), L"Cannot decrypt file, there is no file in the pattern list");
        EXPECT_EQ(tracker->calls(), Calls{kindEvent(L"getxml_set_operation_dblclk_decryption")});
        // The document goes once, with the command that was not made, ahead of its store.
        const Calls released{L"document.Release", L"store.Release", L"zelplatform.Release"};
        Calls ends = system.log.calls();
        std::erase_if(ends, [](const std::wstring& call) { return !call.ends_with(L"Release"); });
        EXPECT_EQ(ends, released);
        EXPECT_EQ(count(L"createWindow"), 0U);
    }
    EXPECT_TRUE(system.shell.files.empty());
}

TEST_F(AJob, thatDecryptsForADoubleClickAsksAsForADocumentAndEndsAtATextOfTheEngine)
{
    job.doubleClickDecryption = true;
    job.files = {L"a.zel"};
    engine.files = {{L"a.zel", 1U << 20, 0, L"right", L"C:\\a.txt"}};
    int mode = 0;
    views.factory.decryptionUsers = {[&](Fakes::FakeDecryptionPasswordView& view)
                                     {
                                         mode = view.fields().mode;
                                         view.fields().password = L"right";
                                         view.proceed();
                                     }};
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(mode, 2);
    EXPECT_EQ(
        trackedBehindTheKind(),
        (Calls{L"TrackView(jobrunner/dblclk, Double Click File Thread (JobRunner))",
               L"TrackView(jobrunner/dblclk/decrypt, Decrypt (DblClk in JobRunner))",
               L"TrackViewEvent(execute, , none)", L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))",
               L"TrackEvent(winzel decryption usage statistics, processed_file_count, , 1)",
               L"TrackEvent(winzel decryption usage statistics, failed_file_count, , 0)",
               L"TrackEvent(winzel decryption usage statistics, processed_total_size_mb, , 1)",
               L"TrackViewEvent(not_succeeded, , none)"}));
    EXPECT_EQ(engine.liveObjects(), 0);
    EXPECT_EQ(count(L"document.Release"), 1U);
}

TEST_F(AJob, ofADoubleClickTellsOfADocumentWithoutAnApplicationOnTheThreadOfTheJob)
{
    job.doubleClickDecryption = true;
    job.files = {L"a.zel"};
    engine.files = {{L"a.zel", 1U << 20}};
    std::uint32_t boxThread = 0;
    system.messageBoxes.whileShown = [&] { boxThread = system.threads.currentThreadId(); };
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(system.messageBoxes.boxes().size(), 1U);
    EXPECT_NE(boxThread, 0U);
    EXPECT_NE(boxThread, system.threads.currentThreadId());
    EXPECT_EQ(count(L"postQuit"), 1U);
}

TEST_F(AJob, thatEncryptsAsksOnTheFirstThreadAndReportsWhatTheUserChose)
{
    job.encryption = true;
    job.destiny = 2;
    engine.files = {{L"a.txt", 1U << 20, 0}};
    std::uint32_t windowThread = 0;
    views.factory.encryptionUsers.push_back(
        [&](Fakes::FakeEncryptionPasswordView& view)
        {
            windowThread = system.threads.currentThreadId();
            view.fields().riddle = L"riddle";
            return typeSecret(view);
        });
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(windowThread, system.threads.currentThreadId());
    EXPECT_EQ(system.log.callsOf(L"options.Set"),
              (Calls{L"options.SetKey(secret)", L"options.SetAlgorithm(3)", L"options.SetDestiny(2)",
                     L"options.SetRiddle(riddle)", L"options.SetExtraText()"}));
    EXPECT_EQ(
        trackedBehindTheKind(),
        (Calls{L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))",
               L"TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)",
               L"TrackViewEvent(click_ok, , none)", L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))",
               L"TrackEvent(winzel encryption usage statistics, count, , none)",
               L"TrackEvent(winzel encryption usage statistics, use_password, , none)",
               L"TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)",
               L"TrackEvent(winzel encryption usage statistics, use_destiny_wipe, , none)",
               L"TrackEvent(winzel encryption usage statistics, use_riddle, , none)",
               L"TrackEvent(winzel encryption usage statistics, processed_file_count, , 1)",
               L"TrackEvent(winzel encryption usage statistics, failed_file_count, , 0)",
               L"TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 1)"}));
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AJob, thatPacksASelfExtractingFileAsksOnTheThreadOfTheJob)
{
    job.sfxEncryption = true;
    std::uint32_t windowThread = 0;
    views.factory.encryptionUsers.push_back(
        [&](Fakes::FakeEncryptionPasswordView& view)
        {
            windowThread = system.threads.currentThreadId();
            return typeSecret(view);
        });
    EXPECT_EQ(run(), L"");
    EXPECT_NE(windowThread, 0U);
    EXPECT_NE(windowThread, system.threads.currentThreadId());
    EXPECT_EQ(count(L"encryptor.StartSfx"), 1U);
    EXPECT_EQ(count(L"send 2024"), 0U);
    EXPECT_EQ(count(L"document.Release"), 1U);
}

TEST_F(AJob, thatDecryptsAsksForEachFileUntilTheKeyFits)
{
    job.decryption = true;
    engine.keyFiles[KeyFile] = {};
    engine.files = {{L"a.zel", 1U << 20, 0, KeyFile}};
    views.factory.decryptionUsers = {[](Fakes::FakeDecryptionPasswordView& view)
                                     {
                                         view.fields().password = L"wrong";
                                         view.proceed();
                                     },
                                     [](Fakes::FakeDecryptionPasswordView& view)
                                     {
                                         view.fields().passwordMode = false;
                                         view.fields().password.clear();
                                         view.fields().keyFile = KeyFile;
                                         view.proceed();
                                     }};
    EXPECT_EQ(run(), L"");
    ASSERT_EQ(views.factory.decryptionPasswords.size(), 2U);
    EXPECT_EQ(views.factory.decryptionPasswords[0]->fileName, L"");
    EXPECT_EQ(views.factory.decryptionPasswords[1]->fileName, L"a.zel");
    EXPECT_EQ(views.factory.decryptionPasswords[1]->mode, 0);
    EXPECT_EQ(trackedBehindTheKind(),
              (Calls{L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))",
                     L"TrackEvent(winzel decryption usage statistics, processed_file_count, , 1)",
                     L"TrackEvent(winzel decryption usage statistics, failed_file_count, , 0)",
                     L"TrackEvent(winzel decryption usage statistics, processed_total_size_mb, , 1)"}));
    EXPECT_EQ(engine.liveObjects(), 0);
}

class AJobThatAsksFirst : public AJob, public testing::WithParamInterface<bool Fakes::JobAnswers::*>
{
};

TEST_P(AJobThatAsksFirst, endsWithoutTheEngineWhenItsWindowIsCancelled)
{
    job.*GetParam() = true;
    EXPECT_EQ(run(), L"");
    EXPECT_EQ(views.factory.encryptionPasswords.size(), 1U);
    EXPECT_EQ(engine.startedWith, nullptr);
    EXPECT_EQ(engine.liveObjects(), 0);
    EXPECT_EQ(count(L"document.Release"), 1U);
    EXPECT_EQ(count(L"postQuit"), 1U);
}

INSTANTIATE_TEST_SUITE_P(EachKind, AJobThatAsksFirst,
                         testing::Values(&Fakes::JobAnswers::encryption, &Fakes::JobAnswers::sfxEncryption));

} // namespace

} // namespace JobRunner
