#include "jobprocess/main_thread.h"

#include "bridges/module_factories.h"
#include "commands/command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "platform/threads.h"

#include <gtest/gtest.h>

#include <functional>

namespace JobRunner
{

namespace
{

const std::wstring JobFile = L"C:\\Temp\\job.json";

/// Keeps each request, fills in every answer, and confirms or not, as the test says.
class FillingDialogs final : public IModalDialogs
{
public:
    bool showEncryptionPassword(EncryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        encryption = request;
        request = {L"secret", L"new.zelkey", 14, 1, L"riddle"};
        return answer == 0;
    }
    int showDecryptionPassword(DecryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        decryption = request;
        request.passwordOut = L"secret";
        request.keyFileOut = L"new.zelkey";
        return answer;
    }
    int showFileError(const FileErrorRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        error = request;
        return answer;
    }

    int answer = 0;
    std::uint32_t thread = 0;
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
};

/// What the job's threads ask of the first thread, from a real run.
class GuiEvents : public testing::Test
{
protected:
    GuiEvents()
    {
        setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
        setVaultCoreFactory(Fakes::FakeEngine::createFactory);
        system_.shell.arguments = {L"C:\\Suite\\bin\\JobRunner.exe", JobFile};
        documents_.documents[JobFile].wipe = true;
    }
    ~GuiEvents() override
    {
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    /// Runs a job whose engine does nothing but these calls, on a thread of its own.
    void inTheJob(const std::function<void(IGuiEvents&)>& calls)
    {
        MainThread main(tracker_, dialogs_);
        engine_.script = [&](const Fakes::EngineCallbacks&) { calls(main); };
        system_.messageBoxes.answer(Platform::BoxAnswerYes);
        main.run();
        EXPECT_EQ(dialogs_.thread, system_.threads.currentThreadId());
    }

    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeZelPlatform documents_{system_.log};
    Fakes::FakeEngine engine_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
    FillingDialogs dialogs_;
};

TEST_F(GuiEvents, bringAnEncryptionThereAndBackWhateverTheAnswer)
{
    inTheJob(
        [&](IGuiEvents& gui)
        {
            for (const int answer : {0, 1})
            {
                dialogs_.answer = answer;
                std::wstring password = L"old";
                std::wstring keyFile = L"old.zelkey";
                std::uint32_t algorithm = 3;
                std::uint32_t destiny = 2;
                std::wstring riddle = L"old riddle";
                EXPECT_EQ(gui.showEncryptionPasswordWindow(password, keyFile, algorithm, destiny, riddle), answer == 0);
                EXPECT_EQ(password, L"secret");
                EXPECT_EQ(keyFile, L"new.zelkey");
                EXPECT_EQ(algorithm, 14U);
                EXPECT_EQ(destiny, 1U);
                EXPECT_EQ(riddle, L"riddle");
            }
        });
    EXPECT_EQ(dialogs_.encryption.password, L"old");
    EXPECT_EQ(dialogs_.encryption.keyFile, L"old.zelkey");
    EXPECT_EQ(dialogs_.encryption.algorithm, 3U);
    EXPECT_EQ(dialogs_.encryption.destiny, 2U);
    EXPECT_EQ(dialogs_.encryption.riddle, L"old riddle");
}

TEST_F(GuiEvents, bringADecryptionThereAndBackWhateverTheAnswer)
{
    auto* const validator = reinterpret_cast<IDpvKeyValidation*>(&dialogs_); // never called, only handed on
    inTheJob(
        [&](IGuiEvents& gui)
        {
            for (const int answer : {0, 1, 2})
            {
                dialogs_.answer = answer;
                std::wstring password;
                std::wstring keyFile;
                EXPECT_EQ(gui.showDecryptionPasswordWindow(L"a.zel", L"filled", L"filled.zelkey", 7, validator,
                                                           password, keyFile),
                          answer);
                EXPECT_EQ(password, L"secret");
                EXPECT_EQ(keyFile, L"new.zelkey");
            }
        });
    EXPECT_EQ(dialogs_.decryption.fileName, L"a.zel");
    EXPECT_EQ(dialogs_.decryption.password, L"filled");
    EXPECT_EQ(dialogs_.decryption.keyFile, L"filled.zelkey");
    EXPECT_EQ(dialogs_.decryption.mode, 7U);
    EXPECT_EQ(dialogs_.decryption.validator, validator);
}

TEST_F(GuiEvents, bringEachTextOfAFileErrorToItsPlace)
{
    dialogs_.answer = 9;
    inTheJob([](IGuiEvents& gui)
             { EXPECT_EQ(gui.showFileErrorWindow(L"title", L"header", L"source", L"target", L"message"), 9); });
    EXPECT_EQ(dialogs_.error.title, L"title");
    EXPECT_EQ(dialogs_.error.header, L"header");
    EXPECT_EQ(dialogs_.error.source, L"source");
    EXPECT_EQ(dialogs_.error.target, L"target");
    EXPECT_EQ(dialogs_.error.message, L"message");
}

TEST_F(GuiEvents, takeANullTextAsEmpty)
{
    dialogs_.error = {L"x", L"x", L"x", L"x", L"x"};
    dialogs_.decryption.fileName = dialogs_.decryption.password = dialogs_.decryption.keyFile = L"x";
    inTheJob(
        [](IGuiEvents& gui)
        {
            gui.showFileErrorWindow(nullptr, nullptr, nullptr, nullptr, nullptr);
            std::wstring password;
            std::wstring keyFile;
            gui.showDecryptionPasswordWindow(nullptr, nullptr, nullptr, 0, nullptr, password, keyFile);
        });
    EXPECT_EQ(dialogs_.error.title + dialogs_.error.header + dialogs_.error.source, L"");
    EXPECT_EQ(dialogs_.error.target + dialogs_.error.message, L"");
    EXPECT_EQ(dialogs_.decryption.fileName + dialogs_.decryption.password + dialogs_.decryption.keyFile, L"");
}

} // namespace

} // namespace JobRunner
