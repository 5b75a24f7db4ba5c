#include "jobprocess/platform_session.h"
#include "platform/system_with.h"

#include "bridges/module_factories.h"
#include "fakes/fake_platform.h"
#include "windows/framework/view_factory.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

// What the modules are told and what they answer; their exports are plain functions.
std::wstring engineFolder;
std::wstring controlsFolder;
int answer = 1;

bool startZelPlatform(const wchar_t* folder)
{
    engineFolder = folder;
    return true;
}
int startVaultCore()
{
    return answer;
}
int startPanekit(const wchar_t* folder)
{
    controlsFolder = folder;
    return answer;
}
void endModule() {}
ZelPlatform::IFactory* createDocumentsFactory()
{
    return nullptr;
}
VaultCore::IFactory* createEngineFactory()
{
    return nullptr;
}

/// The modules of a system whose views need no control module.
class ModulesWithoutControls final : public Fakes::FakeModules
{
public:
    using FakeModules::FakeModules;
    std::wstring moduleFileName(const std::wstring& name) override
    {
        return name == L"panekit" ? std::wstring() : FakeModules::moduleFileName(name);
    }
};

class SessionOnASystem : public testing::Test
{
protected:
    SessionOnASystem() { answer = 1; }
    ~SessionOnASystem() override
    {
        setControlModule(nullptr);
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    static void addZelPlatform(Fakes::FakeModules& modules, const std::wstring& path)
    {
        modules.addExport(path, "initialize", startZelPlatform);
        modules.addExport(path, "createFactory", createDocumentsFactory);
        modules.addExport(path, "uninitialize", endModule);
    }
    static void addVaultCore(Fakes::FakeModules& modules, const std::wstring& path)
    {
        modules.addExport(path, "initialize", startVaultCore);
        modules.addExport(path, "createFactory", createEngineFactory);
        modules.addExport(path, "uninitialize", endModule);
    }
    static void addPanekit(Fakes::FakeModules& modules, const std::wstring& path)
    {
        modules.addExport(path, "initialize", startPanekit);
    }
    void addAll(const std::wstring& folder)
    {
        addZelPlatform(system_.modules, folder + L"zelplatform.dll");
        addVaultCore(system_.modules, folder + L"vaultcore.dll");
        addPanekit(system_.modules, folder + L"panekit.dll");
    }

    Fakes::FakePlatform system_;
    const std::wstring folder_ = L"C:\\Suite\\bin\\";
};

TEST_F(SessionOnASystem, takesAnyAnswerButZeroAsStarted)
{
    addAll(folder_);
    for (const int started : {1, 2, -1, 256})
    {
        answer = started;
        PlatformSession session;
        EXPECT_TRUE(session.start()) << started;
        session.end();
    }
}

TEST_F(SessionOnASystem, keepsTheControlModuleFromItsStartToItsEnd)
{
    addAll(folder_);
    PlatformSession session;
    ASSERT_TRUE(session.start());
    EXPECT_EQ(system_.modules.fileName(controlModule()), folder_ + L"panekit.dll");
    EXPECT_NE(controlModule(), nullptr);
    session.end();
    EXPECT_EQ(controlModule(), nullptr);
}

TEST_F(SessionOnASystem, looksForTheFactoryOnlyInAModuleThatHasStarted)
{
    // So an engine that refuses to start stays loaded even when it has no factory to offer.
    addZelPlatform(system_.modules, folder_ + L"zelplatform.dll");
    system_.modules.addExport(folder_ + L"vaultcore.dll", "initialize", startVaultCore);
    answer = 0;
    PlatformSession session;
    EXPECT_FALSE(session.start());
    EXPECT_EQ(system_.modules.loadCount(folder_ + L"vaultcore.dll"), 1);
    EXPECT_TRUE(system_.log.callsOf(L"findExport " + folder_ + L"vaultcore.dll createFactory").empty());
}

TEST_F(SessionOnASystem, startsADocumentsModuleBeforeItMissesTheFactory)
{
    system_.modules.addExport(folder_ + L"zelplatform.dll", "initialize", startZelPlatform);
    engineFolder.clear();
    PlatformSession session;
    EXPECT_FALSE(session.start());
    EXPECT_EQ(engineFolder, folder_);
}

TEST_F(SessionOnASystem, takesAFolderThatOnlyBeginsWithReleaseAsTheDevelopmentLayout)
{
    system_.modules.programFileName = L"C:\\a\\ReleaseNotes\\bin\\JobRunner.exe";
    const std::wstring libraries = L"C:\\a\\source\\extlibs\\";
    addZelPlatform(system_.modules, L"C:\\a\\ReleaseNotes\\bin\\zelplatform.dll");
    addVaultCore(system_.modules, libraries + L"vaultcore\\lib\\win32\\ReleasetU\\vaultcore.dll");
    addPanekit(system_.modules, libraries + L"hoplib\\lib\\win32\\ReleaseU\\panekit.dll");
    PlatformSession session;
    EXPECT_TRUE(session.start());
}

TEST_F(SessionOnASystem, findsTheDevelopmentLayoutUnderSlashesToo)
{
    Fakes::FakePlatform slashes{L'/'};
    slashes.modules.programFileName = L"/a/Release/bin/jobrunner";
    slashes.modules.extension = L".so";
    addZelPlatform(slashes.modules, L"/a/Release/bin/zelplatform.so");
    addVaultCore(slashes.modules, L"/a/source/extlibs/vaultcore/lib/win32/ReleasetU/vaultcore.so");
    addPanekit(slashes.modules, L"/a/source/extlibs/hoplib/lib/win32/ReleaseU/panekit.so");
    {
        PlatformSession session;
        EXPECT_TRUE(session.start());
        EXPECT_EQ(engineFolder, L"/a/source/extlibs/vaultcore/lib/win32/ReleasetU/");
        EXPECT_EQ(controlsFolder, L"/a/source/extlibs/hoplib/lib/win32/ReleaseU/");
    }
    Platform::setPlatform(&system_.system());
}

TEST_F(SessionOnASystem, startsWithoutControlsWhereTheViewsNeedNone)
{
    ModulesWithoutControls modules(system_.log);
    Platform::System system = Platform::systemWith(system_.system(), modules);
    Platform::setPlatform(&system);
    addZelPlatform(modules, folder_ + L"zelplatform.dll");
    addVaultCore(modules, folder_ + L"vaultcore.dll");
    {
        PlatformSession session;
        EXPECT_TRUE(session.start());
        EXPECT_EQ(controlModule(), nullptr);
    }
    EXPECT_EQ(system_.log.callsOf(L"unload").size(), 2U);
    Platform::setPlatform(&system_.system());
}

} // namespace

} // namespace JobRunner
