#pragma once

#include <filesystem>

namespace EndToEnd
{

/// The path of the running test program.
std::filesystem::path ownPath();

/// How this system calls the program and the files of its modules.
extern const char* const ProgramName;
extern const char* const ModuleExtension;

} // namespace EndToEnd
