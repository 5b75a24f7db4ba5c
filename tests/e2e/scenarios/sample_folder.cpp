#include "sample_folder.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "scenarios/own_path.h"

namespace fs = std::filesystem;

namespace EndToEnd
{
namespace
{

std::string jobText(const std::string& kind, const std::vector<Path>& files, const std::string& fields)
{
    std::ostringstream text;
    text << "{\"kind\": \"" << kind << "\", \"files\": [";
    for (std::size_t index = 0; index < files.size(); ++index)
        text << (index == 0 ? "" : ", ") << jsonText(files[index]);
    text << "]" << (fields.empty() ? "" : ", ") << fields << "}";
    return text.str();
}

// Not every system has every module.
void moveModule(const Path& program, const std::string& module, const Path& folder)
{
    const Path file = moduleBeside(program, module);
    if (!fs::exists(file))
        return;
    fs::create_directories(folder);
    fs::rename(file, folder / file.filename());
}

Path makeFolder()
{
    static int made = 0;
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    const Path folder = fs::temp_directory_path() / ("jobrunner-" + std::to_string(now) + "-" + std::to_string(++made));
    if (!fs::create_directories(folder))
        throw std::runtime_error("the sample folder exists already");
    return folder;
}

} // namespace

SampleFolder::SampleFolder() : path_(makeFolder()) {}

SampleFolder::~SampleFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

Path SampleFolder::addFile(const Path& name, const std::string& content) const
{
    const Path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write a sample file");
    return file;
}

std::vector<Path> SampleFolder::addFiles(int count, const std::string& content) const
{
    std::vector<Path> files;
    for (int index = 0; index < count; ++index)
        files.push_back(addFile("file " + std::to_string(index) + ".txt", content));
    return files;
}

Path SampleFolder::addDeleteJob(const std::vector<Path>& files, std::uint32_t method, const Path& name) const
{
    return addFile(name, deleteJobText(files, method));
}

Path SampleFolder::addEncryptJob(const std::vector<Path>& files, int destiny, const Path& name) const
{
    return addJob("encrypt", files, "\"destiny\": " + std::to_string(destiny), name);
}

Path SampleFolder::addDecryptJob(const std::vector<Path>& files, bool deletes, const Path& name) const
{
    return addJob("decrypt", files, deletes ? "\"mode\": 1" : "\"mode\": 0", name);
}

Path SampleFolder::addJob(const std::string& kind, const std::vector<Path>& files, const std::string& fields,
                          const Path& name) const
{
    return addFile(name, jobText(kind, files, fields));
}

std::string jsonText(const Path& path)
{
    const std::u8string text = path.u8string();
    std::string result = "\"";
    for (const char8_t unit : text)
    {
        if (unit == u8'"' || unit == u8'\\')
            result += '\\';
        result += static_cast<char>(unit);
    }
    return result + '"';
}

std::string deleteJobText(const std::vector<Path>& files, std::uint32_t method)
{
    return jobText("delete", files, "\"method\": " + std::to_string(method));
}

std::string contentOf(const Path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

Path programUnderTest()
{
    if (const char* named = std::getenv("JOBRUNNER_PROGRAM"); named != nullptr && *named != '\0')
        return named;
    return ownPath().parent_path().parent_path() / "bin" / ProgramName;
}

Path copyProgram(const Path& folder)
{
    fs::create_directories(folder);
    for (const fs::directory_entry& entry : fs::directory_iterator(programUnderTest().parent_path()))
    {
        if (entry.is_regular_file())
            fs::copy_file(entry.path(), folder / entry.path().filename());
    }
    return folder / programUnderTest().filename();
}

Path copyProgramForDevelopment(const Path& base)
{
    const Path program = copyProgram(base / "bin" / "Release");
    const Path libraries = base / "source" / "extlibs";
    moveModule(program, "vaultcore", libraries / "vaultcore" / "lib" / "win32" / "ReleasetU");
    moveModule(program, "panekit", libraries / "hoplib" / "lib" / "win32" / "ReleaseU");
    return program;
}

Path copyProgramWithWordlessEngine(const Path& folder)
{
    const Path program = copyProgram(folder);
    const Path engine = moduleBeside(program, "vaultcore");
    fs::copy_file(ownPath().parent_path() / "wordless" / engine.filename(), engine,
                  fs::copy_options::overwrite_existing);
    return program;
}

Path copyProgramWithCrashingModules(const Path& folder)
{
    const Path program = copyProgram(folder);
    for (const fs::directory_entry& module : fs::directory_iterator(ownPath().parent_path() / "crashing"))
        fs::copy_file(module.path(), folder / module.path().filename(), fs::copy_options::overwrite_existing);
    return program;
}

Path moduleBeside(const Path& program, const std::string& module)
{
    return program.parent_path() / (module + ModuleExtension);
}

} // namespace EndToEnd
