#include "bridges/decryptor_events_handler.h"
#include "bridges/module_factories.h"
#include "fakes/fake_engine_objects.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "interfaces/release_ptr.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

/// An engine that calls each bridge back as soon as it is given.
class HastyEvents final : public CollectingEvents<VaultCore::IDecryptionEvents>
{
public:
    using CollectingEvents::CollectingEvents;

    void SetFileConflictEvents(VaultCore::IFileConflictEvents* events) override
    {
        events->OnFileError(L"a", L"b", L"c");
    }
    void SetPasswordProvider(VaultCore::IPasswordProvider* provider) override
    {
        VaultCore::IKey* key = nullptr;
        EXPECT_EQ(provider->ProvideKey(L"a.zel", &key), VaultCore::KeyCancelJob);
    }
};

class AnAttachment : public testing::Test
{
protected:
    AnAttachment() { setVaultCoreFactory(&FakeEngine::createFactory); }
    ~AnAttachment() override { setVaultCoreFactory(nullptr); }

    FakePlatform platform;
    FakeViews views;
    CallLog log;
    FakeEngine engine{log};
    FakeGuiEvents gui;
    ProgressWindow window;
    ReleasePtr<HastyEvents> events{new HastyEvents(engine)};
    DecryptorEventsHandler handler{&window, &gui};
};

} // namespace

TEST_F(AnAttachment, tellsTheConflictsOfTheOperationBeforeTheEngineHasThem)
{
    handler.AttachEvents(events.get(), 3);
    EXPECT_EQ(gui.fileErrors().at(0).title, L"File Problem");
}

TEST_F(AnAttachment, tellsTheProviderOfTheModeBeforeTheEngineHasIt)
{
    const ReleasePtr<FakeDecryptionOptions> options(new FakeDecryptionOptions(engine));
    options->SetMode(0);
    handler.AttachDecryptionEvents(events.get(), options.get());
    EXPECT_EQ(gui.decryptionQuestions().at(0).mode, 0U);
}
