#include "scenarios/own_path.h"

namespace EndToEnd
{

const char* const ProgramName = "jobrunner";
const char* const ModuleExtension = ".so";

std::filesystem::path ownPath()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

} // namespace EndToEnd
