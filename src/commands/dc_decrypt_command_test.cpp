#include "commands/dc_decrypt_command.h"

#include "commands/testing_support.h"
#include "fakes/slot_of.h"
#include "interfaces/process/exception.h"

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::EventTrackerPtr;

namespace
{

const std::wstring Encrypted = L"C:\\docs\\a.zel";
constexpr std::uint32_t Application = 200;
const std::wstring CannotOpen =
    L"messageBox Cannot open . Possibly there is no known application associated with this type of file?";

std::wstring viewEvent(const std::wstring& action)
{
    return L"TrackViewEvent(" + action + L", , none)";
}

/// The three counts of a sub-command, which has worked on one file or on none.
Calls counts(const std::wstring& job, int processed, int failed)
{
    const std::wstring start = L"TrackEvent(winzel " + job + L" usage statistics, ";
    return {start + L"processed_file_count, , " + std::to_wstring(processed) + L")",
            start + L"failed_file_count, , " + std::to_wstring(failed) + L")",
            start + L"processed_total_size_mb, , " + std::to_wstring(processed * 3) + L")"};
}

Calls joined(const std::vector<Calls>& parts)
{
    Calls all;
    for (const Calls& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Calls Start{L"TrackView(jobrunner/dblclk, Double Click File Thread (JobRunner))",
                  L"TrackView(jobrunner/dblclk/decrypt, Decrypt (DblClk in JobRunner))", viewEvent(L"execute"),
                  L"TrackView(jobrunner/decryption, Decryption Thread (JobRunner))"};
const Calls Open{L"TrackView(jobrunner/dblclk/openandwait, Open and Wait (DblClk in JobRunner))",
                 viewEvent(L"execute")};
const Calls Reencrypt{L"TrackView(jobrunner/dblclk/encrypt, Re-encrypt (DblClk in JobRunner))", viewEvent(L"execute"),
                      L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))"};
const Calls Clean{L"TrackView(jobrunner/dblclk/clean, Clean (DblClk in JobRunner))", viewEvent(L"execute"),
                  L"TrackView(jobrunner/wipe, Wipe Thread (JobRunner))",
                  L"TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)"};

Calls parameters(const std::wstring& key)
{
    Calls told;
    for (const wchar_t* action : {L"count", key.c_str(), L"use_alg_aes-256", L"use_destiny_wipe"})
        told.push_back(std::wstring(L"TrackEvent(winzel encryption usage statistics, ") + action + L", , none)");
    return told;
}

/// The file is opened with a password unless a test says otherwise, and the engine has no text for it.
class ADoubleClick : public JobFixture
{
protected:
    ADoubleClick()
    {
        answers.doubleClickDecryption = true;
        answers.files = {Encrypted};
        engine.files = {{Encrypted, 3U << 20, 0, L"right"}};
        gui.decryptionAnswers = {{0, L"right", L""}};
        // The name of the document that the steps behind the first one work on.
        platform.files.change(L"").modified = 1000;
    }

    /// The shell starts an application that the user closes after a while; does this at the end.
    void openWith(std::function<void()> atTheEnd = nullptr)
    {
        platform.processes.running = {{platform.processes.current, 1}};
        platform.shell.onExecute = [this, atTheEnd](Platform::ShellExecution&)
        {
            platform.processes.start({Application, platform.processes.current});
            platform.threads.at(platform.threads.elapsed() + 20'000,
                                [this, atTheEnd]
                                {
                                    EXPECT_TRUE(std::none_of(views.factory.progressViews.begin(),
                                                             views.factory.progressViews.end(),
                                                             [](const auto& view) { return view->open(); }))
                                        << "a window beside the application";
                                    if (atTheEnd)
                                        atTheEnd();
                                    platform.processes.end(Application);
                                });
            return true;
        };
    }

    void openAndSave()
    {
        openWith([this] { platform.files.change(L"").modified = 1001; });
    }

    /// From the second start of the engine on, its file fails.
    void failBehindTheDecryption()
    {
        engine.onStart = [this, starts = 0]() mutable
        {
            if (++starts > 1)
                engine.files[0].failures = 1;
        };
        gui.fileErrorAnswers = {1};
    }

    void run() { runCommand<DcDecryptCommand>(); }

    /// What the user and the tracker were told, in order.
    Calls told() const
    {
        Calls found = calls;
        std::erase_if(found, [](const std::wstring& call)
                      { return !call.starts_with(L"Track") && !call.starts_with(L"messageBox"); });
        return found;
    }

    std::vector<int> operations() const
    {
        std::vector<int> found;
        for (const auto& view : views.factory.progressViews)
            found.push_back(view->operation());
        return found;
    }
};

} // namespace

TEST_F(ADoubleClick, thatChangesTheDocumentEncryptsItAgain)
{
    openAndSave();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {viewEvent(L"succeeded"), viewEvent(L"file_was_modified")},
                              Reencrypt,
                              parameters(L"use_password"),
                              counts(L"encryption", 1, 0),
                              {viewEvent(L"succeeded")}}));
    EXPECT_EQ(operations(), (std::vector<int>{3, 1}));
    EXPECT_TRUE(log.contains(L"options.SetKey(right)"));
    EXPECT_EQ(gui.calls(), Calls{L"gui.showDecryptionPasswordWindow"}) << "asked twice";
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADoubleClick, thatLeavesTheDocumentAloneWipesIt)
{
    openWith();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {viewEvent(L"succeeded"), viewEvent(L"file_was_not_modified")},
                              Clean,
                              counts(L"wipe", 1, 0),
                              {viewEvent(L"succeeded")}}));
    EXPECT_EQ(operations(), (std::vector<int>{3, 5}));
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADoubleClick, thatOpensNothingTellsTheUserAndWipesTheDocument)
{
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {CannotOpen, viewEvent(L"not_succeeded")},
                              Clean,
                              counts(L"wipe", 1, 0),
                              {viewEvent(L"succeeded")}}));
}

TEST_F(ADoubleClick, withAKeyFileEncryptsWithItAgain)
{
    engine.files[0].secret = KeyFile;
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"", KeyFile}};
    openAndSave();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_keyfile")},
                              Open,
                              {viewEvent(L"succeeded"), viewEvent(L"file_was_modified")},
                              Reencrypt,
                              parameters(L"use_keyfile_symmetric"),
                              counts(L"encryption", 1, 0),
                              {viewEvent(L"succeeded")}}));
    EXPECT_EQ(log.callsOf(L"options.SetKey"), Calls{L"options.SetKey(C:\\k.zelkey)"});
    EXPECT_EQ(log.callsOf(L"factory.CreatePasswordKey"), Calls{L"factory.CreatePasswordKey(wrong)"});
}

TEST_F(ADoubleClick, withoutAnyFinishedFileGoesOnWithAnEmptyName)
{
    engine.files.clear();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 0, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {CannotOpen, viewEvent(L"not_succeeded")},
                              Clean,
                              counts(L"wipe", 0, 0),
                              {viewEvent(L"succeeded")}}));
    EXPECT_EQ(log.callsOf(L"execute"), Calls{L"execute  in "});
    EXPECT_EQ(log.callsOf(L"list.Add"), (Calls{L"list.Add(C:\\docs\\a.zel)", L"list.Add()"}));
}

TEST_F(ADoubleClick, endsAtATextOfTheEngineWhateverItsErrorWas)
{
    // Intended: this way round. With a text the job ends, even when the file was decrypted.
    engine.files[0].text = L"C:\\docs\\a.txt";
    run();
    EXPECT_EQ(told(), joined({Start, counts(L"decryption", 1, 0), {viewEvent(L"not_succeeded")}}));
    engine.files = {{Encrypted, 10, 1}};
    gui.fileErrorAnswers = {1};
    tracker->clear();
    run();
    EXPECT_EQ(told(), joined({Start, counts(L"decryption", 0, 1), {viewEvent(L"not_succeeded")}}));
    EXPECT_TRUE(log.callsOf(L"execute").empty());
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
}

TEST_F(ADoubleClick, endsAtAFailureWithoutATextToo)
{
    engine.script = [](const EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        callbacks.overall->OnFileFinished(nullptr, nullptr, 5);
        callbacks.overall->OnOperationFinished();
    };
    run();
    EXPECT_EQ(told(), joined({Start, counts(L"decryption", 0, 1), {viewEvent(L"not_succeeded")}}));
    EXPECT_TRUE(log.callsOf(L"execute").empty());
}

TEST_F(ADoubleClick, whosePasswordWindowIsCancelledEndsWithoutAWord)
{
    gui.decryptionAnswers = {{2, L"", L""}};
    run();
    EXPECT_EQ(told(), joined({Start, counts(L"decryption", 0, 1), {viewEvent(L"not_succeeded")}}));
    EXPECT_EQ(log.callsOf(L"list."), (Calls{L"list.Add(C:\\docs\\a.zel)", L"list.Release"}));
}

TEST_F(ADoubleClick, thatIsCancelledInItsDecryptionTellsThatUnderTheEncryption)
{
    engine.script = [this](const EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        views.factory.lastProgressView->onCancel();
        EXPECT_EQ(callbacks.progress->OnFileProgress(1, 4), 0);
        callbacks.overall->OnFileFinished(nullptr, L"Cancelled.", 5);
        callbacks.overall->OnOperationFinished();
    };
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 0, 1),
                              {L"TrackEvent(winzel encryption usage statistics, cancelled, , none)",
                               viewEvent(L"not_succeeded")}}));
}

TEST_F(ADoubleClick, whoseEncryptionFailsEndsWithoutCleaningUp)
{
    openAndSave();
    failBehindTheDecryption();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {viewEvent(L"succeeded"), viewEvent(L"file_was_modified")},
                              Reencrypt,
                              parameters(L"use_password"),
                              counts(L"encryption", 0, 1),
                              {viewEvent(L"not_succeeded")}}));
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADoubleClick, whoseKeyFileIsGoneByTheEndReadsAsSucceeded)
{
    // Intended: nothing was encrypted, but no file has failed either.
    engine.files[0].secret = KeyFile;
    engine.keyFiles[KeyFile].loads = 1;
    gui.decryptionAnswers = {{0, L"", KeyFile}};
    openAndSave();
    run();
    EXPECT_EQ(told(),
              joined({Start,
                      counts(L"decryption", 1, 0),
                      {viewEvent(L"succeeded")},
                      {viewEvent(L"used_keyfile")},
                      Open,
                      {viewEvent(L"succeeded"), viewEvent(L"file_was_modified")},
                      Reencrypt,
                      {viewEvent(L"err_cannot_load_key_file"),
                       L"messageBox Cannot load key file: No key file: C:\\k.zelkey", viewEvent(L"succeeded")}}));
}

TEST_F(ADoubleClick, whoseWipeFailsEndsAsAnyOther)
{
    openWith();
    failBehindTheDecryption();
    run();
    EXPECT_EQ(told(), joined({Start,
                              counts(L"decryption", 1, 0),
                              {viewEvent(L"succeeded")},
                              {viewEvent(L"used_password")},
                              Open,
                              {viewEvent(L"succeeded"), viewEvent(L"file_was_not_modified")},
                              Clean,
                              counts(L"wipe", 0, 1),
                              {viewEvent(L"not_succeeded")}}));
}

TEST_F(ADoubleClick, endsEachStepBeforeItMakesTheNext)
{
    openAndSave();
    run();
    Calls order = calls;
    std::erase_if(
        order, [](const std::wstring& call)
        { return !call.starts_with(L"list.") && !call.starts_with(L"execute ") && call != viewEvent(L"succeeded"); });
    EXPECT_EQ(order, (Calls{L"list.Add(C:\\docs\\a.zel)", viewEvent(L"succeeded"), L"list.Release", L"execute  in ",
                            viewEvent(L"succeeded"), L"list.Add()", viewEvent(L"succeeded"), L"list.Release"}));
}

TEST_F(ADoubleClick, letsAnExceptionOutOfAStepThrough)
{
    engine.onStart = [] { throw std::runtime_error("start"); };
    DcDecryptCommand command(document(), &gui, tracker);
    EXPECT_THROW(command.Run(), std::runtime_error);
    EXPECT_EQ(engine.liveObjects(), 0);
    EXPECT_EQ(log.callsOf(L"list."), (Calls{L"list.Add(C:\\docs\\a.zel)", L"list.Release"}));
}

TEST_F(ADoubleClick, readsItsOneFileInItsConstructorAndReleasesTheDocumentAtItsEnd)
{
    openWith();
    std::unique_ptr<Command> command = std::make_unique<DcDecryptCommand>(document(), &gui, tracker);
    EXPECT_EQ(log.calls(), Calls{L"document.GetFileList"});
    command->Run();
    EXPECT_EQ(log.callsOf(L"document."), Calls{L"document.GetFileList"});
    log.clear();
    command.reset();
    EXPECT_EQ(log.calls(), Calls{L"document.Release"});
}

TEST_F(ADoubleClick, ofAnyOtherNumberOfFilesThanOneIsRefusedWithTheSameWords)
{
    for (const Calls& files : {Calls{}, Calls{Encrypted, L"C:\\b.zel"}, Calls(7, Encrypted)})
    {
        answers.files = files;
        log.clear();
        std::weak_ptr<Halden::ZEL::Telemetry::IEventTracker> dropped;
        try
        {
            EventTrackerPtr copy = std::make_shared<RecordingTracker>();
            dropped = copy;
            DcDecryptCommand(document(), &gui, std::move(copy));
            ADD_FAILURE() << files.size();
        }
        catch (const Exception& failure)
        {
            EXPECT_EQ(failure.text, L"Cannot decrypt file, there is no file in the pattern list");
        }
        EXPECT_EQ(log.calls(), (Calls{L"document.GetFileList", L"document.Release"}));
        EXPECT_TRUE(dropped.expired());
    }
}

TEST_F(ADoubleClick, hasNoOperationsBehindItsRun)
{
    EXPECT_EQ(slotOf(&DcDecryptCommand::Run), 2U);
}
