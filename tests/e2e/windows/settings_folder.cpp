#include "scenarios/kept_comment.h"

#include <cstdlib>
#include <windows.h>

namespace EndToEnd
{

std::filesystem::path settingsFolder()
{
    const wchar_t* const folder = _wgetenv(L"APPDATA");
    return folder != nullptr ? folder : L"";
}

} // namespace EndToEnd
