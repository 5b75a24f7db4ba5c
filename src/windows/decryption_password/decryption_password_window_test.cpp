#include "windows/decryption_password/decryption_password_window.h"

#include "fakes/fake_engine.h"
#include "fakes/fake_views.h"
#include "interfaces/process/key_validation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

using namespace JobRunner;
using Fakes::FakeDecryptionPasswordView;

namespace
{

using Calls = std::vector<std::wstring>;

const std::wstring KeyPath = L"k.zelkey";

ReleasePtr<VaultCore::IFactory> makeFactory()
{
    return ReleasePtr<VaultCore::IFactory>(Fakes::FakeEngine::createFactory());
}

ReleasePtr<VaultCore::IFactory> makeNoFactory()
{
    throw std::runtime_error("out of order");
}

/// Refuses every key file and counts the questions.
class Refusing final : public IDpvKeyValidation
{
public:
    bool ValidateKeyFile(const wchar_t* path, std::wstring& message) override
    {
        ++questions;
        message = std::wstring(L"Not ") + path;
        return accepts;
    }

    bool accepts = false;
    int questions = 0;
};

class DecryptionPasswordWindowTest : public testing::Test
{
protected:
    int run(Fakes::DecryptionPasswordUser user, IDpvKeyValidation* validator = nullptr)
    {
        views_.factory.decryptionUsers = {std::move(user)};
        DecryptionPasswordWindow window(views_.factory.createDecryptionPasswordView(), make_);
        window.setValidator(validator);
        return window.doModal();
    }

    /// Whether Proceed is accepted with these fields.
    bool proceeds(bool passwordMode, const std::wstring& password, const std::wstring& keyFile,
                  IDpvKeyValidation* validator = nullptr)
    {
        bool accepted = false;
        const int answer = run(
            [&](FakeDecryptionPasswordView& dialog)
            {
                dialog.fields().passwordMode = passwordMode;
                dialog.fields().password = password;
                dialog.fields().keyFile = keyFile;
                accepted = dialog.proceed();
            },
            validator);
        EXPECT_EQ(answer, accepted ? DecryptionKeyGiven : DecryptionCancelled);
        return accepted;
    }

    bool proceedsWithKeyOfType(int type)
    {
        engine_.keyFiles[KeyPath].type = type;
        return proceeds(false, L"", KeyPath);
    }

    /// The calls after the dialog was opened.
    Calls shown() const
    {
        Calls calls = views_.factory.decryptionPasswords.back()->calls;
        calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), L"doModal") + 1);
        return calls;
    }

    Fakes::FakeViews views_;
    Fakes::CallLog log_;
    Fakes::FakeEngine engine_{log_};
    DecryptionPasswordWindow::MakeEngineFactory make_ = makeFactory;
};

} // namespace

TEST_F(DecryptionPasswordWindowTest, answersCancelUntilTheUserDecides)
{
    EXPECT_EQ(run([](auto&) {}), 2);
}

TEST_F(DecryptionPasswordWindowTest, answersByTheButton)
{
    EXPECT_EQ(run([](FakeDecryptionPasswordView& dialog) { dialog.ignore(); }), 1);
    EXPECT_EQ(run([](FakeDecryptionPasswordView& dialog) { dialog.cancel(); }), 2);
    EXPECT_TRUE(proceeds(true, L"secret", L""));
}

TEST_F(DecryptionPasswordWindowTest, aCancelAfterARefusalIsACancel)
{
    EXPECT_EQ(run(
                  [](FakeDecryptionPasswordView& dialog)
                  {
                      EXPECT_FALSE(dialog.proceed());
                      dialog.cancel();
                  }),
              2);
}

TEST_F(DecryptionPasswordWindowTest, theLastButtonDecides)
{
    EXPECT_EQ(run(
                  [](FakeDecryptionPasswordView& dialog)
                  {
                      dialog.ignore();
                      dialog.cancel();
                  }),
              2);
}

TEST_F(DecryptionPasswordWindowTest, anEmptyPasswordIsRefused)
{
    EXPECT_FALSE(proceeds(true, L"", L""));
    EXPECT_EQ(shown(), (Calls{L"showError Enter your password, please."}));
}

TEST_F(DecryptionPasswordWindowTest, anEmptyKeyFilePathIsRefused)
{
    EXPECT_FALSE(proceeds(false, L"secret", L""));
    EXPECT_EQ(shown(), (Calls{L"showError Provide key file path, please."}));
}

TEST_F(DecryptionPasswordWindowTest, keysOfTheTypesThatOpenDataPass)
{
    for (const int type : {1, 3, 4})
        EXPECT_TRUE(proceedsWithKeyOfType(type)) << type;
    EXPECT_EQ(shown(), Calls{});
}

TEST_F(DecryptionPasswordWindowTest, keysOfAnyOtherTypeAreRefused)
{
    for (const int type : {0, 2, 5, -1})
    {
        EXPECT_FALSE(proceedsWithKeyOfType(type)) << type;
        EXPECT_EQ(shown(), (Calls{L"showError Incompatible key type for decryption."}));
    }
}

TEST_F(DecryptionPasswordWindowTest, theEnginesObjectsAreReleasedInAnyCase)
{
    EXPECT_TRUE(proceedsWithKeyOfType(1));
    EXPECT_FALSE(proceedsWithKeyOfType(2));
    EXPECT_FALSE(proceeds(false, L"", L"missing"));
    EXPECT_EQ(engine_.liveObjects(), 0);
}

TEST_F(DecryptionPasswordWindowTest, aKeyFileThatDoesNotLoadIsToldInTheEnginesWords)
{
    EXPECT_FALSE(proceeds(false, L"", L"missing"));
    EXPECT_EQ(shown(), (Calls{L"showError No key file: missing"}));
}

TEST_F(DecryptionPasswordWindowTest, aStandardExceptionIsToldInItsOwnWords)
{
    make_ = makeNoFactory;
    EXPECT_FALSE(proceeds(false, L"", KeyPath));
    EXPECT_EQ(shown(), (Calls{L"showError out of order"}));
}

TEST_F(DecryptionPasswordWindowTest, aStaleKeyFileBehindAPasswordIsStillLoaded)
{
    EXPECT_FALSE(proceeds(true, L"secret", L"missing"));
    EXPECT_EQ(shown(), (Calls{L"showError No key file: missing"}));
    EXPECT_TRUE(views_.factory.decryptionPasswords.back()->passwordMode); // what gives the error its title
}

TEST_F(DecryptionPasswordWindowTest, withoutAKeyFileTheEngineIsNotAsked)
{
    make_ = makeNoFactory;
    EXPECT_TRUE(proceeds(true, L"secret", L""));
}

TEST_F(DecryptionPasswordWindowTest, aRefusalOfTheValidatorIsShownTwice)
{
    Refusing validator;
    engine_.keyFiles[KeyPath] = {};
    EXPECT_FALSE(proceeds(false, L"", KeyPath, &validator));
    EXPECT_EQ(shown(), (Calls{L"showError Not k.zelkey", L"showError Not k.zelkey"}));
}

TEST_F(DecryptionPasswordWindowTest, aRefusedKeyOfAWrongTypeIsToldInBothWords)
{
    Refusing validator;
    engine_.keyFiles[KeyPath].type = 2;
    EXPECT_FALSE(proceeds(false, L"", KeyPath, &validator));
    EXPECT_EQ(shown(), (Calls{L"showError Not k.zelkey", L"showError Incompatible key type for decryption."}));
}

TEST_F(DecryptionPasswordWindowTest, theValidatorIsAskedInPasswordModeToo)
{
    Refusing validator;
    engine_.keyFiles[KeyPath] = {};
    EXPECT_FALSE(proceeds(true, L"secret", KeyPath, &validator));
    EXPECT_EQ(shown(), (Calls{L"showError Not k.zelkey"}));
}

TEST_F(DecryptionPasswordWindowTest, anAcceptingValidatorIsAskedTwiceAndShowsNothing)
{
    Refusing validator;
    validator.accepts = true;
    engine_.keyFiles[KeyPath] = {};
    EXPECT_TRUE(proceeds(false, L"", KeyPath, &validator));
    EXPECT_EQ(validator.questions, 2);
    EXPECT_EQ(shown(), Calls{});
}

TEST_F(DecryptionPasswordWindowTest, theValidatorIsNotAskedWithoutAKeyFile)
{
    Refusing validator;
    EXPECT_TRUE(proceeds(true, L"secret", L"", &validator));
    EXPECT_FALSE(proceeds(false, L"", L"", &validator));
    EXPECT_EQ(validator.questions, 0);
}

TEST_F(DecryptionPasswordWindowTest, aPickedKeyFileGoesIntoTheField)
{
    views_.factory.pickedKeyFiles = {KeyPath};
    run([](FakeDecryptionPasswordView& dialog) { dialog.browse(); });
    EXPECT_EQ(shown(), (Calls{L"setKeyFile k.zelkey"}));
}

TEST_F(DecryptionPasswordWindowTest, theFileDialogRunsOnAThreadOfItsOwnThatIsNotMadeReadyForCom)
{
    run([](FakeDecryptionPasswordView& dialog) { dialog.browse(); });
    ASSERT_EQ(views_.factory.keyFileDialogs.size(), 1u);
    EXPECT_FALSE(views_.factory.keyFileDialogs[0].initializeCom);
    EXPECT_NE(views_.factory.keyFileDialogs[0].thread, std::this_thread::get_id());
}

TEST_F(DecryptionPasswordWindowTest, aCancelledFileDialogEmptiesTheFieldAndSwitchesToIt)
{
    run(
        [](FakeDecryptionPasswordView& dialog)
        {
            dialog.fields().keyFile = L"old.zelkey";
            dialog.browse();
        });
    EXPECT_EQ(shown(), (Calls{L"setKeyFile "}));
    EXPECT_FALSE(views_.factory.decryptionPasswords.back()->passwordMode);
}

TEST_F(DecryptionPasswordWindowTest, forwardsWhatItIsTold)
{
    DecryptionPasswordWindow window(views_.factory.createDecryptionPasswordView(), make_);
    window.setDecryptionMode(2);
    window.setFileName(L"a.zel");
    window.setPassword(L"secret");
    window.setKeyFile(KeyPath);
    EXPECT_EQ(views_.factory.decryptionPasswords.back()->calls,
              (Calls{L"setDecryptionMode 2", L"setFileName a.zel", L"setPassword secret", L"setKeyFile k.zelkey"}));
    EXPECT_EQ(window.getPassword(), L"secret");
    EXPECT_EQ(window.getKeyFile(), KeyPath);
}

TEST_F(DecryptionPasswordWindowTest, ownsItsView)
{
    std::weak_ptr<Fakes::DecryptionPasswordRecord> record;
    {
        DecryptionPasswordWindow window(views_.factory.createDecryptionPasswordView(), make_);
        record = views_.factory.decryptionPasswords.back();
        views_.factory.decryptionPasswords.clear();
        EXPECT_FALSE(record.expired());
    }
    EXPECT_TRUE(record.expired());
}
