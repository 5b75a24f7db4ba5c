#include "bridges/decryptor_events_handler.h"

#include "bridges/module_factories.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/slot_of.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

class ADecryptionHandler : public testing::Test
{
protected:
    ADecryptionHandler() { setVaultCoreFactory(&FakeEngine::createFactory); }
    ~ADecryptionHandler() override { setVaultCoreFactory(nullptr); }

    void attach(std::uint32_t mode)
    {
        options->SetMode(mode);
        log.clear();
        handler->AttachDecryptionEvents(events.get(), options.get());
    }

    /// Mode of the window that the attached provider opens.
    std::uint32_t askedMode()
    {
        VaultCore::IKey* key = nullptr;
        EXPECT_EQ(events->callbacks.passwords->ProvideKey(L"C:\\a.zel", &key), VaultCore::KeyCancelJob);
        return gui.decryptionQuestions().back().mode;
    }

    FakePlatform platform;
    FakeViews views;
    CallLog& log = platform.log;
    FakeEngine engine{log};
    FakeGuiEvents gui{log};
    ProgressWindow window;
    ReleasePtr<FakeDecryptionEvents> events{new FakeDecryptionEvents(engine)};
    ReleasePtr<FakeDecryptionOptions> options{new FakeDecryptionOptions(engine)};
    std::unique_ptr<DecryptorEventsHandler> handler = std::make_unique<DecryptorEventsHandler>(&window, &gui);
};

} // namespace

TEST_F(ADecryptionHandler, attachesAsEveryHandlerAndThenItsPasswordProvider)
{
    attach(1);
    const std::vector<std::wstring> expected{L"events.SetFileListBuilderEvents", L"events.SetOverallProgressEvents",
                                             L"events.SetFileProgressEvents",    L"events.SetDestinyProgressEvents",
                                             L"events.SetFileConflictEvents",    L"options.GetMode",
                                             L"events.SetPasswordProvider"};
    EXPECT_EQ(log.calls(), expected);
}

TEST_F(ADecryptionHandler, attachesAsADecryption)
{
    attach(1);
    events->callbacks.overall->OnOperationStarted();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 3);
    events->callbacks.overall->OnOperationFinished();
    events->callbacks.conflict->OnFileError(L"a", L"b", L"c");
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
}

TEST_F(ADecryptionHandler, tellsTheProviderWhetherTheModeIsNotZero)
{
    attach(0);
    EXPECT_EQ(askedMode(), 0U);
    for (const std::uint32_t mode : {1U, 2U, 0x80000000U, 0xFFFFFFFFU})
    {
        attach(mode);
        EXPECT_EQ(askedMode(), 1U) << mode;
    }
}

TEST_F(ADecryptionHandler, releasesTheStoredKeysAtItsEnd)
{
    attach(0);
    events->callbacks.passwords->AddStoredKey(new FakeKey(engine, L"secret", 1));
    log.clear();
    handler.reset();
    EXPECT_EQ(log.calls(), std::vector<std::wstring>{L"key.Release"});
}

TEST_F(ADecryptionHandler, hasItsOperationBehindThatOfItsBase)
{
    EXPECT_EQ(slotOf(&DecryptorEventsHandler::AttachEvents), 2U);
    EXPECT_EQ(slotOf(&DecryptorEventsHandler::AttachDecryptionEvents), 3U);
}
