#include "bridges/dc_decryptor_events_handler.h"
#include "bridges/dc_decryptor_password_provider.h"
#include "bridges/dc_deleter_events_handler.h"
#include "bridges/dc_encryptor_events_handler.h"
#include "bridges/dcd_progress_handler.h"
#include "bridges/module_factories.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_views.h"
#include "fakes/observed_events.h"
#include "fakes/slot_of.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

/// Longer than a string holds in itself, so that a leak shows under the sanitizer.
const wchar_t* const LongText = L"C:\\Users\\me\\Documents\\a document with quite a long name.txt";

class ADoubleClickHandlerBase : public testing::Test
{
protected:
    ADoubleClickHandlerBase() { setVaultCoreFactory(&FakeEngine::createFactory); }
    ~ADoubleClickHandlerBase() override { setVaultCoreFactory(nullptr); }

    FakePlatform platform;
    FakeViews views;
    CallLog& log = platform.log;
    FakeEngine engine{log};
    FakeGuiEvents gui{log};
    ProgressWindow window;
};

template <class Handler> class ADoubleClickHandler : public ADoubleClickHandlerBase
{
};

using Handlers = testing::Types<DcDecryptorEventsHandler, DcEncryptorEventsHandler, DcDeleterEventsHandler>;
TYPED_TEST_SUITE(ADoubleClickHandler, Handlers);

} // namespace

TYPED_TEST(ADoubleClickHandler, keepsTheOutcomeOfTheLastFile)
{
    const std::unique_ptr<EventsHandler> handler = std::make_unique<TypeParam>(&this->window, &this->gui);
    const auto* progress = dynamic_cast<const DcdProgressHandler*>(&handler->progress());
    ASSERT_NE(progress, nullptr);
    EXPECT_TRUE(progress->lastFileSucceeded());
    const ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(this->engine));
    handler->AttachEvents(events.get(), 1);
    events->callbacks.overall->OnFileFinished(nullptr, LongText, 5);
    EXPECT_FALSE(progress->lastFileSucceeded());
    EXPECT_EQ(progress->lastFileText(), LongText);
    EXPECT_EQ(progress->failedFiles(), 1);
}

TYPED_TEST(ADoubleClickHandler, attachesAsItsBaseDoes)
{
    TypeParam handler(&this->window, &this->gui);
    const ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(this->engine));
    this->log.clear();
    handler.AttachEvents(events.get(), 5);
    EXPECT_EQ(this->log.calls(), (Calls{L"events.SetFileListBuilderEvents", L"events.SetOverallProgressEvents",
                                        L"events.SetFileProgressEvents", L"events.SetDestinyProgressEvents",
                                        L"events.SetFileConflictEvents"}));
    events->callbacks.overall->OnOperationStarted();
    EXPECT_EQ(this->views.factory.progressViews.back()->operation(), 5);
    events->callbacks.overall->OnOperationFinished();
}

TYPED_TEST(ADoubleClickHandler, endsTheBridgeOfItsBaseAndThenItsOwnOnce)
{
    ObservedEvents observed(this->platform);
    std::unique_ptr<EventsHandler> handler = std::make_unique<TypeParam>(&this->window, &this->gui);
    EXPECT_EQ(this->log.callsOf(L"event."), Calls{L"event.destroyed"});
    // Ended through its base, with the text that it keeps.
    static_assert(std::has_virtual_destructor_v<EventsHandler>);
    const ReleasePtr<FakeOperationEvents> events(new FakeOperationEvents(this->engine));
    handler->AttachEvents(events.get(), 1);
    events->callbacks.overall->OnFileFinished(nullptr, LongText, 0);
    handler.reset();
    EXPECT_EQ(this->log.callsOf(L"event."), (Calls{L"event.destroyed", L"event.destroyed"}));
}

TYPED_TEST(ADoubleClickHandler, leavesNothingBehindWhenItsOwnBridgeCannotBeMade)
{
    ObservedEvents observed(this->platform);
    observed.threads.eventsLeft = 1;
    EXPECT_THROW(TypeParam(&this->window, &this->gui), std::runtime_error);
    EXPECT_EQ(this->log.callsOf(L"event."), Calls{L"event.destroyed"});
}

namespace
{

class ADoubleClickDecryptionHandler : public ADoubleClickHandlerBase
{
protected:
    void attach(std::uint32_t mode)
    {
        options->SetMode(mode);
        log.clear();
        DecryptorEventsHandler& base = *handler;
        base.AttachDecryptionEvents(events.get(), options.get());
    }

    int provide()
    {
        VaultCore::IKey* key = nullptr;
        const int answer = events->callbacks.passwords->ProvideKey(L"C:\\a.zel", &key);
        const ReleasePtr<VaultCore::IKey> owned(key);
        return answer;
    }

    ReleasePtr<FakeDecryptionEvents> events{new FakeDecryptionEvents(engine)};
    ReleasePtr<FakeDecryptionOptions> options{new FakeDecryptionOptions(engine)};
    std::unique_ptr<DecryptorEventsHandler> handler = std::make_unique<DcDecryptorEventsHandler>(&window, &gui);
};

} // namespace

TEST_F(ADoubleClickDecryptionHandler, attachesAsAnyDecryptionInAnOperationOfItsOwn)
{
    attach(1);
    EXPECT_EQ(log.calls(), (Calls{L"events.SetFileListBuilderEvents", L"events.SetOverallProgressEvents",
                                  L"events.SetFileProgressEvents", L"events.SetDestinyProgressEvents",
                                  L"events.SetFileConflictEvents", L"options.GetMode", L"events.SetPasswordProvider"}));
    EXPECT_EQ(slotOf(&DcDecryptorEventsHandler::AttachDecryptionEvents), 3U);
    using Own = void (DcDecryptorEventsHandler::*)(VaultCore::IDecryptionEvents*, VaultCore::IDecryptionOptions*);
    static_assert(std::is_same_v<decltype(&DcDecryptorEventsHandler::AttachDecryptionEvents), Own>);
}

TEST_F(ADoubleClickDecryptionHandler, attachesAsADecryption)
{
    attach(0);
    events->callbacks.overall->OnOperationStarted();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 3);
    events->callbacks.overall->OnOperationFinished();
    events->callbacks.conflict->OnFileError(L"a", L"b", L"c");
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
}

TEST_F(ADoubleClickDecryptionHandler, asksInItsOwnModeWhateverTheModeOfTheOptions)
{
    for (const std::uint32_t mode : {0U, 1U, 7U})
    {
        attach(mode);
        EXPECT_EQ(provide(), VaultCore::KeyCancelJob);
        EXPECT_EQ(gui.decryptionQuestions().back().mode, 2U) << mode;
    }
}

TEST_F(ADoubleClickDecryptionHandler, keepsWhatTheUserEnteredLast)
{
    engine.keyFiles[L"C:\\k.zelkey"] = {};
    attach(0);
    const auto* provider = dynamic_cast<const DcDecryptorPasswordProvider*>(&handler->provider());
    ASSERT_NE(provider, nullptr);
    gui.decryptionAnswers = {{0, L"wrong", L""}, {0, L"", L"C:\\k.zelkey"}, {2, L"third", L""}};
    EXPECT_EQ(provide(), VaultCore::KeyProvided);
    EXPECT_EQ(provider->password(), L"wrong");
    EXPECT_EQ(provider->keyFile(), L"");
    EXPECT_EQ(provide(), VaultCore::KeyProvided);
    EXPECT_EQ(provide(), VaultCore::KeyCancelJob);
    EXPECT_EQ(provider->password(), L"");
    EXPECT_EQ(provider->keyFile(), L"C:\\k.zelkey");
}

TEST_F(ADoubleClickDecryptionHandler, endsItsProviderAsTheClassThatItIsWithTheKeysInIt)
{
    attach(0);
    events->callbacks.passwords->AddStoredKey(new FakeKey(engine, LongText, 1));
    log.clear();
    handler.reset();
    EXPECT_EQ(log.callsOf(L"key."), Calls{L"key.Release"});
}
