#include "jobprocess/modal_dialogs.h"

#include "bridges/module_factories.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "interfaces/process/key_validation.h"
#include "jobprocess/message_window.h"

#include <gtest/gtest.h>

#include <thread>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::wstring>;
using Fakes::FakeDecryptionPasswordView;
using Fakes::FakeEncryptionPasswordView;

class PasswordDialogsTest : public testing::Test
{
protected:
    PasswordDialogsTest() { setVaultCoreFactory(Fakes::FakeEngine::createFactory); }
    ~PasswordDialogsTest() override { setVaultCoreFactory(nullptr); }

    bool encrypt(Fakes::EncryptionPasswordUser user, EncryptionPasswordRequest& request)
    {
        views_.factory.encryptionUsers.push_back(std::move(user));
        return dialogs_.showEncryptionPassword(request);
    }
    int decrypt(Fakes::DecryptionPasswordUser user, DecryptionPasswordRequest& request)
    {
        views_.factory.decryptionUsers.push_back(std::move(user));
        return dialogs_.showDecryptionPassword(request);
    }
    Calls encryptionCalls() { return views_.factory.encryptionPasswords.back()->calls; }
    Calls decryptionCalls() { return views_.factory.decryptionPasswords.back()->calls; }

    Fakes::FakePlatform system_;
    Fakes::FakeViews views_;
    Fakes::FakeEngine engine_{system_.log};
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
    ModalDialogs dialogs_{tracker_};
};

bool givePassword(FakeEncryptionPasswordView& dialog)
{
    dialog.type(L"secret", L"secret");
    dialog.fields().keyFile = L"unused.zelkey";
    dialog.fields().algorithm = 14;
    dialog.fields().destiny = 5;
    dialog.fields().riddle = L"riddle";
    return dialog.proceed();
}

bool giveKeyFile(FakeEncryptionPasswordView& dialog)
{
    dialog.type(L"unused", L"unused");
    dialog.chooseKeyFile(L"k.zelkey");
    return dialog.proceed();
}

void openWithPassword(FakeDecryptionPasswordView& dialog)
{
    dialog.fields().password = L"secret";
    EXPECT_TRUE(dialog.proceed());
}

TEST_F(PasswordDialogsTest, aGivenPasswordLeavesTheKeyFileAsItWas)
{
    EncryptionPasswordRequest request{L"before", L"before.zelkey", 7, 0, L"before"};
    EXPECT_TRUE(encrypt(givePassword, request));
    EXPECT_EQ(request.password, L"secret");
    EXPECT_EQ(request.keyFile, L"before.zelkey");
    EXPECT_EQ(request.algorithm, 14u);
    EXPECT_EQ(request.destiny, 2u);
    EXPECT_EQ(request.riddle, L"riddle");
}

TEST_F(PasswordDialogsTest, aGivenKeyFileLeavesThePasswordAsItWas)
{
    EncryptionPasswordRequest request{L"before", L"before.zelkey", 7, 0, L"before"};
    EXPECT_TRUE(encrypt(giveKeyFile, request));
    EXPECT_EQ(request.password, L"before");
    EXPECT_EQ(request.keyFile, L"k.zelkey");
    EXPECT_EQ(request.algorithm, 3u); // the dialog's own, whatever the request said
    EXPECT_EQ(request.destiny, 0u);
    EXPECT_EQ(request.riddle, L"");
}

TEST_F(PasswordDialogsTest, aCancelledEncryptionLeavesTheRequestAsItWas)
{
    EncryptionPasswordRequest request{L"", L"", 7, 9, L""};
    EXPECT_FALSE(encrypt(
        [](FakeEncryptionPasswordView& dialog)
        {
            givePassword(dialog);
            return false;
        },
        request));
    EXPECT_EQ(request.password, L"");
    EXPECT_EQ(request.keyFile, L"");
    EXPECT_EQ(request.algorithm, 7u);
    EXPECT_EQ(request.destiny, 9u);
    EXPECT_EQ(request.riddle, L"");
}

TEST_F(PasswordDialogsTest, theEncryptionDialogGetsTheDestinyAndNothingElse)
{
    const std::pair<std::uint32_t, std::wstring> destinies[] = {{0, L"setDestiny 0"},
                                                                {1, L"setDestiny 1"},
                                                                {2, L"setDestiny 2"},
                                                                {3, L"setDestiny 2"},
                                                                {0xFFFFFFFF, L"setDestiny 2"}};
    for (const auto& [destiny, call] : destinies)
    {
        EncryptionPasswordRequest request{L"before", L"before", 7, destiny, L"before"};
        EXPECT_FALSE(encrypt([](auto&) { return false; }, request));
        EXPECT_EQ(encryptionCalls(), (Calls{call, L"doModal"}));
    }
    EXPECT_FALSE(views_.factory.encryptionPasswords.back()->selfExtracting);
}

TEST_F(PasswordDialogsTest, theEncryptionDialogIsTracked)
{
    EncryptionPasswordRequest request;
    EXPECT_TRUE(encrypt(givePassword, request));
    EXPECT_EQ(tracker_->calls(), (Calls{L"TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)",
                                        L"TrackViewEvent(click_ok, , none)", L"TrackView(, )"}));
}

TEST_F(PasswordDialogsTest, theDecryptionDialogIsFilledInOrder)
{
    DecryptionPasswordRequest request{L"a.zel", L"secret", L"k.zelkey", 2, nullptr, L"", L""};
    EXPECT_EQ(decrypt([](auto&) {}, request), 2);
    EXPECT_EQ(decryptionCalls(), (Calls{L"setDecryptionMode 2", L"setFileName a.zel", L"setPassword secret",
                                        L"setKeyFile k.zelkey", L"doModal"}));
    EXPECT_FALSE(views_.factory.decryptionPasswords.back()->passwordMode); // the key file wins
    EXPECT_TRUE(tracker_->calls().empty());
}

TEST_F(PasswordDialogsTest, emptyTextsAreNotFilledIn)
{
    DecryptionPasswordRequest request{L"", L"", L"", 0, nullptr, L"", L""};
    decrypt([](auto&) {}, request);
    EXPECT_EQ(decryptionCalls(), (Calls{L"setDecryptionMode 0", L"setFileName ", L"doModal"}));
}

TEST_F(PasswordDialogsTest, aGivenKeyBringsBothOutFields)
{
    engine_.keyFiles[L"k.zelkey"] = {};
    DecryptionPasswordRequest request{L"", L"filled", L"k.zelkey", 0, nullptr, L"before", L"before"};
    EXPECT_EQ(decrypt([](FakeDecryptionPasswordView& dialog) { EXPECT_TRUE(dialog.proceed()); }, request), 0);
    EXPECT_EQ(request.passwordOut, L"filled");
    EXPECT_EQ(request.keyFileOut, L"k.zelkey");
    EXPECT_EQ(engine_.liveObjects(), 0);
}

TEST_F(PasswordDialogsTest, ignoreAndCancelLeaveTheOutFields)
{
    DecryptionPasswordRequest request{L"", L"filled", L"k.zelkey", 0, nullptr, L"before", L"old"};
    EXPECT_EQ(decrypt([](FakeDecryptionPasswordView& dialog) { dialog.ignore(); }, request), 1);
    EXPECT_EQ(decrypt([](FakeDecryptionPasswordView& dialog) { dialog.cancel(); }, request), 2);
    EXPECT_EQ(request.passwordOut, L"before");
    EXPECT_EQ(request.keyFileOut, L"old");
}

TEST_F(PasswordDialogsTest, theValidatorReachesTheWindow)
{
    class Refusing final : public IDpvKeyValidation
    {
    public:
        bool ValidateKeyFile(const wchar_t*, std::wstring& message) override
        {
            message = L"not this one";
            return false;
        }
    } validator;
    engine_.keyFiles[L"k.zelkey"] = {};
    DecryptionPasswordRequest request{L"", L"", L"k.zelkey", 2, &validator, L"", L""};
    EXPECT_EQ(decrypt([](FakeDecryptionPasswordView& dialog) { EXPECT_FALSE(dialog.proceed()); }, request), 2);
    EXPECT_EQ(decryptionCalls().back(), L"showError not this one");
}

TEST_F(PasswordDialogsTest, theJobThreadGetsTheSameAnswersAsTheFirst)
{
    MessageWindow window(dialogs_);
    ASSERT_TRUE(window.create());
    const auto ask = [&](EncryptionPasswordRequest& encryption, DecryptionPasswordRequest& decryption)
    {
        views_.factory.encryptionUsers = {givePassword};
        views_.factory.decryptionUsers = {openWithPassword};
        EXPECT_TRUE(window.showEncryptionPassword(encryption));
        EXPECT_EQ(window.showDecryptionPassword(decryption), 0);
    };
    EncryptionPasswordRequest first;
    DecryptionPasswordRequest firstOpened;
    ask(first, firstOpened);
    EXPECT_TRUE(system_.log.callsOf(L"send").empty());

    EncryptionPasswordRequest second;
    DecryptionPasswordRequest secondOpened;
    std::thread job(
        [&]
        {
            ask(second, secondOpened);
            window.close();
        });
    system_.messages.runLoop();
    job.join();
    EXPECT_EQ(system_.log.callsOf(L"send"), (Calls{L"send 2024", L"send 2025", L"send 2023"}));
    EXPECT_EQ(first.password, second.password);
    EXPECT_EQ(first.algorithm, second.algorithm);
    EXPECT_EQ(first.destiny, second.destiny);
    EXPECT_EQ(first.riddle, second.riddle);
    EXPECT_EQ(firstOpened.passwordOut, secondOpened.passwordOut);
    EXPECT_EQ(secondOpened.passwordOut, L"secret");
}

} // namespace

} // namespace JobRunner
