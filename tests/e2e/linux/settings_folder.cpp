#include "scenarios/kept_comment.h"

#include <cstdlib>

namespace EndToEnd
{

std::filesystem::path settingsFolder()
{
    const char* const named = std::getenv("XDG_CONFIG_HOME");
    if (named != nullptr && *named == '/')
        return named;
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr ? home : "") / ".config";
}

} // namespace EndToEnd
