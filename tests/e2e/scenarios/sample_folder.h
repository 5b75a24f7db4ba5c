#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace EndToEnd
{

using Path = std::filesystem::path;

/// A folder of its own for one test, with files and job files in it; removed with everything inside at its end.
class SampleFolder
{
public:
    SampleFolder();
    ~SampleFolder();
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;

    const Path& path() const { return path_; }
    /// Writes a file, and the folders above it, below this folder.
    Path addFile(const Path& name, const std::string& content = "sample") const;
    /// Writes `count` files with names of their own.
    std::vector<Path> addFiles(int count, const std::string& content = "sample") const;

    /// Methods of a delete job.
    static constexpr std::uint32_t Delete = 0;
    static constexpr std::uint32_t Wipe = 2;
    /// Writes the job file that asks to delete the files.
    Path addDeleteJob(const std::vector<Path>& files, std::uint32_t method = Delete,
                      const Path& name = "job.json") const;

    /// Writes the job file that asks to encrypt the files; `destiny` is what becomes of them: 0 keep, 1 delete, 2 wipe.
    Path addEncryptJob(const std::vector<Path>& files, int destiny, const Path& name = "job.json") const;
    /// Writes the job file that asks to decrypt the files beside themselves; they stay unless `deletes` is true.
    Path addDecryptJob(const std::vector<Path>& files, bool deletes = false, const Path& name = "job.json") const;

    /// Writes the job file of a kind; `fields` are the further ones of the object, as JSON: "\"mode\": 1, ...".
    Path addJob(const std::string& kind, const std::vector<Path>& files, const std::string& fields = {},
                const Path& name = "job.json") const;

private:
    Path path_;
};

/// A path as a text of JSON, with its quotation marks.
std::string jsonText(const Path& path);

/// What a job file for deletion says, for tests that spoil it.
std::string deleteJobText(const std::vector<Path>& files, std::uint32_t method);

/// Everything in a file.
std::string contentOf(const Path& file);

/// The program under test: the value of JOBRUNNER_PROGRAM, or the one in the folder "bin" beside the tests' folder.
Path programUnderTest();
/// Copies the program with its modules into the folder BASE/bin/Release and moves the modules of engine and controls to
/// where this development layout has them; the path of the copied program.
Path copyProgramForDevelopment(const Path& base);
/// Copies the program and its modules into `folder`; the path of the copied program.
Path copyProgram(const Path& folder);
/// The same with the engine that tells no text at the end of a decrypted file.
Path copyProgramWithWordlessEngine(const Path& folder);
/// The same with modules that crash on the thread that the environment names: see crashing_modules/crash_here.h.
Path copyProgramWithCrashingModules(const Path& folder);
/// The file of a module, by its name without extension, in a program's folder.
Path moduleBeside(const Path& program, const std::string& module);

} // namespace EndToEnd
