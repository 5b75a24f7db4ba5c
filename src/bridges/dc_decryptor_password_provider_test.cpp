#include "bridges/dc_decryptor_password_provider.h"

#include "bridges/module_factories.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "platform/narrow_text.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;

namespace
{

const wchar_t* const KeyFile = L"C:\\k.zelkey";

class ADoubleClickProvider : public testing::Test
{
protected:
    ADoubleClickProvider() { setVaultCoreFactory(&FakeEngine::createFactory); }
    ~ADoubleClickProvider() override { setVaultCoreFactory(nullptr); }

    bool validates(int type)
    {
        engine.keyFiles[KeyFile].type = type;
        message = L"untouched";
        return provider.GetKeyValidation()->ValidateKeyFile(KeyFile, message);
    }

    FakePlatform platform;
    FakeViews views;
    CallLog& log = platform.log;
    FakeEngine engine{log};
    FakeGuiEvents gui{log};
    ProgressWindow window;
    DcDecryptorPasswordProvider provider{&window, &gui};
    std::wstring message;
};

} // namespace

TEST_F(ADoubleClickProvider, alwaysAsksInTheModeOfTheDoubleClickJobAndHandsInItsDemand)
{
    IDpvKeyValidation* const demand = &provider;
    for (const bool deletes : {true, false})
    {
        provider.setDeletesOriginals(deletes);
        VaultCore::IKey* key = nullptr;
        EXPECT_EQ(provider.ProvideKey(L"C:\\a.zel", &key), VaultCore::KeyCancelJob);
        EXPECT_EQ(gui.decryptionQuestions().back().mode, 2U);
        EXPECT_EQ(gui.decryptionQuestions().back().validator, demand);
    }
}

TEST_F(ADoubleClickProvider, acceptsASymmetricKeyFileWithoutAWord)
{
    EXPECT_TRUE(validates(VaultCore::KeyTypeSymmetric));
    EXPECT_EQ(message, L"untouched");
    const std::vector<std::wstring> expected{L"createFactory", L"factory.LoadKeyFile(C:\\k.zelkey)", L"key.GetKeyType",
                                             L"key.Release", L"factory.Release"};
    EXPECT_EQ(log.calls(), expected);
}

TEST_F(ADoubleClickProvider, refusesAKeyFileOfAnyOtherType)
{
    for (const int type : {2, 3, 4, 0, -1})
    {
        log.clear();
        EXPECT_FALSE(validates(type)) << type;
        EXPECT_EQ(message, L"PKI key files could not be used for decrypt/open/encrypt mode.");
        const std::vector<std::wstring> expected{L"createFactory", L"factory.LoadKeyFile(C:\\k.zelkey)",
                                                 L"key.GetKeyType", L"key.Release", L"factory.Release"};
        EXPECT_EQ(log.calls(), expected);
    }
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADoubleClickProvider, refusesAKeyFileThatDoesNotLoadWithTheWordsOfTheEngine)
{
    EXPECT_FALSE(provider.ValidateKeyFile(L"C:\\none", message));
    EXPECT_EQ(message, L"No key file: C:\\none");
    EXPECT_EQ(log.calls().back(), L"factory.Release");
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ADoubleClickProvider, refusesAKeyThatCannotTellItsTypeWithTheWordsOfTheEngine)
{
    engine.keyTypeFailure = L"No type.";
    EXPECT_FALSE(validates(VaultCore::KeyTypeSymmetric));
    EXPECT_EQ(message, L"No type.");
    EXPECT_EQ(engine.liveObjects(), 0);
}

namespace
{

const char* const NarrowText = "Kein Speicher f\xc3\xbcr den Schl\xc3\xbcssel.";

VaultCore::IFactory* failToCreateFactory()
{
    throw std::runtime_error(NarrowText);
}

} // namespace

TEST_F(ADoubleClickProvider, widensTheWordsOfAnyOtherFailureAsTheThreadReadsThem)
{
    setVaultCoreFactory(&failToCreateFactory);
    EXPECT_FALSE(provider.ValidateKeyFile(KeyFile, message));
    EXPECT_EQ(message, Platform::widenThreadText(NarrowText));
}

TEST_F(ADoubleClickProvider, isAProviderFirstAndADemandBehindThat)
{
    const auto place = [](const auto* base) { return reinterpret_cast<std::uintptr_t>(base); };
    EXPECT_EQ(place(&provider), place(static_cast<PasswordProviderHandler*>(&provider)));
    EXPECT_LT(place(&provider), place(static_cast<IDpvKeyValidation*>(&provider)));
}

TEST_F(ADoubleClickProvider, endsThroughItsBaseWithTheKeysThatItStored)
{
    PasswordProviderPtr owned = makePasswordProvider<DcDecryptorPasswordProvider>(&window, &gui);
    EXPECT_NE(dynamic_cast<DcDecryptorPasswordProvider*>(owned.get()), nullptr);
    owned->AddStoredKey(new FakeKey(engine, L"a secret that is longer than a string holds in itself", 1));
    owned.reset();
    EXPECT_EQ(log.calls(), std::vector<std::wstring>{L"key.Release"});
    EXPECT_EQ(engine.liveObjects(), 0);
}
