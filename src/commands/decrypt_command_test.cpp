#include "commands/decrypt_command.h"

#include "commands/testing_support.h"
#include "fakes/observed_events.h"
#include "fakes/slot_of.h"

#include <optional>
#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring View = L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))";

std::wstring usage(const std::wstring& rest)
{
    return L"TrackEvent(winzel decryption usage statistics, " + rest + L")";
}

class ADecryption : public JobFixture
{
protected:
    ADecryption()
    {
        answers.decryption = true;
        answers.decryptionPath = L"C:\\out";
        answers.decryptionMode = 1;
    }

    void run() { runCommand<DecryptCommand>(); }
};

/// Takes its input from the test in place of a document.
struct WithoutADocument final : DecryptCommand
{
    WithoutADocument(IGuiEvents* gui, EventTrackerPtr tracker, VaultCore::IFileList* files)
        : DecryptCommand(gui, std::move(tracker))
    {
        files_ = files;
    }
};

} // namespace

TEST_F(ADecryption, runsInThisOrder)
{
    engine.files = {{L"C:\\a.zel", 5U << 20, 0}};
    engine.questionsUntilFinished = 2;
    run();
    const Calls expected{
        L"createFactory",
        L"factory.CreateDecryptor",
        L"factory.CreateDecryptionEvents",
        L"factory.CreateDecryptionOptions",
        View,
        L"options.SetMode(1)",
        L"options.SetPath(C:\\out)",
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"options.GetMode",
        L"events.SetPasswordProvider",
        L"decryptor.Start",
        L"decryptor.IsFinished",
        L"sleep 200",
        L"decryptor.IsFinished",
        L"sleep 200",
        L"decryptor.IsFinished",
        usage(L"processed_file_count, , 1"),
        usage(L"failed_file_count, , 0"),
        usage(L"processed_total_size_mb, , 5"),
        L"options.Release",
        L"events.Release",
        L"decryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADecryption, withoutAnEncryptedFileAsksForNoPassword)
{
    engine.files = {{L"C:\\a.txt", 10, 0}, {L"C:\\b.txt", 10, 1}};
    gui.fileErrorAnswers = {1};
    run();
    EXPECT_TRUE(gui.decryptionQuestions().empty());
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 1")));
    EXPECT_TRUE(log.contains(usage(L"failed_file_count, , 1")));
}

TEST_F(ADecryption, forwardsModeAndPathAsTheyStand)
{
    const std::vector<std::optional<std::wstring>> paths{L"", std::nullopt, L"C:\\a folder\\"};
    const std::vector<std::uint32_t> modes{0, 7, 0xFFFFFFFF};
    for (std::size_t index = 0; index < paths.size(); ++index)
    {
        answers.decryptionPath = paths[index];
        answers.decryptionMode = modes[index];
        run();
        // A document without a path gives an empty one.
        EXPECT_EQ(log.callsOf(L"options.Set"), (Calls{L"options.SetMode(" + std::to_wstring(modes[index]) + L")",
                                                      L"options.SetPath(" + paths[index].value_or(L"") + L")"}));
    }
}

TEST_F(ADecryption, asksUntilThePasswordFitsAndUsesItForTheNextFileToo)
{
    engine.files = {{L"C:\\a.zel", 10, 0, L"right"}, {L"C:\\b.zel", 10, 0, L"right"}};
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"right", L""}};
    run();
    const std::vector<DecryptionQuestion> expected{{L"", L"", L"", 1, nullptr},
                                                   {L"C:\\a.zel", L"wrong", L"", 1, nullptr}};
    EXPECT_EQ(gui.decryptionQuestions(), expected);
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 2")));
}

TEST_F(ADecryption, tellsThePasswordWindowWhetherOriginalsStay)
{
    for (const std::uint32_t mode : {0U, 5U})
    {
        engine.files = {{L"C:\\a.zel", 10, 0, L"right"}};
        answers.decryptionMode = mode;
        run();
        EXPECT_EQ(gui.decryptionQuestions().back().mode, mode == 0 ? 0U : 1U);
    }
}

TEST_F(ADecryption, acceptsAKeyFileOfAnyType)
{
    engine.keyFiles[KeyFile].type = VaultCore::KeyTypePublicRsa;
    engine.files = {{L"C:\\a.zel", 10, 0, KeyFile}};
    gui.decryptionAnswers = {{0, L"", KeyFile}};
    run();
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 1")));
    EXPECT_TRUE(log.callsOf(L"key.GetKeyType").empty());
}

TEST_F(ADecryption, whosePasswordWindowIsCancelledReportsItsCountsAsUsual)
{
    engine.files = {{L"C:\\a.zel", 10, 0, L"right"}, {L"C:\\b.txt", 10, 0}};
    gui.decryptionAnswers = {{2, L"", L""}};
    run();
    const Calls expected{View, usage(L"processed_file_count, , 0"), usage(L"failed_file_count, , 1"),
                         usage(L"processed_total_size_mb, , 0")};
    EXPECT_EQ(tracker->calls(), expected);
}

TEST_F(ADecryption, goesOnWithTheNextFileWhenOneIsIgnored)
{
    engine.files = {{L"C:\\a.zel", 10, 0, L"right"}, {L"C:\\b.txt", 10, 0}};
    gui.decryptionAnswers = {{1, L"", L""}};
    run();
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 1")));
    EXPECT_TRUE(log.contains(usage(L"failed_file_count, , 1")));
}

TEST_F(ADecryption, thatIsCancelledReportsItsCountsAndThenTheCancelUnderTheEncryptionCategory)
{
    engine.script = [this](const EngineCallbacks& callbacks) { cancelInTheSecondFile(callbacks); };
    run();
    const Calls expected{View, usage(L"processed_file_count, , 1"), usage(L"failed_file_count, , 0"),
                         usage(L"processed_total_size_mb, , 2"),
                         L"TrackEvent(winzel encryption usage statistics, cancelled, , none)"};
    EXPECT_EQ(tracker->calls(), expected);
}

TEST_F(ADecryption, opensItsProgressAsADecryptionAndSaysSoWhenAFileFails)
{
    engine.files = {{L"C:\\a.zel", 10, 1}};
    gui.fileErrorAnswers = {1};
    run();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 3);
    EXPECT_FALSE(views.factory.progressViews.back()->open());
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
}

TEST_F(ADecryption, takesWhatTheDocumentSaysInItsConstructorAndAsksNoMoreInTheRun)
{
    FakeDocument* const job = new FakeDocument(log, answers);
    DecryptCommand command(ReleasePtr<ZelPlatform::IJobRunnerDocument>(job), &gui, tracker);
    EXPECT_EQ(log.calls(),
              (Calls{L"document.GetDecryptionPath", L"document.GetDecryptionMode", L"document.GetFileList"}));
    log.clear();
    command.Run();
    EXPECT_TRUE(log.callsOf(L"document.").empty());
    EXPECT_EQ(engine.startedWith, job->GetFileList());
}

TEST_F(ADecryption, withoutADocumentHasNoPathAndTheModeOne)
{
    FakeFileList files(log, false);
    {
        WithoutADocument command(&gui, tracker, &files);
        command.Run();
    }
    EXPECT_EQ(log.callsOf(L"options.Set"), (Calls{L"options.SetMode(1)", L"options.SetPath()"}));
    EXPECT_EQ(engine.startedWith, &files);
    EXPECT_TRUE(log.callsOf(L"document.").empty());
    EXPECT_TRUE(log.callsOf(L"list.").empty());
}

TEST_F(ADecryption, releasesTheEngineInOrderWhenAnExceptionLeavesTheRun)
{
    engine.onStart = [] { throw std::runtime_error("start"); };
    DecryptCommand command(document(), &gui, tracker);
    EXPECT_THROW(command.Run(), std::runtime_error);
    const Calls expected{L"decryptor.Start", L"options.Release", L"events.Release", L"decryptor.Release",
                         L"factory.Release"};
    EXPECT_EQ(lastCalls(5), expected);
}

TEST_F(ADecryption, endsHandlerWithItsKeysThenTrackerThenWindowThenDocument)
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
    std::unique_ptr<Command> command = std::make_unique<DecryptCommand>(document(), &gui, std::move(copy));
    command->Run();
    ASSERT_TRUE(views.factory.progressViews.back()->open());
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(),
              (Calls{L"key.Release", L"event.destroyed", L"tracker.dropped, window open", L"document.Release"}));
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADecryption, hasNoOperationsBehindItsRun)
{
    EXPECT_EQ(slotOf(&DecryptCommand::Run), 2U);
}
