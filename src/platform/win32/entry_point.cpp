#include "platform/platform.h"

#include <windows.h>

// The command line is not taken from here: the program reads it when it needs it.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int)
{
    // The system's own libraries load further ones by their bare names: never from the folder the program is started in.
    SetDllDirectoryW(L"");
    return runProgram(instance);
}
