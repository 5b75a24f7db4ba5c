#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "scenarios/sample_folder.h"
#include "windows/running_program.h"
#include "windows/screenshot.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::wstring NotCalledDirectly =
    L"This application should not be called directly. It is designed for internal purposes.";
const std::wstring NotLoaded = L"Cannot load configuration file: ";
const std::wstring UnknownKind = L"Unknown type of the thread operation in configuration file";
const std::wstring NoModules = L"Cannot initialize ZelPlatform/VaultCore";

/// Runs the program, which has to say just this in a message box, and gives its exit code.
int runToBox(const Path& program, const std::wstring& arguments, const std::wstring& text)
{
    const RunningProgram running(program, arguments);
    const Window box = running.window(L"Job Runner");
    EXPECT_TRUE(box);
    EXPECT_TRUE(waitUntil([&] { return box.shows(text); })) << Path(box.allTexts());
    box.press(VK_RETURN);
    return running.exitCode();
}

int runToBox(const std::wstring& arguments, const std::wstring& text)
{
    return runToBox(programUnderTest(), arguments, text);
}

/// Runs a job up to its question and answers it with No.
int refuse(const std::wstring& arguments)
{
    const RunningProgram running(programUnderTest(), arguments);
    const Window question = running.window(L"Securely Delete Items");
    EXPECT_TRUE(question);
    question.click(IDNO);
    return running.exitCode();
}

/// A job file that has to be refused as one that does not load.
void expectNotLoaded(const Path& path)
{
    EXPECT_EQ(runToBox(quoted(path), NotLoaded + path.wstring()), 1);
}

} // namespace

TEST(Start, withoutAJobFileSaysWhatTheProgramIsFor)
{
    const RunningProgram running(programUnderTest(), L"");
    const Window box = running.window(L"Job Runner");
    ASSERT_TRUE(box);
    EXPECT_TRUE(waitUntil([&] { return box.shows(NotCalledDirectly); })) << Path(box.allTexts());
    EXPECT_TRUE(takeScreenshot(box, L"message"));
    EXPECT_TRUE(running.isRunning());
    box.press(VK_RETURN);
    EXPECT_EQ(running.exitCode(), 1);
}

TEST(Start, namesAJobFileThatIsNotThere)
{
    const SampleFolder folder;
    expectNotLoaded(folder.path() / L"nothing.json");
}

TEST(Start, namesAFolderGivenAsJobFile)
{
    const SampleFolder folder;
    expectNotLoaded(folder.path());
    EXPECT_TRUE(fs::is_directory(folder.path()));
}

TEST(Start, namesAnEmptyPath)
{
    EXPECT_EQ(runToBox(L"\"\"", NotLoaded), 1);
}

TEST(Start, namesAPathTooLongForTheSystem)
{
    const SampleFolder folder;
    expectNotLoaded(folder.path() / (std::wstring(300, L'a') + L".json"));
}

TEST(Start, survivesAPathThatIsNotUnicode)
{
    EXPECT_EQ(runToBox(L"C:\\\xd800.json", NotLoaded + L"C:\\\xd800.json"), 1);
}

class BadJobFile : public testing::TestWithParam<const char*>
{
};

TEST_P(BadJobFile, isNamedAndStaysOnDisk)
{
    const SampleFolder folder;
    const Path job = folder.addFile(L"job.json", GetParam());
    expectNotLoaded(job);
    EXPECT_TRUE(fs::exists(job));
}

INSTANTIATE_TEST_SUITE_P(Texts, BadJobFile,
                         testing::Values("", "\x01\x02\xff", "delete everything", "[]", "null",
                                         "{\"kind\": \"delete\", \"files\": [",
                                         "{\"kind\": \"delete\", \"files\": [1, 2], \"method\": 0}",
                                         "{\"kind\": \"delete\", \"files\": [\"\xc3\x28\"], \"method\": 0}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": -1}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": 4294967296}"));

TEST(Start, namesAJobFileOfDeepBrackets)
{
    const SampleFolder folder;
    expectNotLoaded(folder.addFile(L"job.json", std::string(200000, '[')));
}

TEST(Start, refusesAJobOfUnknownKindAndDeletesItsFile)
{
    const SampleFolder folder;
    const Path job = folder.addFile(L"job.json", R"({"kind": "dance", "files": []})");
    EXPECT_EQ(runToBox(quoted(job), UnknownKind), 1);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, ignoresFurtherArguments)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({});
    EXPECT_EQ(refuse(quoted(job) + L" C:\\nowhere /help"), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, takesAPathWithSpacesAndOtherScripts)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({}, SampleFolder::Delete, u8"my jobs/\u00e9t\u00e9 \u65e5\u672c.json");
    EXPECT_EQ(refuse(quoted(job)), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, takesOnlyTheFirstWordOfAPathWithoutQuotes)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({}, SampleFolder::Delete, L"my job.json");
    EXPECT_EQ(runToBox(job.wstring(), NotLoaded + (folder.path() / L"my").wstring()), 1);
    EXPECT_TRUE(fs::exists(job));
}

class NeededModule : public testing::TestWithParam<const char*>
{
};

TEST_P(NeededModule, isMissedAtTheStart)
{
    const SampleFolder folder;
    const Path program = copyProgram(folder.path() / L"program");
    ASSERT_TRUE(fs::remove(moduleBeside(program, GetParam())));
    EXPECT_EQ(runToBox(program, L"", NoModules), 1);
}

TEST_P(NeededModule, isRefusedWhenItIsBroken)
{
    const SampleFolder folder;
    const Path program = copyProgram(folder.path() / L"program");
    std::ofstream(moduleBeside(program, GetParam()), std::ios::trunc) << "no module";
    EXPECT_EQ(runToBox(program, L"", NoModules), 1);
}

INSTANTIATE_TEST_SUITE_P(Modules, NeededModule, testing::Values("zelplatform", "vaultcore", "panekit"));

TEST(Layout, isAnInstalledOneBesideItsModules)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox(copyProgram(folder.path() / L"a program"), L"", NotCalledDirectly), 1);
}

TEST(Layout, forDevelopmentHasTheModulesAmongTheSources)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox(copyProgramForDevelopment(folder.path()), L"", NotCalledDirectly), 1);
}

TEST(Layout, isTakenForDevelopmentWhereverAFolderBeginsWithRelease)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox(copyProgram(folder.path() / L"Release 2" / L"bin"), L"", NoModules), 1);
}

TEST(Layout, isAnInstalledOneInAFolderWrittenSmall)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox(copyProgram(folder.path() / L"release"), L"", NotCalledDirectly), 1);
}
