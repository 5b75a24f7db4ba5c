#include "bridges/password_provider_handler.h"

#include "bridges/module_factories.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/slot_of.h"
#include "interfaces/vaultcore/exception.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace Fakes;
using namespace JobRunner;

namespace
{

const wchar_t* const File = L"C:\\a.zel";
const wchar_t* const KeyFile = L"C:\\k.zelkey";

class AProvider : public testing::Test
{
protected:
    AProvider()
    {
        setVaultCoreFactory(&FakeEngine::createFactory);
        engine.keyFiles[KeyFile] = {};
    }
    ~AProvider() override { setVaultCoreFactory(nullptr); }

    /// One question, which the user answers so. The key of a confirmed one is looked at and released.
    int ask(const DecryptionAnswer& answer, PasswordProviderHandler& asked)
    {
        gui.decryptionAnswers = {answer};
        VaultCore::IKey* key = nullptr;
        const int given = asked.ProvideKey(File, &key);
        EXPECT_EQ(key != nullptr, given == VaultCore::KeyProvided);
        if (key)
        {
            lastKey = static_cast<FakeKey*>(key)->secret();
            key->Release();
        }
        return given;
    }
    int ask(const DecryptionAnswer& answer) { return ask(answer, provider); }

    DecryptionQuestion lastQuestion() { return gui.decryptionQuestions().back(); }

    FakePlatform platform;
    FakeViews views;
    CallLog& log = platform.log;
    FakeEngine engine{log};
    FakeGuiEvents gui{log};
    ProgressWindow window;
    PasswordProviderHandler provider{&window, &gui};
    std::wstring lastKey; ///< what the last key was made from
};

} // namespace

TEST_F(AProvider, showsNoFileNameAndNothingTriedAtTheFirstQuestion)
{
    ask({0, L"secret", L""});
    EXPECT_EQ(lastQuestion(), (DecryptionQuestion{L"", L"", L"", 1, nullptr}));
}

TEST_F(AProvider, showsTheFileAndTheTriedPasswordFromTheSecondQuestionOn)
{
    ask({0, L"first", L""});
    ask({0, L"second", L""});
    EXPECT_EQ(lastQuestion(), (DecryptionQuestion{File, L"first", L"", 1, nullptr}));
    ask({0, L"third", L""});
    EXPECT_EQ(lastQuestion(), (DecryptionQuestion{File, L"second", L"", 1, nullptr}));
}

TEST_F(AProvider, showsTheTriedKeyFileAndThenNoPassword)
{
    ask({0, L"", KeyFile});
    ask({2, L"", L""});
    EXPECT_EQ(lastQuestion(), (DecryptionQuestion{File, L"", KeyFile, 1, nullptr}));
}

TEST_F(AProvider, showsTheFileWithoutAnythingTriedAfterAnIgnoredFirstQuestion)
{
    ask({1, L"", L""});
    ask({1, L"", L""});
    EXPECT_EQ(lastQuestion(), (DecryptionQuestion{File, L"", L"", 1, nullptr}));
}

TEST_F(AProvider, makesAPasswordKeyWithAFactoryOfItsOwn)
{
    EXPECT_EQ(ask({0, L"secret", L""}), VaultCore::KeyProvided);
    EXPECT_EQ(lastKey, L"secret");
    const std::vector<std::wstring> expected{L"createFactory", L"gui.showDecryptionPasswordWindow",
                                             L"factory.CreatePasswordKey(secret)", L"factory.Release", L"key.Release"};
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AProvider, loadsAKeyFile)
{
    EXPECT_EQ(ask({0, L"", KeyFile}), VaultCore::KeyProvided);
    EXPECT_EQ(lastKey, KeyFile);
    const std::vector<std::wstring> expected{L"createFactory", L"gui.showDecryptionPasswordWindow",
                                             L"factory.LoadKeyFile(C:\\k.zelkey)", L"factory.Release", L"key.Release"};
    EXPECT_EQ(log.calls(), expected);
}

TEST_F(AProvider, takesAWindowThatGaveBothAsAPassword)
{
    ask({0, L"secret", KeyFile});
    EXPECT_EQ(lastKey, L"secret");
    EXPECT_EQ(provider.password(), L"secret");
    EXPECT_EQ(provider.keyFile(), L"");
}

TEST_F(AProvider, loadsTheKeyFileWithoutANameWhenTheWindowGaveNothing)
{
    VaultCore::IKey* key = nullptr;
    gui.decryptionAnswers = {{0, L"", L""}};
    EXPECT_THROW(provider.ProvideKey(File, &key), VaultCore::Exception);
    EXPECT_EQ(log.callsOf(L"factory.").at(0), L"factory.LoadKeyFile()");
}

TEST_F(AProvider, takesAnyOtherAnswerAsConfirmed)
{
    EXPECT_EQ(ask({7, L"secret", L""}), VaultCore::KeyProvided);
    EXPECT_EQ(ask({-1, L"secret", L""}), VaultCore::KeyProvided);
}

TEST_F(AProvider, passesIgnoreAndCancelOnAndReleasesItsFactory)
{
    EXPECT_EQ(ask({1, L"typed", L""}), VaultCore::KeyIgnoreFile);
    EXPECT_EQ(ask({2, L"typed", KeyFile}), VaultCore::KeyCancelJob);
    const std::vector<std::wstring> each{L"createFactory", L"gui.showDecryptionPasswordWindow", L"factory.Release"};
    std::vector<std::wstring> expected = each;
    expected.insert(expected.end(), each.begin(), each.end());
    EXPECT_EQ(log.calls(), expected);
    EXPECT_EQ(provider.password(), L"");
    EXPECT_EQ(provider.keyFile(), L"");
}

TEST_F(AProvider, keepsTheEntryOfTheSecondAttemptWhenTheThirdIsCancelled)
{
    ask({0, L"first", L""});
    ask({0, L"second", L""});
    ask({2, L"third", KeyFile});
    EXPECT_EQ(provider.password(), L"second");
    EXPECT_EQ(provider.keyFile(), L"");
}

TEST_F(AProvider, forgetsThePasswordWhenAKeyFileIsTaken)
{
    ask({0, L"wrong", L""});
    ask({0, L"", KeyFile});
    EXPECT_EQ(provider.password(), L"");
    EXPECT_EQ(provider.keyFile(), KeyFile);
}

TEST_F(AProvider, forgetsTheKeyFileWhenAPasswordIsTaken)
{
    ask({0, L"", KeyFile});
    ask({0, L"secret", L""});
    EXPECT_EQ(provider.password(), L"secret");
    EXPECT_EQ(provider.keyFile(), L"");
}

TEST_F(AProvider, letsTheFailureOfAKeyFilePassAndKeepsItsEntry)
{
    ask({0, L"secret", L""});
    log.clear();
    gui.decryptionAnswers = {{0, L"", L"C:\\none"}};
    VaultCore::IKey* key = nullptr;
    EXPECT_THROW(provider.ProvideKey(File, &key), VaultCore::Exception);
    EXPECT_EQ(key, nullptr);
    EXPECT_EQ(log.calls().back(), L"factory.Release");
    EXPECT_EQ(provider.password(), L"secret");
    EXPECT_EQ(provider.keyFile(), L"");
}

TEST_F(AProvider, hidesTheProgressAndStopsItsStopwatchWhileItAsks)
{
    window.openWindow(3);
    window.reportFileProgress(1, 2);
    ProgressViewLog& view = *views.factory.progressViews.back();
    ASSERT_FALSE(view.hidden());
    bool hiddenDuringTheQuestion = false;
    gui.whileDecryptionPasswordIsShown = [&]
    {
        hiddenDuringTheQuestion = view.hidden();
        platform.threads.advance(60'000);
    };
    ask({2, L"", L""});
    EXPECT_TRUE(hiddenDuringTheQuestion);
    EXPECT_FALSE(view.hidden());
    platform.threads.advance(2'000);
    window.reportFileProgress(1, 2);
    EXPECT_EQ(view.last(L"setElapsedTime"), L"2");
    window.closeWindow();
}

TEST_F(AProvider, showsTheProgressAgainBeforeItMakesTheKey)
{
    window.openWindow(3);
    window.reportFileProgress(1, 2);
    gui.decryptionAnswers = {{0, L"", L"C:\\none"}};
    VaultCore::IKey* key = nullptr;
    EXPECT_THROW(provider.ProvideKey(File, &key), VaultCore::Exception);
    EXPECT_FALSE(views.factory.progressViews.back()->hidden());
    window.closeWindow();
}

namespace
{

VaultCore::IFactory* failToCreateFactory()
{
    throw VaultCore::Exception(L"No factory.");
}

} // namespace

TEST_F(AProvider, makesItsFactoryBeforeItHidesTheProgress)
{
    window.openWindow(3);
    window.reportFileProgress(1, 2);
    ProgressViewLog& view = *views.factory.progressViews.back();
    setVaultCoreFactory(&failToCreateFactory);
    VaultCore::IKey* key = nullptr;
    EXPECT_THROW(provider.ProvideKey(File, &key), VaultCore::Exception);
    EXPECT_FALSE(view.hidden());
    EXPECT_TRUE(gui.decryptionQuestions().empty());
    window.closeWindow();
}

TEST_F(AProvider, tellsTheWindowByItsFlagWhetherOriginalsAreDeleted)
{
    EXPECT_EQ(provider.GetPasswordWindowMode(), 1);
    provider.setDeletesOriginals(false);
    EXPECT_EQ(provider.GetPasswordWindowMode(), 0);
    ask({2, L"", L""});
    EXPECT_EQ(lastQuestion().mode, 0U);
    provider.setDeletesOriginals(true);
    EXPECT_EQ(provider.GetPasswordWindowMode(), 1);
}

TEST_F(AProvider, acceptsAPublicKeyFileBecauseItHasNoDemandOfItsOwn)
{
    engine.keyFiles[KeyFile].type = VaultCore::KeyTypePublicRsa;
    EXPECT_EQ(provider.GetKeyValidation(), nullptr);
    EXPECT_EQ(ask({0, L"", KeyFile}), VaultCore::KeyProvided);
    EXPECT_TRUE(log.callsOf(L"key.GetKeyType").empty());
}

TEST_F(AProvider, keepsTheKeysOfTheEngineInOrderAndNeverUsesThemItself)
{
    EXPECT_EQ(provider.GetStoredKeyCount(), 0);
    VaultCore::IKey* const first = new FakeKey(engine, L"first", 1);
    VaultCore::IKey* const second = new FakeKey(engine, L"second", 1);
    EXPECT_TRUE(provider.AddStoredKey(first));
    EXPECT_TRUE(provider.AddStoredKey(second));
    EXPECT_EQ(provider.GetStoredKeyCount(), 2);
    EXPECT_EQ(provider.GetStoredKey(0), first);
    EXPECT_EQ(provider.GetStoredKey(1), second);
    EXPECT_EQ(provider.GetStoredKey(2), nullptr);
    EXPECT_EQ(provider.GetStoredKey(-1), nullptr);
    ask({0, L"third", L""});
    EXPECT_EQ(gui.decryptionQuestions().size(), 1U);
    EXPECT_EQ(provider.GetStoredKeyCount(), 2);
}

namespace
{

/// A key that tells its name when it is released.
class NamedKey final : public VaultCore::IKey
{
public:
    NamedKey(CallLog& log, std::wstring name) : log_(log), name_(std::move(name)) {}
    void Release() override
    {
        log_.add(name_ + L".Release");
        delete this;
    }
    void notCalled1() override {}
    int GetKeyType() override { return 0; }

private:
    CallLog& log_;
    const std::wstring name_;
};

} // namespace

TEST_F(AProvider, releasesItsStoredKeysFromTheFirstToTheLastAtItsEnd)
{
    PasswordProviderPtr owned = makePasswordProvider<PasswordProviderHandler>(&window, &gui);
    for (const wchar_t* name : {L"one", L"two", L"three"})
        owned->AddStoredKey(new NamedKey(log, name));
    owned.reset();
    const std::vector<std::wstring> expected{L"one.Release", L"two.Release", L"three.Release"};
    EXPECT_EQ(log.calls(), expected);
}

TEST_F(AProvider, hasItsOwnOperationsBehindThoseOfTheEngineAndNoVirtualDestructor)
{
    EXPECT_FALSE(std::has_virtual_destructor_v<PasswordProviderHandler>);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::ProvideKey), 0U);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::GetStoredKey), 1U);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::GetStoredKeyCount), 2U);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::AddStoredKey), 3U);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::GetPasswordWindowMode), 4U);
    EXPECT_EQ(slotOf(&PasswordProviderHandler::GetKeyValidation), 5U);
}
