#include "platform/platform.h"

#include <windows.h>

namespace
{

/// The system's own libraries load further ones by their bare names: never from the folder the program is started in.
/// A folder that is searched anyway takes its place, since Wine takes an empty name for none.
void keepWorkingFolderOut()
{
    wchar_t system[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(system, MAX_PATH);
    SetDllDirectoryW(length < MAX_PATH ? system : L"");
}

} // namespace

// The command line is not taken from here: the program reads it when it needs it.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int)
{
    keepWorkingFolderOut();
    return runProgram(instance);
}
