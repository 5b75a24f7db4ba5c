#include "oracle/files.h"

#include "vaultcore/result_names.h"
#include "vaultcore/wiper.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace Faults
{
namespace
{

std::string textOf(const fs::path& path)
{
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

fs::path pathOf(const std::string& text)
{
    return fs::path(std::u8string(text.begin(), text.end()));
}

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    if (!stream)
        throw std::runtime_error("cannot read " + textOf(file));
    return content.str();
}

} // namespace

Files filesBelow(const fs::path& folder)
{
    Files files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    {
        const std::string name = textOf(entry.path().lexically_relative(folder));
        if (entry.is_regular_file())
            files[name] = entry.file_size() == 0 ? std::string() : contentOf(entry.path());
        else if (entry.is_directory() && fs::is_empty(entry.path()))
            files[name + '/'] = "";
    }
    return files;
}

void putFiles(const fs::path& folder, const Files& files)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, content] : files)
    {
        const fs::path path = folder / pathOf(name);
        if (name.ends_with('/'))
        {
            fs::create_directories(path);
            continue;
        }
        fs::create_directories(path.parent_path());
        std::ofstream stream(path, std::ios::binary);
        stream << content;
        stream.close();
        if (!stream)
            throw std::runtime_error("cannot write " + name);
    }
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

bool isTemporary(const std::string& path)
{
    return VaultCore::isTemporaryName(pathOf(nameOf(path)).native());
}

bool isMeaningless(const std::string& path)
{
    const std::string name = nameOf(path);
    return name.size() == VaultCore::MeaninglessNameLength &&
           std::all_of(name.begin(), name.end(), [](char letter) { return letter >= 'a' && letter <= 'z'; });
}

} // namespace Faults
