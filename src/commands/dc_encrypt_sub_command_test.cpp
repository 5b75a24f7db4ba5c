#include "commands/dc_encrypt_sub_command.h"

#include "commands/testing_support.h"
#include "fakes/observed_events.h"

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring Document = L"C:\\a.txt";

std::wstring usage(const std::wstring& rest)
{
    return L"TrackEvent(winzel encryption usage statistics, " + rest + L")";
}

class AReencryptStep : public JobFixture
{
protected:
    std::unique_ptr<DcEncryptSubCommand> made(const std::wstring& password, const std::wstring& keyFile)
    {
        return std::make_unique<DcEncryptSubCommand>(Document, L"C:\\kept\\a.zel", password, keyFile, &gui, tracker);
    }

    DcEncryptSubCommand& run(const std::wstring& password, const std::wstring& keyFile = L"")
    {
        step = made(password, keyFile);
        step->Run();
        return *step;
    }

    std::unique_ptr<DcEncryptSubCommand> step;
};

/// A plain encryption that has no document to start from.
struct WithoutADocument final : EncryptCommand
{
    WithoutADocument(IGuiEvents* gui, EventTrackerPtr tracker, VaultCore::IFileList* files)
        : EncryptCommand(gui, std::move(tracker))
    {
        files_ = files;
    }
    std::wstring GetExtraText() override { return L"extra"; }
};

} // namespace

TEST_F(AReencryptStep, asksNothingAndRunsAsAnEncryptionOfItsDocumentThatIsWiped)
{
    engine.files = {{Document, 3U << 20}};
    run(L"secret");
    step.reset();
    const Calls expected{
        L"createFactory",
        L"factory.CreateFileList",
        L"list.Add(C:\\a.txt)",
        L"factory.Release",
        L"createFactory",
        L"factory.CreateEncryptor",
        L"factory.CreateOperationEvents",
        L"factory.CreateEncryptionOptions",
        L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))",
        L"createFactory",
        L"factory.CreatePasswordKey(secret)",
        L"options.SetKey(secret)",
        L"key.Release",
        L"options.SetAlgorithm(3)",
        L"options.SetDestiny(2)",
        L"options.SetRiddle()",
        L"options.SetExtraText()",
        usage(L"count, , none"),
        usage(L"use_password, , none"),
        usage(L"use_alg_aes-256, , none"),
        usage(L"use_destiny_wipe, , none"),
        L"factory.Release",
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"encryptor.Start",
        L"encryptor.IsFinished",
        usage(L"processed_file_count, , 1"),
        usage(L"failed_file_count, , 0"),
        usage(L"processed_total_size_mb, , 3"),
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
        L"list.Release",
    };
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AReencryptStep, givesTheEngineItsOwnListWithTheDocumentAndNotTheEncryptedPath)
{
    Calls given;
    engine.onStart = [&]
    {
        for (int index = 0; index < engine.startedWith->GetCount(); ++index)
            given.emplace_back(engine.startedWith->GetItem(index));
    };
    run(L"secret");
    EXPECT_EQ(given, Calls{Document});
    for (const std::wstring& call : log.calls())
        EXPECT_EQ(call.find(L"a.zel"), std::wstring::npos) << "intended: nothing reads it";
}

TEST_F(AReencryptStep, takesTheKeyFileThatOpenedTheDocument)
{
    run(L"", KeyFile);
    EXPECT_EQ(log.callsOf(L"options.SetKey"), Calls{L"options.SetKey(C:\\k.zelkey)"});
    EXPECT_EQ(tracker->calls().at(2), usage(L"use_keyfile_symmetric, , none"));
    EXPECT_TRUE(log.callsOf(L"factory.CreatePasswordKey").empty());
}

TEST_F(AReencryptStep, decidesByTheKeyFileAloneWhenItIsGivenBoth)
{
    run(L"secret", KeyFile);
    EXPECT_EQ(log.callsOf(L"options.SetKey"), Calls{L"options.SetKey(C:\\k.zelkey)"});
}

TEST_F(AReencryptStep, countsTheDocumentAtHalfUntilItIsWiped)
{
    engine.script = reportHalfAFile;
    run(L"secret");
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 1);
    EXPECT_EQ(views.factory.progressViews.back()->last(L"setElapsedBytes"), L"250");
}

TEST_F(AReencryptStep, tellsWhetherItsDocumentFailed)
{
    EXPECT_TRUE(run(L"secret").succeeded());
    engine.files = {{Document, 10, 1}};
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(run(L"secret").succeeded());
}

TEST_F(AReencryptStep, hasNoTextsOfItsOwnForAFileThatFails)
{
    engine.files = {{Document, 10, 1}};
    gui.fileErrorAnswers = {2};
    run(L"secret");
    EXPECT_EQ(gui.fileErrors().at(0), (FileErrorQuestion{L"", L"", Document, L"", L"Access is denied."}));
}

TEST_F(AReencryptStep, whoseKeyFileIsGoneSaysSoStartsNoEngineAndReadsAsSucceeded)
{
    // Intended: without a finished file there is none that failed.
    EXPECT_TRUE(run(L"", L"C:\\gone.zelkey").succeeded());
    EXPECT_EQ(tracker->calls(), (Calls{L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))",
                                       L"TrackViewEvent(err_cannot_load_key_file, , none)"}));
    const std::vector<ShownBox> expected{
        {L"Cannot load key file: No key file: C:\\gone.zelkey", L"Cannot load key file", 0x40}};
    EXPECT_EQ(platform.messageBoxes.boxes(), expected);
    EXPECT_EQ(engine.startedWith, nullptr);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AReencryptStep, endsItsListThenHandlerThenTracker)
{
    ObservedEvents observed(platform);
    EventTrackerPtr copy(new RecordingTracker(log),
                         [this](RecordingTracker* recording)
                         {
                             log.add(L"tracker.dropped");
                             delete recording;
                         });
    std::unique_ptr<Command> command =
        std::make_unique<DcEncryptSubCommand>(Document, L"", L"secret", L"", &gui, std::move(copy));
    command->Run();
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(), (Calls{L"list.Release", L"event.destroyed", L"tracker.dropped"}));
}

TEST_F(AReencryptStep, releasesItsListWhenItsHandlerCannotBeMade)
{
    ObservedEvents observed(platform);
    observed.threads.eventsLeft = 2;
    EXPECT_THROW(made(L"secret", L""), std::runtime_error);
    Calls order = log.calls();
    std::erase_if(order,
                  [](const std::wstring& call) { return !call.starts_with(L"list.") && !call.starts_with(L"event."); });
    // The handler of the base has gone before the other one is made.
    EXPECT_EQ(order, (Calls{L"list.Add(C:\\a.txt)", L"event.destroyed", L"event.destroyed", L"list.Release"}));
}

TEST_F(AnEncryption, withoutADocumentStartsFromNothing)
{
    FakeFileList files(log, false);
    gui.encryptionAnswers = {{L"secret", L"", 14, 1, L""}};
    {
        WithoutADocument command(&gui, tracker, &files);
        command.Run();
    }
    EXPECT_TRUE(log.contains(L"gui.showEncryptionPasswordWindow(0, 0)"));
    EXPECT_EQ(log.callsOf(L"options.Set"),
              (Calls{L"options.SetKey(secret)", L"options.SetAlgorithm(14)", L"options.SetDestiny(1)",
                     L"options.SetRiddle()", L"options.SetExtraText(extra)"}));
    EXPECT_EQ(engine.startedWith, &files);
    EXPECT_TRUE(log.callsOf(L"document.").empty());
    EXPECT_TRUE(log.callsOf(L"list.").empty());
}
