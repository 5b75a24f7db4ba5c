#include "commands/encrypt_sfx_command.h"

#include "commands/testing_support.h"
#include "fakes/slot_of.h"

#include <thread>

using namespace Fakes;
using namespace JobRunner;

TEST_F(ASelfExtractingEncryption, withAPasswordRunsInThisOrder)
{
    engine.files = {{L"C:\\a.txt", 3U << 20, 0}};
    engine.questionsUntilFinished = 1;
    answers.destiny = 1;
    answers.extraText = L"extra";
    runWithPassword(
        [](EncryptionPasswordRecord& fields)
        {
            fields.algorithm = 16;
            fields.riddle = L"riddle";
            fields.sfxComment = L"my own";
            fields.sfxCommentDefault = true;
        });
    const Calls expected{
        L"createFactory",
        L"factory.CreateEncryptor",
        L"factory.CreateOperationEvents",
        L"factory.CreateSfxOptions",
        View,
        viewEvent(L"domodal_encryptionpasswordwnd"),
        L"document.GetSfxComment",
        L"document.GetDestiny",
        L"TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)",
        viewEvent(L"click_ok"),
        View,
        L"createFactory",
        L"factory.CreatePasswordKey(secret)",
        L"options.SetKey(secret)",
        plainUsage(L"use_password, , none"),
        L"key.Release",
        L"options.SetAlgorithm(16)",
        L"options.SetDestiny(1)",
        L"options.SetRiddle(riddle)",
        L"options.SetSfxComment(my own)",
        usage(L"use_alg_serpent, , none"),
        usage(L"use_destiny_delete, , none"),
        usage(L"use_riddle, , none"),
        usage(L"use_custom_sfx_comment, , none"),
        L"zelplatform.createFactory",
        L"zelplatform.CreateJobDocumentStore",
        L"store.SaveSfxComment(my own)",
        viewEvent(L"save_sfx_comment"),
        L"store.Release",
        L"zelplatform.Release",
        L"factory.Release",
        WindowDestroyed,
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"document.GetFileList",
        L"encryptor.StartSfx",
        L"encryptor.IsFinished",
        L"sleep 200",
        L"encryptor.IsFinished",
        usage(L"processed_file_count, , 1"),
        usage(L"failed_file_count, , 0"),
        usage(L"processed_total_size_mb, , 3"),
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ASelfExtractingEncryption, loadsItsKeyFileOnce)
{
    engine.keyFiles[KeyFile].loads = 1;
    runWithKeyFile(KeyFile);
    const Calls after = behind(viewEvent(L"click_ok"));
    ASSERT_GE(after.size(), 9U);
    const Calls expected{View,
                         L"createFactory",
                         L"factory.LoadKeyFile(C:\\k.zelkey)",
                         L"options.SetKey(C:\\k.zelkey)",
                         L"key.GetKeyType",
                         plainUsage(L"use_keyfile_symmetric, , none"),
                         L"key.Release",
                         L"options.SetAlgorithm(3)",
                         L"options.SetDestiny(0)"};
    EXPECT_EQ(Calls(after.begin(), after.begin() + 9), expected);
    EXPECT_EQ(log.callsOf(L"factory.LoadKeyFile").size(), 1U);
}

TEST_F(ASelfExtractingEncryption, thatTheUserCancelsTouchesNothing)
{
    use(
        [](FakeEncryptionPasswordView& view)
        {
            view.type(L"secret", L"secret");
            return false;
        });
    run();
    const Calls expected{
        L"createFactory",
        L"factory.CreateEncryptor",
        L"factory.CreateOperationEvents",
        L"factory.CreateSfxOptions",
        View,
        viewEvent(L"domodal_encryptionpasswordwnd"),
        L"document.GetSfxComment",
        L"document.GetDestiny",
        L"TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)",
        viewEvent(L"click_cancel"),
        View,
        viewEvent(L"domodal_cancelled"),
        WindowDestroyed,
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ASelfExtractingEncryption, goesByTheModeOfItsWindowWhateverElseTheFieldsHold)
{
    for (const bool passwordMode : {true, false})
    {
        use(
            [passwordMode](FakeEncryptionPasswordView& view)
            {
                view.type(L"secret", L"secret");
                view.chooseKeyFile(KeyFile);
                view.fields().passwordMode = passwordMode;
                return view.proceed();
            });
        run();
        EXPECT_EQ(log.callsOf(L"options.SetKey"),
                  Calls{passwordMode ? L"options.SetKey(secret)" : L"options.SetKey(C:\\k.zelkey)"});
    }
}

TEST_F(ASelfExtractingEncryption, opensItsWindowItselfOnTheThreadOfTheRun)
{
    std::thread::id windowThread;
    use(
        [&](FakeEncryptionPasswordView&)
        {
            windowThread = std::this_thread::get_id();
            return false;
        });
    EncryptSfxCommand command(document(), &gui, tracker);
    std::thread job([&] { command.Run(); });
    const std::thread::id jobThread = job.get_id();
    job.join();
    EXPECT_EQ(windowThread, jobThread);
    EXPECT_TRUE(shownWindow().selfExtracting);
    EXPECT_TRUE(gui.calls().empty());
}

TEST_F(ASelfExtractingEncryption, showsTheCommentAndTheDestinyOfTheDocumentBeforeItOpens)
{
    answers.sfxComment = L"hello";
    answers.destiny = 1;
    run();
    EXPECT_EQ(shownWindow().calls, (Calls{L"setSfxComment hello", L"setDestiny 1", L"doModal"}));
}

TEST_F(ASelfExtractingEncryption, startsTheEngineWithAFreshlyFetchedList)
{
    use(typeSecret);
    FakeDocument* const job = new FakeDocument(log, answers);
    EncryptSfxCommand command(ReleasePtr<ZelPlatform::IJobRunnerDocument>(job), &gui, tracker);
    EXPECT_EQ(log.callsOf(L"document.GetFileList").size(), 1U);
    command.Run();
    EXPECT_EQ(log.callsOf(L"document.GetFileList").size(), 2U);
    EXPECT_EQ(engine.startedWith, job->GetFileList());
}

namespace
{

/// A document of this kind and of no other.
class OnlySelfExtracting final : public ZelPlatform::IJobRunnerDocument, public ZelPlatform::IEncryptorSfxThreadDocument
{
public:
    explicit OnlySelfExtracting(CallLog& log) : files_(log, false) {}

    void Release() override { delete this; }
    VaultCore::IFileList* GetFileList() override { return &files_; }
    bool IsDecryption() override { return false; }
    bool IsDoubleClickDecryption() override { return false; }
    bool IsEncryption() override { return false; }
    bool IsSfxEncryption() override { return true; }
    bool IsWipe() override { return false; }

    void notCalled1() override {}
    void notCalled2() override {}
    void notCalled3() override {}
    void notCalled4() override {}
    std::uint32_t GetDestiny() override { return 0; }
    void notCalled5() override {}
    std::wstring GetSfxComment() override { return L"comment"; }

private:
    FakeFileList files_;
};

} // namespace

TEST_F(ASelfExtractingEncryption, needsNothingOfAPlainEncryptionsDocument)
{
    use(typeSecret);
    EncryptSfxCommand command(ReleasePtr<ZelPlatform::IJobRunnerDocument>(new OnlySelfExtracting(log)), &gui, tracker);
    command.Run();
    EXPECT_TRUE(log.contains(L"encryptor.StartSfx"));
    EXPECT_TRUE(log.contains(usage(L"use_destiny_leave, , none")));
}

TEST_F(ASelfExtractingEncryption, keepsTheTableOfThePlainOne)
{
    struct Table final : EncryptSfxCommand
    {
        static std::size_t lastSlot() { return slotOf(&Table::GetExtraText); }
    };
    EXPECT_EQ(slotOf(&EncryptSfxCommand::Run), 2U);
    EXPECT_EQ(Table::lastSlot(), 4U);
}
