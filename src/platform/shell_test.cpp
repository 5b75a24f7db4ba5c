#include "platform/each_system.h"
#include "platform/shell.h"
#include "platform/utf8.h"

#include <filesystem>
#include <fstream>

namespace
{

class Shell : public EachSystem
{
protected:
    Platform::Shell& shell() { return system().shell; }

    std::wstring combined(const std::wstring& folder, const std::wstring& file)
    {
        return shell().combinePath(path(folder), path(file));
    }
};

TEST_P(Shell, theFirstArgumentIsTheProgram)
{
    const std::vector<std::wstring> arguments = shell().commandLineArguments();
    ASSERT_FALSE(arguments.empty());
    EXPECT_FALSE(arguments[0].empty());
}

TEST_P(Shell, theVersionTellsAWindowsFromAnyOtherSystem)
{
    const Platform::SystemVersion version = shell().version();
    EXPECT_EQ(version.platformId, looksLikeWindows() ? 2u : 0u);
    EXPECT_EQ(version.major >= 6, looksLikeWindows());
}

TEST_P(Shell, theCurrentDirectoryIsAFullPath)
{
    EXPECT_EQ(shell().currentDirectory().find(system().separator), looksLikeWindows() ? 2u : 0u);
}

TEST_P(Shell, aPathIsResolvedAgainstAFolder)
{
    EXPECT_EQ(combined(L"/a/b", L"c.txt"), path(L"/a/b/c.txt"));
    EXPECT_EQ(combined(L"/a/b/", L"c.txt"), path(L"/a/b/c.txt"));
    EXPECT_EQ(combined(L"/a/b", L"../c.txt"), path(L"/a/c.txt"));
    EXPECT_EQ(combined(L"/a/b", L"./c/../d.txt"), path(L"/a/b/d.txt"));
    EXPECT_EQ(combined(L"/a/b", L""), path(L"/a/b"));
}

TEST_P(Shell, aResolvedPathKeepsTheSeparatorAtItsEnd)
{
    EXPECT_EQ(combined(L"/a/b", L"../../Modules/bin/"), path(L"/Modules/bin/"));
    EXPECT_EQ(combined(L"/a/b", L"c/d/"), path(L"/a/b/c/d/"));
}

TEST_P(Shell, aPathNeverClimbsAboveTheRoot)
{
    EXPECT_EQ(combined(L"/a", L"../../../b"), path(L"/b"));
    EXPECT_EQ(combined(L"/a", L".."), path(L"/"));
}

TEST_P(Shell, aFullPathStandsAlone)
{
    EXPECT_EQ(combined(L"/a/b", L"/c/d.txt"), path(L"/c/d.txt"));
}

TEST_P(Shell, aShortPathIsNotCompacted)
{
    EXPECT_EQ(shell().compactPath(path(L"/folder/file.txt"), 41), path(L"/folder/file.txt"));
}

TEST_P(Shell, aLongPathKeepsItsStartAndItsFileName)
{
    const std::wstring full = path(L"/first folder/second folder/third folder/fourth folder/file.txt");
    const std::wstring compact = shell().compactPath(full, 41);
    const std::wstring end = std::wstring(L"...") + system().separator + L"file.txt";
    ASSERT_EQ(compact.size(), 40u);
    EXPECT_EQ(compact, full.substr(0, 40 - end.size()) + end);
}

TEST_P(Shell, aLongNameIsCutAtItsEnd)
{
    EXPECT_EQ(shell().compactPath(L"My Filename", 10), L"My Fil...");
    EXPECT_EQ(shell().compactPath(path(L"/folder/a rather long file name.txt"), 20),
              std::wstring(L"...") + system().separator + L"a rather lon...");
}

TEST_P(Shell, onlyAFileThatIsThereIsDeleted)
{
    std::wstring file = L"C:\\Work\\job.json";
    if (GetParam() == Kind::Native)
    {
        const auto name = std::filesystem::temp_directory_path() / "jobrunner_shell_test.tmp";
        std::ofstream(name) << "text";
        file = Platform::fromUtf8(name.string());
    }
    else
    {
        fake().shell.files.insert(file);
    }
    EXPECT_TRUE(shell().deleteFile(file));
    EXPECT_FALSE(shell().deleteFile(file));
}

TEST_P(Shell, whatIsNotThereIsNotOpened)
{
    Platform::ShellExecution execution{60, Platform::ExecuteKeepProcess | Platform::ExecuteWithoutBox,
                                       path(L"/no such folder/letter.txt"), path(L"/"), Platform::ShowNormal};
    EXPECT_FALSE(shell().execute(execution));
    EXPECT_EQ(execution.process, nullptr);
}

INSTANTIATE_EACH_SYSTEM(Shell);

TEST(FakeDesktop, whatMovesWindowsIsInTheLog)
{
    Fakes::FakePlatform fake;
    const Platform::WindowHandle window = Fakes::FakeDesktop::windowNumber(7);
    fake.desktop.foreground = Fakes::FakeDesktop::windowNumber(9);
    fake.desktop.windows[fake.desktop.foreground] = {5};
    EXPECT_EQ(fake.desktop.windowThread(fake.desktop.foregroundWindow()), 5u);
    fake.desktop.attachThreadInput(5, 1, true);
    fake.desktop.setWindowPosition(window, nullptr, 67);
    fake.desktop.setForegroundWindow(window);
    fake.desktop.attachThreadInput(5, 1, false);
    EXPECT_EQ(fake.log.calls(), (std::vector<std::wstring>{L"foregroundWindow", L"windowThread 9",
                                                           L"attachThreadInput 5 1 attach", L"setWindowPosition 7 0 67",
                                                           L"setForegroundWindow 7", L"attachThreadInput 5 1 detach"}));
}

} // namespace
