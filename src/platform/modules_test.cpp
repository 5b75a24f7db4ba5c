#include "platform/each_system.h"
#include "platform/modules.h"
#include "platform/utf8.h"

#include <fstream>

namespace
{

struct Sample
{
    std::wstring path;
    std::string exportName;
};

/// A module that is sure to be there.
class Modules : public EachSystem
{
protected:
    Sample sample()
    {
        if (GetParam() == Kind::Fake)
        {
            fake().modules.addExport(L"C:\\lib\\sample.dll", "answer", &answer);
            return {L"C:\\lib\\sample.dll", "answer"};
        }
        if (looksLikeWindows())
            return {L"C:\\windows\\system32\\kernel32.dll", "GetTickCount"};
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);)
            if (line.find("/libc.so") != std::string::npos)
                return {Platform::fromUtf8(line.substr(line.find('/'))), "malloc"};
        return {};
    }

    static int answer() { return 42; }

    Platform::Modules& modules() { return system().modules; }
};

TEST_P(Modules, aModuleLoadsByItsFullPathAndGivesItsExports)
{
    const Sample wanted = sample();
    const Platform::ModuleHandle module = modules().load(wanted.path);
    ASSERT_NE(module, nullptr);
    EXPECT_NE(modules().findExport(module, wanted.exportName.c_str()), nullptr);
    EXPECT_EQ(modules().findExport(module, "noSuchExport"), nullptr);
    modules().unload(module);
}

TEST_P(Modules, aLoadedModuleKnowsItsFile)
{
    const Platform::ModuleHandle module = modules().load(sample().path);
    ASSERT_NE(module, nullptr);
    const std::wstring name = modules().fileName(module);
    EXPECT_NE(name.find(system().separator), std::wstring::npos);
    modules().unload(module);
}

TEST_P(Modules, aMissingModuleDoesNotLoad)
{
    EXPECT_EQ(modules().load(path(L"/no/such/module")), nullptr);
}

TEST_P(Modules, aBareNameIsNotSearchedFor)
{
    const std::wstring full = sample().path;
    EXPECT_EQ(modules().load(full.substr(full.rfind(system().separator) + 1)), nullptr);
}

TEST_P(Modules, theRunningProgramHasAFullPath)
{
    const std::wstring name = modules().fileName(nullptr);
    ASSERT_GT(name.size(), 3u);
    EXPECT_EQ(name.find(system().separator), looksLikeWindows() ? 2u : 0u);
}

TEST_P(Modules, aModuleFileNameIsTheNameWithTheExtensionOfTheSystem)
{
    EXPECT_EQ(modules().moduleFileName(L"vaultcore"), looksLikeWindows() ? L"vaultcore.dll" : L"vaultcore.so");
}

INSTANTIATE_EACH_SYSTEM(Modules);

TEST(FakeModules, everyCallIsInTheLogInOrder)
{
    Fakes::FakePlatform fake;
    fake.modules.addExport(L"C:\\a.dll", "start", nullptr);
    const Platform::ModuleHandle module = Platform::platform().modules.load(L"C:\\a.dll");
    EXPECT_EQ(fake.modules.loadCount(L"C:\\a.dll"), 1);
    Platform::platform().modules.findExport(module, "start");
    Platform::platform().modules.unload(module);
    Platform::platform().modules.load(L"C:\\b.dll");
    EXPECT_EQ(fake.modules.loadCount(L"C:\\a.dll"), 0);
    EXPECT_EQ(fake.log.calls(), (std::vector<std::wstring>{L"load C:\\a.dll", L"findExport C:\\a.dll start",
                                                           L"unload C:\\a.dll", L"load C:\\b.dll"}));
}

TEST(PlatformAccessor, theRealSystemComesBackWhenTheFakeOneIsGone)
{
    {
        Fakes::FakePlatform fake;
        EXPECT_EQ(&Platform::platform(), &fake.system());
    }
    EXPECT_EQ(&Platform::platform(), &Platform::nativeSystem());
}

} // namespace
