#include "commands/dc_decrypt_sub_command.h"

#include "commands/testing_support.h"
#include "fakes/observed_events.h"
#include "fakes/slot_of.h"
#include "interfaces/process/key_validation.h"

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring Encrypted = L"C:\\a.zel";
const wchar_t* const PrivateKeyFile = L"C:\\private.zelkey";

std::wstring usage(const std::wstring& rest)
{
    return L"TrackEvent(winzel decryption usage statistics, " + rest + L")";
}

class ADecryptStep : public JobFixture
{
protected:
    /// The next file needs this password or key file, and ends with this text.
    void needs(const std::wstring& secret, const std::wstring& text = L"")
    {
        engine.files = {{Encrypted, 3U << 20, 0, secret, text}};
    }

    DcDecryptSubCommand& run()
    {
        step = std::make_unique<DcDecryptSubCommand>(Encrypted, &gui, tracker);
        step->Run();
        return *step;
    }

    std::unique_ptr<DcDecryptSubCommand> step;
};

} // namespace

TEST_F(ADecryptStep, runsAsADecryptionOfItsOneFileThatGoesNowhereInParticularAndStays)
{
    needs(L"");
    run();
    step.reset();
    const Calls expected{
        L"createFactory",
        L"factory.CreateFileList",
        L"list.Add(C:\\a.zel)",
        L"factory.Release",
        L"createFactory",
        L"factory.CreateDecryptor",
        L"factory.CreateDecryptionEvents",
        L"factory.CreateDecryptionOptions",
        L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))",
        L"options.SetMode(0)",
        L"options.SetPath()",
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"options.GetMode",
        L"events.SetPasswordProvider",
        L"decryptor.Start",
        L"decryptor.IsFinished",
        usage(L"processed_file_count, , 1"),
        usage(L"failed_file_count, , 0"),
        usage(L"processed_total_size_mb, , 3"),
        L"options.Release",
        L"events.Release",
        L"decryptor.Release",
        L"factory.Release",
        L"list.Release",
    };
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADecryptStep, givesTheEngineItsOwnListWithTheOneFile)
{
    Calls given;
    engine.onStart = [&]
    {
        for (int index = 0; index < engine.startedWith->GetCount(); ++index)
            given.emplace_back(engine.startedWith->GetItem(index));
    };
    run();
    EXPECT_EQ(given, Calls{Encrypted});
}

TEST_F(ADecryptStep, showsTheProgressOfADecryption)
{
    needs(L"");
    run();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 3);
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

TEST_F(ADecryptStep, asksForItsKeyAsADocumentThatIsToBeOpened)
{
    needs(L"right");
    gui.decryptionAnswers = {{0, L"right", L""}};
    run();
    ASSERT_EQ(gui.decryptionQuestions().size(), 1U);
    EXPECT_EQ(gui.decryptionQuestions()[0].mode, 2U);
    EXPECT_NE(gui.decryptionQuestions()[0].validator, nullptr);
}

TEST_F(ADecryptStep, refusesAKeyFileThatCannotEncryptAgain)
{
    engine.keyFiles[PrivateKeyFile].type = VaultCore::KeyTypePrivateRsa;
    needs(L"right");
    std::wstring message;
    gui.whileDecryptionPasswordIsShown = [&]
    {
        // Of the question that was asked before.
        const bool isSecond = !gui.decryptionQuestions().empty();
        EXPECT_FALSE(isSecond && gui.decryptionQuestions()[0].validator->ValidateKeyFile(PrivateKeyFile, message));
    };
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"right", L""}};
    run();
    EXPECT_EQ(message, L"PKI key files could not be used for decrypt/open/encrypt mode.");
}

TEST_F(ADecryptStep, readsAsSucceededWithoutAnyKeyWhenNoFileIsReported)
{
    const DcDecryptSubCommand& done = run();
    EXPECT_TRUE(done.succeeded());
    EXPECT_EQ(done.lastFileText(), L"");
    EXPECT_FALSE(done.usesKeyFile());
    EXPECT_EQ(done.keyFile(), L"");
    EXPECT_EQ(done.password(), L"");
}

TEST_F(ADecryptStep, tellsHowItsFileEnded)
{
    needs(L"", L"C:\\a.txt");
    EXPECT_TRUE(run().succeeded());
    EXPECT_EQ(step->lastFileText(), L"C:\\a.txt");
    engine.files = {{Encrypted, 10, 1}};
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(run().succeeded());
    EXPECT_EQ(step->lastFileText(), L"Access is denied.");
}

TEST_F(ADecryptStep, keepsThePasswordThatOpenedItsFile)
{
    needs(L"right");
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"right", L""}};
    const DcDecryptSubCommand& done = run();
    EXPECT_FALSE(done.usesKeyFile());
    EXPECT_EQ(done.keyFile(), L"");
    EXPECT_EQ(done.password(), L"right");
}

TEST_F(ADecryptStep, keepsOnlyTheKeyFileThatFollowedAWrongPassword)
{
    needs(KeyFile);
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"", KeyFile}};
    const DcDecryptSubCommand& done = run();
    EXPECT_TRUE(done.usesKeyFile());
    EXPECT_EQ(done.keyFile(), KeyFile);
    EXPECT_EQ(done.password(), L"");
}

TEST_F(ADecryptStep, keepsTheEntryOfTheSecondAttemptWhenTheThirdIsCancelled)
{
    needs(L"right");
    gui.decryptionAnswers = {{0, L"first", L""}, {0, L"second", L""}, {2, L"third", L""}};
    const DcDecryptSubCommand& done = run();
    EXPECT_FALSE(done.succeeded());
    EXPECT_EQ(done.lastFileText(), L"No key.");
    EXPECT_EQ(done.password(), L"second");
}

TEST_F(ADecryptStep, speaksOfAFileProblemWhenItsFileFails)
{
    engine.files = {{Encrypted, 10, 1}};
    gui.fileErrorAnswers = {2};
    run();
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
    EXPECT_EQ(gui.fileErrors().at(0).header,
              L"Please choose what to do with this problem. Repeat or abort operation, skip file.");
}

TEST_F(ADecryptStep, endsItsListThenHandlerThenTrackerThenWindow)
{
    ObservedEvents observed(platform);
    // Left open on purpose: the window's end shows in the log through its view.
    engine.script = [](const EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        VaultCore::IKey* key = nullptr;
        EXPECT_EQ(callbacks.passwords->ProvideKey(L"C:\\a.zel", &key), VaultCore::KeyProvided);
        callbacks.passwords->AddStoredKey(key);
    };
    gui.decryptionAnswers = {{0, L"secret", L""}};
    EventTrackerPtr copy(new RecordingTracker(log),
                         [this](RecordingTracker* recording)
                         {
                             log.add(views.factory.progressViews.back()->open() ? L"tracker.dropped, window open"
                                                                                : L"tracker.dropped, window closed");
                             delete recording;
                         });
    std::unique_ptr<Command> command = std::make_unique<DcDecryptSubCommand>(Encrypted, &gui, std::move(copy));
    command->Run();
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(),
              (Calls{L"list.Release", L"key.Release", L"event.destroyed", L"tracker.dropped, window open"}));
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

TEST_F(ADecryptStep, releasesItsListWhenItsHandlerCannotBeMade)
{
    ObservedEvents observed(platform);
    // The handlers take three: one for that of the base, two for the exchange.
    observed.threads.eventsLeft = 2;
    EXPECT_THROW(DcDecryptSubCommand(Encrypted, &gui, tracker), std::runtime_error);
    Calls order = log.calls();
    std::erase_if(order,
                  [](const std::wstring& call) { return !call.starts_with(L"list.") && !call.starts_with(L"event."); });
    // The handler of the base has gone before the other one is made.
    EXPECT_EQ(order, (Calls{L"list.Add(C:\\a.zel)", L"event.destroyed", L"event.destroyed", L"list.Release"}));
}

TEST_F(ADecryptStep, hasNoOperationsBehindItsRun)
{
    EXPECT_EQ(slotOf(&DcDecryptSubCommand::Run), 2U);
}
