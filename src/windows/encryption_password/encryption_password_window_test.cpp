#include "windows/encryption_password/encryption_password_window.h"

#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

using namespace JobRunner;
using namespace Halden::ZEL::Telemetry;
using Fakes::FakeEncryptionPasswordView;

namespace
{

using Calls = std::vector<std::wstring>;

class EncryptionPasswordWindowTest : public testing::Test
{
protected:
    /// Runs a window whose user does this and then presses nothing more.
    bool run(Fakes::EncryptionPasswordUser user, bool selfExtracting = false)
    {
        views_.factory.encryptionUsers = {std::move(user)};
        EncryptionPasswordWindow window(selfExtracting, tracker_);
        return window.doModal();
    }

    /// The calls after the dialog was opened.
    Calls shown() const
    {
        Calls calls = views_.factory.encryptionPasswords.back()->calls;
        calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), L"doModal") + 1);
        return calls;
    }

    Fakes::FakeViews views_;
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

} // namespace

TEST_F(EncryptionPasswordWindowTest, tracksItsOwnViewAndGoesBackToTheOneBefore)
{
    tracker_->TrackView({L"jobrunner", L"encryption"}, L"Job");
    tracker_->clear();
    EXPECT_TRUE(run([](auto&) { return true; }));
    EXPECT_EQ(tracker_->calls(), (Calls{L"TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)",
                                        L"TrackViewEvent(click_ok, , none)", L"TrackView(jobrunner/encryption, Job)"}));
}

TEST_F(EncryptionPasswordWindowTest, aSelfExtractingJobHasAViewOfItsOwn)
{
    EXPECT_FALSE(run([](auto&) { return false; }, true));
    EXPECT_EQ(tracker_->calls().front(), L"TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)");
    EXPECT_TRUE(views_.factory.encryptionPasswords.back()->selfExtracting);
}

TEST_F(EncryptionPasswordWindowTest, tellsACancelAsOne)
{
    EXPECT_FALSE(run([](auto&) { return false; }));
    EXPECT_EQ(tracker_->calls()[1], L"TrackViewEvent(click_cancel, , none)");
    EXPECT_FALSE(views_.factory.encryptionPasswords.back()->selfExtracting);
}

TEST_F(EncryptionPasswordWindowTest, hasItsOwnUsageViewWhileTheDialogIsUp)
{
    ViewState during;
    run(
        [&](auto&)
        {
            during = tracker_->GetViewState();
            return true;
        });
    EXPECT_EQ(during.title, L"Enter Password Window");
    EXPECT_EQ(during.path, (std::vector<std::wstring>{L"jobrunner", L"encryption", L"passwordwnd"}));
}

TEST_F(EncryptionPasswordWindowTest, anEmptyPasswordIsRefusedOnTheFirstEdit)
{
    run([](FakeEncryptionPasswordView& dialog) { return dialog.proceed(); });
    EXPECT_EQ(shown(), (Calls{L"showError Please type password here."}));
}

TEST_F(EncryptionPasswordWindowTest, anEmptyRepeatIsRefusedOnTheSecondEdit)
{
    EXPECT_FALSE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.fields().password = L"secret";
            return dialog.proceed();
        }));
    EXPECT_EQ(shown(), (Calls{L"showErrorOnRepeat Please repeat password here."}));
}

TEST_F(EncryptionPasswordWindowTest, aRepeatThatDiffersInCaseIsRefused)
{
    EXPECT_FALSE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.fields().password = L"secret";
            dialog.fields().repeat = L"Secret";
            return dialog.proceed();
        }));
    EXPECT_EQ(shown(), (Calls{L"showErrorOnRepeat Your second password must match the first password."}));
}

TEST_F(EncryptionPasswordWindowTest, twoEqualPasswordsPassHoweverShort)
{
    EXPECT_TRUE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.fields().password = dialog.fields().repeat = L"x";
            return dialog.proceed();
        }));
    EXPECT_EQ(shown(), Calls{});
}

TEST_F(EncryptionPasswordWindowTest, anEmptyKeyFilePathIsRefusedWithoutAWord)
{
    EXPECT_FALSE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.chooseKeyFile(L"");
            return dialog.proceed();
        }));
    EXPECT_EQ(shown(), Calls{});
}

TEST_F(EncryptionPasswordWindowTest, aTypedKeyFilePathPassesWithoutALookAtTheFile)
{
    EXPECT_TRUE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.chooseKeyFile(L"no such file");
            return dialog.proceed();
        }));
}

TEST_F(EncryptionPasswordWindowTest, inKeyFileModeThePasswordsDoNotCount)
{
    EXPECT_TRUE(run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.type(L"one", L"two");
            dialog.chooseKeyFile(L"k.zelkey");
            return dialog.proceed();
        }));
}

TEST_F(EncryptionPasswordWindowTest, marksTheRepeatWhileItDiffers)
{
    run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.type(L"ab", L"");
            dialog.type(L"ab", L"a");
            dialog.type(L"ab", L"ab");
            dialog.type(L"", L"ab");
            dialog.type(L"", L"");
            return false;
        });
    EXPECT_EQ(shown(), (Calls{L"setRepeatMismatch 1", L"setRepeatMismatch 1", L"setRepeatMismatch 0",
                              L"setRepeatMismatch 1", L"setRepeatMismatch 0"}));
}

TEST_F(EncryptionPasswordWindowTest, aPickedKeyFileGoesIntoTheField)
{
    views_.factory.pickedKeyFiles = {L"C:\\my.zelkey"};
    run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.browse();
            return false;
        });
    EXPECT_EQ(shown(), (Calls{L"setKeyFile C:\\my.zelkey"}));
}

TEST_F(EncryptionPasswordWindowTest, theFileDialogRunsOnAThreadOfItsOwnThatIsMadeReadyForCom)
{
    run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.browse();
            return false;
        });
    ASSERT_EQ(views_.factory.keyFileDialogs.size(), 1u);
    EXPECT_TRUE(views_.factory.keyFileDialogs[0].initializeCom);
    EXPECT_NE(views_.factory.keyFileDialogs[0].thread, std::this_thread::get_id());
}

TEST_F(EncryptionPasswordWindowTest, aCancelledFileDialogEmptiesAFilledField)
{
    run(
        [](FakeEncryptionPasswordView& dialog)
        {
            dialog.chooseKeyFile(L"old.zelkey");
            dialog.browse();
            return false;
        });
    EXPECT_EQ(shown(), (Calls{L"setKeyFile "}));
    EXPECT_EQ(views_.factory.encryptionPasswords.back()->keyFile, L"");
}

TEST_F(EncryptionPasswordWindowTest, aDestinyThatIsUnknownBecomesTheWipeOnBothWays)
{
    EncryptionPasswordWindow window(false, tracker_);
    auto& record = *views_.factory.encryptionPasswords.back();
    for (const int destiny : {0, 1, 2, 3, -1})
        window.setDestiny(destiny);
    EXPECT_EQ(record.calls,
              (Calls{L"setDestiny 0", L"setDestiny 1", L"setDestiny 2", L"setDestiny 2", L"setDestiny 2"}));
    const std::pair<int, int> answers[] = {{0, 0}, {1, 1}, {2, 2}, {3, 2}, {-1, 2}};
    for (const auto& [held, given] : answers)
    {
        record.destiny = held;
        EXPECT_EQ(window.getDestiny(), given);
    }
}

TEST_F(EncryptionPasswordWindowTest, givesWhatTheViewHoldsAfterTheDialogHasEnded)
{
    views_.factory.encryptionUsers = {[](FakeEncryptionPasswordView& dialog)
                                      {
                                          dialog.type(L"secret", L"secret");
                                          dialog.fields().keyFile = L"k.zelkey";
                                          dialog.fields().algorithm = 14;
                                          dialog.fields().riddle = L"my \"cat\" <3";
                                          dialog.fields().sfxCommentDefault = true;
                                          return true;
                                      }};
    EncryptionPasswordWindow window(true, tracker_);
    window.setSfxComment(L"open me");
    ASSERT_TRUE(window.doModal());
    EXPECT_TRUE(window.isPasswordMode());
    EXPECT_EQ(window.getPassword(), L"secret");
    EXPECT_EQ(window.getKeyFile(), L"k.zelkey");
    EXPECT_EQ(window.getAlgorithm(), 14);
    EXPECT_EQ(window.getDestiny(), 1);
    EXPECT_EQ(window.getRiddle(), L"my \"cat\" <3");
    EXPECT_EQ(window.getSfxComment(), L"open me");
    EXPECT_TRUE(window.isSfxCommentDefault());
}

TEST_F(EncryptionPasswordWindowTest, setsNoCallbackForIgnoreAndCancel)
{
    run(
        [](FakeEncryptionPasswordView& dialog)
        {
            EXPECT_EQ(dialog.onIgnore.function, nullptr);
            EXPECT_EQ(dialog.onCancel.function, nullptr);
            return false;
        });
}

TEST_F(EncryptionPasswordWindowTest, ownsItsView)
{
    std::weak_ptr<Fakes::EncryptionPasswordRecord> record;
    {
        EncryptionPasswordWindow window(false, tracker_);
        record = views_.factory.encryptionPasswords.back();
        views_.factory.encryptionPasswords.clear();
        EXPECT_FALSE(record.expired());
    }
    EXPECT_TRUE(record.expired());
}
