#include "commands/encrypt_command.h"

#include "commands/testing_support.h"
#include "fakes/observed_events.h"
#include "fakes/slot_of.h"

#include <thread>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

TEST_F(AnEncryption, withAPasswordRunsInThisOrder)
{
    answers.extraText = L"extra";
    engine.files = {{L"C:\\a.txt", 3U << 20, 0}};
    engine.questionsUntilFinished = 1;
    run({L"secret", L"", 3, 1, L"riddle"});
    const Calls expected{
        L"createFactory",
        L"factory.CreateEncryptor",
        L"factory.CreateOperationEvents",
        L"factory.CreateEncryptionOptions",
        View,
        L"document.GetAlgorithm",
        L"document.GetDestiny",
        L"gui.showEncryptionPasswordWindow(14, 0)",
        L"createFactory",
        L"factory.CreatePasswordKey(secret)",
        L"options.SetKey(secret)",
        L"key.Release",
        L"options.SetAlgorithm(3)",
        L"options.SetDestiny(1)",
        L"options.SetRiddle(riddle)",
        L"document.GetExtraText",
        L"options.SetExtraText(extra)",
        usage(L"count, , none"),
        usage(L"use_password, , none"),
        usage(L"use_alg_aes-256, , none"),
        usage(L"use_destiny_delete, , none"),
        usage(L"use_riddle, , none"),
        L"document.GetExtraText",
        usage(L"use_riddle, , none"),
        L"factory.Release",
        L"events.SetFileListBuilderEvents",
        L"events.SetOverallProgressEvents",
        L"events.SetFileProgressEvents",
        L"events.SetDestinyProgressEvents",
        L"events.SetFileConflictEvents",
        L"encryptor.Start",
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

TEST_F(AnEncryption, withAKeyFilePreparesInThisOrder)
{
    run({L"", KeyFile, 14, 0, L""});
    const auto first = std::find(calls.begin(), calls.end(), L"gui.showEncryptionPasswordWindow(14, 0)");
    const auto last = std::find(calls.begin(), calls.end(), L"events.SetFileListBuilderEvents");
    ASSERT_NE(first, calls.end());
    const Calls expected{
        L"gui.showEncryptionPasswordWindow(14, 0)",
        L"createFactory",
        L"factory.LoadKeyFile(C:\\k.zelkey)",
        L"options.SetKey(C:\\k.zelkey)",
        L"key.Release",
        L"options.SetAlgorithm(14)",
        L"options.SetDestiny(0)",
        L"options.SetRiddle()",
        L"document.GetExtraText",
        L"options.SetExtraText()",
        usage(L"count, , none"),
        L"factory.LoadKeyFile(C:\\k.zelkey)",
        L"key.GetKeyType",
        usage(L"use_keyfile_symmetric, , none"),
        L"key.Release",
        usage(L"use_alg_twofish, , none"),
        usage(L"use_destiny_leave, , none"),
        L"document.GetExtraText",
        L"factory.Release",
    };
    EXPECT_EQ(Calls(first, last), expected);
}

TEST_F(AnEncryption, thatTheUserCancelsTouchesNothingAndReportsNothing)
{
    run();
    const Calls expected{
        L"createFactory",
        L"factory.CreateEncryptor",
        L"factory.CreateOperationEvents",
        L"factory.CreateEncryptionOptions",
        View,
        L"document.GetAlgorithm",
        L"document.GetDestiny",
        L"gui.showEncryptionPasswordWindow(14, 0)",
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AnEncryption, takesTheKeyFileWhenItIsGivenBoth)
{
    run({L"secret", KeyFile, 3, 1, L""});
    EXPECT_EQ(log.callsOf(L"options.SetKey"), Calls{L"options.SetKey(C:\\k.zelkey)"});
    EXPECT_TRUE(log.callsOf(L"factory.CreatePasswordKey").empty());
    EXPECT_EQ(parameterEvents().at(1), usage(L"use_keyfile_symmetric, , none"));
}

TEST_F(AnEncryption, takesAnEmptyPasswordWhenItIsGivenNothing)
{
    run({L"", L"", 3, 1, L""});
    EXPECT_EQ(log.callsOf(L"options.SetKey"), Calls{L"options.SetKey()"});
    EXPECT_EQ(parameterEvents().at(1), usage(L"use_password, , none"));
}

TEST_F(AnEncryption, startsTheEngineWithTheListThatItTookInItsConstructor)
{
    FakeDocument* const job = new FakeDocument(log, answers);
    EncryptCommand command(ReleasePtr<ZelPlatform::IJobRunnerDocument>(job), &gui, tracker);
    EXPECT_EQ(log.calls(), Calls{L"document.GetFileList"});
    gui.encryptionAnswers = {{L"secret", L"", 3, 1, L""}};
    command.Run();
    EXPECT_EQ(log.callsOf(L"document.GetFileList").size(), 1U);
    EXPECT_EQ(engine.startedWith, job->GetFileList());
}

TEST_F(AnEncryption, doesNotSleepWhenTheEngineIsFinishedAtTheFirstQuestion)
{
    run({L"secret", L"", 3, 1, L""});
    EXPECT_TRUE(log.callsOf(L"sleep").empty());
    engine.questionsUntilFinished = 3;
    run({L"secret", L"", 3, 1, L""});
    EXPECT_EQ(log.callsOf(L"sleep"), (Calls{L"sleep 200", L"sleep 200", L"sleep 200"}));
}

TEST_F(AnEncryption, endsHandlerThenTrackerThenWindowThenDocument)
{
    ObservedEvents observed(platform);
    // Left open on purpose: the window's end shows in the log through its view.
    engine.script = [](const EngineCallbacks& callbacks) { callbacks.overall->OnOperationStarted(); };
    gui.encryptionAnswers = {{L"secret", L"", 3, 1, L""}};
    EventTrackerPtr copy(new RecordingTracker(log),
                         [this](RecordingTracker* recording)
                         {
                             log.add(views.factory.progressViews.back()->open() ? L"tracker.dropped, window open"
                                                                                : L"tracker.dropped, window closed");
                             delete recording;
                         });
    std::unique_ptr<Command> command = std::make_unique<EncryptCommand>(document(), &gui, std::move(copy));
    command->Run();
    ASSERT_TRUE(views.factory.progressViews.back()->open());
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(), (Calls{L"event.destroyed", L"tracker.dropped, window open", L"document.Release"}));
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

namespace
{

/// Answers without a window and without an extra text, and keeps what it was given to start from.
struct Unasked final : EncryptCommand
{
    using EncryptCommand::EncryptCommand;
    bool GetEncryptionParameters(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                 std::uint32_t& destiny, std::wstring& riddle) override
    {
        given = {password, keyFile, std::to_wstring(algorithm), std::to_wstring(destiny), riddle};
        password = L"secret";
        keyFile = L"C:\\k.zelkey";
        algorithm += 1;
        destiny += 2;
        riddle.clear();
        return true;
    }
    std::wstring GetExtraText() override { return L""; }

    Calls given;

    static Calls slots()
    {
        return {std::to_wstring(slotOf(&Unasked::Run)), std::to_wstring(slotOf(&Unasked::GetEncryptionParameters)),
                std::to_wstring(slotOf(&Unasked::GetExtraText))};
    }
};

} // namespace

TEST_F(AnEncryption, letsADerivedCommandAnswerInPlaceOfTheWindow)
{
    answers.extraText = L"extra";
    Unasked command(document(), &gui, tracker);
    command.Run();
    EXPECT_EQ(command.given, (Calls{L"", L"", L"14", L"0", L""}));
    EXPECT_TRUE(gui.calls().empty());
    EXPECT_EQ(log.callsOf(L"options.Set"),
              (Calls{L"options.SetKey(C:\\k.zelkey)", L"options.SetAlgorithm(15)", L"options.SetDestiny(2)",
                     L"options.SetRiddle()", L"options.SetExtraText()"}));
    EXPECT_FALSE(log.contains(usage(L"use_riddle, , none")));
    EXPECT_TRUE(log.callsOf(L"document.GetExtraText").empty());
}

TEST_F(AnEncryption, hasItsOperationsInOrderBehindTheTwoEntriesOfTheDestructor)
{
    EXPECT_EQ(Unasked::slots(), (Calls{L"2", L"3", L"4"}));
}

TEST_F(AnEncryption, canRunOnAThreadOfItsOwn)
{
    engine.files = {{L"C:\\a.txt", 1000, 0}};
    engine.questionsUntilFinished = 5;
    gui.encryptionAnswers = {{L"secret", L"", 3, 1, L""}};
    EncryptCommand command(document(), &gui, tracker);
    std::thread job([&] { command.Run(); });
    job.join();
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 1")));
}
