#include "platform/system_with.h"
#include "systemutilities/shell_utilities.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace Halden::SystemUtilities;

namespace
{

struct ShellUtilitiesTest : testing::Test
{
    Fakes::FakePlatform platform;
};

struct SlashPathsTest : testing::Test
{
    SlashPathsTest() { platform.shell.directory = L"/home/me"; }

    Fakes::FakePlatform platform{L'/'};
};

using Texts = std::vector<std::wstring>;

} // namespace

TEST_F(ShellUtilitiesTest, joinPathPutsOneSeparatorBetween)
{
    EXPECT_EQ(JoinPath(L"a", L"b"), L"a\\b");
    EXPECT_EQ(JoinPath(L"a\\", L"b"), L"a\\b");
    EXPECT_EQ(JoinPath(L"a", L"\\b"), L"a\\b");
    EXPECT_EQ(JoinPath(L"a\\", L"\\b"), L"a\\b");
}

TEST_F(ShellUtilitiesTest, joinPathLooksAtOneSeparatorOnEachSide)
{
    EXPECT_EQ(JoinPath(L"a\\\\", L"\\b"), L"a\\\\b");
    EXPECT_EQ(JoinPath(L"a\\", L"\\\\b"), L"a\\\\b");
    EXPECT_EQ(JoinPath(L"a\\\\", L"b"), L"a\\\\b");
}

TEST_F(ShellUtilitiesTest, joinPathGivesTheOtherWhenOneIsEmpty)
{
    EXPECT_EQ(JoinPath(L"", L"\\b"), L"\\b");
    EXPECT_EQ(JoinPath(L"", L"b"), L"b");
    EXPECT_EQ(JoinPath(L"a", L""), L"a");
    EXPECT_EQ(JoinPath(L"a\\", L""), L"a\\");
    EXPECT_EQ(JoinPath(L"", L""), L"");
}

TEST_F(ShellUtilitiesTest, folderOfAPathLosesOneTrailingSeparatorFirst)
{
    EXPECT_EQ(GetFolderOfPath(L"C:\\a\\", false), L"C:");
    EXPECT_EQ(GetFolderOfPath(L"C:\\a\\", true), L"C:\\");
    EXPECT_EQ(GetFolderOfPath(L"C:\\a\\\\", false), L"C:\\a");
}

TEST_F(ShellUtilitiesTest, folderOfAPathKeepsItsSeparatorWhenAsked)
{
    EXPECT_EQ(GetFolderOfPath(L"C:\\a\\b.txt", false), L"C:\\a");
    EXPECT_EQ(GetFolderOfPath(L"C:\\a\\b.txt", true), L"C:\\a\\");
}

TEST_F(ShellUtilitiesTest, folderOfABareFileNameIsEmpty)
{
    EXPECT_EQ(GetFolderOfPath(L"b.txt", true), L"");
    EXPECT_EQ(GetFolderOfPath(L"b\\", true), L"");
    EXPECT_EQ(GetFolderOfPath(L"", false), L"");
    EXPECT_EQ(GetFolderOfPath(L"a/b", false), L"");
}

TEST_F(ShellUtilitiesTest, moduleFolderEndsInASeparator)
{
    platform.modules.programFileName = L"C:\\Suite\\JobRunner.exe";
    EXPECT_EQ(GetModuleFolder(nullptr), L"C:\\Suite\\");
    platform.modules.programFileName = L"";
    EXPECT_EQ(GetModuleFolder(nullptr), L"");
}

TEST_F(ShellUtilitiesTest, anAbsolutePathIsResolvedToItself)
{
    EXPECT_EQ(ResolveRelativePath(L"C:\\a\\..\\b.dll", L"D:\\base"), L"C:\\a\\..\\b.dll");
    EXPECT_EQ(ResolveRelativePath(L"\\\\server\\share\\b.dll", L"D:\\base"), L"\\\\server\\share\\b.dll");
    EXPECT_EQ(ResolveRelativePath(L"C:b.dll", L"D:\\base"), L"C:b.dll");
}

TEST_F(ShellUtilitiesTest, anAbsolutePathHasMoreThanTwoCharacters)
{
    EXPECT_EQ(ResolveRelativePath(L"C:", L"D:\\base"), L"D:\\base\\C:");
    EXPECT_EQ(ResolveRelativePath(L"C:b", L"D:\\base"), L"C:b");
}

TEST_F(ShellUtilitiesTest, aPathThatStartsWithOneSeparatorIsNotAbsolute)
{
    EXPECT_EQ(ResolveRelativePath(L"\\sub\\b.dll", L"D:\\base"), L"D:\\sub\\b.dll");
}

TEST_F(ShellUtilitiesTest, aPathThatTheSystemCannotResolveIsEmpty)
{
    struct FailingShell final : Fakes::FakeShell
    {
        using FakeShell::FakeShell;
        std::wstring combinePath(const std::wstring&, const std::wstring&) override { return {}; }
    };
    FailingShell shell(platform.log, L'\\');
    Platform::System system = Platform::systemWith(platform.system(), shell);
    Platform::setPlatform(&system);
    EXPECT_EQ(ResolveRelativePath(L"sub\\b.dll", L"C:\\base"), L"");
    Platform::setPlatform(&platform.system());
}

TEST_F(ShellUtilitiesTest, aRelativePathIsResolvedAgainstItsBase)
{
    EXPECT_EQ(ResolveRelativePath(L"b.dll", L"C:\\base"), L"C:\\base\\b.dll");
    EXPECT_EQ(ResolveRelativePath(L"b.dll", L"C:\\base\\"), L"C:\\base\\b.dll");
    EXPECT_EQ(ResolveRelativePath(L"sub\\b.dll", L"C:\\base"), L"C:\\base\\sub\\b.dll");
    EXPECT_EQ(ResolveRelativePath(L".\\sub\\..\\..\\b.dll", L"C:\\base"), L"C:\\b.dll");
}

TEST_F(ShellUtilitiesTest, aPathThatEndsInASeparatorIsAllFolder)
{
    EXPECT_EQ(ResolveRelativePath(L"sub\\", L"C:\\base"), L"C:\\base\\sub\\");
}

TEST_F(ShellUtilitiesTest, anEmptyBaseMeansTheCurrentDirectory)
{
    platform.shell.directory = L"C:\\now";
    EXPECT_EQ(ResolveRelativePath(L"b.dll", L""), L"C:\\now\\b.dll");
}

TEST_F(ShellUtilitiesTest, commandLineStartsWithTheProgram)
{
    platform.shell.arguments = {L"program", L"job file.json"};
    EXPECT_EQ(GetCommandLineArguments(), (Texts{L"program", L"job file.json"}));
}

TEST_F(ShellUtilitiesTest, vistaIsTheSixthOfItsPlatform)
{
    platform.shell.systemVersion = {2, 6};
    EXPECT_TRUE(isVistaOrLater());
    platform.shell.systemVersion = {2, 10};
    EXPECT_TRUE(isVistaOrLater());
    platform.shell.systemVersion = {2, 5};
    EXPECT_FALSE(isVistaOrLater());
    for (const std::uint32_t otherPlatform : {0U, 1U, 3U})
    {
        platform.shell.systemVersion = {otherPlatform, 6};
        EXPECT_FALSE(isVistaOrLater()) << otherPlatform;
    }
}

TEST_F(ShellUtilitiesTest, compactPathKeepsTheFileName)
{
    EXPECT_EQ(compactPath(L"C:\\a.txt", 50), L"C:\\a.txt");
    const std::wstring longPath = L"C:\\a folder with a name\\another folder with a name\\report.txt";
    const std::wstring compact = compactPath(longPath, 30);
    EXPECT_EQ(compact.size(), 30u);
    EXPECT_TRUE(compact.ends_with(L"\\report.txt"));
    EXPECT_EQ(compactPath(longPath, static_cast<unsigned>(longPath.size())), longPath);
}

TEST_F(ShellUtilitiesTest, forcingAWindowToTheFrontBorrowsTheForegroundThread)
{
    const auto window = Fakes::FakeDesktop::windowNumber(7);
    platform.desktop.foreground = Fakes::FakeDesktop::windowNumber(9);
    platform.desktop.windows[platform.desktop.foreground] = {40};
    const std::wstring self = std::to_wstring(platform.threads.currentThreadId());
    ForceForegroundWindow(window);
    EXPECT_EQ(platform.log.calls(),
              (Texts{L"foregroundWindow", L"windowThread 9", L"attachThreadInput 40 " + self + L" attach",
                     L"setWindowPosition 7 0 67", L"setWindowPosition 9 7 3", L"setForegroundWindow 7",
                     L"attachThreadInput 40 " + self + L" detach"}));
}

TEST_F(SlashPathsTest, joinAndFolderUseTheSystemsSeparator)
{
    EXPECT_EQ(JoinPath(L"/a", L"b"), L"/a/b");
    EXPECT_EQ(JoinPath(L"/a/", L"/b"), L"/a/b");
    EXPECT_EQ(GetFolderOfPath(L"/a/b/", false), L"/a");
    EXPECT_EQ(GetFolderOfPath(L"/a/b/", true), L"/a/");
    EXPECT_EQ(GetFolderOfPath(L"a\\b", true), L"");
}

TEST_F(SlashPathsTest, anAbsolutePathStartsWithASlash)
{
    EXPECT_EQ(ResolveRelativePath(L"/x", L"/base"), L"/x");
    EXPECT_EQ(ResolveRelativePath(L"c:x", L"/base"), L"/base/c:x");
    EXPECT_EQ(ResolveRelativePath(L"../m.so", L"/base/bin"), L"/base/m.so");
    EXPECT_EQ(ResolveRelativePath(L"m.so", L""), L"/home/me/m.so");
}
