#include "jobprocess/platform_session.h"

#include "bridges/module_factories.h"
#include "fakes/fake_platform.h"
#include "windows/framework/view_factory.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

using Fakes::FakePlatform;

const std::wstring Folder = L"C:\\Suite\\bin\\";

// The modules' exports are plain functions, so what they are told and what they answer lives here.
Fakes::CallLog* calls = nullptr;
bool zelPlatformAnswer = true;
int vaultCoreAnswer = 1;
int panekitAnswer = 1;

bool zelPlatformInitialize(const wchar_t* folder)
{
    calls->add(L"zelplatform.initialize " + std::wstring(folder));
    return zelPlatformAnswer;
}
void zelPlatformUninitialize()
{
    calls->add(L"zelplatform.uninitialize");
}
ZelPlatform::IFactory* zelPlatformFactory()
{
    return nullptr;
}
int vaultCoreInitialize()
{
    calls->add(L"vaultcore.initialize");
    return vaultCoreAnswer;
}
void vaultCoreUninitialize()
{
    calls->add(L"vaultcore.uninitialize");
}
VaultCore::IFactory* vaultCoreFactory()
{
    return nullptr;
}
int panekitInitialize(const wchar_t* folder)
{
    calls->add(L"panekit.initialize " + std::wstring(folder));
    return panekitAnswer;
}
void panekitUninitialize()
{
    calls->add(L"panekit.uninitialize");
}

class PlatformSessionTest : public testing::Test
{
protected:
    PlatformSessionTest()
    {
        calls = &system_.log;
        zelPlatformAnswer = true;
        vaultCoreAnswer = 1;
        panekitAnswer = 1;
    }
    ~PlatformSessionTest() override
    {
        setControlModule(nullptr);
        setZelPlatformFactory(nullptr);
        setVaultCoreFactory(nullptr);
    }

    void addZelPlatform(const std::wstring& folder = Folder, const std::string& without = "")
    {
        add(folder + L"zelplatform.dll", "initialize", without, zelPlatformInitialize);
        add(folder + L"zelplatform.dll", "createFactory", without, zelPlatformFactory);
        add(folder + L"zelplatform.dll", "uninitialize", without, zelPlatformUninitialize);
    }
    void addVaultCore(const std::wstring& folder = Folder, const std::string& without = "")
    {
        add(folder + L"vaultcore.dll", "initialize", without, vaultCoreInitialize);
        add(folder + L"vaultcore.dll", "createFactory", without, vaultCoreFactory);
        add(folder + L"vaultcore.dll", "uninitialize", without, vaultCoreUninitialize);
    }
    void addPanekit(const std::wstring& folder = Folder, const std::string& without = "")
    {
        add(folder + L"panekit.dll", "initialize", without, panekitInitialize);
        add(folder + L"panekit.dll", "uninitialize", without, panekitUninitialize);
    }

    /// The calls that load, start, stop and unload; looking exports up is left out.
    std::vector<std::wstring> steps()
    {
        std::vector<std::wstring> result;
        for (const std::wstring& call : system_.log.calls())
        {
            if (call.find(L"findExport") == std::wstring::npos)
                result.push_back(call);
        }
        return result;
    }
    int loads(const wchar_t* file) { return system_.modules.loadCount(Folder + file); }

    FakePlatform system_;
    PlatformSession session_;

private:
    template <class Function>
    void add(const std::wstring& path, const std::string& name, const std::string& without, Function function)
    {
        system_.modules.add(path);
        if (name != without)
            system_.modules.addExport(path, name, function);
    }
};

using Steps = std::vector<std::wstring>;

TEST_F(PlatformSessionTest, startsTheModulesInOrderAndEndsTheEngineFirst)
{
    addZelPlatform();
    addVaultCore();
    addPanekit();
    EXPECT_TRUE(session_.start());
    EXPECT_EQ(steps(), (Steps{L"load C:\\Suite\\bin\\zelplatform.dll", L"zelplatform.initialize C:\\Suite\\bin\\",
                              L"load C:\\Suite\\bin\\vaultcore.dll", L"vaultcore.initialize",
                              L"load C:\\Suite\\bin\\panekit.dll", L"panekit.initialize C:\\Suite\\bin\\"}));
    system_.log.clear();
    session_.end();
    EXPECT_EQ(steps(), (Steps{L"vaultcore.uninitialize", L"unload C:\\Suite\\bin\\vaultcore.dll",
                              L"zelplatform.uninitialize", L"unload C:\\Suite\\bin\\zelplatform.dll",
                              L"panekit.uninitialize", L"unload C:\\Suite\\bin\\panekit.dll"}));
}

TEST_F(PlatformSessionTest, endsOnceAndOnlyWhenStarted)
{
    session_.end();
    EXPECT_TRUE(steps().empty());
    addZelPlatform();
    addVaultCore();
    addPanekit();
    ASSERT_TRUE(session_.start());
    session_.end();
    system_.log.clear();
    session_.end();
    EXPECT_TRUE(steps().empty());
}

TEST_F(PlatformSessionTest, releaseInTheFolderMeansTheDevelopmentLayout)
{
    // Intended for an installed copy in such a folder too.
    system_.modules.programFileName = L"C:\\Tools\\Release\\bin\\JobRunner.exe";
    const std::wstring libraries = L"C:\\Tools\\source\\extlibs\\";
    addZelPlatform(L"C:\\Tools\\Release\\bin\\");
    addVaultCore(libraries + L"vaultcore\\lib\\win32\\ReleasetU\\");
    addPanekit(libraries + L"hoplib\\lib\\win32\\ReleaseU\\");
    EXPECT_TRUE(session_.start());
    EXPECT_EQ(steps(), (Steps{L"load C:\\Tools\\Release\\bin\\zelplatform.dll",
                              L"zelplatform.initialize C:\\Tools\\source\\extlibs\\vaultcore\\lib\\win32\\ReleasetU\\",
                              L"load C:\\Tools\\source\\extlibs\\vaultcore\\lib\\win32\\ReleasetU\\vaultcore.dll",
                              L"vaultcore.initialize",
                              L"load C:\\Tools\\source\\extlibs\\hoplib\\lib\\win32\\ReleaseU\\panekit.dll",
                              L"panekit.initialize C:\\Tools\\source\\extlibs\\hoplib\\lib\\win32\\ReleaseU\\"}));
}

TEST_F(PlatformSessionTest, theLayoutTestIsCaseSensitiveAndNeedsTheSeparator)
{
    for (const std::wstring folder : {L"C:\\tools\\release\\", L"C:\\tools\\PreRelease\\"})
    {
        system_.modules.programFileName = folder + L"JobRunner.exe";
        addZelPlatform(folder);
        addVaultCore(folder);
        addPanekit(folder);
        PlatformSession session;
        EXPECT_TRUE(session.start()) << folder.size();
    }
}

TEST_F(PlatformSessionTest, withoutZelPlatformNothingElseIsLoaded)
{
    addVaultCore();
    addPanekit();
    EXPECT_FALSE(session_.start());
    EXPECT_EQ(steps().size(), 1u);
}

TEST_F(PlatformSessionTest, aRefusingZelPlatformIsUnloadedWithoutUninitialize)
{
    addZelPlatform();
    zelPlatformAnswer = false;
    EXPECT_FALSE(session_.start());
    EXPECT_EQ(steps(), (Steps{L"load C:\\Suite\\bin\\zelplatform.dll", L"zelplatform.initialize C:\\Suite\\bin\\",
                              L"unload C:\\Suite\\bin\\zelplatform.dll"}));
}

TEST_F(PlatformSessionTest, aZelPlatformWithoutAnExportIsUnloadedWithoutUninitialize)
{
    for (const std::string without : {"initialize", "createFactory"})
    {
        FakePlatform system;
        calls = &system.log;
        system.modules.add(Folder + L"zelplatform.dll");
        if (without != "initialize")
            system.modules.addExport(Folder + L"zelplatform.dll", "initialize", zelPlatformInitialize);
        system.modules.addExport(Folder + L"zelplatform.dll", "uninitialize", zelPlatformUninitialize);
        PlatformSession session;
        EXPECT_FALSE(session.start());
        EXPECT_EQ(system.modules.loadCount(Folder + L"zelplatform.dll"), 0);
        EXPECT_TRUE(system.log.callsOf(L"zelplatform.uninitialize").empty());
    }
    Platform::setPlatform(&system_.system());
}

TEST_F(PlatformSessionTest, aMissingEngineEndsZelPlatform)
{
    addZelPlatform();
    addPanekit();
    EXPECT_FALSE(session_.start());
    EXPECT_EQ(loads(L"zelplatform.dll"), 0);
    EXPECT_EQ(system_.log.callsOf(L"zelplatform.uninitialize").size(), 1u);
    EXPECT_EQ(loads(L"panekit.dll"), 0);
}

TEST_F(PlatformSessionTest, aRefusingEngineStaysLoaded)
{
    addZelPlatform();
    addVaultCore();
    vaultCoreAnswer = 0;
    EXPECT_FALSE(session_.start());
    EXPECT_EQ(loads(L"vaultcore.dll"), 1);
    EXPECT_EQ(loads(L"zelplatform.dll"), 0);
    EXPECT_TRUE(system_.log.callsOf(L"vaultcore.uninitialize").empty());
}

TEST_F(PlatformSessionTest, anEngineWithoutAnExportIsUnloadedFirst)
{
    for (const std::string without : {"initialize", "createFactory"})
    {
        system_.modules.remove(Folder + L"vaultcore.dll");
        system_.log.clear();
        addZelPlatform();
        addVaultCore(Folder, without);
        PlatformSession session;
        EXPECT_FALSE(session.start());
        const auto unloads = system_.log.callsOf(L"unload");
        EXPECT_EQ(unloads, (Steps{L"unload C:\\Suite\\bin\\vaultcore.dll", L"unload C:\\Suite\\bin\\zelplatform.dll"}));
        EXPECT_TRUE(system_.log.callsOf(L"vaultcore.uninitialize").empty());
    }
}

TEST_F(PlatformSessionTest, withoutTheControlsTheTwoOtherModulesStayStarted)
{
    addZelPlatform();
    addVaultCore();
    EXPECT_FALSE(session_.start());
    session_.end();
    EXPECT_EQ(loads(L"zelplatform.dll"), 1);
    EXPECT_EQ(loads(L"vaultcore.dll"), 1);
    EXPECT_TRUE(system_.log.callsOf(L"unload").empty());
}

TEST_F(PlatformSessionTest, refusingControlsStayLoaded)
{
    addZelPlatform();
    addVaultCore();
    addPanekit();
    panekitAnswer = 0;
    EXPECT_FALSE(session_.start());
    session_.end();
    EXPECT_EQ(loads(L"panekit.dll"), 1);
    EXPECT_EQ(loads(L"vaultcore.dll"), 1);
}

TEST_F(PlatformSessionTest, controlsWithoutInitializeAloneAreUnloaded)
{
    addZelPlatform();
    addVaultCore();
    addPanekit(Folder, "initialize");
    EXPECT_FALSE(session_.start());
    EXPECT_EQ(system_.log.callsOf(L"unload"), (Steps{L"unload C:\\Suite\\bin\\panekit.dll"}));
}

TEST_F(PlatformSessionTest, controlsWithoutUninitializeEndNormally)
{
    addZelPlatform();
    addVaultCore();
    addPanekit(Folder, "uninitialize");
    ASSERT_TRUE(session_.start());
    session_.end();
    EXPECT_EQ(loads(L"panekit.dll"), 0);
    EXPECT_TRUE(system_.log.callsOf(L"panekit.uninitialize").empty());
}

TEST_F(PlatformSessionTest, aModulePathGetsExactlyOneSeparator)
{
    EXPECT_EQ(modulePath(L"C:\\a", L"m.dll"), L"C:\\a\\m.dll");
    EXPECT_EQ(modulePath(L"C:\\a\\", L"m.dll"), L"C:\\a\\m.dll");
    EXPECT_EQ(modulePath(L"", L"m.dll"), L"\\m.dll");
    EXPECT_EQ(modulePath(nullptr, L"m.dll"), L"C:\\Suite\\bin\\m.dll");
}

} // namespace

} // namespace JobRunner
