#include "scenarios/own_path.h"

#include <windows.h>

namespace EndToEnd
{

const char* const ProgramName = "JobRunner.exe";
const char* const ModuleExtension = ".dll";

std::filesystem::path ownPath()
{
    wchar_t path[1024] = {};
    GetModuleFileNameW(nullptr, path, 1024);
    return path;
}

} // namespace EndToEnd
