#include "recorded/job_user.h"
#include "scenarios/environment.h"
#include "scenarios/own_path.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

// Libraries under the names of the modules and of the system's own, where somebody else may write.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::vector<std::string> Names = {
    // What the program loads itself.
    "zelplatform.so", "vaultcore.so", "panekit.so", "statistics.so", "zelplatform.dll", "vaultcore.dll", "panekit.dll",
    "statistics.dll",
    // What those need.
    "libgcrypt.so.20", "libgpg-error.so.0", "libstdc++.so.6", "libgcc_s.so.1", "libc.so.6", "libstdc++-6.dll",
    "libgcc_s_dw2-1.dll", "libwinpthread-1.dll",
    // What Windows loads for a program with windows, files and a help viewer, early or late.
    "uxtheme.dll", "version.dll", "dwmapi.dll", "gdiplus.dll", "comctl32.dll", "cryptbase.dll", "profapi.dll",
    "propsys.dll", "netapi32.dll", "shcore.dll", "textshaping.dll", "msimg32.dll", "hhctrl.ocx"};

class PlantedModules : public testing::Test
{
protected:
    ~PlantedModules() override { fs::current_path(before); }

    static Path built(const std::string& name)
    {
        return ownPath().parent_path() / "planted" / (name + ModuleExtension);
    }

    static void plant(const Path& folder)
    {
        fs::create_directories(folder);
        for (const std::string& name : Names)
            fs::copy_file(built("planted"), folder / name);
    }

    /// The search path without what an empty name in it would mean: the working folder.
    static Path searchPath()
    {
        const char* const former = std::getenv("PATH");
        std::string path = former ? former : "";
        while (path.starts_with(FolderSeparator))
            path.erase(0, 1);
        return path;
    }

    bool wereLoaded() const { return fs::exists(mark); }

    const Path before = fs::current_path();
    const SampleFolder folder;
    const Path plants = folder.path() / "plants";
    const Path mark = folder.path() / "mark";
    const EnvironmentVariable marking{"JOBRUNNER_PLANTED", mark};
};

} // namespace

TEST_F(PlantedModules, announceThemselvesWhereTheyAreLoaded)
{
    const Path program = copyProgram(folder.path() / "program");
    fs::copy_file(built("planted"), moduleBeside(program, "zelplatform"), fs::copy_options::overwrite_existing);
    const EnvironmentVariable another("JOBRUNNER_PROGRAM", program);
    startWithoutAJob(folder);
    EXPECT_TRUE(wereLoaded());
}

TEST_F(PlantedModules, areNotLoadedFromTheWorkingFolderTheSearchPathOrBesideTheJobAndItsFiles)
{
    plant(plants);
    plant(folder.path());
    const Path file = folder.addFile("letter.txt", "dear reader");
    fs::current_path(plants);
    const EnvironmentVariable path("PATH", plants.string() + FolderSeparator + searchPath().string());
    encryptByPassword(folder, {file});
    EXPECT_FALSE(fs::exists(file));
    decryptByPassword(folder, {folder.path() / "letter.txt.zel"});
    EXPECT_EQ(contentOf(file), "dear reader");
    remove(folder, {file}, SampleFolder::Wipe);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_FALSE(wereLoaded());
}

TEST_F(PlantedModules, areNotLoadedFromTheWorkingFolderForALibraryThatNeedsThem)
{
    const Path program = copyProgram(folder.path() / "program");
    fs::copy_file(built("leaning"), moduleBeside(program, "zelplatform"), fs::copy_options::overwrite_existing);
    fs::create_directories(plants);
    fs::copy_file(built("planted"), plants / built("planted").filename());
    fs::current_path(plants);
    const EnvironmentVariable path("PATH", searchPath());
    const EnvironmentVariable another("JOBRUNNER_PROGRAM", program);
    startWithoutAJob(folder);
    EXPECT_FALSE(wereLoaded());
}
