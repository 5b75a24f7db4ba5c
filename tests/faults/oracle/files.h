#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace Faults
{

/// What is in a folder: the content of each file by its path from there, with '/' between the parts. An empty folder
/// has a '/' behind its name.
using Files = std::map<std::string, std::string>;

/// What is below a real folder. Throws std::runtime_error for a file that cannot be read.
Files filesBelow(const std::filesystem::path& folder);
/// Makes them anew: all that was in the folder before goes.
void putFiles(const std::filesystem::path& folder, const Files& files);

/// The last part of a path.
std::string nameOf(const std::string& path);
/// Is it the name of a result under work?
bool isTemporary(const std::string& path);
/// Is it one that a wipe gives a file before it removes it?
bool isMeaningless(const std::string& path);

} // namespace Faults
