#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "linux/terminal.h"
#include "scenarios/sample_folder.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string NotCalledDirectly =
    "This application should not be called directly. It is designed for internal purposes.";
const std::string NotLoaded = "Cannot load configuration file: ";
const std::string UnknownKind = "Unknown type of the thread operation in configuration file";
const std::string NoModules = "Cannot initialize ZelPlatform/VaultCore";
const std::string Question = "Are you sure you want to securely delete items?";

/// Runs the program, which has to say just this in a message box, and gives its exit code.
int runToBox(const std::vector<std::string>& command, const std::string& text)
{
    Terminal terminal(command);
    EXPECT_TRUE(terminal.expect("Job Runner")) << terminal.shown();
    EXPECT_TRUE(terminal.expect(text)) << terminal.shown();
    terminal.send("\n");
    return terminal.exitCode();
}

int refuse(const std::string& question, const std::vector<std::string>& command)
{
    Terminal terminal(command);
    EXPECT_TRUE(terminal.expect(question)) << terminal.shown();
    terminal.send("n\n");
    return terminal.exitCode();
}

/// A job file that has to be refused as one that does not load, and has to stay.
void expectNotLoaded(const std::string& path)
{
    EXPECT_EQ(runToBox({programUnderTest(), path}, NotLoaded + path), 1);
}

} // namespace

TEST(Start, withoutAJobFileSaysWhatTheProgramIsFor)
{
    EXPECT_EQ(runToBox({programUnderTest()}, NotCalledDirectly), 1);
}

TEST(Start, keepsTheMessageUntilItIsRead)
{
    Terminal terminal({programUnderTest()});
    ASSERT_TRUE(terminal.expect(NotCalledDirectly));
    EXPECT_EQ(terminal.exitCode(std::chrono::milliseconds(300)), -1);
    terminal.send("\n");
    EXPECT_EQ(terminal.exitCode(), 1);
}

TEST(Start, takesTheEndOfInputAsReadingTheMessage)
{
    Terminal terminal({programUnderTest()});
    ASSERT_TRUE(terminal.expect(NotCalledDirectly));
    terminal.sendEnd();
    EXPECT_EQ(terminal.exitCode(), 1);
}

TEST(Start, namesAJobFileThatIsNotThere)
{
    const SampleFolder folder;
    expectNotLoaded(folder.path() / "nothing.json");
}

TEST(Start, namesAFolderGivenAsJobFile)
{
    const SampleFolder folder;
    expectNotLoaded(folder.path());
    EXPECT_TRUE(fs::is_directory(folder.path()));
}

TEST(Start, namesAnEmptyPath)
{
    expectNotLoaded("");
}

TEST(Start, namesAPathWithANameTooLongForTheSystem)
{
    expectNotLoaded("/tmp/" + std::string(300, 'a') + ".json");
}

TEST(Start, survivesAPathThatIsNotUnicode)
{
    EXPECT_EQ(runToBox({programUnderTest(), "/tmp/\xff\xfe.json"}, NotLoaded), 1);
}

class BadJobFile : public testing::TestWithParam<const char*>
{
};

TEST_P(BadJobFile, isNamedAndStaysOnDisk)
{
    const SampleFolder folder;
    const Path job = folder.addFile("job.json", GetParam());
    expectNotLoaded(job);
    EXPECT_TRUE(fs::exists(job));
}

INSTANTIATE_TEST_SUITE_P(Texts, BadJobFile,
                         testing::Values("", " ", "\x01\x02\xff", "delete everything", "{", "[]", "\"delete\"", "null",
                                         "17", "{\"kind\": \"delete\", \"files\": [",
                                         "{\"kind\": \"delete\", \"files\": \"/tmp/a\", \"method\": 0}",
                                         "{\"kind\": \"delete\", \"files\": [1, 2], \"method\": 0}",
                                         "{\"kind\": \"delete\", \"files\": [\"\xc3\x28\"], \"method\": 0}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": \"two\"}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": -1}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": 4294967296}",
                                         "{\"kind\": \"delete\", \"files\": [], \"method\": 1e300}"));

TEST(Start, namesAJobFileOfDeepBrackets)
{
    const SampleFolder folder;
    expectNotLoaded(folder.addFile("job.json", std::string(200000, '[')));
}

TEST(Start, refusesAJobOfUnknownKindAndDeletesItsFile)
{
    const SampleFolder folder;
    const Path job = folder.addFile("job.json", R"({"kind": "dance", "files": []})");
    EXPECT_EQ(runToBox({programUnderTest(), job}, UnknownKind), 1);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, ignoresFurtherArguments)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({});
    EXPECT_EQ(refuse(Question, {programUnderTest(), job, "/nowhere", "--help"}), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, takesAPathWithSpacesAndOtherScripts)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({}, SampleFolder::Delete, u8"my jobs/\u00e9t\u00e9 \u65e5\u672c.json");
    EXPECT_EQ(refuse(Question, {programUnderTest(), job}), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, takesAPathOfThreeHundredLetters)
{
    const SampleFolder folder;
    const Path job =
        folder.addDeleteJob({}, SampleFolder::Delete, Path(std::string(150, 'a')) / (std::string(150, 'b') + ".json"));
    EXPECT_EQ(refuse(Question, {programUnderTest(), job}), 0);
    EXPECT_FALSE(fs::exists(job));
}

TEST(Start, takesARelativePath)
{
    const SampleFolder folder;
    const Path job = folder.addDeleteJob({});
    EXPECT_EQ(refuse(Question, {programUnderTest(), fs::relative(job)}), 0);
    EXPECT_FALSE(fs::exists(job));
}

class NeededModule : public testing::TestWithParam<const char*>
{
};

TEST_P(NeededModule, isMissedAtTheStart)
{
    const SampleFolder folder;
    const Path program = copyProgram(folder.path() / "program");
    ASSERT_TRUE(fs::remove(moduleBeside(program, GetParam())));
    EXPECT_EQ(runToBox({program}, NoModules), 1);
}

TEST_P(NeededModule, isRefusedWhenItIsBroken)
{
    const SampleFolder folder;
    const Path program = copyProgram(folder.path() / "program");
    std::ofstream(moduleBeside(program, GetParam()), std::ios::trunc) << "no module";
    EXPECT_EQ(runToBox({program}, NoModules), 1);
}

TEST_P(NeededModule, isFoundBesideACopiedProgram)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox({copyProgram(folder.path() / "a program")}, NotCalledDirectly), 1);
}

INSTANTIATE_TEST_SUITE_P(Modules, NeededModule, testing::Values("zelplatform", "vaultcore"));

TEST(Layout, forDevelopmentHasTheModulesAmongTheSources)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox({copyProgramForDevelopment(folder.path())}, NotCalledDirectly), 1);
}

TEST(Layout, isTakenForDevelopmentWhereverAFolderBeginsWithRelease)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox({copyProgram(folder.path() / "Release 2" / "bin")}, NoModules), 1);
}

TEST(Layout, isAnInstalledOneInAFolderWrittenSmall)
{
    const SampleFolder folder;
    EXPECT_EQ(runToBox({copyProgram(folder.path() / "release")}, NotCalledDirectly), 1);
}
